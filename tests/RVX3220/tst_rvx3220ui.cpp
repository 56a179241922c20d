// RVX3220 panel offscreen: lamps, the T-bar strokes and the insets, checked on the wire
// through a stand-in unit at 127.0.0.2.
#include "RVX3220/audio.h"
#include "RVX3220/devlog.h"
#include "RVX3220/ipdialog.h"
#include "RVX3220/pgm.h"
#include "RVX3220/pip.h"
#include "RVX3220/pop.h"
#include "RVX3220/pvw.h"
#include "RVX3220/rvx3220ui.h"
#include "RVX3220/transitions.h"
#include "SwitcherData/rvx3220_workdata.h"
#include "modalanswer.h"
#include "testframes.h"
#include "wirecapture.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>
#include <QTimer>
#include <QtTest>

namespace {

const QByteArray Marker = QByteArray::fromHex("a56c1400a5ff01000000000000000000491303ae");

struct Rig
{
    Rig()
    {
        panel.DevTypeID(QStringLiteral("127.0.0.2"), 0xA5, 0xFF);
        panel.show();
    }
    // Everything the panel sent since the last call.
    QList<QByteArray> wire()
    {
        panel.link()->SendCMDReadstate();
        return unit.until(Marker);
    }
    // Bus displays as "program/preview".
    QString buses() const
    {
        return QStringLiteral("%1/%2").arg(panel.pgm()->BtnPGMstate()).arg(panel.pvw()->BtnPVWstate());
    }

    RVX3220UI panel;
    WireCapture unit;
};

} // namespace

class TestRvx3220Panel : public QObject
{
    Q_OBJECT
private slots:
    void tbarStroke();
    void cutSwapsUnlessPip();
    void autoWaitsThenSwaps();
    void pipThenPop();
    void popInset();
    void pipSizeClampsPosition();
    void audio();
    void effects();
    void ipDialog_data();
    void ipDialog();
    void titleCloseQuitsEverything(); // last: it ends every event loop
};

void TestRvx3220Panel::tbarStroke()
{
    Rig rig;
    rig.panel.pgm()->setPGMCHstate(2);
    rig.panel.pvw()->setPVWCHstate(5);
    QSlider *tbar = rig.panel.tbar();
    QList<QByteArray> expected;
    auto move = [&](int v, const QByteArray &frame) {
        tbar->setValue(v);
        expected << frame;
    };
    for (int v = 1; v <= 125; ++v)
        move(v, lever(0, v));
    QVERIFY(lit(rig.panel.autoButton(), ":/images/red/AUTO.bmp"));
    QCOMPARE(rig.buses(), QStringLiteral("2/5"));
    move(126, lever(1, 0));
    QCOMPARE(rig.buses(), QStringLiteral("5/2"));
    QVERIFY(lit(rig.panel.autoButton(), ":/images/white/AUTO.bmp"));
    for (int v = 125; v >= 2; --v)
        move(v, lever(1, 126 - v));
    QCOMPARE(rig.buses(), QStringLiteral("5/2"));
    // The return stroke ends at 1, one short of the bottom.
    move(1, lever(1, 125));
    QCOMPARE(rig.buses(), QStringLiteral("2/5"));
    move(0, lever(0, 0));
    QCOMPARE(rig.buses(), QStringLiteral("2/5"));
    // A second push swaps again.
    move(126, lever(1, 0));
    QCOMPARE(rig.buses(), QStringLiteral("5/2"));
    QCOMPARE(rig.wire(), expected);
}

void TestRvx3220Panel::cutSwapsUnlessPip()
{
    const QByteArray cut = hex("a56c1400a5ff01000000000000000000834d03ae");
    Rig rig;
    rig.panel.pgm()->setPGMCHstate(1);
    rig.panel.pvw()->setPVWCHstate(4);

    rig.panel.cutButton()->click();
    QCOMPARE(rig.buses(), QStringLiteral("4/1"));
    QVERIFY(lit(rig.panel.cutButton(), ":/images/red/CUT.bmp"));
    QVERIFY(lit(rig.panel.pgm()->buttonGroup()->button(4), ":/images/red/4.bmp"));
    QVERIFY(lit(rig.panel.pgm()->buttonGroup()->button(1), ":/images/white/1.bmp"));
    QVERIFY(lit(rig.panel.pvw()->buttonGroup()->button(1), ":/images/green/1.bmp"));
    // A second cut late in the lamp's 300 ms starts them again.
    QTRY_VERIFY(rig.panel.cutTimer()->remainingTime() >= 0 && rig.panel.cutTimer()->remainingTime() < 200);
    rig.panel.cutButton()->click();
    QVERIFY(rig.panel.cutTimer()->remainingTime() > 200);
    QTRY_VERIFY(lit(rig.panel.cutButton(), ":/images/white/CUT.bmp"));
    QVERIFY(!rig.panel.cutTimer()->isActive());
    QCOMPARE(rig.buses(), QStringLiteral("1/4"));
    QCOMPARE(rig.wire(), (QList<QByteArray>{cut, cut}));

    // With PIP on the cut goes out but the buses stay.
    rig.panel.pipButton()->click();
    rig.panel.cutButton()->click();
    QCOMPARE(rig.buses(), QStringLiteral("1/4"));
    QCOMPARE(rig.wire(), (QList<QByteArray>{hex("a56c1500a5ff0100000000000000000086015203ae"), cut}));
}

void TestRvx3220Panel::autoWaitsThenSwaps()
{
    Rig rig;
    rig.panel.pgm()->setPGMCHstate(2);
    rig.panel.pvw()->setPVWCHstate(3);
    bool litDuringWait = false;
    QString busesDuringWait;
    QTimer::singleShot(100, &rig.panel, [&] {
        litDuringWait = lit(rig.panel.autoButton(), ":/images/red/AUTO.bmp");
        busesDuringWait = rig.buses();
    });
    QElapsedTimer clock;
    clock.start();
    rig.panel.autoButton()->click(); // returns once the transition time is over
    QVERIFY(clock.elapsed() >= 850);
    QVERIFY(litDuringWait);
    QCOMPARE(busesDuringWait, QStringLiteral("2/3"));
    QCOMPARE(rig.buses(), QStringLiteral("3/2"));
    QVERIFY(lit(rig.panel.autoButton(), ":/images/white/AUTO.bmp"));
    QCOMPARE(rig.wire(), QList<QByteArray>{}); // AUTO puts nothing on the wire
}

void TestRvx3220Panel::pipThenPop()
{
    Rig rig;
    rig.panel.pipButton()->click();
    QCOMPARE(rig.panel.width(), 1280);
    QVERIFY(rig.panel.pip()->isVisible());
    QVERIFY(lit(rig.panel.pipButton(), ":/images/red/PIP.bmp"));
    QCOMPARE(rig.wire(), hexList("a56c1500a5ff0100000000000000000086015203ae"));
    // POP replaces PIP without a PIP-off frame.
    rig.panel.popButton()->click();
    QCOMPARE(rig.panel.width(), 1280);
    QVERIFY(rig.panel.pip()->isHidden() && rig.panel.pop()->isVisible());
    QVERIFY(lit(rig.panel.pipButton(), ":/images/white/PIP.bmp"));
    QCOMPARE(rig.wire(), hexList("a56c1500a5ff01000000000000000000a7017303ae"));
    rig.panel.popButton()->click();
    QCOMPARE(rig.panel.width(), 1000);
    QCOMPARE(rig.panel.titleBar()->width(), 1000);
    QVERIFY(rig.panel.pop()->isHidden());
    // PIP is off after POP took over, so the next PIP press turns it on again.
    rig.panel.pipButton()->click();
    QCOMPARE(rig.wire(), hexList("a56c1500a5ff01000000000000000000a7007203ae "
                                 "a56c1500a5ff0100000000000000000086015203ae"));
}

void TestRvx3220Panel::popInset()
{
    Rig rig;
    rig.panel.popButton()->click();
    rig.wire();
    POP *pop = rig.panel.pop();
    {
        // A position needs a window source first.
        ModalWatch watch;
        pop->hPosition()->setValue(100);
        pop->vPosition()->setValue(50);
        QCOMPARE(watch.boxes, (QStringList{QStringLiteral("Warning|please choose Window source"),
                                           QStringLiteral("Warning|please choose Window source")}));
    }
    QCOMPARE(rig.wire(), QList<QByteArray>{});
    pop->windowButton()->click();
    QCOMPARE(pop->windowButton()->text(), QStringLiteral("1"));
    QVERIFY(pop->POP_WindowMode());
    pop->windowButton()->click();
    QCOMPARE(pop->windowButton()->text(), QStringLiteral("2"));
    QVERIFY(!pop->POP_WindowMode());
    {
        ModalWatch watch;
        pop->hPosition()->setValue(960);
        pop->vPosition()->setValue(540);
        QCOMPARE(watch.boxes, QStringList());
    }
    // The border key reads On while still off; once pressed it names its state.
    QPushButton *border = pop->borderButton();
    QCOMPARE(border->text(), QStringLiteral("On"));
    border->click();
    QCOMPARE(border->text(), QStringLiteral("On"));
    border->click();
    QCOMPARE(border->text(), QStringLiteral("Off"));
    QCOMPARE(
        rig.wire(),
        hexList("a56c1500a5ff01000000000000000000a8017403ae a56c1500a5ff01000000000000000000a8027503ae "
                "a56c1600a5ff01000000000000000000acc0033b04ae a56c1600a5ff01000000000000000000ad1c029703ae "
                "a56c1500a5ff01000000000000000000a9017503ae a56c1500a5ff01000000000000000000a9007403ae"));
}

void TestRvx3220Panel::pipSizeClampsPosition()
{
    // The pane's commands on this link: Medium, H beyond it clamped to 1280, Small.
    Rig rig;
    PIP *pip = rig.panel.pip();
    pip->sizeList()->setCurrentIndex(1);
    pip->hPosition()->setValue(1300);
    pip->sizeList()->setCurrentIndex(0);
    QCOMPARE(
        rig.wire(),
        hexList("a56c1500a5ff01000000000000000000a2016e03ae a56c1600a5ff01000000000000000000a000057103ae "
                "a56c1500a5ff01000000000000000000a2006d03ae"));
}

void TestRvx3220Panel::audio()
{
    Rig rig;
    AUDIO *audio = rig.panel.audio();
    QCOMPARE(audio->ch2Source()->currentIndex(), -1);
    {
        // Both channels name CH1 in their warning.
        ModalWatch watch;
        audio->ch2Volume()->setValue(70);
        audio->ch1Volume()->setValue(80);
        QCOMPARE(watch.boxes, (QStringList{QStringLiteral("Warning|please choose CH1 source"),
                                           QStringLiteral("Warning|please choose CH1 source")}));
    }
    QCOMPARE(rig.wire(), QList<QByteArray>{});

    audio->ch2Source()->setCurrentIndex(2); // IN1, code 0x03
    audio->ch2Volume()->setValue(60);
    audio->ch1Source()->setCurrentIndex(7); // IN6, code 0x08
    audio->ch1Volume()->setValue(100);
    audio->pgmOut()->setCurrentIndex(3); // 1080I50, code 0x01
    audio->modeGroup()->button(1)->click();
    audio->modeGroup()->button(2)->click();
    QVERIFY(lit(audio->modeGroup()->button(1), ":/images/white/AFV.bmp"));
    QVERIFY(lit(audio->modeGroup()->button(2), ":/images/green/MIX.bmp"));
    QCOMPARE(
        rig.wire(),
        hexList("a56c1500a5ff01000000000000000000ba038803ae a56c1600a5ff01000000000000000000b8033cc303ae "
                "a56c1500a5ff01000000000000000000b9088c03ae a56c1600a5ff01000000000000000000b80864f003ae "
                "a56c1500a5ff01000000000000000000a3016f03ae a56c1400a5ff01000000000000000000cc9603ae "
                "a56c1400a5ff01000000000000000000cb9503ae"));
}

void TestRvx3220Panel::effects()
{
    Rig rig;
    QButtonGroup *keys = rig.panel.transitions()->buttonGroup();
    keys->button(5)->click(); // Left
    QVERIFY(lit(keys->button(5), ":/images/green/LEFT.bmp"));
    keys->button(1)->click(); // MIX
    QVERIFY(lit(keys->button(1), ":/images/green/MIX.bmp"));
    QVERIFY(lit(keys->button(5), ":/images/white/Left.bmp"));
    QCOMPARE(rig.wire(),
             hexList("a56c1400a5ff01000000000000000000905a03ae a56c1500a5ff0100000000000000000092238003ae "
                     "a56c1400a5ff010000000000000000008e5803ae"));
}

// Refused addresses: the dialog warns or stays silent, and nothing goes out (the accepted one
// is driven by its Return key with the other panels' keys).
void TestRvx3220Panel::ipDialog_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("boxes");
    const QStringList empty{QStringLiteral("Warning|Text cannot be empty")};
    QTest::newRow("0.0.0.0") << QStringLiteral("0.0.0.0") << empty;
    QTest::newRow("empty") << QString() << empty;
    QTest::newRow("three parts") << QStringLiteral("10.1.2") << QStringList();
    QTest::newRow("empty part") << QStringLiteral("10..1.2") << QStringList();
}

void TestRvx3220Panel::ipDialog()
{
    QFETCH(QString, text);
    QFETCH(QStringList, boxes);
    Rig rig;
    IPDialog dialog(&rig.panel, rig.panel.link());
    // It shows the unit's address, and only an address can be typed.
    QTest::keyClicks(dialog.addressEdit(), QStringLiteral("x"));
    QCOMPARE(dialog.addressEdit()->text(), QStringLiteral("127.0.0.2"));
    dialog.addressEdit()->setText(text);
    ModalWatch watch;
    dialog.okButton()->click();
    QCOMPARE(watch.boxes, boxes);
    QCOMPARE(rig.wire(), QList<QByteArray>{});
    QCOMPARE(rig.panel.link()->unitAddress(), QStringLiteral("127.0.0.2"));
}

void TestRvx3220Panel::titleCloseQuitsEverything()
{
    RVX3220UI panel;
    ModalWatch watch([](QWidget *w) { static_cast<RVX3220UI *>(w)->titleBar()->closeButton()->click(); });
    QCOMPARE(panel.exec(), 0); // the application's exit ends the panel's loop too
}

QTEST_MAIN(TestRvx3220Panel)
#include "tst_rvx3220ui.moc"
