// The live features end to end in the lab: the search window and LiveProduction put together as
// main does, each panel opened by a double-click, OSC sent and read by liblo's own tools
// (oscsend, oscdump), the tally read off the wire and decoded here by its published layout.
#include "SwitcherData/reportinglink.h"
#include "SwitcherData/workdata.h"
#include "app/liveproduction.h"
#include "app/showsearch.h"
#include "common/keysheet.h"
#include "common/noreplymark.h"
#include "labstate.h"
#include "modalanswer.h"
#include "oscpeer.h"
#include "tallydecode.h"

#include <QDir>
#include <QListWidget>
#include <QNetworkDatagram>
#include <QPointer>
#include <QProcess>
#include <QPushButton>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QUdpSocket>
#include <QtTest>
#include <functional>
#include <unistd.h>

namespace {
constexpr quint16 OscPort = 9000;
constexpr quint16 DumpPort = 9200;
constexpr quint16 TallyPort = 9100;
constexpr int FollowMs = 300;
// The lab's units, in the order lab.sh was given them.
enum Unit
{
    Desk,     // RVX3210
    Recorder, // RVX3410
    Truck,    // RVX3220
    Small,    // RVX5310
    Hall,     // RVX5370
    Duo,      // RVX5350
    UnitCount
};

} // namespace

class tst_E2eLive : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanupTestCase();
    void oscActsThroughTheKeys_data();
    void oscActsThroughTheKeys();
    void badInputAnsweredAndNothingSent();
    void feedbackAndTallyFollowTheUnit();
    void silentUnitIsShown();
    void unitWithoutStateTalliesItsPanel();
    void noOptionOpensNothing();

private:
    void oscsend(const QStringList &message);
    // Runs `body` with the panel of `unit` open, then goes back to the search window.
    void withPanel(Unit unit, const std::function<void(QWidget *)> &body);
    // New oscdump lines (without their time tag) until `want` shows, or all of them on timeout.
    bool dumpShows(const QString &want, int ms = 4000);
    bool dumpShows(const QRegularExpression &want, int ms = 4000);
    // The newest display of each index read from the tally socket until `done` holds.
    bool tallyUntil(const std::function<bool(const QMap<int, TallyDisplay> &)> &done, int ms = 4000);
    int framesTo(Unit unit, const QString &command);

    QStringList m_units;
    std::unique_ptr<showsearch> m_window;
    std::unique_ptr<LiveProduction> m_live;
    OscPeer m_osc;
    QUdpSocket m_tally;
    QMap<int, TallyDisplay> m_displays;
};

void tst_E2eLive::initTestCase()
{
    m_units = qEnvironmentVariable("LAB_UNITS").split(QLatin1Char(' '), Qt::SkipEmptyParts);
    QVERIFY2(m_units.size() == UnitCount, "run me through lab/lab.sh with the six units of CMakeLists.txt");
    const QString oscError = m_osc.start(OscPort, DumpPort);
    QVERIFY2(oscError.isEmpty(), qPrintable(oscError));
    QVERIFY(m_tally.bind(QHostAddress::LocalHost, TallyPort));

    LiveOptions options;
    QVERIFY(options.setOscPort(QString::number(OscPort)).isEmpty());
    QVERIFY(options.addTslTarget(QStringLiteral("127.0.0.1:%1").arg(TallyPort)).isEmpty());
    QVERIFY(options.setFollowMs(QString::number(FollowMs)).isEmpty());
    m_live = std::make_unique<LiveProduction>(options);
    QString error;
    QVERIFY2(m_live->start(&error), qPrintable(error));
    m_window = std::make_unique<showsearch>();
    connect(m_window.get(), &showsearch::panelOpened, m_live.get(), &LiveProduction::panelOpened);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

void tst_E2eLive::cleanupTestCase() {}

void tst_E2eLive::oscsend(const QStringList &message)
{
    QString error;
    QVERIFY2(m_osc.send(message, &error), qPrintable(error));
}

int tst_E2eLive::framesTo(Unit unit, const QString &command)
{
    return LabState::logCount(QStringLiteral("^rx unit=%1 board=main %2").arg(m_units.at(unit), command));
}

bool tst_E2eLive::dumpShows(const QString &want, int ms)
{
    return m_osc.shows(want, ms);
}

bool tst_E2eLive::dumpShows(const QRegularExpression &want, int ms)
{
    return m_osc.shows(want, ms);
}

bool tst_E2eLive::tallyUntil(const std::function<bool(const QMap<int, TallyDisplay> &)> &done, int ms)
{
    return QTest::qWaitFor(
        [&] {
            while (m_tally.hasPendingDatagrams()) {
                TallyDisplay d;
                if (decodeTally(m_tally.receiveDatagram().data(), &d) && d.screen == 0)
                    m_displays.insert(d.index, d);
            }
            return done(m_displays);
        },
        ms);
}

void tst_E2eLive::withPanel(Unit unit, const std::function<void(QWidget *)> &body)
{
    const QString ip = m_units.at(unit);
    QListWidget *list = m_window->deviceList();
    QListWidgetItem *item = nullptr;
    QVERIFY(QTest::qWaitFor(
        [&] {
            const auto found = list->findItems(QStringLiteral(": ") + ip, Qt::MatchEndsWith);
            item = found.size() == 1 ? found.first() : nullptr;
            // The HIS board too: a panel bound before its reply would have none.
            for (int i = 0; item && i < m_window->link()->DevInfo_DATA_IDX(); ++i) {
                const DevInfo_DATA &d = m_window->link()->devices()[i];
                if (SWITCHER_DATA::dottedIp(d.ip) == ip)
                    return unit == Truck || d.ip2 != 0;
            }
            return false;
        },
        10000));
    list->scrollToItem(item);
    const QPoint at = list->visualItemRect(item).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, at);

    if (unit == Truck) {
        // Modal: driven from inside its own loop, then closed.
        bool ran = false;
        ModalWatch watch([&](QWidget *panel) {
            body(panel);
            ran = true;
            panel->close();
        });
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, at);
        QVERIFY(ran);
        return;
    }
    const QList<QWidget *> before = QApplication::topLevelWidgets();
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, at);
    QPointer<QWidget> panel;
    for (QWidget *w : QApplication::topLevelWidgets()) {
        if (w != m_window.get() && w->isVisible() && !before.contains(w))
            panel = w;
    }
    QVERIFY(panel);
    // Settled: the unit's first reply is on the panel, with whatever applying it sends.
    if (auto *link = panel->findChild<ReportingLink *>())
        QTRY_VERIFY_WITH_TIMEOUT(link->unitState().has(UnitState::Pgm), 5000);
    body(panel);
    // Hidden and freed, with its link: the next panel takes port 7000.
    panel->hide();
    delete panel;
    m_window->showSearchPage();
}

void tst_E2eLive::oscActsThroughTheKeys_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<QStringList>("message");
    QTest::addColumn<QString>("frame"); // as the emulator logs what reached the unit
    auto row = [](const char *name, Unit u, const QStringList &message, const char *frame) {
        QTest::newRow(name) << int(u) << message << QString::fromLatin1(frame);
    };
    row("RVX3210 programme 2", Desk, {"/kova/pgm", "i", "2"}, "cmd=0x80 data=02 ");
    row("RVX3210 mix", Desk, {"/kova/transition", "s", "mix"}, "cmd=0x8d data= ");
    row("RVX3410 recording", Recorder, {"/kova/rec", "i", "1"}, "cmd=0xb2 data=01 ");
    row("RVX3220 preview 6", Truck, {"/kova/pvw", "i", "6"}, "cmd=0x81 data=06 ");
    row("RVX5310 pop", Small, {"/kova/pop", "i", "1"}, "cmd=0xa7 data=01 ");
    row("RVX5370 cut", Hall, {"/kova/cut"}, "cmd=0x83 data= ");
    row("RVX5350 input 2 on air", Duo, {"/kova/pgm", "i", "2"}, "cmd=0x80 data=02 ");
}

void tst_E2eLive::oscActsThroughTheKeys()
{
    QFETCH(int, unit);
    QFETCH(QStringList, message);
    QFETCH(QString, frame);
    withPanel(Unit(unit), [&](QWidget *) {
        const int before = framesTo(Unit(unit), frame);
        oscsend(message);
        QTRY_COMPARE_WITH_TIMEOUT(framesTo(Unit(unit), frame), before + 1, 5000);
    });
}

void tst_E2eLive::badInputAnsweredAndNothingSent()
{
    oscsend({"/kova/subscribe", "i", QString::number(DumpPort)});
    // No panel: refused, and the subscriber hears the link is down.
    oscsend({"/kova/cut"});
    withPanel(Desk, [&](QWidget *) {
        const int before = LabState::logCount(QStringLiteral("^rx unit=%1 ").arg(m_units.at(Desk)));
        // Every kind of bad input, then one good command: only the good one reaches the unit.
        for (const QStringList &bad : {QStringList{"/kova/pgm", "i", "9"},
                                       {"/kova/pgm", "s", "two"},
                                       {"/kova/explode"},
                                       {"/kova/key", "s", "no-such-key"},
                                       {"/kova/pop", "i", "1"},
                                       {"/kova/fader", "f", "1.5"}})
            oscsend(bad);
        oscsend({"/kova/pvw", "i", "3"});
        QTRY_COMPARE_WITH_TIMEOUT(framesTo(Desk, QStringLiteral("cmd=0x81 data=03 ")), 1, 5000);
        // The state polls come and go meanwhile; apart from them only the preview went out.
        const int after = LabState::logCount(QStringLiteral("^rx unit=%1 ").arg(m_units.at(Desk)));
        const int polls =
            LabState::logCount(QStringLiteral("^rx unit=%1 board=main cmd=0x49 ").arg(m_units.at(Desk)));
        QVERIFY(after - before <= 1 + polls);
    });
    // The refusals reach only the sender (oscsend, which has gone); the subscriber sees none.
    QVERIFY(!dumpShows(QStringLiteral("/kova/error"), 300));
    oscsend({"/kova/unsubscribe", "i", QString::number(DumpPort)});
}

void tst_E2eLive::feedbackAndTallyFollowTheUnit()
{
    withPanel(Small, [&](QWidget *panel) {
        m_osc.dumped().clear();
        oscsend({"/kova/subscribe", "i", QString::number(DumpPort)});
        // The whole state at once: the model, the unit's address, the link and the fields.
        QVERIFY(dumpShows(QStringLiteral("/kova/unit s \"%1\"").arg(m_units.at(Small))));
        QVERIFY(m_osc.dumped().contains(QStringLiteral("/kova/link i 1")));
        QVERIFY(m_osc.dumped().contains(QStringLiteral("/kova/model s \"RVX5310\"")));
        // The unit's fields as soon as its state is in.
        QVERIFY2(dumpShows(QRegularExpression(QStringLiteral("^/kova/pgm i \\d$"))),
                 qPrintable(m_osc.dumped().join(QLatin1Char('\n'))));

        // A change made beside KOVA (a second sender putting input 3 on the programme bus) is
        // followed: it shows on the panel, to its subscribers and in the tally within two periods.
        QUdpSocket other;
        const QByteArray pgm3 = QByteArray::fromHex("a56c1500a5ff0100000000000000000080034e03ae");
        other.writeDatagram(pgm3, QHostAddress(m_units.at(Small)), 7000);
        QVERIFY2(dumpShows(QStringLiteral("/kova/pgm i 3"), 2 * FollowMs + 1500),
                 qPrintable(m_osc.dumped().join('\n')));
        QVERIFY(tallyUntil([](const QMap<int, TallyDisplay> &d) {
            return d.value(3).right == 1 && d.value(3).text == 1 && d.value(3).brightness == 3;
        }));
        QCOMPARE(m_displays.value(3).label, QByteArray("3"));
        QCOMPARE(panel->findChild<QPushButton *>(QStringLiteral("btn_pgm3"))->styleSheet(),
                 QString::fromLatin1(KeySheet::GradientRed));
        // An OSC cut: the unit swaps its buses, and the feedback says so.
        const int preview =
            m_osc.dumped().filter(QStringLiteral("/kova/pvw i ")).last().section(' ', 2).toInt();
        oscsend({"/kova/cut"});
        QVERIFY(dumpShows(QStringLiteral("/kova/pgm i %1").arg(preview), 2 * FollowMs + 1500));
        QVERIFY(tallyUntil([preview](const QMap<int, TallyDisplay> &d) {
            return d.value(preview).right == 1 && d.value(3).left == 2;
        }));
    });
    // No panel: every tally off.
    QVERIFY(tallyUntil([](const QMap<int, TallyDisplay> &d) {
        for (const TallyDisplay &x : d)
            if (x.right || x.text || x.left)
                return false;
        return !d.isEmpty();
    }));
    oscsend({"/kova/unsubscribe", "i", QString::number(DumpPort)});
}

void tst_E2eLive::silentUnitIsShown()
{
    withPanel(Hall, [&](QWidget *panel) {
        oscsend({"/kova/subscribe", "i", QString::number(DumpPort)});
        QVERIFY(dumpShows(QStringLiteral("/kova/link i 1")));
        m_osc.dumped().clear();
        auto *mark = panel->findChild<NoReplyMark *>();
        QVERIFY(mark && !mark->isVisible());
        // The emulator stopped: the next poll goes unanswered for a second.
        QProcess::execute(QStringLiteral("pkill"),
                          {QStringLiteral("-STOP"), QStringLiteral("-x"), QStringLiteral("kova-emulator")});
        QTRY_VERIFY_WITH_TIMEOUT(mark->isVisible(), 1000 + 2 * FollowMs + 500);
        QCOMPARE(mark->text(), QStringLiteral("NO REPLY"));
        QVERIFY(dumpShows(QStringLiteral("/kova/link i 0")));
        QVERIFY(tallyUntil([](const QMap<int, TallyDisplay> &d) {
            for (const TallyDisplay &x : d)
                if (x.right || x.text || x.left)
                    return false;
            return true;
        }));
        // Started again: the next reply clears all three.
        QProcess::execute(QStringLiteral("pkill"),
                          {QStringLiteral("-CONT"), QStringLiteral("-x"), QStringLiteral("kova-emulator")});
        QTRY_VERIFY_WITH_TIMEOUT(!mark->isVisible(), 2 * FollowMs + 1500);
        QVERIFY(dumpShows(QStringLiteral("/kova/link i 1")));
        QVERIFY(tallyUntil([](const QMap<int, TallyDisplay> &d) {
            for (const TallyDisplay &x : d)
                if (x.right == 1)
                    return true;
            return false;
        }));
        oscsend({"/kova/unsubscribe", "i", QString::number(DumpPort)});
    });
}

// The RVX3220 reports no state: its tally and subscribers follow the buses its panel shows.
void tst_E2eLive::unitWithoutStateTalliesItsPanel()
{
    withPanel(Truck, [&](QWidget *) {
        m_osc.dumped().clear();
        oscsend({"/kova/subscribe", "i", QString::number(DumpPort)});
        oscsend({"/kova/pgm", "i", "5"});
        oscsend({"/kova/pvw", "i", "2"});
        QVERIFY(dumpShows(QStringLiteral("/kova/pvw i 2")));
        QVERIFY(m_osc.dumped().contains(QStringLiteral("/kova/pgm i 5")));
        QVERIFY(tallyUntil([](const QMap<int, TallyDisplay> &d) {
            return d.size() == 6 && d.value(5).right == 1 && d.value(2).left == 2 && d.value(1).right == 0;
        }));
        oscsend({"/kova/unsubscribe", "i", QString::number(DumpPort)});
    });
}

// The shipped program with no option opens only its search socket until a panel is opened;
// with --osc-port it opens that port besides.
void tst_E2eLive::noOptionOpensNothing()
{
    QTemporaryDir config;
    auto localPorts = [](qint64 pid) {
        // The inodes of the process's sockets, from its descriptors' links ("socket:[123]").
        QSet<QString> inodes;
        const QString fds = QStringLiteral("/proc/%1/fd").arg(pid);
        for (const QString &fd :
             QDir(fds).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)) {
            char target[64] = {};
            const QByteArray path = QFile::encodeName(fds + QLatin1Char('/') + fd);
            if (::readlink(path.constData(), target, sizeof target - 1) > 0 &&
                QByteArray(target).startsWith("socket:["))
                inodes << QString::fromLatin1(QByteArray(target).mid(8).chopped(1));
        }
        QSet<int> ports;
        QFile udp(QStringLiteral("/proc/%1/net/udp").arg(pid));
        if (udp.open(QIODevice::ReadOnly)) {
            for (const QByteArray &line : udp.readAll().split('\n').mid(1)) {
                const QList<QByteArray> f = line.simplified().split(' ');
                if (f.size() > 9 && inodes.contains(QString::fromLatin1(f.at(9))))
                    ports << f.at(1).split(':').value(1).toInt(nullptr, 16);
            }
        }
        return ports;
    };
    for (const QStringList &args : {QStringList{}, QStringList{"--osc-port", "9400"}}) {
        QProcess kova;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("XDG_CONFIG_HOME"), config.path());
        kova.setProcessEnvironment(env);
        kova.start(QStringLiteral(KOVA_BINARY), args);
        QVERIFY(kova.waitForStarted());
        // The search socket (an ephemeral port it broadcasts from) comes first; with the remote
        // on, its port is there from the start.
        QSet<int> ports;
        QVERIFY(QTest::qWaitFor([&] { return !(ports = localPorts(kova.processId())).isEmpty(); }, 10000));
        QTest::qWait(500);
        ports = localPorts(kova.processId());
        kova.kill();
        kova.waitForFinished();
        QCOMPARE(ports.size(), args.isEmpty() ? 1 : 2);
        QCOMPARE(ports.contains(9400), !args.isEmpty());
    }
}

QTEST_MAIN(tst_E2eLive)
#include "tst_e2e_live.moc"
