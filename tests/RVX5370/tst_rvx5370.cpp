// The RVX5370 panel offscreen, and through it what the panels with PGM and PVW rows share: the
// keys on the wire (literal frames), the unit's state shown without a word sent back, CUT,
// AUTO, the T-bar, the FTB rule and the keyboard against the clicks it stands for; then its
// own F1 and SET sub-widgets and the settings window's signals.
#include "../RVX8000/rig8000.h"
#include "RVX5370/rvx5370.h"
#include "RVX8000/f1qwidget.h"
#include "RVX8000/frontpanel8000.h"
#include "RVX8000/pipgro.h"
#include "RVX8000/setdialog.h"

using namespace Rig8000;

namespace {

struct Rig : PanelRig<RVX5370>
{
    // What a report sets beside the buses.
    QStringList shown() const
    {
        const QRect box = panel.pipBox()->geometry();
        QStringList out{text("label_ch1"), text("label_pip_sz"), text("label_rate"), text("label_reso")};
        return out << key("btn_afv")->text() << key("btn_wipe")->text() << key("btn_wipe")->styleSheet()
                   << QStringLiteral("%1,%2 %3").arg(box.x()).arg(box.y()).arg(box.width());
    }
};

const char PipOn[] = "a56c1500a5ff0100000000000000000086015203ae";

} // namespace

class TestRvx5370 : public QObject
{
    Q_OBJECT
private slots:
    void bindingAsksForState();
    void keys_data();
    void keys();
    void insetsExclusive();
    void cyclesShownAndSent();
    void stateShown();
    void shortPayloadTouchesOnlyWhatItCarries();
    void valuesOutsideTablesChangeNothing_data();
    void valuesOutsideTablesChangeNothing();
    void ftbStateRule();
    void subWidgets();
    void settingsSignals_data();
    void settingsSignals();
    void cutLampAndInset();
    void autoRunLengthFollowsRate_data();
    void autoRunLengthFollowsRate();
    void autoOnlyFromAnEnd();
    void tbarStrokes();
    void keyboardAsClicks_data();
    void keyboardAsClicks();
};

void TestRvx5370::bindingAsksForState()
{
    Rig::checkBindingAsksForState();
    Rig rig;
    // F1 shows the unit's address: before there is one it stays dead.
    RVX5370 unbound;
    QVERIFY(!unbound.findChild<QPushButton *>("btn_f1")->isEnabled());
    QVERIFY(rig.key("btn_f1")->isEnabled());
    for (QWidget *w : std::initializer_list<QWidget *>{rig.panel.setWidget(), rig.panel.f1Widget()})
        QCOMPARE(w->findChild<QLabel *>("label_IP")->text(), QStringLiteral("IP:127.0.0.2"));
}

void TestRvx5370::keys_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QByteArray>("frames");
    auto row = [](const char *keys, QByteArray frames) {
        QTest::newRow(keys) << QString::fromLatin1(keys) << frames;
    };
    // BAR: programme then preview, on then off.
    row("btn_bar btn_bar",
        "a56c1500a5ff01000000000000000000d701a303ae a56c1500a5ff01000000000000000000d801a403ae "
        "a56c1500a5ff01000000000000000000d700a203ae a56c1500a5ff01000000000000000000d800a303ae");
    row("btn_rtmp btn_rtmp",
        "a56c1500a5ff0100000000000000000087015303ae a56c1500a5ff0100000000000000000087005203ae");
    row("btn_rec btn_rec btn_ftb btn_still btn_pause btn_mute btn_cut btn_ds",
        "a56c1500a5ff01000000000000000000b2017e03ae a56c1500a5ff01000000000000000000b2007d03ae "
        "a56c1400a5ff01000000000000000000854f03ae a56c1400a5ff01000000000000000000cd9703ae "
        "a56c1400a5ff01000000000000000000c58f03ae a56c1400a5ff01000000000000000000d49e03ae " +
            QByteArray(Cut) + ' ' + ReadState);
    row("btn_pip btn_pip", QByteArray(PipOn) + " a56c1500a5ff0100000000000000000086005103ae");
    row("btn_pop", "a56c1500a5ff01000000000000000000a7017303ae");
    // One key for AFV and MIX: AFV, then MIX.
    row("btn_afv btn_afv",
        "a56c1400a5ff01000000000000000000cc9603ae a56c1400a5ff01000000000000000000cb9503ae");
    row("btn_pgm3 btn_pvw2",
        "a56c1500a5ff0100000000000000000080034e03ae a56c1500a5ff0100000000000000000081024e03ae");
    row("btn_mix_t btn_fade",
        "a56c1400a5ff010000000000000000008d5703ae a56c1400a5ff010000000000000000008e5803ae");

    // The first WIPE at start steps from L to U; after FADE a WIPE resends the direction shown.
    row("btn_wipe btn_fade btn_wipe", QByteArray(SetWipe) + " a56c1500a5ff01000000000000000000922a8703ae " +
                                          "a56c1400a5ff010000000000000000008e5803ae " + SetWipe +
                                          " a56c1500a5ff01000000000000000000922a8703ae");
    row("btn_ch1 btn_ch2",
        "a56c1500a5ff01000000000000000000b9038703ae a56c1500a5ff01000000000000000000ba038803ae");
    // Levels go out as they stand.
    row("slider_ch1=100 slider_ch2=127",
        "a56c1800a5ff01000000000000000000b4640000644a04ae a56c1800a5ff01000000000000000000b4647f0064c904ae");
    row("btn_f1 btn_set btn_f1 btn_key btn_key", "");
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
    // POP ends PIP: a second PIP press turns PIP on again, it does not send "off".
    rig.press("btn_pop btn_pip");
    QVERIFY(isGreen(pip) && isOff(pop));
    // KEY only puts out PIP's lamp: PIP stays on beneath, sizable, and its next press ends it.
    rig.press("btn_key");
    QVERIFY(isGreen(key) && isOff(pip));
    QVERIFY(rig.panel.front()->overlay());
    QVERIFY(rig.panel.setWidget()->pipSizeUnlocked());
    rig.press("btn_pip");
    QVERIFY(isOff(pip) && isOff(key) && !rig.panel.front()->overlay());
    QVERIFY(!rig.panel.setWidget()->pipSizeUnlocked());
    QCOMPARE(rig.sent(), hexList(QByteArray(PipOn) + " a56c1500a5ff01000000000000000000a7017303ae " + PipOn +
                                 " a56c1500a5ff0100000000000000000086005103ae"));
}

void TestRvx5370::cyclesShownAndSent()
{
    Rig rig;
    QStringList sources, wipes;
    for (int i = 0; i < 7; ++i) {
        rig.press("btn_ch1");
        sources << rig.text("label_ch1");
    }
    for (int i = 0; i < 5; ++i) {
        rig.press("btn_wipe");
        wipes << rig.key("btn_wipe")->text();
    }
    QCOMPARE(sources, (QStringList{"IN1", "IN2", "IN3", "IN4", "MIC_IN1", "MIC_IN2", "PHONE_IN"}));
    QCOMPARE(wipes, (QStringList{"WIPE-U", "WIPE-R", "WIPE-D", "WIPE-L", "WIPE-U"}));
    QCOMPARE(rig.sent().mid(0, 7),
             hexList("a56c1500a5ff01000000000000000000b9038703ae a56c1500a5ff01000000000000000000b9048803ae "
                     "a56c1500a5ff01000000000000000000b9058903ae a56c1500a5ff01000000000000000000b9068a03ae "
                     "a56c1500a5ff01000000000000000000b9088c03ae a56c1500a5ff01000000000000000000b9008403ae "
                     "a56c1500a5ff01000000000000000000b9078b03ae"));
    QVERIFY(isOff(rig.key("btn_ch1")));
    rig.press("btn_mix_t");
    QCOMPARE(rig.key("btn_wipe")->text(), QStringLiteral("WIPE"));
    QVERIFY(isGreen(rig.key("btn_mix_t")) && isOff(rig.key("btn_wipe")));
}

void TestRvx5370::stateShown()
{
    Rig rig;
    // PGM 3, PVW 4, AFV, CH1 code 7, CH2 MIC_IN1 at 90, WIPE R, FTB on, PIP on, size M at
    // 640/360, STILL on, rate 2, 1080I50, mute on.
    rig.state(hex("0304000732085a040401010000020102800168010201000001"));
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
    QVERIFY(isGreen(rig.key("btn_pip")) && rig.panel.front()->overlay());
    QCOMPARE(rig.text("label_pip_sz"), QStringLiteral("PIP_SZ:M"));
    QCOMPARE(rig.panel.pipBox()->geometry(), QRect(133, 74, 133, 74));
    QVERIFY(isRed(rig.key("btn_still")) && isRed(rig.key("btn_mute")));
    QCOMPARE(rig.text("label_rate"), QStringLiteral("RARE:3"));
    QCOMPARE(rig.panel.front()->rate(), uint8_t(2));
    QCOMPARE(rig.text("label_reso"), QStringLiteral("1080I50"));
    // The settings window continues its cycles from the unit's values.
    SetDialog *set = rig.panel.setWidget();
    QCOMPARE(set->pipSizeIndex(), 1);
    QCOMPARE(set->rateIndex(), 2);
    QCOMPARE(set->resoIndex(), 3);
    QVERIFY(set->pipSizeUnlocked());
    QCOMPARE(rig.sent(), QList<QByteArray>());
    // The next WIPE press steps on from the reported direction (R) to D.
    rig.press("btn_wipe");
    QCOMPARE(rig.sent(), hexList(QByteArray(SetWipe) + " a56c1500a5ff01000000000000000000922e8b03ae"));
    // The serial of a long reply reaches SET from the unit's state; nothing answers it.
    emit rig.panel.link()->stateReported(UnitState::decode(StateLayout::Series8000, {}, hex("120a00ff")));
    QCOMPARE(set->findChild<QLabel *>("label_SM")->text(), QStringLiteral("SN:12 a ff "));
    QCOMPARE(rig.sent(), QList<QByteArray>());
}

void TestRvx5370::shortPayloadTouchesOnlyWhatItCarries()
{
    Rig rig;
    rig.state(payload({{3, 8}, {14, 1}, {20, 1}, {21, 11}}));
    QStringList expected = rig.shown();
    expected[4] = QStringLiteral("AFV");
    // Three bytes: PGM, PVW and the audio mode; nothing past them.
    rig.state(hex("040300"));
    QVERIFY(isRed(rig.key("btn_pgm4")) && isGreen(rig.key("btn_pvw3")));
    QCOMPARE(rig.shown(), expected);
    // Up to the PIP size: the positions need both their bytes.
    rig.state(payload({{14, 2}, {15, 9}}).left(16));
    QCOMPARE(rig.text("label_pip_sz"), QStringLiteral("PIP_SZ:L"));
    QCOMPARE(rig.panel.pipBox()->pos(), QPoint(0, 0));
    QVERIFY(!rig.panel.ftbBlinking());
    // Size M and its far corner 1280/720 in one report: the corner of size M, not L's limits.
    rig.state(payload({{14, 1}, {15, 5}, {16, 0}, {17, 2}, {18, 208}}));
    QCOMPARE(rig.panel.pipBox()->pos(), QPoint(266, 149));
}

void TestRvx5370::valuesOutsideTablesChangeNothing_data()
{
    QTest::addColumn<int>("offset");
    QTest::addColumn<int>("value");
    auto row = [](const char *name, int offset, int value) { QTest::newRow(name) << offset << value; };
    row("PIP size 3", 14, 3);
    row("rate 3", 20, 3);
    row("resolution 2", 21, 2);
    row("resolution 14", 21, 14);
    row("CH1 source 9", 3, 9);
    row("CH1 source 1 (no such source)", 3, 1);
    row("audio mode 2", 2, 2);
    row("transition 3", 7, 3);
    row("wipe 1", 8, 1);
}

void TestRvx5370::valuesOutsideTablesChangeNothing()
{
    QFETCH(int, offset);
    QFETCH(int, value);
    Rig rig;
    // Something other than the start for each: size M, rate 2, 1080I60, CH1 IN3, MIX, WIPE-D.
    QByteArray state = payload({{3, 5}, {7, 4}, {8, 6}, {14, 1}, {20, 1}, {21, 9}});
    rig.state(state);
    const QStringList was = rig.shown();
    state[offset] = char(value);
    rig.state(state);
    QCOMPARE(rig.shown(), was);
}

void TestRvx5370::ftbStateRule()
{
    // FTB reported on blinks; off is shown, but the blink started goes on until FTB is pressed
    // twice.
    Rig rig;
    rig.state(payload({{9, 1}}));
    QVERIFY(rig.panel.ftbBlinking());
    rig.state(payload({{9, 0}}));
    QVERIFY(isOff(rig.key("btn_ftb")) && rig.panel.ftbBlinking());
    rig.press("btn_ftb");
    QVERIFY(isRed(rig.key("btn_ftb")) && rig.panel.ftbBlinking());
    rig.press("btn_ftb");
    QVERIFY(isOff(rig.key("btn_ftb")) && !rig.panel.ftbBlinking());
}

void TestRvx5370::subWidgets()
{
    // F1 and SET each show their widget in the panel and hide the other's.
    Rig rig;
    QWidget *f1 = rig.panel.f1Widget(), *set = rig.panel.setWidget();
    QVERIFY(!set->isWindow());
    const QList<QPair<const char *, const char *>> steps{
        {"", "00"}, {"btn_set", "01"}, {"btn_f1", "10"}, {"btn_f1", "00"}, {"btn_f1 btn_set btn_set", "00"}};
    for (const auto &[keys, shown] : steps) {
        rig.press(keys);
        QCOMPARE(QString::number(f1->isVisible()) + QString::number(set->isVisible()), QString(shown));
        QCOMPARE(isGreen(rig.key("btn_f1")), f1->isVisible());
        QCOMPARE(isGreen(rig.key("btn_set")), set->isVisible());
    }
    // On opening the panel has the keyboard; none of its keys takes it.
    QVERIFY(QTest::qWaitForWindowActive(&rig.panel));
    QCOMPARE(QApplication::focusWidget(), &rig.panel);
    for (QPushButton *key : rig.panel.findChildren<QPushButton *>())
        QVERIFY2(key->focusPolicy() == Qt::NoFocus && !key->autoDefault(), qPrintable(key->objectName()));
}

void TestRvx5370::settingsSignals_data()
{
    QTest::addColumn<QString>("keys"); // of the settings window
    QTest::addColumn<QString>("rate");
    QTest::addColumn<QString>("size");
    QTest::addColumn<int>("boxWidth");
    auto row = [](const char *keys, const char *rate, const char *size, int width) {
        QTest::newRow(keys) << QString(keys) << QString(rate) << QString(size) << width;
    };
    // PIP is on and the unit reported size S, rate 0: PIP_S steps S -> M, RATE 0 -> 1.
    row("btn_pip_s", "RARE:1", "PIP_SZ:M", 133);
    row("btn_rate", "RARE:2", "PIP_SZ:S", 100);
    // RESO announces the format's code on the rate signal: 0x0B and 0x09 change nothing, 0x01
    // (1080I50) reads as rate 1.
    row("btn_reso btn_reso btn_reso", "RARE:2", "PIP_SZ:S", 100);
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
    // CUT lights for a moment and swaps the buses; with PIP on a CUT changes the inset and the
    // buses stay.
    Rig rig;
    rig.state(hex("0102"));
    rig.press("btn_cut");
    QVERIFY(isRed(rig.key("btn_cut")));
    QVERIFY(isRed(rig.key("btn_pgm2")) && isGreen(rig.key("btn_pvw1")));
    QTRY_VERIFY(isOff(rig.key("btn_cut")));
    rig.press("btn_pip btn_cut");
    QVERIFY(isRed(rig.key("btn_pgm2")) && isGreen(rig.key("btn_pvw1")));
    QCOMPARE(rig.sent(), hexList(QByteArray(Cut) + ' ' + PipOn + ' ' + Cut));
}

void TestRvx5370::autoRunLengthFollowsRate_data()
{
    QTest::addColumn<int>("rate");
    QTest::addColumn<int>("top");
    for (const auto &[rate, top] : {std::pair(0, 40), std::pair(1, 72), std::pair(2, 139)})
        QTest::addRow("rate %d", rate) << rate << top;
}

void TestRvx5370::autoRunLengthFollowsRate()
{
    QFETCH(int, rate);
    QFETCH(int, top);
    Rig rig;
    QSlider *tbar = rig.slider("slider_video");
    // With PIP on, the run reaches `top`, the fader comes back to its full range at the top, the
    // unit hears AUTO only, and the buses change places.
    rig.state(payload({{0, 1}, {1, 2}, {10, 1}, {20, rate}}));
    int highest = 0;
    connect(tbar, &QSlider::valueChanged, tbar, [&highest, tbar](int v) {
        if (tbar->maximum() != 127)
            highest = qMax(highest, v);
    });
    rig.press("btn_auto");
    QCOMPARE(highest, top);
    QCOMPARE(tbar->maximum(), 127);
    QCOMPARE(tbar->value(), 127);
    QVERIFY(isRed(rig.key("btn_pgm2")) && isGreen(rig.key("btn_pvw1")));
    QVERIFY(isOff(rig.key("btn_auto")));
    // From the top the next run goes down to 0 and the buses change back.
    rig.press("btn_auto");
    QCOMPARE(tbar->value(), 0);
    QVERIFY(isRed(rig.key("btn_pgm1")) && isGreen(rig.key("btn_pvw2")));
    QCOMPARE(rig.sent(), hexList(QByteArray(Auto) + ' ' + Auto));
}

void TestRvx5370::autoOnlyFromAnEnd()
{
    Rig rig;
    rig.slider("slider_video")->setValue(64);
    rig.sent();
    rig.press("btn_auto");
    QCOMPARE(rig.sent(), QList<QByteArray>());
    QCOMPARE(rig.slider("slider_video")->value(), 64);
}

void TestRvx5370::tbarStrokes()
{
    // Away from an end lights AUTO, an end reached swaps the buses; each move goes out as the
    // fader's value.
    Rig rig;
    rig.state(hex("0102"));
    QSlider *tbar = rig.slider("slider_video");
    tbar->setValue(10);
    QVERIFY(isRed(rig.key("btn_auto")));
    tbar->setValue(127);
    QVERIFY(isOff(rig.key("btn_auto")));
    QVERIFY(isRed(rig.key("btn_pgm2")) && isGreen(rig.key("btn_pvw1")));
    tbar->setValue(27);
    tbar->setValue(0);
    QVERIFY(isRed(rig.key("btn_pgm1")) && isGreen(rig.key("btn_pvw2")));
    QCOMPARE(rig.sent(), hexList("a56c1600a5ff0100000000000000000082010a5903ae "
                                 "a56c1600a5ff01000000000000000000820180cf03ae "
                                 "a56c1600a5ff010000000000000000008200004e03ae "
                                 "a56c1600a5ff01000000000000000000820064b203ae "
                                 "a56c1600a5ff01000000000000000000820080ce03ae "
                                 "a56c1600a5ff010000000000000000008201004f03ae"));
}

void TestRvx5370::keyboardAsClicks_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<QString>("click");
    auto row = [](const char *name, int key, int modifiers, const char *click) {
        QTest::newRow(name) << key << modifiers << QString(click);
    };
    row("Space: CUT", Qt::Key_Space, 0, "btn_cut");
    row("Return: AUTO", Qt::Key_Return, 0, "btn_auto");
    row("Enter: AUTO", Qt::Key_Enter, Qt::KeypadModifier, "btn_auto");
    row("2: PVW 2", Qt::Key_2, 0, "btn_pvw2");
    row("Shift+3: PGM 3", Qt::Key_3, Qt::ShiftModifier, "btn_pgm3");
    row("keypad 4: PVW 4", Qt::Key_4, Qt::KeypadModifier, "btn_pvw4");
    row("5: no such input", Qt::Key_5, 0, "");
    row("Escape: nothing", Qt::Key_Escape, 0, "");
}

void TestRvx5370::keyboardAsClicks()
{
    // A key of the keyboard does what its click does, on the wire and on every lamp.
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(QString, click);
    auto lamps = [](Rig &rig) {
        QStringList out;
        for (QPushButton *k : rig.panel.findChildren<QPushButton *>())
            out << k->objectName() + QLatin1Char('=') + k->styleSheet();
        return out;
    };
    Rig byKey, byClick;
    for (Rig *rig : {&byKey, &byClick})
        rig->state(hex("0102"));
    QTest::keyClick(&byKey.panel, Qt::Key(key), Qt::KeyboardModifiers(modifiers));
    byClick.press(click);
    QCOMPARE(byKey.sent(), byClick.sent());
    QCOMPARE(lamps(byKey), lamps(byClick));
    QVERIFY(byKey.panel.isVisible());
}

QTEST_MAIN(TestRvx5370)
#include "tst_rvx5370.moc"
