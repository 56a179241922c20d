// The RVX5310 panel offscreen: its keys on the wire (literal frames), the unit's state shown
// with only the format list's echo sent back, the PIP settings and the format list in place,
// CUT, AUTO and the T-bar, the FTB rule, and the keyboard against the clicks it stands for.
#include "../RVX8000/rig8000.h"
#include "RVX5310/rvx5310dialog.h"
#include "RVX8000/frontpanel8000.h"
#include "RVX8000/pip_body.h"
#include "RVX8000/resobody.h"
#include "SwitcherData/rvx5all_workdata.h"
#include "testframes.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QSlider>
#include <QSpinBox>
#include <QtTest>

using namespace Rig8000;

namespace {

const char PipOn[] = "a56c1500a5ff0100000000000000000086015203ae";

// A unit at rest: PGM 1, PVW 2, MIX, CH1 IN1 at 50, CH2 IN2 at 60, FADE, wipe U, FTB off,
// PIP off, border 0/0/2, size L at 0/0, STILL off, rate 0, 1080P60, mute off.
const char Rest[] = "0102010332043c020200000000020200000000000007000000";

QByteArray payload(std::initializer_list<std::pair<int, int>> changes)
{
    return Rig8000::payload(Rest, changes);
}

struct Rig : PanelRig<RVX5310Dialog>
{
    QWidget *pipArea() const { return panel.pipBody()->parentWidget(); }
};

} // namespace

class TestRvx5310 : public QObject
{
    Q_OBJECT
private slots:
    void formAndBinding();
    void keys_data();
    void keys();
    void insetsAndPipSettings();
    void sourcesCycleBack();
    void levelsScaled();
    void wipeCycle();
    void stateShown();
    void formatEchoOnlyWhenItDiffers();
    void shortPayloadTouchesOnlyWhatItCarries();
    void randomPayloadsSendNothing();
    void ftbStateRule();
    void cutLampAndInset();
    void autoIgnoredMidTravel();
    void autoRunAndSwap();
    void tbarStrokes();
    void resoHidesTheFormatList();
    void keyboardAsClicks_data();
    void keyboardAsClicks();
    void fieldsKeepTheirKeys();
};

void TestRvx5310::formAndBinding()
{
    RVX5310Dialog panel;
    QSignalSpy spy(panel.link(), &RVX5ALL_workdata::showCurrentData);
    QCOMPARE(panel.size(), QSize(800, 578));
    QCOMPARE(panel.windowTitle(), QStringLiteral("KOVA"));
    QVERIFY(panel.windowFlags() & Qt::FramelessWindowHint);
    // The rate is the unit's: its keys are hidden. F3, F4 and KEY are dead on this unit.
    for (const char *name : {"btn_rate_1", "btn_rate_2", "btn_rate_3"})
        QVERIFY(panel.findChild<QPushButton *>(name)->isHidden());
    for (const char *name : {"btn_f3", "btn_f4", "btn_key"})
        QVERIFY(!panel.findChild<QPushButton *>(name)->isEnabled());
    QCOMPARE(spy.count(), 0);
    panel.DevTypeID(QStringLiteral("127.0.0.2"), 0xA5, 0xFF, QStringLiteral("127.0.0.3"), 0xE0, 0xFF);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toByteArray(), hex(ReadState));
    QCOMPARE(panel.link()->on_HIS_IP(), QStringLiteral("127.0.0.3"));
}

void TestRvx5310::keys_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QByteArray>("frames");
    auto row = [](const char *name, const char *keys, QByteArray frames) {
        QTest::newRow(name) << QString::fromLatin1(keys) << frames;
    };
    row("F1 streams, twice", "btn_f1 btn_f1",
        "a56c1500a5ff0100000000000000000087015303ae a56c1500a5ff0100000000000000000087005203ae");
    row("F2 is POP, twice", "btn_f2 btn_f2",
        "a56c1500a5ff01000000000000000000a7017303ae a56c1500a5ff01000000000000000000a7007203ae");
    row("REC twice", "btn_rec btn_rec",
        "a56c1500a5ff01000000000000000000b2017e03ae a56c1500a5ff01000000000000000000b2007d03ae");
    row("PAUSE", "btn_pause", "a56c1400a5ff01000000000000000000c58f03ae");
    row("STILL", "btn_still", "a56c1400a5ff01000000000000000000cd9703ae");
    row("MUTE", "btn_mute", "a56c1400a5ff01000000000000000000d49e03ae");
    row("FTB", "btn_ftb", "a56c1400a5ff01000000000000000000854f03ae");
    row("RESET", "btn_reset", "a56c1400a5ff010000000000000000000bd502ae");
    row("DS", "btn_ds", ReadState);
    row("PIP twice", "btn_pip btn_pip", QByteArray(PipOn) + " a56c1500a5ff0100000000000000000086005103ae");
    row("AFV, MIX", "btn_afv btn_mix",
        "a56c1400a5ff01000000000000000000cc9603ae a56c1400a5ff01000000000000000000cb9503ae");
    row("PGM 3, PVW 2", "btn_pgm3 btn_pvw2",
        "a56c1500a5ff0100000000000000000080034e03ae a56c1500a5ff0100000000000000000081024e03ae");
    row("bars on PGM and PVW", "btn_pgm_bar btn_pvw_bar",
        "a56c1500a5ff0100000000000000000080095403ae a56c1500a5ff0100000000000000000081095503ae");
    row("CUT", "btn_cut", Cut);
    row("MIX, FADE", "btn_mix_t btn_fade",
        "a56c1400a5ff010000000000000000008d5703ae a56c1400a5ff010000000000000000008e5803ae");
    row("CH1, CH2", "btn_ch1 btn_ch2",
        "a56c1500a5ff01000000000000000000b9038703ae a56c1500a5ff01000000000000000000ba038803ae");
    row("RESO, KEY, F3, F4: nothing on the wire", "btn_reso btn_reso btn_key btn_f3 btn_f4", "");
}

void TestRvx5310::keys()
{
    QFETCH(QString, keys);
    QFETCH(QByteArray, frames);
    Rig rig;
    rig.press(keys);
    QCOMPARE(rig.sent(), hexList(frames));
}

void TestRvx5310::insetsAndPipSettings()
{
    Rig rig;
    QPushButton *pip = rig.key("btn_pip"), *pop = rig.key("btn_f2");
    QVERIFY(!rig.pipArea()->isVisible());
    rig.press("btn_pip");
    QVERIFY(isGreen(pip) && isOff(pop));
    QVERIFY(rig.pipArea()->isVisible());
    QVERIFY(rig.panel.front()->overlay());
    // POP replaces PIP and its settings.
    rig.press("btn_f2");
    QVERIFY(isGreen(pop) && isOff(pip));
    QVERIFY(!rig.pipArea()->isVisible());
    QVERIFY(rig.panel.front()->overlay());
    rig.press("btn_f2");
    QVERIFY(!rig.panel.front()->overlay());
    // The unit's PIP shows the settings as well.
    rig.state(payload({{10, 1}}));
    QVERIFY(isGreen(pip) && rig.pipArea()->isVisible());
    rig.state(payload({{10, 0}}));
    QVERIFY(isOff(pip) && !rig.pipArea()->isVisible());
}

void TestRvx5310::sourcesCycleBack()
{
    checkMainSourcesCycleBack<Rig>(QStringLiteral("AUX_IN"),
                                   {"IN1", "IN2", "IN3", "IN4", "MIC_IN1", "MIC_IN2", "AUX_IN"});
}

void TestRvx5310::levelsScaled()
{
    Rig rig;
    // Levels go out times 1.27, cut toward zero: 1 -> 1, 100 -> 127, 50 -> 63.
    rig.slider("slider_ch1")->setValue(1);
    rig.slider("slider_ch1")->setValue(100);
    rig.slider("slider_ch2")->setValue(50);
    QCOMPARE(rig.sent(), hexList("a56c1800a5ff01000000000000000000b401000064e703ae "
                                 "a56c1800a5ff01000000000000000000b47f0000646504ae "
                                 "a56c1800a5ff01000000000000000000b47f3f0064a404ae"));
}

void TestRvx5310::wipeCycle()
{
    Rig rig;
    QStringList shown;
    for (int i = 0; i < 2; ++i) {
        rig.press("btn_wipe");
        shown << rig.key("btn_wipe")->text();
    }
    // After FADE the first WIPE sends the direction shown last; then it steps on.
    rig.press("btn_fade");
    shown << rig.key("btn_wipe")->text();
    rig.press("btn_wipe btn_wipe");
    shown << rig.key("btn_wipe")->text();
    QCOMPARE(shown, (QStringList{"WIPE-U", "WIPE-R", "WIPE", "WIPE-D"}));
    QCOMPARE(rig.sent(), hexList(QByteArray(SetWipe) + " a56c1500a5ff01000000000000000000922a8703ae " +
                                 SetWipe + " a56c1500a5ff01000000000000000000922c8903ae " +
                                 "a56c1400a5ff010000000000000000008e5803ae " + SetWipe +
                                 " a56c1500a5ff01000000000000000000922c8903ae " + SetWipe +
                                 " a56c1500a5ff01000000000000000000922e8b03ae"));
}

void TestRvx5310::stateShown()
{
    Rig rig;
    // PGM 3, PVW the bars, AFV, CH1 MIC_IN1 at 40, CH2 MIC_IN2 at 90, WIPE D, FTB on, PIP on
    // with border on, blue, 5, size M at 512/256, STILL on, rate 2, 1080P60 (as shown), mute on.
    rig.state(payload({{0, 3},  {1, 9},  {2, 0},  {3, 8},  {4, 40}, {5, 0},  {6, 90}, {7, 4},
                       {8, 6},  {9, 1},  {10, 1}, {11, 1}, {12, 2}, {13, 5}, {14, 1}, {15, 2},
                       {16, 0}, {17, 1}, {18, 0}, {19, 1}, {20, 2}, {24, 1}}));
    QVERIFY(isRed(rig.key("btn_pgm3")) && isOff(rig.key("btn_pgm1")));
    QVERIFY(isGreen(rig.key("btn_pvw_bar")) && isOff(rig.key("btn_pvw2")));
    QVERIFY(isGreen(rig.key("btn_afv")) && isOff(rig.key("btn_mix")));
    QVERIFY(!rig.key("btn_ch1")->isEnabled() && !rig.key("btn_ch2")->isEnabled());
    QCOMPARE(rig.text("label_ch1"), QStringLiteral("MIC_IN1"));
    QCOMPARE(rig.text("label_ch2"), QStringLiteral("MIC_IN2"));
    QCOMPARE(rig.slider("slider_ch1")->value(), 40);
    QCOMPARE(rig.slider("slider_ch2")->value(), 90);
    QVERIFY(isGreen(rig.key("btn_wipe")) && isOff(rig.key("btn_fade")));
    QCOMPARE(rig.key("btn_wipe")->text(), QStringLiteral("WIPE-D"));
    QVERIFY(rig.panel.ftbBlinking());
    QVERIFY(isGreen(rig.key("btn_pip")) && rig.pipArea()->isVisible());
    PIP_Body *pip = rig.panel.pipBody();
    QCOMPARE(pip->borderEnable()->currentIndex(), 1);
    QCOMPARE(pip->borderColor()->currentIndex(), 2);
    QCOMPARE(pip->borderWidth()->value(), 5);
    QCOMPARE(pip->sizeList()->currentIndex(), 1);
    QCOMPARE(pip->hPosition()->value(), 512);
    QCOMPARE(pip->vPosition()->value(), 256);
    QVERIFY(isRed(rig.key("btn_still")) && isRed(rig.key("btn_mute")));
    QCOMPARE(rig.panel.front()->rate(), uint8_t(2));
    QVERIFY(isGreen(rig.key("btn_rate_3")) && isOff(rig.key("btn_rate_1")));
    QCOMPARE(rig.panel.resoBody()->formatList()->currentText(), QStringLiteral("1080P60"));
    QCOMPARE(rig.sent(), QList<QByteArray>());
    // The next WIPE steps on from the reported direction (D) to L.
    rig.press("btn_wipe");
    QCOMPARE(rig.sent(), hexList(QByteArray(SetWipe) + " a56c1500a5ff0100000000000000000092288503ae"));
}

void TestRvx5310::formatEchoOnlyWhenItDiffers()
{
    Rig rig;
    // 1080P50 reported while 1080P60 is shown: the list moves and tells the unit its position.
    rig.state(payload({{21, 0x0B}}));
    QCOMPARE(rig.panel.resoBody()->formatList()->currentText(), QStringLiteral("1080P50"));
    QCOMPARE(rig.sent(), hexList("a56c1500a5ff01000000000000000000a30b7903ae"));
    rig.state(payload({{21, 0x0B}}));
    rig.state(payload({{21, 0x0E}}));
    QCOMPARE(rig.panel.resoBody()->formatList()->currentText(), QStringLiteral("1080P50"));
    QCOMPARE(rig.sent(), QList<QByteArray>());
}

void TestRvx5310::shortPayloadTouchesOnlyWhatItCarries()
{
    Rig rig;
    rig.state(payload({{3, 8}, {10, 1}, {14, 1}, {15, 1}, {16, 0}}));
    PIP_Body *pip = rig.panel.pipBody();
    // Three bytes: PGM, PVW and the audio mode; nothing past them.
    rig.state(hex("040300"));
    QVERIFY(isRed(rig.key("btn_pgm4")) && isGreen(rig.key("btn_pvw3")));
    QVERIFY(isGreen(rig.key("btn_afv")));
    QCOMPARE(rig.text("label_ch1"), QStringLiteral("MIC_IN1"));
    QVERIFY(rig.pipArea()->isVisible());
    // Up to the first byte of the H position: the position needs both.
    rig.state(payload({{14, 2}, {15, 3}}).left(16));
    QCOMPARE(pip->sizeList()->currentIndex(), 2);
    QCOMPARE(pip->hPosition()->value(), 256);
    QVERIFY(!rig.panel.ftbBlinking());
    QCOMPARE(rig.sent(), QList<QByteArray>());
}

void TestRvx5310::randomPayloadsSendNothing()
{
    // With the shown format in its place nothing goes back.
    checkRandomPayloadsSendNothing<Rig>(0x5310, 2000, [](QByteArray &data) {
        if (data.size() > 21)
            data[21] = char(0x07);
    });
}

void TestRvx5310::ftbStateRule()
{
    checkFtbStateRule<Rig>(payload({{9, 1}}), payload({{9, 0}}));
}

void TestRvx5310::cutLampAndInset()
{
    checkCutLampAndInset<Rig>(PipOn);
}

void TestRvx5310::autoIgnoredMidTravel()
{
    checkAutoOnlyFromAnEnd<Rig>();
}

void TestRvx5310::autoRunAndSwap()
{
    Rig rig;
    checkAutoRun(rig, payload({{0, 1}, {1, 2}, {10, 1}, {20, 2}}), 139);
}

void TestRvx5310::tbarStrokes()
{
    checkTbarStrokes<Rig>();
}

void TestRvx5310::resoHidesTheFormatList()
{
    Rig rig;
    QWidget *list = rig.panel.resoBody();
    QVERIFY(list->isVisible() && isGreen(rig.key("btn_reso")));
    rig.press("btn_reso");
    QVERIFY(!list->isVisible() && isOff(rig.key("btn_reso")));
    rig.press("btn_reso");
    QVERIFY(list->isVisible());
    // A choice in the list goes out as its position.
    rig.panel.resoBody()->formatList()->setCurrentIndex(5);
    QCOMPARE(rig.sent(), hexList("a56c1500a5ff01000000000000000000a30d7b03ae"));
}

void TestRvx5310::keyboardAsClicks_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<QString>("click");
    QTest::newRow("Space: CUT") << int(Qt::Key_Space) << 0 << "btn_cut";
    QTest::newRow("Return: AUTO") << int(Qt::Key_Return) << 0 << "btn_auto";
    QTest::newRow("Enter: AUTO") << int(Qt::Key_Enter) << int(Qt::KeypadModifier) << "btn_auto";
    QTest::newRow("2: PVW 2") << int(Qt::Key_2) << 0 << "btn_pvw2";
    QTest::newRow("Shift+3: PGM 3") << int(Qt::Key_3) << int(Qt::ShiftModifier) << "btn_pgm3";
    // The bars are a source, not an input: no digit stands for them.
    QTest::newRow("9: nothing") << int(Qt::Key_9) << 0 << "";
    QTest::newRow("Shift+9: nothing") << int(Qt::Key_9) << int(Qt::ShiftModifier) << "";
    QTest::newRow("Escape: nothing") << int(Qt::Key_Escape) << 0 << "";
}

void TestRvx5310::keyboardAsClicks()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(QString, click);
    checkKeyAsClick<Rig>(key, modifiers, click);
}

void TestRvx5310::fieldsKeepTheirKeys()
{
    Rig rig;
    QVERIFY(QTest::qWaitForWindowActive(&rig.panel));
    QCOMPARE(QApplication::focusWidget(), &rig.panel);
    checkKeysLeaveTheKeyboard(&rig.panel, -1);
    if (QTest::currentTestFailed())
        return;
    rig.press("btn_pip");
    rig.state(payload({{10, 1}, {14, 1}}));
    rig.sent();
    // Typing a position: Space, digits and Return are the field's, and Esc closes nothing.
    QSpinBox *h = rig.panel.pipBody()->hPosition();
    h->setFocus();
    QTRY_COMPARE(QApplication::focusWidget(), h);
    h->selectAll();
    QTest::keyClicks(h, QStringLiteral("300"));
    QTest::keyClick(h, Qt::Key_Space);
    QTest::keyClick(h, Qt::Key_Return);
    QTest::keyClick(h, Qt::Key_Escape);
    QVERIFY(rig.panel.isVisible());
    const QList<QByteArray> typed = rig.sent();
    QVERIFY(!typed.isEmpty());
    QCOMPARE(typed.last(), hex("a56c1600a5ff01000000000000000000a02c019903ae"));
    // A key pressed with the mouse takes the focus back, and Space is CUT again.
    QTest::mouseClick(rig.key("btn_still"), Qt::LeftButton);
    QCOMPARE(QApplication::focusWidget(), &rig.panel);
    QTest::keyClick(&rig.panel, Qt::Key_Space);
    QCOMPARE(rig.sent(), hexList(QByteArray("a56c1400a5ff01000000000000000000cd9703ae ") + Cut));
}

QTEST_MAIN(TestRvx5310)
#include "tst_rvx5310.moc"
