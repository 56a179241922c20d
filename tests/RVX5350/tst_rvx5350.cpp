// The RVX5350 panel offscreen, what it has of its own: two inputs and their boxes in place of
// the PGM and PVW rows, its keys on the wire (literal frames), the RESO/RATE/CH cycles, the
// unit's own wipe coding against the WIPE key's cycle, the blinking STILL and its state rule,
// the SET strip with its clock, and the keyboard.
#include "../RVX8000/rig8000.h"
#include "RVX5350/rvx5350.h"
#include "RVX8000/frontpanel8000.h"
#include "RVX8000/pipgro.h"
#include "RVX8000/set.h"

#include <QGroupBox>

using namespace Rig8000;

namespace {

const QString OnAir = QStringLiteral("QGroupBox{border:1px solid red;}");
const QString OffAir = QStringLiteral("QGroupBox{border:1px solid white;}");

// A unit at rest: IN1 on air, MIX, CH1 IN1 at 50, CH2 IN2 at 60, FADE, wipe L, PIP off, size S
// at 0/0, STILL off, rate 0, 1080P60, mute off.
const char Rest5350[] = "0100010332043c020000000000020000000000000007000000";

struct Rig : PanelRig<RVX5350, QAbstractButton>
{
    QString box(const char *name) const
    {
        return panel.findChild<QGroupBox *>(QLatin1String(name))->styleSheet();
    }
};

} // namespace

class TestRvx5350 : public QObject
{
    Q_OBJECT
private slots:
    void bindingAsksForState();
    void keys_data();
    void keys();
    void cyclesShownAndSent();
    void inputsAndShortReports();
    void wipeCodingAgainstCycle_data();
    void wipeCodingAgainstCycle();
    void stillBlinkAndStateRule();
    void stateShown();
    void repeatedStateRestylesNothing();
    void setStripAndClock();
    void anyPayloadSendsNothing();
    void keyboard_data();
    void keyboard();
};

void TestRvx5350::bindingAsksForState()
{
    Rig::checkBindingAsksForState();
    Rig rig;
    QCOMPARE(rig.panel.setWidget()->findChild<QLabel *>("label_IP")->text(), QStringLiteral("IP:127.0.0.2"));
    QCOMPARE(rig.panel.inputOnAir(), 0);
    // No preview row, no CUT, no FTB, no KEY, no BAR.
    for (const char *absent : {"btn_pvw1", "btn_cut", "btn_ftb", "btn_key", "btn_bar"})
        QVERIFY2(!rig.panel.findChild<QWidget *>(absent), absent);
}

void TestRvx5350::keys_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QByteArray>("frames");
    QTest::addColumn<QString>("onAir"); // after each step, from IN1
    auto row = [](const char *keys, QByteArray frames, const char *onAir = "") {
        QTest::newRow(keys) << QString::fromLatin1(keys) << frames << QString(onAir);
    };
    row("btn_in2 btn_in1",
        "a56c1500a5ff0100000000000000000080024d03ae a56c1500a5ff0100000000000000000080014c03ae", "2 1");
    row("btn_still btn_still",
        "a56c1400a5ff01000000000000000000cd9703ae a56c1400a5ff01000000000000000000cd9703ae");
    row("btn_rtmp", "a56c1500a5ff0100000000000000000087015303ae");
    row("btn_micvol", "");
    row("btn_pip btn_pop btn_pop", "a56c1500a5ff0100000000000000000086015203ae "
                                   "a56c1500a5ff01000000000000000000a7017303ae "
                                   "a56c1500a5ff01000000000000000000a7007203ae");
    row("btn_ch2", "a56c1500a5ff01000000000000000000ba048903ae");
    row("btn_mix_t btn_wipe", "a56c1400a5ff010000000000000000008d5703ae " + QByteArray(SetWipe) +
                                  " a56c1500a5ff0100000000000000000092288503ae");
    // Levels go out times 1.27.
    row("slider_ch1=50 slider_ch2=100",
        "a56c1800a5ff01000000000000000000b43f0000642504ae a56c1800a5ff01000000000000000000b43f7f0064a404ae");
    // AUTO takes the other input on air; the T-bar back down to its end the first again.
    row("btn_auto slider_video=60 slider_video=0",
        QByteArray(Auto) + " a56c1600a5ff010000000000000000008200439103ae "
                           "a56c1600a5ff01000000000000000000820080ce03ae "
                           "a56c1600a5ff010000000000000000008201004f03ae",
        "2 2 1");
}

void TestRvx5350::keys()
{
    QFETCH(QString, keys);
    QFETCH(QByteArray, frames);
    QFETCH(QString, onAir);
    Rig rig;
    rig.state(hex("01"));
    QStringList seen;
    for (const QString &k : keys.split(' ')) {
        rig.press(k);
        seen << QString::number(rig.panel.inputOnAir());
    }
    QCOMPARE(rig.sent(), hexList(frames));
    if (!onAir.isEmpty())
        QCOMPARE(seen.join(' '), onAir);
}

void TestRvx5350::cyclesShownAndSent()
{
    Rig rig;
    QStringList formats, rates, sources;
    for (int i = 0; i < 7; ++i) {
        rig.press("btn_reso");
        formats << rig.text("label_reso");
    }
    for (int i = 0; i < 3; ++i) {
        rig.press("btn_rate");
        rates << rig.text("label_rate");
    }
    for (int i = 0; i < 4; ++i) {
        rig.press("btn_ch1");
        sources << rig.text("label_ch1");
    }
    QCOMPARE(formats,
             (QStringList{"1080P50", "1080I60", "1080I50", "1080P30", "1080P25", "1080P24", "1080P60"}));
    QCOMPARE(rates, (QStringList{"RARE2", "RARE3", "RARE1"}));
    QCOMPARE(sources, (QStringList{"IN2", "MIC_IN1", "MIC_IN2", "IN1"}));
    // Each format goes out as its code (the whole cycle is checked on the settings window);
    // then the rates and the sources.
    const QList<QByteArray> sent = rig.sent();
    QCOMPARE(sent.mid(6),
             hexList("a56c1500a5ff01000000000000000000a3077503ae "
                     "a56c1500a5ff01000000000000000000a5017103ae a56c1500a5ff01000000000000000000a5027203ae "
                     "a56c1500a5ff01000000000000000000a5007003ae a56c1500a5ff01000000000000000000b9048803ae "
                     "a56c1500a5ff01000000000000000000b9088c03ae a56c1500a5ff01000000000000000000b9008403ae "
                     "a56c1500a5ff01000000000000000000b9038703ae"));
    QCOMPARE(sent.first(), hex("a56c1500a5ff01000000000000000000a30b7903ae"));
    QCOMPARE(rig.panel.front()->rate(), uint8_t(0));
    QVERIFY(isOff(rig.key("btn_reso")));
}

void TestRvx5350::inputsAndShortReports()
{
    Rig rig;
    QCOMPARE(rig.box("g_in1") + rig.box("g_in2"), OffAir + OffAir);
    rig.press("btn_in2");
    QCOMPARE(rig.box("g_in1") + rig.box("g_in2"), OffAir + OnAir);
    rig.state(hex("01"));
    // Neither input: both boxes stay as they were.
    for (int other : {1, 0, 3, 9}) {
        rig.state(QByteArray(1, char(other)));
        QCOMPARE(rig.box("g_in1") + rig.box("g_in2"), OnAir + OffAir);
        QCOMPARE(rig.panel.inputOnAir(), 1);
    }
    QCOMPARE(rig.sent(), hexList("a56c1500a5ff0100000000000000000080024d03ae"));

    // Values outside their tables change nothing; a short report only what it carries.
    rig.state(payload({{14, 2}, {20, 2}, {21, 3}}, Rest5350));
    auto shown = [&rig] {
        return QStringList{rig.text("label_pip_sz"), rig.text("label_rate"), rig.text("label_reso"),
                           rig.text("label_ch1")};
    };
    const QStringList before = shown();
    rig.state(payload({{3, 5}, {14, 3}, {20, 3}, {21, 2}}, Rest5350));
    QCOMPARE(shown(), before);
    QCOMPARE(rig.panel.pipBox()->size(), QSize(308, 173));
    rig.state(hex("02000103"));
    QCOMPARE(rig.box("g_in2"), OnAir);
    QCOMPARE(shown(), (QStringList{"PIP_SZ:L", before[1], before[2], "IN1"}));
}

void TestRvx5350::wipeCodingAgainstCycle_data()
{
    QTest::addColumn<int>("reported");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QByteArray>("next"); // the pattern frame the next WIPE press sends
    // The unit counts L, R, D, U; the key steps L, U, R, D.
    QTest::newRow("0 L, next U") << 0 << "WIPE-L" << QByteArray("a56c1500a5ff01000000000000000000922a8703ae");
    QTest::newRow("1 R, next D") << 1 << "WIPE-R" << QByteArray("a56c1500a5ff01000000000000000000922e8b03ae");
    QTest::newRow("2 D, next L") << 2 << "WIPE-D" << QByteArray("a56c1500a5ff0100000000000000000092288503ae");
    QTest::newRow("3 U, next R") << 3 << "WIPE-U" << QByteArray("a56c1500a5ff01000000000000000000922c8903ae");
}

void TestRvx5350::wipeCodingAgainstCycle()
{
    QFETCH(int, reported);
    QFETCH(QString, shown);
    QFETCH(QByteArray, next);
    Rig rig;
    rig.state(payload({{7, 4}, {8, reported}}, Rest5350));
    QCOMPARE(rig.key("btn_wipe")->text(), shown);
    QVERIFY(isGreen(rig.key("btn_wipe")));
    rig.press("btn_wipe");
    QCOMPARE(rig.sent(), hexList(QByteArray(SetWipe) + ' ' + next));
    // The other panels' codes 4 and 6 mean nothing here.
    const QString now = rig.key("btn_wipe")->text();
    rig.state(payload({{7, 4}, {8, 6}}, Rest5350));
    QCOMPARE(rig.key("btn_wipe")->text(), now);
}

void TestRvx5350::stillBlinkAndStateRule()
{
    Rig rig;
    QAbstractButton *still = rig.key("btn_still");
    // The blink: lit and a pixel larger, then back, once a second. Every size the key takes is
    // seen, with whether it was lit then.
    QList<QPair<QSize, bool>> looks;
    struct Watch : QObject
    {
        std::function<void()> seen;
        bool eventFilter(QObject *, QEvent *event) override
        {
            if (event->type() == QEvent::Resize)
                seen();
            return false;
        }
    } watch;
    watch.seen = [&looks, still] { looks << qMakePair(still->size(), isRed(still)); };
    still->installEventFilter(&watch);
    rig.press("btn_still");
    const QPair<QSize, bool> lit(QSize(56, 33), true);
    QTRY_VERIFY_WITH_TIMEOUT(looks.contains(lit) && looks.indexOf(lit) + 1 < looks.size(), 3000);
    QCOMPARE(looks.at(looks.indexOf(lit) + 1), qMakePair(QSize(55, 32), false));
    still->removeEventFilter(&watch);
    QVERIFY(rig.panel.stillBlinking());
    rig.press("btn_still");
    QVERIFY(!rig.panel.stillBlinking());

    // Reported on it blinks; clear is shown unlit, but a blink already running goes on until
    // STILL is pressed twice.
    rig.state(payload({{19, 1}}, Rest5350));
    QVERIFY(rig.panel.stillBlinking());
    rig.state(payload({{19, 0}}, Rest5350));
    QVERIFY(isOff(still) && rig.panel.stillBlinking());
    rig.press("btn_still");
    QVERIFY(isRed(still) && rig.panel.stillBlinking());
    rig.press("btn_still");
    QVERIFY(!rig.panel.stillBlinking());
}

void TestRvx5350::stateShown()
{
    Rig rig;
    // IN2, AFV, CH1 MIC_IN2 at 20, CH2 MIC_IN1 at 80, WIPE U, PIP on, size M at 640/360,
    // rate 1, 1080P25, mute on.
    rig.state(hex("0200000014085004030001000002010280016800010d000001"));
    QCOMPARE(rig.box("g_in2"), OnAir);
    QCOMPARE(rig.key("btn_afv")->text(), QStringLiteral("AFV"));
    QVERIFY(!rig.key("btn_ch1")->isEnabled());
    QCOMPARE(rig.text("label_ch1") + ' ' + rig.text("label_ch2"), QStringLiteral("MIC_IN2 MIC_IN1"));
    QCOMPARE(rig.slider("slider_ch1")->value(), 20);
    QCOMPARE(rig.text("label_vol2"), QStringLiteral("80"));
    QCOMPARE(rig.key("btn_wipe")->text(), QStringLiteral("WIPE-U"));
    QVERIFY(isGreen(rig.key("btn_pip")));
    QCOMPARE(rig.text("label_pip_sz"), QStringLiteral("PIP_SZ:M"));
    QCOMPARE(rig.panel.pipBox()->geometry(), QRect(205, 115, 205, 115));
    QCOMPARE(rig.text("label_rate"), QStringLiteral("RARE2"));
    QCOMPARE(rig.panel.front()->rate(), uint8_t(1));
    QCOMPARE(rig.text("label_reso"), QStringLiteral("1080P25"));
    QVERIFY(isRed(rig.key("btn_mute")));
    QCOMPARE(rig.panel.setWidget()->pipSizeIndex(), 1);
    QVERIFY(rig.panel.setWidget()->pipSizeUnlocked());
    QCOMPARE(rig.sent(), QList<QByteArray>());
    // The next presses continue from the unit's values.
    rig.press("btn_reso btn_rate");
    QCOMPARE(
        rig.sent(),
        hexList("a56c1500a5ff01000000000000000000a3057303ae a56c1500a5ff01000000000000000000a5027203ae"));
}

// A box given its sheet again is parsed and repolished with the key in it, equal text or not:
// a report that changes nothing must restyle nothing, one that moves the input only the two
// boxes and their keys.
void TestRvx5350::repeatedStateRestylesNothing()
{
    struct StyleChanges : QObject
    {
        bool eventFilter(QObject *watched, QEvent *event) override
        {
            if (event->type() == QEvent::StyleChange)
                restyled << watched->objectName();
            return false;
        }
        QStringList restyled;
    } changes;
    Rig rig;
    rig.state(payload({}, Rest5350));
    qApp->installEventFilter(&changes);
    rig.state(payload({}, Rest5350));
    QCOMPARE(changes.restyled, QStringList());
    rig.state(payload({{0, 2}}, Rest5350));
    // (Qt repolishes a box's key twice with the box, and once more for its own sheet.)
    changes.restyled.removeDuplicates();
    changes.restyled.sort();
    QCOMPARE(changes.restyled, QStringList({"btn_in1", "btn_in2", "g_in1", "g_in2"}));
    qApp->removeEventFilter(&changes);
}

void TestRvx5350::setStripAndClock()
{
    Rig rig;
    Set *set = rig.panel.setWidget();
    QElapsedTimer clock;
    clock.start();
    rig.press("btn_set");
    // The clock runs before the strip shows, a second later.
    QVERIFY(clock.elapsed() >= 1000);
    QVERIFY(set->isVisible() && set->clockRunning());
    QTRY_VERIFY_WITH_TIMEOUT(set->findChild<QLabel *>("label_data")->text().contains(QLatin1Char('.')), 3000);
    rig.press("btn_set");
    QVERIFY(!set->isVisible() && !set->clockRunning());
    QCOMPARE(rig.sent(), QList<QByteArray>());
}

void TestRvx5350::anyPayloadSendsNothing()
{
    checkRandomPayloadsSendNothing<Rig>(0x5350);
}

void TestRvx5350::keyboard_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<QByteArray>("frames");
    auto row = [](const char *name, int key, int modifiers, const char *frames) {
        QTest::newRow(name) << key << modifiers << QByteArray(frames);
    };
    row("1: IN1", Qt::Key_1, 0, "a56c1500a5ff0100000000000000000080014c03ae");
    row("Shift+2: IN2", Qt::Key_2, Qt::ShiftModifier, "a56c1500a5ff0100000000000000000080024d03ae");
    row("3: no such input", Qt::Key_3, 0, "");
    row("Space: no CUT here", Qt::Key_Space, 0, "");
    row("Return: AUTO", Qt::Key_Return, 0, Auto);
}

void TestRvx5350::keyboard()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(QByteArray, frames);
    Rig rig;
    QTest::keyClick(&rig.panel, Qt::Key(key), Qt::KeyboardModifiers(modifiers));
    QCOMPARE(rig.sent(), hexList(frames));
}

QTEST_MAIN(TestRvx5350)
#include "tst_rvx5350.moc"
