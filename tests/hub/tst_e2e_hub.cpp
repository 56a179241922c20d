// kova-hub end to end in the lab: the program as systemd runs it, against two RVX5310 units, an
// RVX3210 and an RVX3220, with a real broker (mosquitto, on a free port inside the lab), OSC
// peers (oscsend, oscdump) and a tally listener. What reached a unit is read from the emulator's
// frame log and compared with frames written out here; the tally by its published layout.
#include "mosquittobroker.h"
#include "oscpeer.h"
#include "tallydecode.h"

#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkDatagram>
#include <QProcess>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QUdpSocket>
#include <QtTest>
#include <csignal>

using namespace mqtttest;

namespace {

enum Unit
{
    A, // RVX5310 "Studio1"
    B, // RVX5310 "Studio2"
    C, // RVX3210 "Booth", with a HIS board
    D, // RVX3220 "Truck": reports no state
};

constexpr quint16 OscPort = 9400;
constexpr quint16 DumpPort = 9401;
constexpr quint16 TallyPort = 9402;

QString address(int u)
{
    return qEnvironmentVariable("LAB_UNITS").split(' ', Qt::SkipEmptyParts).value(u);
}

QString id(int u)
{
    return address(u).replace('.', '-');
}

// The emulator's received frames past the first `from`, as "<unit> <board> <cmd> <data>"; the
// hub's state requests (0x49), which it sends all the time to follow the units, left out.
QStringList framesSince(int from)
{
    static const QRegularExpression rx("^rx unit=(\\S+) board=(\\S+) cmd=0x(\\S+) data=(\\S*) sum=ok");
    QFile file(qEnvironmentVariable("LAB_EMULATOR_LOG"));
    file.open(QIODevice::ReadOnly);
    QStringList got;
    for (const QByteArray &line : file.readAll().split('\n')) {
        const QRegularExpressionMatch m = rx.match(QString::fromUtf8(line));
        if (m.hasMatch() && m.captured(1) != "*" && m.captured(3) != "49")
            got << QStringList(m.capturedTexts().mid(1)).join(' ').trimmed();
    }
    return got.mid(from);
}

int frameCount()
{
    return framesSince(0).size();
}

// The frames of `unit` since `from`, once there are `count` (or 5 s passed).
QStringList unitFramesSince(int from, int unit, int count)
{
    QStringList mine;
    waitUntil(
        [&] {
            mine = framesSince(from).filter(
                QRegularExpression('^' + QRegularExpression::escape(address(unit)) + ' '));
            return mine.size() >= count;
        },
        5000);
    for (QString &f : mine)
        f = f.mid(address(unit).size() + 1);
    return mine;
}

// kova-hub as a child process; its standard error is kept for the failure message.
class Hub
{
public:
    ~Hub() { kill(); }
    bool start(const QStringList &args,
               const QProcessEnvironment &env = QProcessEnvironment::systemEnvironment(),
               const QString &program = QStringLiteral(KOVA_HUB_BINARY))
    {
        m_process.setProcessEnvironment(env);
        m_process.setProcessChannelMode(QProcess::SeparateChannels);
        // "ip netns exec" execs the hub, so signals to this process reach the hub itself.
        m_process.start(program, args);
        return m_process.waitForStarted(5000);
    }
    qint64 pid() const { return m_process.processId(); }
    bool running() const { return m_process.state() == QProcess::Running; }
    void signal(int number) { ::kill(pid_t(m_process.processId()), number); }
    // Waits for the exit; -1 when it did not come within `ms`.
    int waitExit(int ms)
    {
        if (!waitUntil([this] { return m_process.state() == QProcess::NotRunning; }, ms))
            return -1;
        return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -2;
    }
    void kill()
    {
        if (m_process.state() == QProcess::NotRunning)
            return;
        m_process.kill();
        m_process.waitForFinished(5000);
    }
    QByteArray err()
    {
        m_err += m_process.readAllStandardError();
        return m_err;
    }

private:
    QProcess m_process;
    QByteArray m_err;
};

// An OSC message without arguments, sent from a socket of our own, answered with /kova/error.
bool oscRefuses(const QString &path)
{
    const auto padded = [](QByteArray b) {
        b.append('\0');
        while (b.size() % 4)
            b.append('\0');
        return b;
    };
    QUdpSocket s;
    if (!s.bind(QHostAddress::LocalHost, 0))
        return false;
    s.writeDatagram(padded(path.toUtf8()) + padded(","), QHostAddress::LocalHost, OscPort);
    return waitUntil(
        [&] {
            while (s.hasPendingDatagrams())
                if (s.receiveDatagram().data().startsWith(QByteArray("/kova/error\0", 12)))
                    return true;
            return false;
        },
        3000);
}

// The test's broker listens on the loopback only: a second station's hub, in a namespace of its
// own, reaches it through this relay, one connection to the broker for each it accepts.
class TcpRelay : public QObject
{
public:
    bool listen(const QHostAddress &at, quint16 to)
    {
        m_to = to;
        connect(&m_server, &QTcpServer::newConnection, this, [this] {
            while (QTcpSocket *in = m_server.nextPendingConnection()) {
                auto *out = new QTcpSocket(in);
                out->connectToHost(QHostAddress::LocalHost, m_to);
                connect(in, &QTcpSocket::readyRead, out, [in, out] { out->write(in->readAll()); });
                connect(out, &QTcpSocket::connected, out, [in, out] { out->write(in->readAll()); });
                connect(out, &QTcpSocket::readyRead, in, [in, out] { in->write(out->readAll()); });
                connect(in, &QTcpSocket::disconnected, out, &QTcpSocket::disconnectFromHost);
                connect(out, &QTcpSocket::disconnected, in, &QTcpSocket::disconnectFromHost);
                connect(in, &QTcpSocket::disconnected, in, &QObject::deleteLater);
            }
        });
        return m_server.listen(at, 0);
    }
    quint16 port() const { return m_server.serverPort(); }

private:
    QTcpServer m_server;
    quint16 m_to = 0;
};

bool ip(const QStringList &args)
{
    return QProcess::execute(QStringLiteral("ip"), args) == 0;
}

QJsonObject json(const QString &retainedLine, const QString &topic)
{
    return QJsonDocument::fromJson(retainedLine.mid(topic.size() + 1).toUtf8()).object();
}

} // namespace

class tst_E2eHub : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanupTestCase();
    void retainedTopicsAfterConnect();
    void setReachesTheUnit_data();
    void setReachesTheUnit();
    void badCommandsAreRefused_data();
    void badCommandsAreRefused();
    void oscAndTallyPerUnit();
    void silencedUnitGoesDownAndComesBack();
    void brokerRestartRepublishesWhileTheLinksGoOn();
    void sighupReadsTheFileAgain();
    void killGivesOfflineByWill();
    void sigtermPublishesOffline();
    void twoStationsOnOneBroker();
    void tlsWithPasswordFile();
    void laterUnitsArePickedUp();

private:
    QString topic(const QString &leaf) const { return QStringLiteral("kova/alpha/") + leaf; }
    // The retained line of `t`, once it reads `want` (or 8 s passed): "topic payload".
    QString retainedOnce(const QString &t, const std::function<bool(const QString &payload)> &want,
                         int ms = 8000);
    bool tallyShows(const std::function<bool(const QMap<QPair<int, int>, TallyDisplay> &)> &done,
                    int ms = 5000);
    bool startHub(const QStringList &extra = QStringList());
    void writeConfig(const QByteArray &text);

    MosquittoBroker m_broker;
    QTemporaryDir m_dir;
    Hub m_hub;
    OscPeer m_osc;
    QUdpSocket m_tally;
    QMap<QPair<int, int>, TallyDisplay> m_displays; // by screen and index, the newest
};

void tst_E2eHub::initTestCase()
{
    QVERIFY2(!address(D).isEmpty(), "run through lab/lab.sh with four units");
    QVERIFY2(m_broker.start(), m_broker.log().constData());
    QVERIFY(m_tally.bind(QHostAddress::LocalHost, TallyPort));
    const QString why = m_osc.start(OscPort, DumpPort);
    QVERIFY2(why.isEmpty(), qPrintable(why));
    QVERIFY(startHub());
    // Every unit found and named on the broker.
    const QString units =
        retainedOnce(topic("units"), [](const QString &p) { return p.count("\"id\"") == 4; });
    QVERIFY2(units.count("\"id\"") == 4, m_hub.err().constData());
}

void tst_E2eHub::cleanupTestCase()
{
    m_hub.kill();
}

void tst_E2eHub::writeConfig(const QByteArray &text)
{
    QFile f(m_dir.filePath("hub.conf"));
    QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    f.write(text);
}

bool tst_E2eHub::startHub(const QStringList &extra)
{
    // The units from the file (B first, so it is number 1), everything else on the command line.
    writeConfig("# test hub\nunit = " + address(B).toUtf8() + ", " + address(A).toUtf8() + "\nall = yes\n");
    return m_hub.start(QStringList{"--config", m_dir.filePath("hub.conf"), "--follow", "200", "--osc-port",
                                   QString::number(OscPort), "--tsl",
                                   "127.0.0.1:" + QString::number(TallyPort), "--mqtt", m_broker.url(),
                                   "--station", "alpha"} +
                       extra);
}

QString tst_E2eHub::retainedOnce(const QString &t, const std::function<bool(const QString &)> &want, int ms)
{
    QString line;
    waitUntil(
        [&] {
            const QStringList lines = m_broker.retained(t);
            line = lines.value(0);
            return lines.size() == 1 && line.startsWith(t + ' ') && want(line.mid(t.size() + 1));
        },
        ms);
    return line;
}

bool tst_E2eHub::tallyShows(const std::function<bool(const QMap<QPair<int, int>, TallyDisplay> &)> &done,
                            int ms)
{
    return waitUntil(
        [&] {
            while (m_tally.hasPendingDatagrams()) {
                TallyDisplay d;
                if (decodeTally(m_tally.receiveDatagram().data(), &d))
                    m_displays[{d.screen, d.index}] = d;
            }
            return done(m_displays);
        },
        ms);
}

void tst_E2eHub::retainedTopicsAfterConnect()
{
    QCOMPARE(m_broker.retained(topic("status")), QStringList{topic("status online")});

    const QString units = m_broker.retained(topic("units")).value(0);
    QStringList listed;
    for (const QJsonValue &v :
         QJsonDocument::fromJson(units.mid(topic("units").size() + 1).toUtf8()).array()) {
        const QJsonObject o = v.toObject();
        listed << QStringList{o["id"].toString(), o["model"].toString(), o["address"].toString(),
                              o["name"].toString()}
                      .join('/');
    }
    // B and A first, in the file's order; C and D as the search found them.
    QCOMPARE(listed.mid(0, 2), QStringList({id(B) + "/RVX5310/" + address(B) + "/Studio2",
                                            id(A) + "/RVX5310/" + address(A) + "/Studio1"}));
    listed = listed.mid(2);
    listed.sort();
    QCOMPARE(listed, QStringList({id(C) + "/RVX3210/" + address(C) + "/Booth",
                                  id(D) + "/RVX3220/" + address(D) + "/Truck"}));

    // The units that report: their state as kovactl names it; every link up.
    for (int u : {A, B, C}) {
        const QString t = topic(id(u) + "/state");
        const QJsonObject state =
            json(retainedOnce(t, [](const QString &p) { return p.contains("\"pgm\""); }), t);
        QVERIFY2(state.contains("pgm") && state.contains("transition"), qPrintable(id(u)));
    }
    QCOMPARE(m_broker.retained(topic("+/link")),
             QStringList({topic(id(A) + "/link up"), topic(id(B) + "/link up"), topic(id(C) + "/link up"),
                          topic(id(D) + "/link up")}));
}

void tst_E2eHub::setReachesTheUnit_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<QString>("command");
    QTest::addColumn<QStringList>("frames"); // what reached the unit, as kovactl sends it
    QTest::addColumn<QString>("field");      // then in the retained state
    QTest::addColumn<QString>("value");

    QTest::newRow("5310 pgm") << int(A) << "pgm 3" << QStringList{"main 80 03"} << "pgm"
                              << "3";
    QTest::newRow("5310 cut") << int(B) << "cut" << QStringList{"main 83 "} << QString() << QString();
    QTest::newRow("3210 wipe") << int(C) << "transition wipe-left" << QStringList{"main 8f ", "main 92 23"}
                               << "wipe"
                               << "left";
    QTest::newRow("3210 blanks around") << int(C) << "  pvw   2 " << QStringList{"main 81 02"} << "pvw"
                                        << "2";
    // The RVX3220 reports nothing: its state is what the hub last sent.
    QTest::newRow("3220 pgm") << int(D) << "pgm 6" << QStringList{"main 80 06"} << "pgm"
                              << "6";
}

void tst_E2eHub::setReachesTheUnit()
{
    QFETCH(int, unit);
    QFETCH(QString, command);
    QFETCH(QStringList, frames);
    QFETCH(QString, field);
    QFETCH(QString, value);
    const int before = frameCount();
    QVERIFY(m_broker.publish(topic(id(unit) + "/set"), command.toUtf8()));
    QStringList got = unitFramesSince(before, unit, frames.size());
    for (QString &f : got)
        f = f.trimmed();
    for (QString &f : frames)
        f = f.trimmed();
    QCOMPARE(got, frames);
    if (field.isEmpty())
        return;
    const QString t = topic(id(unit) + "/state");
    const QString line = retainedOnce(t, [&](const QString &p) {
        return QJsonDocument::fromJson(p.toUtf8()).object().value(field).toVariant().toString() == value;
    });
    QCOMPARE(json(line, t).value(field).toVariant().toString(), value);
}

void tst_E2eHub::badCommandsAreRefused_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<QString>("reason"); // a part of it

    QTest::newRow("unknown") << int(A) << QByteArray("jump 3") << "unknown command 'jump'";
    QTest::newRow("missing argument") << int(A) << QByteArray("pgm") << "usage: pgm INPUT";
    QTest::newRow("not a number") << int(B) << QByteArray("pgm three") << "not a number";
    QTest::newRow("out of the family's range") << int(A) << QByteArray("pgm 6") << "out of range";
    QTest::newRow("not this family's") << int(D) << QByteArray("pgm bar") << "(1-6)";
    QTest::newRow("HIS board never answered") << int(D) << QByteArray("his-dns 10.0.0.1") << "RVX3220";
    QTest::newRow("empty") << int(C) << QByteArray("   ") << "no command given";
}

void tst_E2eHub::badCommandsAreRefused()
{
    QFETCH(int, unit);
    QFETCH(QByteArray, command);
    QFETCH(QString, reason);
    MosquittoSub errors(m_broker, {topic("+/error")});
    QVERIFY(errors.waitReady());
    const int before = frameCount();
    QVERIFY(m_broker.publish(topic(id(unit) + "/set"), command));
    QVERIFY2(errors.waitForLines(1), m_hub.err().constData());
    const QString line = errors.lines().first();
    QVERIFY2(line.startsWith(topic(id(unit) + "/error ")), qPrintable(line));
    const QJsonObject o = json(line, topic(id(unit) + "/error"));
    QCOMPARE(o.value("command").toString(), QString::fromUtf8(command).trimmed());
    QVERIFY2(o.value("reason").toString().contains(reason), qPrintable(line));
    QTest::qWait(300);
    QCOMPARE(framesSince(before), QStringList());
}

void tst_E2eHub::oscAndTallyPerUnit()
{
    QVERIFY(m_osc.send({"/kova/subscribe", "i", QString::number(DumpPort)}));
    // The units in their numbers: B is 1, A is 2.
    QVERIFY(m_osc.shows(QRegularExpression("^/kova/units [is]+ 1 \"" + id(B) + "\" \"RVX5310\" 2 \"" + id(A) +
                                           "\" \"RVX5310\" 3 ")));

    int before = frameCount();
    QVERIFY(m_osc.send({"/kova/unit/" + id(A) + "/pgm", "i", "2"}));
    QCOMPARE(unitFramesSince(before, A, 1), QStringList{"main 80 02"});
    QVERIFY(m_osc.shows("/kova/unit/" + id(A) + "/pgm i 2"));
    // A, number 2: screen 1, displays 101-104; its programme input red on the right and text.
    QVERIFY(tallyShows([](const QMap<QPair<int, int>, TallyDisplay> &d) {
        const TallyDisplay x = d.value({1, 102});
        return x.right == 1 && x.text == 1 && x.brightness == 3 && x.label == "IN2";
    }));

    // The RVX3220 through the hub's own view: what was sent is what subscribers and tally see.
    before = frameCount();
    QVERIFY(m_osc.send({"/kova/unit/" + id(D) + "/pvw", "i", "4"}));
    QCOMPARE(unitFramesSince(before, D, 1), QStringList{"main 81 04"});
    QVERIFY(m_osc.shows("/kova/unit/" + id(D) + "/pvw i 4"));

    // A unit the hub does not hold sends nothing.
    before = frameCount();
    QVERIFY(oscRefuses("/kova/unit/10-77-9-9/cut"));
    QTest::qWait(300);
    QCOMPARE(framesSince(before), QStringList());
}

void tst_E2eHub::silencedUnitGoesDownAndComesBack()
{
    const auto blackhole = [](bool on) {
        return QProcess::execute("ip", {"-n", qEnvironmentVariable("LAB_UNIT_NS"), "rule", on ? "add" : "del",
                                        "from", address(A), "blackhole"}) == 0;
    };
    QVERIFY(blackhole(true));
    const QString link = topic(id(A) + "/link");
    QCOMPARE(retainedOnce(link, [](const QString &p) { return p == "down"; }), link + " down");
    QVERIFY(m_osc.shows("/kova/unit/" + id(A) + "/link i 0"));
    // Its tally goes dark; the others' stays.
    QVERIFY(tallyShows([](const QMap<QPair<int, int>, TallyDisplay> &d) {
        for (int i = 101; i <= 104; ++i)
            if (d.value({1, i}).right || d.value({1, i}).text || d.value({1, i}).left)
                return false;
        return true;
    }));
    QCOMPARE(m_broker.retained(topic(id(B) + "/link")), QStringList{topic(id(B) + "/link up")});

    // Fresh messages only (-R): the state told again once the unit is back, not the one retained.
    MosquittoSub state(m_broker, {topic(id(A) + "/state")}, {"-R"});
    QVERIFY(state.waitReady());
    QVERIFY(blackhole(false));
    QCOMPARE(retainedOnce(link, [](const QString &p) { return p == "up"; }), link + " up");
    QVERIFY(m_osc.shows("/kova/unit/" + id(A) + "/link i 1"));
    QVERIFY(state.waitForLines(1));
    QVERIFY2(state.lines().first().contains("\"pgm\":2"), qPrintable(state.lines().first()));
}

void tst_E2eHub::brokerRestartRepublishesWhileTheLinksGoOn()
{
    m_broker.stop();
    // Meanwhile the units are held and served: an OSC command reaches its unit, the tally goes on.
    const int before = frameCount();
    QVERIFY(m_osc.send({"/kova/unit/" + id(B) + "/pgm", "i", "4"}));
    QCOMPARE(unitFramesSince(before, B, 1), QStringList{"main 80 04"});
    QVERIFY(tallyShows([](const QMap<QPair<int, int>, TallyDisplay> &d) {
        return d.value({0, 4}).right == 1;
    }));
    QVERIFY(m_hub.running());

    // The broker keeps nothing over a restart: what it holds now the hub published again.
    QVERIFY(m_broker.start());
    QCOMPARE(retainedOnce(
                 topic("status"), [](const QString &p) { return p == "online"; }, 20000),
             topic("status online"));
    QVERIFY(retainedOnce(topic("units"), [](const QString &p) { return p.count("\"id\"") == 4; }).size() > 0);
    const QString t = topic(id(B) + "/state");
    QCOMPARE(json(retainedOnce(t, [](const QString &p) { return p.contains("\"pgm\":4"); }), t)
                 .value("pgm")
                 .toInt(),
             4);
    QCOMPARE(m_broker.retained(topic(id(D) + "/link")), QStringList{topic(id(D) + "/link up")});
}

void tst_E2eHub::sighupReadsTheFileAgain()
{
    // The file now names B alone, with no --all: A, C and D are let go, and the tally and
    // OSC address space follow.
    writeConfig("unit = " + address(B).toUtf8() + "\n");
    m_hub.signal(SIGHUP);
    const QString units =
        retainedOnce(topic("units"), [](const QString &p) { return p.count("\"id\"") == 1; }).section(' ', 1);
    QCOMPARE(QJsonDocument::fromJson(units.toUtf8()).array().first().toObject().value("id").toString(),
             id(B));
    int before = frameCount();
    QVERIFY(oscRefuses("/kova/unit/" + id(A) + "/cut"));
    QTest::qWait(300);
    QCOMPARE(framesSince(before), QStringList());

    // And back.
    writeConfig("unit = " + address(B).toUtf8() + ", " + address(A).toUtf8() + "\nall = yes\n");
    m_hub.signal(SIGHUP);
    QVERIFY(!retainedOnce(topic("units"), [](const QString &p) { return p.count("\"id\"") == 4; }).isEmpty());
    QVERIFY(m_hub.running());
}

void tst_E2eHub::killGivesOfflineByWill()
{
    m_hub.signal(SIGKILL);
    QCOMPARE(m_hub.waitExit(5000), -2);
    // The broker notices the lost connection within one and a half keep-alives.
    QCOMPARE(retainedOnce(
                 topic("status"), [](const QString &p) { return p == "offline"; }, 20000),
             topic("status offline"));
}

void tst_E2eHub::sigtermPublishesOffline()
{
    QVERIFY(startHub());
    QCOMPARE(retainedOnce(topic("status"), [](const QString &p) { return p == "online"; }),
             topic("status online"));
    QVERIFY(!retainedOnce(topic("units"), [](const QString &p) { return p.count("\"id\"") == 4; }).isEmpty());
    QElapsedTimer clock;
    clock.start();
    m_hub.signal(SIGTERM);
    QCOMPARE(m_hub.waitExit(3000), 0);
    QVERIFY2(clock.elapsed() < 1000, qPrintable(QString::number(clock.elapsed())));
    QCOMPARE(m_broker.retained(topic("status")), QStringList{topic("status offline")});
}

void tst_E2eHub::twoStationsOnOneBroker()
{
    // Two hubs cannot share one namespace: the kernel hands each unicast datagram to one of
    // the sockets on port 7000. The second runs in a namespace of its own on the lab's
    // segment: a macvlan of the operator's link, so the search reaches the units, and a second
    // one here, which the relay to the broker listens on (a macvlan cannot reach its parent).
    const QString ns = QStringLiteral("kova-hub2-%1").arg(QCoreApplication::applicationPid());
    QVERIFY(ip({"netns", "add", ns}));
    const auto cleanup = qScopeGuard([&] {
        ip({"netns", "del", ns});
        ip({"link", "del", "hubrelay"});
    });
    QVERIFY(ip({"link", "add", "link", "kova0", "name", "hub2", "type", "macvlan", "mode", "bridge"}));
    QVERIFY(ip({"link", "set", "hub2", "netns", ns}));
    QVERIFY(ip({"-n", ns, "link", "set", "lo", "up"}));
    QVERIFY(ip({"-n", ns, "addr", "add", "10.77.0.3/16", "dev", "hub2"}));
    QVERIFY(ip({"-n", ns, "link", "set", "hub2", "up"}));
    QVERIFY(ip({"link", "add", "link", "kova0", "name", "hubrelay", "type", "macvlan", "mode", "bridge"}));
    QVERIFY(ip({"addr", "add", "10.77.0.4/32", "dev", "hubrelay"}));
    QVERIFY(ip({"link", "set", "hubrelay", "up"}));
    QVERIFY(ip({"route", "add", "10.77.0.3/32", "dev", "hubrelay"}));
    TcpRelay relay;
    QVERIFY(relay.listen(QHostAddress("10.77.0.4"), m_broker.port()));

    Hub alpha;
    Hub beta;
    QVERIFY(alpha.start(
        {"--config", "/dev/null", "--unit", address(A), "--mqtt", m_broker.url(), "--station", "alpha"}));
    QVERIFY(beta.start(QStringList{"netns", "exec", ns, KOVA_HUB_BINARY, "--config", "/dev/null", "--unit",
                                   address(B), "--mqtt", "mqtt://10.77.0.4:" + QString::number(relay.port()),
                                   "--station", "beta"},
                       QProcessEnvironment::systemEnvironment(), QStringLiteral("ip")));
    for (const auto &[station, unit] : {std::make_pair("alpha", int(A)), std::make_pair("beta", int(B))}) {
        const QString t = QStringLiteral("kova/%1/units").arg(QLatin1String(station));
        // The units of alpha's hubs before stay retained until this one publishes its own.
        const QString line = retainedOnce(
            t, [&](const QString &p) { return p.count("\"id\"") == 1 && p.contains(id(unit)); }, 15000);
        const QJsonArray units = QJsonDocument::fromJson(line.mid(t.size() + 1).toUtf8()).array();
        QVERIFY2(units.size() == 1 && units.at(0)["id"].toString() == id(unit),
                 qPrintable(line + '\n' + alpha.err() + beta.err()));
    }
    // Each command reaches its own station's unit alone, from that station's hub.
    int before = frameCount();
    QVERIFY(m_broker.publish("kova/beta/" + id(B) + "/set", "pgm 2"));
    QCOMPARE(unitFramesSince(before, B, 1), QStringList{"main 80 02"});
    QTest::qWait(300);
    QCOMPARE(framesSince(before).size(), 1);
    before = frameCount();
    QVERIFY(m_broker.publish("kova/alpha/" + id(A) + "/set", "pgm 3"));
    QCOMPARE(unitFramesSince(before, A, 1), QStringList{"main 80 03"});
    // A unit the station does not hold is not its to command.
    before = frameCount();
    QVERIFY(m_broker.publish("kova/alpha/" + id(B) + "/set", "pgm 4"));
    QTest::qWait(500);
    QCOMPARE(framesSince(before), QStringList());
    alpha.signal(SIGTERM);
    beta.signal(SIGTERM);
    QCOMPARE(alpha.waitExit(3000), 0);
    QCOMPARE(beta.waitExit(3000), 0);
}

void tst_E2eHub::tlsWithPasswordFile()
{
    MosquittoBroker broker;
    QVERIFY(broker.addUser("hub", "s3cret pass"));
    QVERIFY(broker.enableTls());
    QVERIFY2(broker.start(), broker.log().constData());
    QFile pw(m_dir.filePath("password"));
    QVERIFY(pw.open(QIODevice::WriteOnly));
    pw.write("s3cret pass\n");
    pw.close();
    Hub hub;
    QVERIFY(hub.start({"--unit", address(C), "--mqtt", broker.url("hub"), "--mqtt-ca", broker.caFile(),
                       "--mqtt-password-file", pw.fileName(), "--station", "tls-1"}));
    const QStringList auth{"-u", "hub", "-P", "s3cret pass"};
    QStringList got;
    waitUntil(
        [&] {
            got = broker.retained("kova/tls-1/status", auth);
            return got == QStringList{"kova/tls-1/status online"};
        },
        10000);
    QVERIFY2(got == QStringList{"kova/tls-1/status online"}, hub.err().constData());
    // Commands come in over TLS too.
    const int before = frameCount();
    QVERIFY(broker.publish("kova/tls-1/" + id(C) + "/set", "cut", auth));
    QCOMPARE(unitFramesSince(before, C, 1), QStringList{"main 83"});
    hub.signal(SIGTERM);
    QCOMPARE(hub.waitExit(3000), 0);
    QCOMPARE(broker.retained("kova/tls-1/status", auth), QStringList{"kova/tls-1/status offline"});
}

void tst_E2eHub::laterUnitsArePickedUp()
{
    // D is silent when the hub starts, so its first search finds three units; once D answers,
    // the next search (every 30 s) takes it in, and the broker is told.
    const auto blackhole = [](bool on) {
        return QProcess::execute("ip", {"-n", qEnvironmentVariable("LAB_UNIT_NS"), "rule", on ? "add" : "del",
                                        "from", address(D), "blackhole"}) == 0;
    };
    QVERIFY(blackhole(true));
    auto undo = qScopeGuard([&] { blackhole(false); });
    Hub hub;
    QVERIFY(hub.start({"--config", "/dev/null", "--all", "--mqtt", m_broker.url(), "--station", "late"}));
    const QString t = QStringLiteral("kova/late/units");
    const auto count = [&](int n) {
        return retainedOnce(
            t, [n](const QString &p) { return p.count("\"id\"") == n; }, n == 3 ? 8000 : 40000);
    };
    QVERIFY2(!count(3).isEmpty(), hub.err().constData());
    QVERIFY(blackhole(false));
    undo.dismiss();
    const QString line = count(4);
    QVERIFY2(line.contains(id(D)), qPrintable(line + '\n' + hub.err()));
    hub.signal(SIGTERM);
    QCOMPARE(hub.waitExit(3000), 0);
}

QTEST_GUILESS_MAIN(tst_E2eHub)
#include "tst_e2e_hub.moc"
