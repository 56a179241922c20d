// The OSC remote on a real socket, driven by liblo's command-line tools: oscsend for commands,
// oscdump for what subscribers are told. Refusals and replies to the asker are read by the
// test's own socket and compared byte for byte.
#include "live/oscremote.h"
#include "live/remotetarget.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTimer>
#include <QUdpSocket>
#include <QtEndian>
#include <QtTest>

namespace {

const quint16 RemotePort = 9000;
const QHostAddress Local(QHostAddress::LocalHost);

// OSC framing by the test's own arithmetic: a string ends in NUL and pads to four bytes.
QByteArray str(const QByteArray &s)
{
    QByteArray b = s + '\0';
    while (b.size() % 4)
        b += '\0';
    return b;
}

QByteArray be32(quint32 v)
{
    v = qToBigEndian(v);
    return QByteArray(reinterpret_cast<const char *>(&v), 4);
}

QByteArray error(const QByteArray &reason)
{
    return str("/kova/error") + str(",s") + str(reason);
}

class FakePanel : public RemoteTarget
{
public:
    QStringList keys =
        QStringLiteral(
            "cut auto ftb mix wipe pip pop rec stream mute f7 marker pgm1 pgm2 pgm3 pgm4 pvw1 pvw2 pvw3 pvw4")
            .split(QLatin1Char(' '));
    QSet<QString> lit{QStringLiteral("pop"), QStringLiteral("rec")};
    QStringList calls;
    bool canAsk = true;

    QString modelName() const override { return QStringLiteral("RVX3210"); }
    QString unitAddress() const override { return QStringLiteral("10.0.0.5"); }
    int inputCount() const override { return 4; }
    QStringList keyNames() const override { return keys; }
    bool pressKey(const QString &name) override
    {
        calls << name;
        return keys.contains(name);
    }
    std::optional<bool> keyLit(const QString &name) const override
    {
        if (name == QLatin1String("stream") || name == QLatin1String("mute"))
            return std::nullopt;
        return lit.contains(name);
    }
    bool setFader(double f) override
    {
        calls << QStringLiteral("fader %1").arg(f);
        return true;
    }
    bool requestState() override
    {
        calls << QStringLiteral("state?");
        return canAsk;
    }
};

} // namespace

class TestOscRemote : public QObject
{
    Q_OBJECT

    FakePanel m_panel;
    OscRemote m_remote;
    QUdpSocket m_peer;
    QString m_oscsend;
    QString m_oscdump;
    int m_probes = 0;

    void oscsend(const QStringList &message)
    {
        QProcess p;
        p.start(m_oscsend, QStringList{QStringLiteral("127.0.0.1"), QString::number(RemotePort)} + message);
        QVERIFY2(p.waitForFinished(5000) && p.exitCode() == 0, qPrintable(p.readAllStandardError()));
    }
    // Datagrams that reach the test's socket until the reply to an unknown marker address,
    // which proves nothing more is on its way.
    QByteArrayList repliesBeforeMarker()
    {
        m_peer.writeDatagram(str("/kova/marker") + str(","), Local, RemotePort);
        const QByteArray marker = error("unknown address /kova/marker");
        QByteArrayList replies;
        for (int n = 0; n < 200; ++n) {
            while (m_peer.hasPendingDatagrams()) {
                QByteArray d(int(m_peer.pendingDatagramSize()), '\0');
                m_peer.readDatagram(d.data(), d.size());
                if (d == marker)
                    return replies;
                replies << d;
            }
            QTest::qWait(10);
        }
        replies << "no marker";
        return replies;
    }
    // oscdump's lines without their time tag, up to a probe sent now (again and again while
    // oscdump may still be starting). Probes are numbered, so a late one is never taken for it.
    QStringList dumped(QProcess &dump, quint16 port, bool starting = false)
    {
        const QString probe = QStringLiteral("/probe%1").arg(++m_probes);
        QStringList lines;
        QUdpSocket s;
        for (int n = 0; n < 100; ++n) {
            if (n == 0 || starting)
                s.writeDatagram(str(probe.toLatin1()) + str(","), Local, port);
            dump.waitForReadyRead(100);
            while (dump.canReadLine()) {
                const QString message =
                    QString::fromUtf8(dump.readLine()).trimmed().section(QLatin1Char(' '), 1);
                if (message == probe)
                    return lines;
                if (!message.startsWith(QLatin1String("/probe")))
                    lines << message;
            }
        }
        return lines << QStringLiteral("no probe");
    }
    void startDump(QProcess &dump, quint16 port)
    {
        dump.start(m_oscdump, {QStringLiteral("-L"), QString::number(port)});
        QVERIFY(dump.waitForStarted());
        QCOMPARE(dumped(dump, port, true), QStringList{});
    }

private slots:
    void initTestCase()
    {
        m_oscsend = QStandardPaths::findExecutable(QStringLiteral("oscsend"));
        m_oscdump = QStandardPaths::findExecutable(QStringLiteral("oscdump"));
        QVERIFY2(!m_oscsend.isEmpty() && !m_oscdump.isEmpty(),
                 "oscsend and oscdump are missing: install liblo-tools (scripts/install-deps.sh)");
        QString why;
        QVERIFY2(m_remote.listen(Local, RemotePort, &why), qPrintable(why));
        QVERIFY(m_peer.bind(Local, 9001));
    }
    void init()
    {
        m_remote.setTarget(&m_panel);
        m_panel.canAsk = true;
        m_panel.calls.clear();
    }

    void listensOnlyWhereTold()
    {
        // Bound to every address, the port would be taken on 127.0.0.2 as well.
        QUdpSocket other;
        QVERIFY(
            other.bind(QHostAddress(QStringLiteral("127.0.0.2")), RemotePort, QUdpSocket::DontShareAddress));
        OscRemote second;
        QString why;
        QVERIFY(!second.listen(Local, RemotePort, &why));
        QVERIFY2(why.contains(QLatin1String("127.0.0.1:9000")), qPrintable(why));
        QVERIFY(!second.listen(QHostAddress(QStringLiteral("::1")), RemotePort + 1, &why));
    }

    void commands_data()
    {
        QTest::addColumn<QStringList>("message");
        QTest::addColumn<QStringList>("calls");
        QTest::newRow("cut") << QStringList{"/kova/cut"} << QStringList{"cut"};
        QTest::newRow("ftb") << QStringList{"/kova/ftb"} << QStringList{"ftb"};
        QTest::newRow("pgm 2") << QStringList{"/kova/pgm", "i", "2"} << QStringList{"pgm2"};
        QTest::newRow("pvw 4") << QStringList{"/kova/pvw", "i", "4"} << QStringList{"pvw4"};
        QTest::newRow("fader float") << QStringList{"/kova/fader", "f", "0.25"} << QStringList{"fader 0.25"};
        QTest::newRow("fader int") << QStringList{"/kova/fader", "i", "1"} << QStringList{"fader 1"};
        QTest::newRow("transition") << QStringList{"/kova/transition", "s", "wipe"} << QStringList{"wipe"};
        QTest::newRow("pip on, unlit") << QStringList{"/kova/pip", "i", "1"} << QStringList{"pip"};
        QTest::newRow("pip off, unlit") << QStringList{"/kova/pip", "i", "0"} << QStringList{};
        QTest::newRow("pop off, lit") << QStringList{"/kova/pop", "i", "0"} << QStringList{"pop"};
        QTest::newRow("rec on, lit") << QStringList{"/kova/rec", "T"} << QStringList{};
        QTest::newRow("key") << QStringList{"/kova/key", "s", "f7"} << QStringList{"f7"};
        QTest::newRow("pattern") << QStringList{"/kova/cu?"} << QStringList{"cut"};
    }
    void commands()
    {
        QFETCH(QStringList, message);
        QFETCH(QStringList, calls);
        oscsend(message);
        oscsend({"/kova/key", "s", "marker"});
        QTRY_VERIFY(m_panel.calls.contains(QLatin1String("marker")));
        m_panel.calls.removeLast();
        QCOMPARE(m_panel.calls, calls);
    }

    void refusals_data()
    {
        QTest::addColumn<QByteArray>("datagram");
        QTest::addColumn<bool>("panelOpen");
        QTest::addColumn<QByteArray>("reply");
        const auto i = [](const char *path, quint32 v) { return str(path) + str(",i") + be32(v); };
        QTest::newRow("unknown address")
            << str("/kova/foo") + str(",") << true << error("unknown address /kova/foo");
        QTest::newRow("pgm bare") << str("/kova/pgm") + str(",") << true << error("pgm takes 1 to 4");
        QTest::newRow("pvw 5") << i("/kova/pvw", 5) << true << error("pvw takes 1 to 4");
        QTest::newRow("pgm as float")
            << str("/kova/pgm") + str(",f") + be32(0x40000000) << true << error("pgm takes 1 to 4");
        QTest::newRow("fader 1.5") << str("/kova/fader") + str(",f") + be32(0x3FC00000) << true
                                   << error("fader takes 0.0 to 1.0");
        QTest::newRow("fader nan") << str("/kova/fader") + str(",f") + be32(0x7FC00000) << true
                                   << error("fader takes 0.0 to 1.0");
        QTest::newRow("transition dissolve") << str("/kova/transition") + str(",s") + str("dissolve") << true
                                             << error("transition takes mix, fade or wipe");
        QTest::newRow("transition without key") << str("/kova/transition") + str(",s") + str("fade") << true
                                                << error("this panel has no fade key");
        QTest::newRow("cut with argument") << i("/kova/cut", 1) << true << error("cut takes no arguments");
        QTest::newRow("pip 2") << i("/kova/pip", 2) << true << error("pip takes 1 (on) or 0 (off)");
        QTest::newRow("stream without lamp")
            << i("/kova/stream", 1) << true
            << error("the stream key has no lamp here; /kova/key stream presses it");
        QTest::newRow("unknown key") << str("/kova/key") + str(",s") + str("nosuch") << true
                                     << error("this panel has no nosuch key");
        QTest::newRow("subscribe port 0") << i("/kova/subscribe", 0) << true
                                          << error("subscribe takes no argument or a port from 1 to 65535");
        QTest::newRow("no panel") << str("/kova/cut") + str(",") << false << error("no panel is open");

        // Not OSC at all: liblo drops it, and nothing answers.
        QTest::newRow("garbage") << QByteArray("hello") << true << QByteArray();
    }
    void refusals()
    {
        QFETCH(QByteArray, datagram);
        QFETCH(bool, panelOpen);
        QFETCH(QByteArray, reply);
        m_remote.setTarget(panelOpen ? &m_panel : nullptr);
        m_peer.writeDatagram(datagram, Local, RemotePort);
        QCOMPARE(repliesBeforeMarker(), reply.isEmpty() ? QByteArrayList{} : QByteArrayList{reply});
        QCOMPARE(m_panel.calls, QStringList{});
    }

    void bundleActsOnEveryMessage()
    {
        const QByteArray cut = str("/kova/cut") + str(",");
        const QByteArray pgm = str("/kova/pgm") + str(",i") + be32(3);
        const QByteArray bundle =
            str("#bundle") + be32(0) + be32(1) + be32(cut.size()) + cut + be32(pgm.size()) + pgm;
        m_peer.writeDatagram(bundle, Local, RemotePort);
        QCOMPARE(repliesBeforeMarker(), QByteArrayList{});
        QCOMPARE(m_panel.calls, (QStringList{"cut", "pgm3"}));
    }

    void stateAnswersTheAsker()
    {
        const QByteArray ask = str("/kova/state") + str(",");
        const QByteArrayList whole{QByteArray("/kova/link\0\0,i\0\0\0\0\0\x01", 20),
                                   QByteArray("/kova/model\0,s\0\0RVX3210\0", 24)};
        m_remote.setWholeState({});
        m_peer.writeDatagram(ask, Local, RemotePort);
        QCOMPARE(repliesBeforeMarker(), QByteArrayList{}); // waits for the unit
        QCOMPARE(m_panel.calls, QStringList{"state?"});
        m_remote.setWholeState({{"link", 1}, {"model", "RVX3210"}});
        m_remote.stateArrived();
        QCOMPARE(repliesBeforeMarker(), whole);

        // A family that cannot be asked, or no panel, is answered at once.
        m_panel.canAsk = false;
        m_peer.writeDatagram(ask, Local, RemotePort);
        QCOMPARE(repliesBeforeMarker(), whole);
        m_remote.setTarget(nullptr);
        m_peer.writeDatagram(ask, Local, RemotePort);
        QCOMPARE(repliesBeforeMarker(), whole);

        // A unit that never answers: what is known, after a while.
        m_remote.setTarget(&m_panel);
        m_panel.canAsk = true;
        m_peer.writeDatagram(ask, Local, RemotePort);
        QTRY_VERIFY_WITH_TIMEOUT(m_peer.hasPendingDatagrams(), 3 * OscRemote::StateWaitMs);
        QCOMPARE(repliesBeforeMarker(), whole);
    }

    void subscribers()
    {
        m_remote.setWholeState({{"link", 1}, {"model", "RVX3210"}, {"fader", 0.5}, {"pip", true}});
        QProcess a, b;
        startDump(a, 9101);
        startDump(b, 9102);
        oscsend({"/kova/subscribe", "i", "9101"});
        oscsend({"/kova/subscribe", "i", "9102"});
        oscsend({"/kova/subscribe", "i", "9102"}); // again: told the whole state, listed once
        QTRY_COMPARE(m_remote.subscriberCount(), 2);
        const QStringList whole{"/kova/link i 1", "/kova/model s \"RVX3210\"", "/kova/fader f 0.500000",
                                "/kova/pip i 1"};
        QCOMPARE(dumped(a, 9101), whole);
        QCOMPARE(dumped(b, 9102), whole + whole);

        m_remote.publish({{"pgm", 3}, {"ftb", false}, {"unit", "10.0.0.5"}});
        const QStringList changes{"/kova/pgm i 3", "/kova/ftb i 0", "/kova/unit s \"10.0.0.5\""};
        QCOMPARE(dumped(a, 9101), changes);
        QCOMPARE(dumped(b, 9102), changes);

        oscsend({"/kova/unsubscribe", "i", "9101"});
        QTRY_COMPARE(m_remote.subscriberCount(), 1);
        m_remote.publish({{"pgm", 4}});
        QCOMPARE(dumped(b, 9102), QStringList{"/kova/pgm i 4"});
        QCOMPARE(dumped(a, 9101), QStringList{});

        // A new subscriber hears the state as published since.
        oscsend({"/kova/subscribe", "i", "9101"});
        QTRY_COMPARE(m_remote.subscriberCount(), 2);
        QCOMPARE(dumped(a, 9101), (QStringList{"/kova/link i 1", "/kova/model s \"RVX3210\"",
                                               "/kova/fader f 0.500000", "/kova/pip i 1", "/kova/pgm i 4",
                                               "/kova/ftb i 0", "/kova/unit s \"10.0.0.5\""}));
        oscsend({"/kova/unsubscribe", "i", "9101"});
        oscsend({"/kova/unsubscribe", "i", "9102"});
        QTRY_COMPARE(m_remote.subscriberCount(), 0);
    }

    void subscribersAreCapped()
    {
        const auto subscribe = [](const char *path, int port) { return str(path) + str(",i") + be32(port); };
        for (int n = 0; n < OscRemote::MaxSubscribers; ++n)
            m_peer.writeDatagram(subscribe("/kova/subscribe", 10000 + n), Local, RemotePort);
        QCOMPARE(repliesBeforeMarker(), QByteArrayList{});
        m_peer.writeDatagram(subscribe("/kova/subscribe", 20000), Local, RemotePort);
        QCOMPARE(repliesBeforeMarker(), QByteArrayList{error("too many subscribers (32)")});
        for (int n = 0; n < OscRemote::MaxSubscribers; ++n)
            m_peer.writeDatagram(subscribe("/kova/unsubscribe", 10000 + n), Local, RemotePort);
        QTRY_COMPARE(m_remote.subscriberCount(), 0);
    }

    void floodIsReadInBatches()
    {
        const int total = 200;
        const QByteArray cut = str("/kova/cut") + str(",");
        for (int n = 0; n < total; ++n)
            m_peer.writeDatagram(cut, Local, RemotePort);
        // Every pass of the event loop between two timer ticks handles at most one batch.
        QVector<int> seen;
        QTimer tick;
        connect(&tick, &QTimer::timeout, [&] { seen << m_panel.calls.size(); });
        tick.start(0);
        QTRY_COMPARE(m_panel.calls.size(), total);
        tick.stop();
        int last = 0;
        for (int n : qAsConst(seen)) {
            QVERIFY(n - last <= OscRemote::BatchSize);
            last = n;
        }
    }
};

QTEST_GUILESS_MAIN(TestOscRemote)
#include "tst_oscremote.moc"
