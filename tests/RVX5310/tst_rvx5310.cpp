// The RVX5310 panel offscreen, what it has of its own beside the front it shares with the
// RVX5370: its keys on the wire (literal frames), the PIP, F2 and REC/PAUSE lamps with what CUT
// by the keyboard does after them, the scaled levels, the unit's state shown in the PIP settings
// and the format list with only the format's echo sent back, and typing into the PIP settings
// without the panel's keys taking the keyboard.
#include "../RVX8000/rig8000.h"
#include "RVX5310/rvx5310dialog.h"
#include "RVX8000/frontpanel8000.h"
#include "RVX8000/pip_body.h"
#include "RVX8000/resobody.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPainterPath>
#include <QSpinBox>
#include <QStyleOptionGroupBox>

using namespace Rig8000;

namespace {

struct Rig : PanelRig<RVX5310Dialog>
{
    QWidget *pipArea() const { return panel.pipBody()->parentWidget(); }
    QString format() const { return panel.resoBody()->formatList()->currentText(); }
};

} // namespace

class TestRvx5310 : public QObject
{
    Q_OBJECT
private slots:
    void formAndBinding();
    void keys_data();
    void keys();
    void lampsAfterPresses_data();
    void lampsAfterPresses();
    void areasAndLevels();
    void stateShown();
    void formatEchoOnlyWhenItDiffers();
    void randomPayloadsSendNothing();
    void fieldsKeepTheirKeys();
    void titleClearOfBorder_data();
    void titleClearOfBorder();
};

void TestRvx5310::formAndBinding()
{
    Rig::checkBindingAsksForState();
    Rig rig;
    // The rate is the unit's: its keys are hidden. F3, F4 and KEY are dead on this unit.
    for (const char *name : {"btn_rate_1", "btn_rate_2", "btn_rate_3"})
        QVERIFY(rig.key(name)->isHidden());
    for (const char *name : {"btn_f3", "btn_f4", "btn_key"})
        QVERIFY(!rig.key(name)->isEnabled());
    // Source 7 is this unit's AUX input.
    rig.state(payload({{3, 7}}));
    QCOMPARE(rig.text("label_ch1"), QStringLiteral("AUX_IN"));
}

void TestRvx5310::keys_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QByteArray>("frames");
    auto row = [](const char *keys, QByteArray frames) {
        QTest::newRow(keys) << QString::fromLatin1(keys) << frames;
    };
    // F1 streams, F2 is POP.
    row("btn_f1 btn_f1",
        "a56c1500a5ff0100000000000000000087015303ae a56c1500a5ff0100000000000000000087005203ae");
    // PIP, F2 and KEY each switch on their own: F2 puts out PIP's lamp, not PIP.
    row("btn_pip btn_f2 btn_pip btn_f2",
        "a56c1500a5ff0100000000000000000086015203ae a56c1500a5ff01000000000000000000a7017303ae "
        "a56c1500a5ff0100000000000000000086005103ae a56c1500a5ff01000000000000000000a7007203ae");
    row("btn_reset", "a56c1400a5ff010000000000000000000bd502ae");
    row("btn_afv btn_mix",
        "a56c1400a5ff01000000000000000000cc9603ae a56c1400a5ff01000000000000000000cb9503ae");
    row("btn_pgm_bar btn_pvw_bar",
        "a56c1500a5ff0100000000000000000080095403ae a56c1500a5ff0100000000000000000081095503ae");
    row("btn_reso btn_reso btn_key btn_f3 btn_f4", "");
}

void TestRvx5310::keys()
{
    QFETCH(QString, keys);
    QFETCH(QByteArray, frames);
    Rig rig;
    rig.press(keys);
    QCOMPARE(rig.sent(), hexList(frames));
}

void TestRvx5310::lampsAfterPresses_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QStringList>("lit");
    QTest::addColumn<bool>("pipArea");
    QTest::addColumn<bool>("spaceSwaps"); // whether CUT by the keyboard swaps the buses
    auto row = [](const char *keys, QStringList lit, bool pipArea, bool spaceSwaps) {
        QTest::newRow(keys) << QString::fromLatin1(keys) << lit << pipArea << spaceSwaps;
    };
    // PIP stays on beneath F2's lamp, with its settings; the key pressed last holds CUT.
    row("btn_pip btn_f2", {"btn_f2"}, true, false);
    row("btn_pip btn_f2 btn_pip", {}, false, true);
    row("btn_pip btn_f2 btn_f2", {}, true, true);
    row("btn_f2 btn_pip", {"btn_pip"}, true, false);
    // Stopping REC puts out PAUSE's lamp only: the next PAUSE turns the pause off, still dark.
    row("btn_rec btn_pause btn_rec btn_pause", {}, false, true);
    row("btn_rec btn_pause btn_rec btn_pause btn_pause", {"btn_pause"}, false, true);
}

void TestRvx5310::lampsAfterPresses()
{
    QFETCH(QString, keys);
    QFETCH(QStringList, lit);
    QFETCH(bool, pipArea);
    QFETCH(bool, spaceSwaps);
    Rig rig;
    rig.state(payload({}));
    rig.press(keys);
    for (const char *name : {"btn_pip", "btn_f2", "btn_rec", "btn_pause"}) {
        QPushButton *key = rig.key(name);
        QVERIFY2(lit.contains(QLatin1String(name)) ? isGreen(key) || isRed(key) : isOff(key), name);
    }
    QCOMPARE(rig.pipArea()->isVisible(), pipArea);
    QTest::keyClick(&rig.panel, Qt::Key_Space);
    QCOMPARE(isRed(rig.key("btn_pgm2")) && isGreen(rig.key("btn_pvw1")), spaceSwaps);
    QCOMPARE(isRed(rig.key("btn_pgm1")) && isGreen(rig.key("btn_pvw2")), !spaceSwaps);
}

void TestRvx5310::areasAndLevels()
{
    Rig rig;
    // Levels go out times 1.27, cut toward zero: 1 -> 1, 100 -> 127, 50 -> 63.
    rig.slider("slider_ch1")->setValue(1);
    rig.slider("slider_ch1")->setValue(100);
    rig.slider("slider_ch2")->setValue(50);
    QCOMPARE(rig.sent(), hexList("a56c1800a5ff01000000000000000000b401000064e703ae "
                                 "a56c1800a5ff01000000000000000000b47f0000646504ae "
                                 "a56c1800a5ff01000000000000000000b47f3f0064a404ae"));
    // The unit's PIP is the key's: shown with its settings, and the next press turns it off.
    QPushButton *pip = rig.key("btn_pip");
    rig.state(payload({{10, 1}}));
    QVERIFY(isGreen(pip) && rig.pipArea()->isVisible() && rig.panel.front()->overlay());
    rig.press("btn_pip");
    QCOMPARE(rig.sent(), hexList("a56c1500a5ff0100000000000000000086005103ae"));
    rig.state(payload({{10, 1}}));
    rig.state(payload({{10, 0}}));
    QVERIFY(isOff(pip) && !rig.pipArea()->isVisible() && !rig.panel.front()->overlay());
    // RESO hides and shows the format list.
    QWidget *list = rig.panel.resoBody();
    QVERIFY(list->isVisible() && isGreen(rig.key("btn_reso")));
    rig.press("btn_reso");
    QVERIFY(!list->isVisible() && isOff(rig.key("btn_reso")));
    rig.press("btn_reso");
    QVERIFY(list->isVisible());
}

void TestRvx5310::stateShown()
{
    Rig rig;
    // AFV, WIPE D, PIP on with border on, blue, 5, size M at 512/256, rate 2, 1080P60 (as
    // shown).
    rig.state(payload({{2, 0},
                       {7, 4},
                       {8, 6},
                       {10, 1},
                       {11, 1},
                       {12, 2},
                       {13, 5},
                       {14, 1},
                       {15, 2},
                       {16, 0},
                       {17, 1},
                       {18, 0},
                       {20, 2}}));
    QVERIFY(isGreen(rig.key("btn_afv")) && isOff(rig.key("btn_mix")));
    PIP_Body *pip = rig.panel.pipBody();
    QCOMPARE(pip->borderEnable()->currentIndex(), 1);
    QCOMPARE(pip->borderColor()->currentIndex(), 2);
    QCOMPARE(pip->borderWidth()->value(), 5);
    QCOMPARE(pip->sizeList()->currentIndex(), 1);
    QCOMPARE(pip->hPosition()->value(), 512);
    QCOMPARE(pip->vPosition()->value(), 256);
    QCOMPARE(rig.panel.front()->rate(), uint8_t(2));
    QVERIFY(isGreen(rig.key("btn_rate_3")) && isOff(rig.key("btn_rate_1")));
    QCOMPARE(rig.format(), QStringLiteral("1080P60"));
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
    QCOMPARE(rig.format(), QStringLiteral("1080P50"));
    QCOMPARE(rig.sent(), hexList("a56c1500a5ff01000000000000000000a30b7903ae"));
    // The same again, then a code no format has: nothing moves, nothing goes out.
    rig.state(payload({{21, 0x0B}}));
    rig.state(payload({{21, 0x0E}}));
    QCOMPARE(rig.format(), QStringLiteral("1080P50"));
    QCOMPARE(rig.sent(), QList<QByteArray>());
}

void TestRvx5310::randomPayloadsSendNothing()
{
    // With the shown format in its place nothing goes back.
    checkRandomPayloadsSendNothing<Rig>(0x5310, [](QByteArray &data) {
        if (data.size() > 21)
            data[21] = char(0x07);
    });
}

void TestRvx5310::fieldsKeepTheirKeys()
{
    Rig rig;
    QVERIFY(QTest::qWaitForWindowActive(&rig.panel));
    QCOMPARE(QApplication::focusWidget(), &rig.panel);
    for (QPushButton *key : rig.panel.findChildren<QPushButton *>())
        QVERIFY2(key->focusPolicy() == Qt::NoFocus && !key->autoDefault(), qPrintable(key->objectName()));
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
    // A key pressed with the mouse takes the focus back, and Space is CUT again; the bars are a
    // source, not an input: no digit stands for them.
    QTest::mouseClick(rig.key("btn_still"), Qt::LeftButton);
    QCOMPARE(QApplication::focusWidget(), &rig.panel);
    QTest::keyClick(&rig.panel, Qt::Key_Space);
    QTest::keyClick(&rig.panel, Qt::Key_9);
    QCOMPARE(rig.sent(), hexList(QByteArray("a56c1400a5ff01000000000000000000cd9703ae ") + Cut));
}

void TestRvx5310::titleClearOfBorder_data()
{
    QTest::addColumn<QString>("label");
    QTest::newRow("title") << QStringLiteral("label_title");
    QTest::newRow("version") << QStringLiteral("label_version");
}

void TestRvx5310::titleClearOfBorder()
{
    QFETCH(QString, label);
    Rig rig;
    rig.panel.show();
    QVERIFY(QTest::qWaitForWindowExposed(&rig.panel));
    QCOMPARE(rig.panel.size(), QSize(800, 578));
    auto *box = rig.panel.findChild<QGroupBox *>(QStringLiteral("g_upper"));
    auto *text = rig.panel.findChild<QLabel *>(label);
    QVERIFY(box && text);
    QCOMPARE(text->parentWidget(), box);

    // The frame as the group box's sheet places it (below its title margin), and its line: the
    // sheet's 2 px border with 15 px rounded corners.
    QStyleOptionGroupBox opt;
    opt.initFrom(box);
    opt.text = box->title();
    opt.subControls = QStyle::SC_GroupBoxFrame | QStyle::SC_GroupBoxLabel;
    const QRectF frame =
        box->style()->subControlRect(QStyle::CC_GroupBox, &opt, QStyle::SC_GroupBoxFrame, box);
    QVERIFY(frame.top() > 0);
    QPainterPath outer;
    outer.addRoundedRect(frame, 15, 15);
    QPainterPath inner;
    inner.addRoundedRect(frame.adjusted(2, 2, -2, -2), 13, 13);
    const QPainterPath line = outer.subtracted(inner);
    const QRectF area(text->geometry());
    QVERIFY2(!line.intersects(area), qPrintable(label));
    QVERIFY(inner.contains(area));
    // The caption is not clipped by its own rectangle either.
    QVERIFY(text->fontMetrics().height() <= text->height());
    QVERIFY(text->fontMetrics().horizontalAdvance(text->text()) <= text->width());
}

QTEST_MAIN(TestRvx5310)
#include "tst_rvx5310.moc"
