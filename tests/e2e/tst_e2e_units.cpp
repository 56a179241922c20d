// Several units at once, end to end in the lab: two RVX5310 units and an RVX3210 opened side by
// side with --open's machinery, each driven from its own panel, from OSC by its ID (liblo's
// oscsend and oscdump), from MQTT (a real broker, mosquitto_sub and mosquitto_pub) and from
// kovactl beside the running program; the tally read off the wire and decoded here by its
// published layout.
#include "SwitcherData/reportinglink.h"
#include "app/liveproduction.h"
#include "app/showsearch.h"
#include "common/keysheet.h"
#include "common/noreplymark.h"
#include "common/panelkeys.h"
#include "labstate.h"
#include "mosquittobroker.h"
#include "oscpeer.h"
#include "tallydecode.h"
#include "testframes.h"

#include <QAbstractButton>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkDatagram>
#include <QPointer>
#include <QProcess>
#include <QPushButton>
#include <QStandardPaths>
#include <QUdpSocket>
#include <QtTest>

namespace {
constexpr quint16 OscPort = 9000;
constexpr quint16 DumpPort = 9200;
constexpr quint16 TallyPort = 9100;
constexpr int FollowMs = 300;
const char *const Station = "desk";
// An address --open asks for that no unit answers from.
const char *const Nobody = "10.77.9.9";
// The lab's units in the order of CMakeLists.txt; opened in the order B, A, C.
enum Unit
{
    A, // RVX5310
    B, // RVX5310
    C, // RVX3210
    UnitCount
};

} // namespace

class tst_E2eUnits : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanupTestCase();
    void panelsOpenNumberedSideBySide();
    void keysReachTheirOwnUnit();
    void stateRestylesOnlyItsPanel();
    void strangerChangesNothing();
    void oscByUnitId();
    void tallyPerUnit();
    void mqttPublishesEveryOpenUnit();
    void mqttSetActsOnItsUnit();
    void mqttRefusesAndSendsNothing_data();
    void mqttRefusesAndSendsNothing();
    void kovactlBesideTheProgram();
    void silentUnitMarkedAlone();

private:
    void oscsend(const QStringList &message);
    bool dumpShows(const QString &want, int ms = 4000);
    int framesTo(Unit unit, const QString &command) const;
    QWidget *panel(Unit unit) const { return m_window->openPanelOf(m_units.at(unit)); }
    QAbstractButton *key(Unit unit, const QString &name) const;
    bool pgmLit(Unit unit, int input) const;
    QString id(Unit unit) const { return LiveProduction::unitId(m_units.at(unit)); }
    bool blackhole(Unit unit, bool on);
    QString topic(Unit unit, const char *leaf) const
    {
        return QStringLiteral("kova/%1/%2/%3").arg(QLatin1String(Station), id(unit), QLatin1String(leaf));
    }
    QJsonObject retainedState(Unit unit) const;

    QStringList m_units;
    std::unique_ptr<showsearch> m_window;
    std::unique_ptr<LiveProduction> m_live;
    OscPeer m_osc;
    QUdpSocket m_tally;
    mqtttest::MosquittoBroker m_broker;
    std::unique_ptr<mqtttest::MosquittoSub> m_mqtt; // every message of the station's topics
};

void tst_E2eUnits::initTestCase()
{
    m_units = qEnvironmentVariable("LAB_UNITS").split(QLatin1Char(' '), Qt::SkipEmptyParts);
    QVERIFY2(m_units.size() == UnitCount, "run me through lab/lab.sh with the three units of CMakeLists.txt");
    const QString oscError = m_osc.start(OscPort, DumpPort);
    QVERIFY2(oscError.isEmpty(), qPrintable(oscError));
    QVERIFY(m_tally.bind(QHostAddress::LocalHost, TallyPort));
    QVERIFY2(m_broker.start(), m_broker.log().constData());
    m_mqtt = std::make_unique<mqtttest::MosquittoSub>(
        m_broker, QStringList{QStringLiteral("kova/%1/#").arg(QLatin1String(Station))});
    QVERIFY(m_mqtt->waitReady());

    // As main reads "--osc-port 9000 --tsl 127.0.0.1:9100 --follow 300 --open B --open A --open C
    // --mqtt mqtt://127.0.0.1:PORT --station desk".
    LiveOptions options;
    QCOMPARE(
        options.parseArguments(
            {QStringLiteral("kova"), QStringLiteral("--osc-port"), QString::number(OscPort),
             QStringLiteral("--tsl"), QStringLiteral("127.0.0.1:%1").arg(TallyPort),
             QStringLiteral("--follow"), QString::number(FollowMs), QStringLiteral("--open"), m_units.at(B),
             QStringLiteral("--open"), m_units.at(A), QStringLiteral("--open"), m_units.at(C),
             QStringLiteral("--open"), QString::fromLatin1(Nobody), QStringLiteral("--mqtt"), m_broker.url(),
             QStringLiteral("--station"), QString::fromLatin1(Station)},
            nullptr),
        LiveOptions::Outcome::Run);
    QVERIFY(options.panelsSideBySide());
    m_live = std::make_unique<LiveProduction>(options);
    QString error;
    QVERIFY2(m_live->start(&error), qPrintable(error));
    m_window = std::make_unique<showsearch>();
    m_live->setSearch(m_window->link());
    connect(m_window.get(), &showsearch::panelOpened, m_live.get(), &LiveProduction::panelOpened);
    m_window->setSideBySide(options.panelsSideBySide());
    m_window->openWhenFound(options.openAddresses);
    m_window->show();
    QTRY_VERIFY_WITH_TIMEOUT(panel(A) && panel(B) && panel(C), 10000);
    // Settled: each unit's first reply is on its panel.
    for (Unit u : {A, B, C})
        QTRY_VERIFY_WITH_TIMEOUT(panel(u)->findChild<ReportingLink *>()->unitState().has(UnitState::Pgm),
                                 5000);
    oscsend({"/kova/subscribe", "i", QString::number(DumpPort)});
}

void tst_E2eUnits::cleanupTestCase() {}

void tst_E2eUnits::oscsend(const QStringList &message)
{
    QString error;
    QVERIFY2(m_osc.send(message, &error), qPrintable(error));
}

bool tst_E2eUnits::dumpShows(const QString &want, int ms)
{
    return m_osc.shows(want, ms);
}

int tst_E2eUnits::framesTo(Unit unit, const QString &command) const
{
    return LabState::logCount(QStringLiteral("^rx unit=%1 board=main %2").arg(m_units.at(unit), command));
}

QAbstractButton *tst_E2eUnits::key(Unit unit, const QString &name) const
{
    const PanelKeys *keys = PanelKeys::of(panel(unit));
    return keys ? keys->key(name) : nullptr;
}

bool tst_E2eUnits::pgmLit(Unit unit, int input) const
{
    // The unit's state as its panel last showed it, and on the 8000-series panels the key's
    // own lamp too.
    auto *link = panel(unit)->findChild<ReportingLink *>();
    const bool shown = link && link->unitState().has(UnitState::Pgm) && link->unitState().pgm() == input;
    if (unit == C)
        return shown;
    auto *key = panel(unit)->findChild<QPushButton *>(QStringLiteral("btn_pgm%1").arg(input));
    return shown && key && key->styleSheet() == QString::fromLatin1(KeySheet::GradientRed);
}

bool tst_E2eUnits::blackhole(Unit unit, bool on)
{
    // What the unit sends is dropped inside its own namespace: that unit alone falls silent.
    const QStringList args{QStringLiteral("-n"),       qEnvironmentVariable("LAB_UNIT_NS"),
                           QStringLiteral("rule"),     on ? QStringLiteral("add") : QStringLiteral("del"),
                           QStringLiteral("from"),     m_units.at(unit),
                           QStringLiteral("blackhole")};
    return QProcess::execute(QStringLiteral("ip"), args) == 0;
}

void tst_E2eUnits::panelsOpenNumberedSideBySide()
{
    // Numbered in the order of --open, whatever order the units answered in; each window names
    // its unit; the search window stays up.
    QCOMPARE(panel(B)->windowTitle(), QStringLiteral("1 \u00b7 RVX5310 %1").arg(m_units.at(B)));
    QCOMPARE(panel(A)->windowTitle(), QStringLiteral("2 \u00b7 RVX5310 %1").arg(m_units.at(A)));
    QCOMPARE(panel(C)->windowTitle(), QStringLiteral("3 \u00b7 RVX3210 %1").arg(m_units.at(C)));
    QVERIFY(m_window->isVisible());
    QVERIFY(panel(A)->isVisible() && panel(B)->isVisible() && panel(C)->isVisible());
    // Placed apart (beside each other where the screen has room, cascaded where not).
    QVERIFY(panel(A)->pos() != panel(B)->pos() && panel(B)->pos() != panel(C)->pos());
    QCOMPARE(m_live->unitCount(), 3);
    // The address nobody answered from is reported in the window after 5 s; the rest go on.
    QVERIFY(m_window->note().isEmpty());
    QTRY_VERIFY_WITH_TIMEOUT(m_window->note().contains(QLatin1String(Nobody)), showsearch::OpenWaitMs + 2000);
    QCOMPARE(m_live->unitCount(), 3);
}

void tst_E2eUnits::keysReachTheirOwnUnit()
{
    for (Unit pressed : {A, B, C}) {
        const QString cut = QStringLiteral("cmd=0x83 data= ");
        const QList<int> before{framesTo(A, cut), framesTo(B, cut), framesTo(C, cut)};
        QAbstractButton *k = key(pressed, QStringLiteral("cut"));
        QVERIFY(k);
        k->click();
        QTRY_COMPARE_WITH_TIMEOUT(framesTo(pressed, cut), before.at(pressed) + 1, 5000);
        QTest::qWait(100);
        for (Unit other : {A, B, C})
            if (other != pressed)
                QCOMPARE(framesTo(other, cut), before.at(other));
    }
}

void tst_E2eUnits::stateRestylesOnlyItsPanel()
{
    // Input 4 put on A's programme bus beside KOVA; the followed state brings it to A's panel
    // alone.
    QUdpSocket other;
    other.writeDatagram(hex("a56c1500a5ff0100000000000000000080044f03ae"), QHostAddress(m_units.at(A)), 7000);
    QTRY_VERIFY_WITH_TIMEOUT(pgmLit(A, 4), 2 * FollowMs + 1500);
    QVERIFY(!pgmLit(B, 4));
    QVERIFY(!pgmLit(C, 4));
}

void tst_E2eUnits::strangerChangesNothing()
{
    // A whole, well-formed state reply putting input 6 on the programme bus, sent to port 7000
    // from an address that is no unit's.
    auto *link = panel(A)->findChild<ReportingLink *>();
    const quint64 strangers = link->endpoint()->strangers();
    const QList<bool> before{pgmLit(A, 6), pgmLit(B, 6), pgmLit(C, 6)};
    QUdpSocket stranger;
    QVERIFY(stranger.bind(QHostAddress::LocalHost, 0));
    stranger.writeDatagram(
        reply(0xA5FF, 0x49, "#\x01#" + hex("0602010364083204040001010201020280017000010b000001") + "#"),
        QHostAddress::LocalHost, 7000);
    QTRY_COMPARE(link->endpoint()->strangers(), strangers + 1);
    QCOMPARE((QList<bool>{pgmLit(A, 6), pgmLit(B, 6), pgmLit(C, 6)}), before);
}

void tst_E2eUnits::oscByUnitId()
{
    // The units as subscribers are told them: number, ID and model, in --open's order.
    oscsend({"/kova/subscribe", "i", QString::number(DumpPort)});
    QVERIFY2(
        dumpShows(QStringLiteral("/kova/units issississ 1 \"%1\" \"RVX5310\" 2 \"%2\" \"RVX5310\" 3 \"%3\" "
                                 "\"RVX3210\"")
                      .arg(id(B), id(A), id(C))),
        qPrintable(m_osc.dumped().filter(QStringLiteral("/kova/units")).join(QLatin1Char('\n'))));
    // A preview on B by its ID reaches B alone, and B's own feedback says so.
    const QString pvw2 = QStringLiteral("cmd=0x81 data=02 ");
    const QList<int> before{framesTo(A, pvw2), framesTo(B, pvw2), framesTo(C, pvw2)};
    oscsend({QStringLiteral("/kova/unit/%1/pvw").arg(id(B)), "i", "2"});
    QTRY_COMPARE_WITH_TIMEOUT(framesTo(B, pvw2), before.at(B) + 1, 5000);
    QVERIFY(dumpShows(QStringLiteral("/kova/unit/%1/pvw i 2").arg(id(B)), 2 * FollowMs + 1500));
    QCOMPARE(framesTo(A, pvw2), before.at(A));
    QCOMPARE(framesTo(C, pvw2), before.at(C));
    // An ID that is no open unit's is refused and sends nothing.
    const int all = LabState::logCount(QStringLiteral("^rx .*cmd=0x83 "));
    oscsend({"/kova/unit/10-99-0-1/cut"});
    QTest::qWait(300);
    QCOMPARE(LabState::logCount(QStringLiteral("^rx .*cmd=0x83 ")), all);
}

void tst_E2eUnits::tallyPerUnit()
{
    // B (unit 1) on screen 0 at indexes 1.., A (unit 2) on screen 1 at 101..: each one's
    // programme input red on its own screen.
    key(B, QStringLiteral("pgm2"))->click();
    key(A, QStringLiteral("pgm3"))->click();
    QMap<QPair<int, int>, TallyDisplay> shown;
    QVERIFY(QTest::qWaitFor(
        [&] {
            while (m_tally.hasPendingDatagrams()) {
                TallyDisplay d;
                if (decodeTally(m_tally.receiveDatagram().data(), &d))
                    shown.insert({d.screen, d.index}, d);
            }
            return shown.value({0, 2}).right == 1 && shown.value({1, 103}).right == 1 &&
                   shown.value({0, 3}).index == 3 && shown.value({1, 102}).index == 102;
        },
        2 * FollowMs + 3000));
    QCOMPARE(shown.value({0, 3}).right, 0);
    QCOMPARE(shown.value({1, 102}).right, 0);
    // No display of unit 2 lands among unit 1's indexes.
    for (const TallyDisplay &d : shown)
        QCOMPARE((d.index - 1) / 100, d.screen);
}

void tst_E2eUnits::kovactlBesideTheProgram()
{
    auto kovactl = [](const QStringList &args, QByteArray *out = nullptr) {
        QProcess p;
        p.start(QStringLiteral(KOVACTL_BINARY), args);
        if (!p.waitForFinished(15000))
            return -1;
        if (out)
            *out = p.readAllStandardOutput();
        return p.exitCode();
    };
    QByteArray state;
    QCOMPARE(kovactl({QStringLiteral("state"), m_units.at(A)}, &state), 0);
    QVERIFY2(state.contains("model: RVX5310") && state.contains("pgm: "), state.constData());
    int input = 1;
    while (pgmLit(A, input) || pgmLit(B, input))
        ++input;
    QVERIFY(input <= 4);
    QCOMPARE(kovactl({QStringLiteral("send"), m_units.at(A), QStringLiteral("pgm"), QString::number(input)}),
             0);
    // The panel still has its unit's replies: the followed state brings the input.
    QTRY_VERIFY_WITH_TIMEOUT(pgmLit(A, input), 2 * FollowMs + 2000);
    QVERIFY(!pgmLit(B, input));
}

void tst_E2eUnits::silentUnitMarkedAlone()
{
    auto mark = [this](Unit u) { return panel(u)->findChild<NoReplyMark *>(); };
    QVERIFY(mark(A) && mark(B) && mark(C));
    m_osc.dumped().clear();
    QVERIFY(blackhole(C, true));
    QTRY_VERIFY_WITH_TIMEOUT(mark(C)->isVisible(), 1000 + 2 * FollowMs + 1000);
    QVERIFY(dumpShows(QStringLiteral("/kova/unit/%1/link i 0").arg(id(C))));
    QVERIFY(!mark(A)->isVisible() && !mark(B)->isVisible());
    QVERIFY(!m_osc.dumped().contains(QStringLiteral("/kova/unit/%1/link i 0").arg(id(A))));
    QVERIFY(!m_osc.dumped().contains(QStringLiteral("/kova/unit/%1/link i 0").arg(id(B))));
    // Back: the next reply clears its mark.
    QVERIFY(blackhole(C, false));
    QTRY_VERIFY_WITH_TIMEOUT(!mark(C)->isVisible(), 2 * FollowMs + 2000);
    QVERIFY(dumpShows(QStringLiteral("/kova/unit/%1/link i 1").arg(id(C))));
    // The broker was told the same, for C alone.
    QTRY_VERIFY(m_mqtt->lines().contains(topic(C, "link") + QStringLiteral(" down")));
    QTRY_VERIFY(m_broker.retained(topic(C, "link")).contains(topic(C, "link") + QStringLiteral(" up")));
    QVERIFY(!m_mqtt->lines().contains(topic(A, "link") + QStringLiteral(" down")));
}

QJsonObject tst_E2eUnits::retainedState(Unit unit) const
{
    const QString prefix = topic(unit, "state") + QLatin1Char(' ');
    for (const QString &line : m_broker.retained(topic(unit, "state")))
        if (line.startsWith(prefix))
            return QJsonDocument::fromJson(line.mid(prefix.size()).toUtf8()).object();
    return QJsonObject();
}

void tst_E2eUnits::mqttPublishesEveryOpenUnit()
{
    // What a dashboard that subscribes now is given at once: retained status, units, and each
    // unit's state and link, in kovactl's names.
    const QString base = QStringLiteral("kova/%1/").arg(QLatin1String(Station));
    QStringList retained;
    QTRY_VERIFY_WITH_TIMEOUT((retained = m_broker.retained(base + QLatin1Char('#'))).size() >= 8, 5000);
    QVERIFY2(retained.contains(base + QStringLiteral("status online")), qPrintable(retained.join('\n')));
    QString unitsLine = retained.filter(QRegularExpression(QStringLiteral("^kova/desk/units "))).value(0);
    const QJsonArray units = QJsonDocument::fromJson(unitsLine.section(QLatin1Char(' '), 1).toUtf8()).array();
    QCOMPARE(units.size(), 3);
    const QStringList names{QStringLiteral("Studio1"), QStringLiteral("Studio2"), QStringLiteral("Booth")};
    const QStringList models{QStringLiteral("RVX5310"), QStringLiteral("RVX5310"), QStringLiteral("RVX3210")};
    for (Unit u : {A, B, C}) {
        const auto entry = std::find_if(units.begin(), units.end(), [&](const QJsonValue &v) {
            return v.toObject().value(QStringLiteral("id")).toString() == id(u);
        });
        QVERIFY2(entry != units.end(), qPrintable(unitsLine));
        const QJsonObject o = entry->toObject();
        QCOMPARE(o.value(QStringLiteral("address")).toString(), m_units.at(u));
        QCOMPARE(o.value(QStringLiteral("model")).toString(), models.at(u));
        QCOMPARE(o.value(QStringLiteral("name")).toString(), names.at(u));
        QVERIFY(retained.contains(topic(u, "link") + QStringLiteral(" up")));
        // The same state a panel shows, in kovactl state --json's names and values.
        const QJsonObject state = retainedState(u);
        auto *link = panel(u)->findChild<ReportingLink *>();
        QCOMPARE(state.value(QStringLiteral("pgm")).toInt(), link->unitState().pgm());
        QVERIFY(state.value(QStringLiteral("transition")).isString());
    }
}

void tst_E2eUnits::mqttSetActsOnItsUnit()
{
    // "cut" on A's topic reaches A alone, as its panel's CUT key.
    const QString cut = QStringLiteral("cmd=0x83 data= ");
    const QList<int> before{framesTo(A, cut), framesTo(B, cut), framesTo(C, cut)};
    QVERIFY(m_broker.publish(topic(A, "set"), "cut", {QStringLiteral("-q"), QStringLiteral("1")}));
    QTRY_COMPARE_WITH_TIMEOUT(framesTo(A, cut), before.at(A) + 1, 5000);
    QTest::qWait(200);
    QCOMPARE(framesTo(B, cut), before.at(B));
    QCOMPARE(framesTo(C, cut), before.at(C));
    // A programme input on C: its datagram (the RVX3210's programme command with the input),
    // then the unit's followed state on the broker.
    const int input = retainedState(C).value(QStringLiteral("pgm")).toInt() == 4 ? 3 : 4;
    const QString pgm = QStringLiteral("cmd=0x80 data=0%1 ").arg(input);
    const int pgmBefore = framesTo(C, pgm);
    QVERIFY(m_broker.publish(topic(C, "set"), "pgm " + QByteArray::number(input)));
    QTRY_COMPARE_WITH_TIMEOUT(framesTo(C, pgm), pgmBefore + 1, 5000);
    QTRY_COMPARE_WITH_TIMEOUT(retainedState(C).value(QStringLiteral("pgm")).toInt(), input,
                              2 * FollowMs + 3000);
}

void tst_E2eUnits::mqttRefusesAndSendsNothing_data()
{
    QTest::addColumn<int>("unit");
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("reason"); // a word the reason must hold
    QTest::newRow("unknown") << int(A) << "launch"
                             << "unknown";
    QTest::newRow("malformed") << int(A) << "pgm"
                               << "pgm";
    QTest::newRow("out of range") << int(B) << "pgm 9"
                                  << "pgm";
    QTest::newRow("not this family") << int(C) << "stream on"
                                     << "stream";
    QTest::newRow("blank") << int(B) << "   "
                           << "command";
}

void tst_E2eUnits::mqttRefusesAndSendsNothing()
{
    QFETCH(int, unit);
    QFETCH(QString, command);
    QFETCH(QString, reason);
    const Unit u = Unit(unit);
    const int sentBefore =
        LabState::logCount(QStringLiteral("^rx unit=%1 .*cmd=0x(?!49)").arg(m_units.at(u)));
    const int seen = int(m_mqtt->lines().size());
    QVERIFY(m_broker.publish(topic(u, "set"), command.toUtf8()));
    QJsonObject error;
    QTRY_VERIFY_WITH_TIMEOUT(
        [&] {
            for (const QString &line : m_mqtt->lines().mid(seen))
                if (line.startsWith(topic(u, "error") + QLatin1Char(' ')))
                    error = QJsonDocument::fromJson(line.section(QLatin1Char(' '), 1).toUtf8()).object();
            return !error.isEmpty();
        }(),
        5000);
    QCOMPARE(error.value(QStringLiteral("command")).toString(), command.trimmed());
    QVERIFY2(error.value(QStringLiteral("reason")).toString().contains(reason),
             qPrintable(error.value("reason").toString()));
    QTest::qWait(300);
    QCOMPARE(LabState::logCount(QStringLiteral("^rx unit=%1 .*cmd=0x(?!49)").arg(m_units.at(u))), sentBefore);
    // Not retained: a later subscriber is not told an old refusal.
    QVERIFY(m_broker.retained(topic(u, "error")).isEmpty());
}

QTEST_MAIN(tst_E2eUnits)
#include "tst_e2e_units.moc"
