// The RVX5370 panel offscreen: its keys on the wire (literal frames), the unit's state shown
// without a word sent back, the F1 and SET sub-widgets, the settings window's signals, AUTO,
// CUT and the T-bar, and the keyboard against the clicks it stands for.
#include "../RVX8000/rig8000.h"
#include "RVX5370/rvx5370.h"
#include "RVX8000/f1qwidget.h"
#include "RVX8000/frontpanel8000.h"
#include "RVX8000/pipgro.h"
#include "RVX8000/setdialog.h"
#include "SwitcherData/rvx5all_workdata.h"
#include "testframes.h"

#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QSlider>
#include <QTimer>
#include <QtTest>

using namespace Rig8000;

namespace {

// A unit at rest: PGM 1, PVW 2, MIX, CH1 IN1 at 50, CH2 IN2 at 60, FADE, wipe U, FTB off,
// PIP off, border 0/0/2, size L at 0/0, STILL off, rate 0, 1080P60, mute off.
const char Rest[] = "0102010332043c020200000000020200000000000007000000";

QByteArray payload(std::initializer_list<std::pair<int, int>> changes, const char *base = Rest)
{
    return Rig8000::payload(base, changes);
}

using Rig = PanelRig<RVX5370>;

} // namespace

class TestRvx5370 : public QObject
{
    Q_OBJECT
private slots:
    void bindingAsksForState();
    void keys_data();
    void keys();
    void insetsExclusive();
    void sourcesCycleBack();
    void levelsUnscaled();
    void wipeCycle();
    void stateShown();
    void serialReachesSet();
    void shortPayloadTouchesOnlyWhatItCarries();
    void valuesOutsideTablesChangeNothing_data();
    void valuesOutsideTablesChangeNothing();
    void positionsUseSizeOfSamePayload();
    void ftbStateRule();
    void subWidgets();
    void settingsSignals_data();
    void settingsSignals();
    void cutLampAndInset();
    void autoRunsOnlyFromAnEnd();
    void autoRunLengthFollowsRate_data();
    void autoRunLengthFollowsRate();
    void tbarStrokes();
    void focusOnOpen();
    void anyPayloadSendsNothing();
    void keyboardAsClicks_data();
    void keyboardAsClicks();
};

void TestRvx5370::bindingAsksForState()
{
    RVX5370 panel;
    QSignalSpy spy(panel.link(), &RVX5ALL_workdata::showCurrentData);
    // F1 shows the unit's address: before there is one it stays dead.
    QVERIFY(!panel.findChild<QPushButton *>("btn_f1")->isEnabled());
    panel.DevTypeID(QStringLiteral("127.0.0.2"), 0xA5, 0xFF, QStringLiteral("127.0.0.3"), 0xE0, 0xFF);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toByteArray(), hex(ReadState));
    QVERIFY(panel.findChild<QPushButton *>("btn_f1")->isEnabled());
    QCOMPARE(panel.setWidget()->findChild<QLabel *>("label_IP")->text(), QStringLiteral("IP:127.0.0.2"));
    QCOMPARE(panel.f1Widget()->findChild<QLabel *>("label_IP")->text(), QStringLiteral("IP:127.0.0.2"));
    QCOMPARE(panel.link()->on_HIS_IP(), QStringLiteral("127.0.0.3"));
}

void TestRvx5370::keys_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QByteArray>("frames");
    auto row = [](const char *name, const char *keys, QByteArray frames) {
        QTest::newRow(name) << QString::fromLatin1(keys) << frames;
    };
    row("BAR twice: programme then preview, on then off", "btn_bar btn_bar",
        "a56c1500a5ff01000000000000000000d701a303ae a56c1500a5ff01000000000000000000d801a403ae "
        "a56c1500a5ff01000000000000000000d700a203ae a56c1500a5ff01000000000000000000d800a303ae");
    row("RTMP twice", "btn_rtmp btn_rtmp",
        "a56c1500a5ff0100000000000000000087015303ae a56c1500a5ff0100000000000000000087005203ae");
    row("REC twice", "btn_rec btn_rec",
        "a56c1500a5ff01000000000000000000b2017e03ae a56c1500a5ff01000000000000000000b2007d03ae");
    row("FTB", "btn_ftb", "a56c1400a5ff01000000000000000000854f03ae");
    row("STILL", "btn_still", "a56c1400a5ff01000000000000000000cd9703ae");
    row("PAUSE", "btn_pause", "a56c1400a5ff01000000000000000000c58f03ae");
    row("MUTE", "btn_mute", "a56c1400a5ff01000000000000000000d49e03ae");
    row("DS", "btn_ds", ReadState);
    row("PIP twice", "btn_pip btn_pip",
        "a56c1500a5ff0100000000000000000086015203ae a56c1500a5ff0100000000000000000086005103ae");
    row("POP", "btn_pop", "a56c1500a5ff01000000000000000000a7017303ae");
    row("KEY only lights", "btn_key btn_key", "");
    row("AFV/MIX key twice: AFV, then MIX", "btn_afv btn_afv",
        "a56c1400a5ff01000000000000000000cc9603ae a56c1400a5ff01000000000000000000cb9503ae");
    row("PGM 3", "btn_pgm3", "a56c1500a5ff0100000000000000000080034e03ae");
    row("PVW 2", "btn_pvw2", "a56c1500a5ff0100000000000000000081024e03ae");
    row("CUT", "btn_cut", Cut);
    row("MIX, FADE", "btn_mix_t btn_fade",
        "a56c1400a5ff010000000000000000008d5703ae a56c1400a5ff010000000000000000008e5803ae");
    // The first WIPE at start steps from L to U; after FADE a WIPE resends the direction shown.
    row("WIPE twice: U, then R", "btn_wipe btn_wipe",
        QByteArray(SetWipe) + " a56c1500a5ff01000000000000000000922a8703ae " + SetWipe +
            " a56c1500a5ff01000000000000000000922c8903ae");
    row("WIPE, FADE, WIPE: U, fade, U again", "btn_wipe btn_fade btn_wipe",
        QByteArray(SetWipe) + " a56c1500a5ff01000000000000000000922a8703ae " +
            "a56c1400a5ff010000000000000000008e5803ae " + SetWipe +
            " a56c1500a5ff01000000000000000000922a8703ae");
    row("CH1, CH2", "btn_ch1 btn_ch2",
        "a56c1500a5ff01000000000000000000b9038703ae a56c1500a5ff01000000000000000000ba038803ae");
    row("F1, SET, KEY: nothing on the wire", "btn_f1 btn_set btn_f1", "");
}

void TestRvx5370::keys()
{
    QFETCH(QString, keys);
    QFETCH(QByteArray, frames);
    Rig rig;
    rig.press(keys);
    QCOMPARE(rig.sent(), hexList(frames));
}

void TestRvx5370::insetsExclusive()
{
    Rig rig;
    QPushButton *pip = rig.key("btn_pip"), *key = rig.key("btn_key"), *pop = rig.key("btn_pop");
    rig.press("btn_pip");
    QVERIFY(isGreen(pip) && isOff(key) && isOff(pop));
    QVERIFY(rig.panel.front()->overlay());
    QVERIFY(rig.panel.setWidget()->pipSizeUnlocked());
    // POP replaces PIP: a second PIP press turns PIP on again, it does not send "off".
    rig.press("btn_pop btn_pip");
    QVERIFY(isGreen(pip) && isOff(pop));
    rig.press("btn_key");
    QVERIFY(isGreen(key) && isOff(pip));
    QVERIFY(rig.panel.front()->overlay());
    QVERIFY(!rig.panel.setWidget()->pipSizeUnlocked());
    rig.press("btn_key");
    QVERIFY(isOff(key) && !rig.panel.front()->overlay());
    QCOMPARE(rig.sent(),
             hexList("a56c1500a5ff0100000000000000000086015203ae a56c1500a5ff01000000000000000000a7017303ae "
                     "a56c1500a5ff0100000000000000000086015203ae"));
}

void TestRvx5370::sourcesCycleBack()
{
    checkMainSourcesCycleBack<Rig>(QStringLiteral("PHONE_IN"),
                                   {"IN1", "IN2", "IN3", "IN4", "MIC_IN1", "MIC_IN2", "PHONE_IN"});
}

void TestRvx5370::levelsUnscaled()
{
    Rig rig;
    rig.slider("slider_ch1")->setValue(100);
    rig.slider("slider_ch2")->setValue(127);
    QCOMPARE(rig.sent(), hexList("a56c1800a5ff01000000000000000000b4640000644a04ae "
                                 "a56c1800a5ff01000000000000000000b4647f0064c904ae"));
}

void TestRvx5370::wipeCycle()
{
    Rig rig;
    QStringList shown;
    for (int i = 0; i < 5; ++i) {
        rig.press("btn_wipe");
        shown << rig.key("btn_wipe")->text();
    }
    QCOMPARE(shown, (QStringList{"WIPE-U", "WIPE-R", "WIPE-D", "WIPE-L", "WIPE-U"}));
    rig.press("btn_mix_t");
    QCOMPARE(rig.key("btn_wipe")->text(), QStringLiteral("WIPE"));
    QVERIFY(isGreen(rig.key("btn_mix_t")) && isOff(rig.key("btn_wipe")));
}

void TestRvx5370::stateShown()
{
    Rig rig;
    // PGM 3, PVW 4, AFV, CH1 code 7, CH2 MIC_IN1 at 90, WIPE R, FTB on, PIP on, size M at
    // 640/360, STILL on, rate 2, 1080I50, mute on.
    rig.state(payload({{0, 3},
                       {1, 4},
                       {2, 0},
                       {3, 7},
                       {5, 8},
                       {6, 90},
                       {7, 4},
                       {8, 4},
                       {9, 1},
                       {10, 1},
                       {14, 1},
                       {15, 2},
                       {16, 128},
                       {17, 1},
                       {18, 104},
                       {19, 1},
                       {20, 2},
                       {21, 1},
                       {24, 1}}));
    QVERIFY(isRed(rig.key("btn_pgm3")) && isOff(rig.key("btn_pgm1")));
    QVERIFY(isGreen(rig.key("btn_pvw4")) && isOff(rig.key("btn_pvw2")));
    QCOMPARE(rig.key("btn_afv")->text(), QStringLiteral("AFV"));
    QVERIFY(!rig.key("btn_ch1")->isEnabled() && !rig.key("btn_ch2")->isEnabled());
    QCOMPARE(rig.text("label_ch1"), QStringLiteral("PHONE_IN"));
    QCOMPARE(rig.text("label_ch2"), QStringLiteral("MIC_IN1"));
    QCOMPARE(rig.slider("slider_ch1")->value(), 50);
    QCOMPARE(rig.slider("slider_ch2")->value(), 90);
    QVERIFY(isGreen(rig.key("btn_wipe")) && isOff(rig.key("btn_fade")));
    QCOMPARE(rig.key("btn_wipe")->text(), QStringLiteral("WIPE-R"));
    QVERIFY(rig.panel.ftbBlinking());
    QVERIFY(isGreen(rig.key("btn_pip")));
    QVERIFY(rig.panel.front()->overlay());
    QCOMPARE(rig.text("label_pip_sz"), QStringLiteral("PIP_SZ:M"));
    QCOMPARE(rig.panel.pipBox()->size(), QSize(133, 74));
    QCOMPARE(rig.panel.pipBox()->pos(), QPoint(133, 74));
    QVERIFY(isRed(rig.key("btn_still")));
    QVERIFY(isRed(rig.key("btn_mute")));
    QCOMPARE(rig.text("label_rate"), QStringLiteral("RARE:3"));
    QCOMPARE(rig.panel.front()->rate(), uint8_t(2));
    QCOMPARE(rig.text("label_reso"), QStringLiteral("1080I50"));
    // The settings window continues its cycles from the unit's values.
    SetDialog *set = rig.panel.setWidget();
    QCOMPARE(set->pipSizeIndex(), 1);
    QCOMPARE(set->rateIndex(), 2);
    QCOMPARE(set->resoIndex(), 3);
    QVERIFY(set->pipSizeUnlocked());
    // The next WIPE press steps on from the reported direction (R) to D.
    rig.sent();
    rig.press("btn_wipe");
    QCOMPARE(rig.sent(), hexList(QByteArray(SetWipe) + " a56c1500a5ff01000000000000000000922e8b03ae"));
}

void TestRvx5370::serialReachesSet()
{
    Rig rig;
    // The serial part of a long reply; a byte of 0x80 or more shows its unsigned value.
    emit rig.panel.link()->on_signals_5370Data(hex("120a00ff"));
    QCOMPARE(rig.panel.setWidget()->findChild<QLabel *>("label_SM")->text(), QStringLiteral("SN:12 a ff "));
    QCOMPARE(rig.sent(), QList<QByteArray>());
}

void TestRvx5370::shortPayloadTouchesOnlyWhatItCarries()
{
    Rig rig;
    rig.state(payload({{3, 8}, {14, 1}, {20, 1}, {21, 11}}));
    const QString ch1 = rig.text("label_ch1"), size = rig.text("label_pip_sz"), rate = rig.text("label_rate"),
                  reso = rig.text("label_reso");
    const QPoint box = rig.panel.pipBox()->pos();
    // Three bytes: PGM, PVW and the audio mode; nothing past them.
    rig.state(hex("040300"));
    QVERIFY(isRed(rig.key("btn_pgm4")));
    QVERIFY(isGreen(rig.key("btn_pvw3")));
    QCOMPARE(rig.key("btn_afv")->text(), QStringLiteral("AFV"));
    QCOMPARE(rig.text("label_ch1"), ch1);
    QCOMPARE(rig.text("label_pip_sz"), size);
    QCOMPARE(rig.text("label_rate"), rate);
    QCOMPARE(rig.text("label_reso"), reso);
    QCOMPARE(rig.panel.pipBox()->pos(), box);
    // Up to the PIP size: the positions need both their bytes.
    rig.state(payload({{14, 2}, {15, 9}}).left(16));
    QCOMPARE(rig.text("label_pip_sz"), QStringLiteral("PIP_SZ:L"));
    QCOMPARE(rig.panel.pipBox()->pos(), box);
    QVERIFY(!rig.panel.ftbBlinking());
}

void TestRvx5370::valuesOutsideTablesChangeNothing_data()
{
    QTest::addColumn<int>("offset");
    QTest::addColumn<int>("value");
    QTest::newRow("PIP size 3") << 14 << 3;
    QTest::newRow("rate 3") << 20 << 3;
    QTest::newRow("resolution 2") << 21 << 2;
    QTest::newRow("resolution 14") << 21 << 14;
    QTest::newRow("CH1 source 9") << 3 << 9;
    QTest::newRow("CH1 source 1 (no such source)") << 3 << 1;
    QTest::newRow("audio mode 2") << 2 << 2;
    QTest::newRow("transition 3") << 7 << 3;
    QTest::newRow("wipe 1") << 8 << 1;
}

void TestRvx5370::valuesOutsideTablesChangeNothing()
{
    QFETCH(int, offset);
    QFETCH(int, value);
    Rig rig;
    // Something other than the start for each: size M, rate 2, 1080I60, CH1 IN3, MIX, WIPE-D.
    const QByteArray before = payload({{3, 5}, {7, 4}, {8, 6}, {14, 1}, {20, 1}, {21, 9}});
    rig.state(before);
    auto shown = [&rig] {
        return QStringList{rig.text("label_pip_sz"),         rig.text("label_rate"),
                           rig.text("label_reso"),           rig.text("label_ch1"),
                           rig.key("btn_afv")->text(),       rig.key("btn_wipe")->text(),
                           rig.key("btn_wipe")->styleSheet()}
               << QString::number(rig.panel.pipBox()->width());
    };
    const QStringList was = shown();
    QByteArray after = before;
    after[offset] = char(value);
    rig.state(after);
    QCOMPARE(shown(), was);
}

void TestRvx5370::positionsUseSizeOfSamePayload()
{
    Rig rig;
    rig.state(payload({{14, 2}}));
    QCOMPARE(rig.panel.pipBox()->size(), QSize(200, 112));
    // Size M and its far corner 1280/720 in one report: the corner of size M, not L's limits.
    rig.state(payload({{14, 1}, {15, 5}, {16, 0}, {17, 2}, {18, 208}}));
    QCOMPARE(rig.panel.pipBox()->pos(), QPoint(266, 149));
}

void TestRvx5370::ftbStateRule()
{
    checkFtbStateRule<Rig>(payload({{9, 1}}), payload({{9, 0}}));
}

void TestRvx5370::subWidgets()
{
    Rig rig;
    QWidget *f1 = rig.panel.f1Widget(), *set = rig.panel.setWidget();
    QCOMPARE(f1->objectName(), QStringLiteral("f1Widget"));
    QCOMPARE(set->objectName(), QStringLiteral("setWidget"));
    QCOMPARE(f1->size(), QSize(300, 222));
    QCOMPARE(set->size(), QSize(300, 268));
    QVERIFY(!set->isWindow());
    auto shown = [&] { return QPair<bool, bool>(f1->isVisible(), set->isVisible()); };
    QCOMPARE(shown(), qMakePair(false, false));
    rig.press("btn_set");
    QCOMPARE(shown(), qMakePair(false, true));
    QVERIFY(isGreen(rig.key("btn_set")));
    rig.press("btn_f1");
    QCOMPARE(shown(), qMakePair(true, false));
    QVERIFY(isGreen(rig.key("btn_f1")) && isOff(rig.key("btn_set")));
    rig.press("btn_f1");
    QCOMPARE(shown(), qMakePair(false, false));
    rig.press("btn_f1 btn_set btn_set");
    QCOMPARE(shown(), qMakePair(false, false));
    QVERIFY(isOff(rig.key("btn_f1")) && isOff(rig.key("btn_set")));
}

void TestRvx5370::settingsSignals_data()
{
    QTest::addColumn<QString>("keys"); // of the settings window
    QTest::addColumn<QString>("rate");
    QTest::addColumn<QString>("size");
    QTest::addColumn<int>("boxWidth");

    // PIP is on and the unit reported size S, rate 0: PIP_S steps S -> M, RATE 0 -> 1.
    QTest::newRow("PIP_S") << "btn_pip_s"
                           << "RARE:1"
                           << "PIP_SZ:M" << 133;
    QTest::newRow("PIP_S twice") << "btn_pip_s btn_pip_s"
                                 << "RARE:1"
                                 << "PIP_SZ:L" << 200;
    QTest::newRow("RATE") << "btn_rate"
                          << "RARE:2"
                          << "PIP_SZ:S" << 100;
    // RESO announces the format's code on the rate signal: codes 0x0B, 0x09 change nothing,
    // 0x01 (1080I50) reads as rate 1.
    QTest::newRow("RESO to 1080P50") << "btn_reso"
                                     << "RARE:1"
                                     << "PIP_SZ:S" << 100;
    QTest::newRow("RESO to 1080I50") << "btn_reso btn_reso btn_reso"
                                     << "RARE:2"
                                     << "PIP_SZ:S" << 100;
}

void TestRvx5370::settingsSignals()
{
    QFETCH(QString, keys);
    QFETCH(QString, rate);
    QFETCH(QString, size);
    QFETCH(int, boxWidth);
    Rig rig;
    rig.state(payload({{10, 1}, {14, 0}, {20, 0}}));
    for (const QString &name : keys.split(QLatin1Char(' ')))
        rig.panel.setWidget()->findChild<QPushButton *>(name)->click();
    QCOMPARE(rig.text("label_rate"), rate);
    QCOMPARE(rig.text("label_pip_sz"), size);
    QCOMPARE(rig.panel.pipBox()->width(), boxWidth);
}

void TestRvx5370::cutLampAndInset()
{
    checkCutLampAndInset<Rig>("a56c1500a5ff0100000000000000000086015203ae");
}

void TestRvx5370::autoRunsOnlyFromAnEnd()
{
    checkAutoOnlyFromAnEnd<Rig>();
}

void TestRvx5370::autoRunLengthFollowsRate_data()
{
    QTest::addColumn<int>("rate");
    QTest::addColumn<int>("top");
    QTest::newRow("rate 0") << 0 << 40;
    QTest::newRow("rate 1") << 1 << 72;
    QTest::newRow("rate 2") << 2 << 139;
}

void TestRvx5370::autoRunLengthFollowsRate()
{
    QFETCH(int, rate);
    QFETCH(int, top);
    Rig rig;
    checkAutoRun(rig, payload({{0, 1}, {1, 2}, {10, 1}, {20, rate}}), top);
    if (QTest::currentTestFailed())
        return;
    // From the top the next run goes down to 0 and the buses change back.
    rig.press("btn_auto");
    QCOMPARE(rig.slider("slider_video")->value(), 0);
    QVERIFY(isRed(rig.key("btn_pgm1")) && isGreen(rig.key("btn_pvw2")));
    QCOMPARE(rig.sent(), hexList(Auto));
}

void TestRvx5370::tbarStrokes()
{
    checkTbarStrokes<Rig>();
}

void TestRvx5370::focusOnOpen()
{
    Rig rig;
    QVERIFY(QTest::qWaitForWindowActive(&rig.panel));
    QCOMPARE(QApplication::focusWidget(), &rig.panel);
    checkKeysLeaveTheKeyboard(&rig.panel, -1);
}

void TestRvx5370::anyPayloadSendsNothing()
{
    checkRandomPayloadsSendNothing<Rig>(0x5370, 3000);
}

void TestRvx5370::keyboardAsClicks_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<QString>("click");
    QTest::newRow("Space: CUT") << int(Qt::Key_Space) << 0 << "btn_cut";
    QTest::newRow("Return: AUTO") << int(Qt::Key_Return) << 0 << "btn_auto";
    QTest::newRow("Enter: AUTO") << int(Qt::Key_Enter) << int(Qt::KeypadModifier) << "btn_auto";
    QTest::newRow("2: PVW 2") << int(Qt::Key_2) << 0 << "btn_pvw2";
    QTest::newRow("Shift+3: PGM 3") << int(Qt::Key_3) << int(Qt::ShiftModifier) << "btn_pgm3";
    QTest::newRow("keypad 4: PVW 4") << int(Qt::Key_4) << int(Qt::KeypadModifier) << "btn_pvw4";
    QTest::newRow("5: no such input") << int(Qt::Key_5) << 0 << "";
    QTest::newRow("Escape: nothing") << int(Qt::Key_Escape) << 0 << "";
}

void TestRvx5370::keyboardAsClicks()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(QString, click);
    checkKeyAsClick<Rig>(key, modifiers, click);
}

QTEST_MAIN(TestRvx5370)
#include "tst_rvx5370.moc"
