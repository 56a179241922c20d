// RVX3410 panel offscreen: the record bytes 26-28 and their fan-out, REC/PAUSE/STREAM/ROTATE
// and the menu keys on the wire, and the delayed state read.
#include "RVX3210/below_widget.h"
#include "RVX3210/plane_top.h"
#include "RVX3210/upper_widget.h"
#include "RVX3410/rvx3410ui.h"
#include "RVX3410/rvx_3410_middle_widget.h"
#include "RVX3410/rvx_3410_upper_widget.h"
#include "SwitcherData/rvx3210_workdata.h"
#include "testframes.h"
#include "wirecapture.h"

#include <QComboBox>
#include <QDialog>
#include <QElapsedTimer>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QTimer>
#include <QtTest>

namespace {

// Not a frame: bounds a capture, so "nothing more was sent" needs no wait.
const QByteArray Marker("end of capture");
const QByteArray ReadState = QByteArray::fromHex("a56c1400a5ff01000000000000000000491303ae");

QList<QByteArray> frames(const QStringList &hexFrames)
{
    QList<QByteArray> out;
    for (const QString &h : hexFrames)
        out << QByteArray::fromHex(h.toLatin1());
    return out;
}

// A 29-byte record of a unit at rest, with bytes 9, 21 and 26-28 as given.
QByteArray record(uint8_t ftb, uint8_t b26, uint8_t b27, uint8_t b28, uint8_t output = 7)
{
    QByteArray r = QByteArray::fromHex("0102000732033201000000000002000000000000010700000000");
    r[9] = char(ftb);
    r[21] = char(output);
    r.append(char(b26)).append(char(b27)).append(char(b28));
    return r;
}

struct Rig
{
    Rig()
    {
        panel.DevTypeID(QStringLiteral("127.0.0.2"), 0xA5, 0xFF, QString(), 0xE0, 0xFF);
        panel.show();
    }
    // Everything the panel sent since the last call.
    QList<QByteArray> wire()
    {
        panel.link()->SendCMDTest(Marker);
        return unit.until(Marker);
    }
    // Reads the state by key, which also stops the delayed read, and forgets the reads.
    void settle()
    {
        panel.upperRow()->btnRead()->click();
        wire();
    }

    WireCapture unit;
    RVX3410UI panel;
};

} // namespace

class TestRvx3410Panel : public QObject
{
    Q_OBJECT
private slots:
    void stateBytes_data();
    void stateBytes();
    void shortRecordLeavesExtrasAlone();
    void keys_data();
    void keys();
    void menuKeys_data();
    void menuKeys();
    void sourcesStartAtFirstEntry();
    void delayedRead();
    void readKeyCancelsDelayedRead();
    void returnKeyEmitsExit();
};

void TestRvx3410Panel::stateBytes_data()
{
    QTest::addColumn<uint8_t>("b26");
    QTest::addColumn<uint8_t>("b27");
    QTest::addColumn<uint8_t>("b28");
    QTest::addColumn<QString>("on"); // of "rec pause stream rotate ftb"
    auto row = [](const char *name, int b26, int b27, int b28, const char *on) {
        QTest::newRow(name) << uint8_t(b26) << uint8_t(b27) << uint8_t(b28) << QString(on);
    };
    row("idle", 0x00, 0x00, 0x00, "");
    row("recording", 0x08, 0x00, 0x00, "rec");
    row("paused", 0x10, 0x00, 0x00, "rec pause");
    // Code 3 blinks FTB (read after the FTB byte 0, which stops it), not REC.
    row("code 3", 0x18, 0x00, 0x00, "rec ftb");
    row("other bits of 26", 0xE7, 0x00, 0x00, "");
    row("recording among others", 0x0F, 0x00, 0x00, "rec");
    row("streaming", 0x00, 0x04, 0x00, "stream");
    row("all of 27 but bit 2", 0x00, 0xFB, 0x00, "");
    row("rotated", 0x00, 0x00, 0x40, "rotate");
    row("rotated, low bits set", 0x00, 0x00, 0x7F, "rotate");
    row("bits 6-7 = 11", 0x00, 0x00, 0xC0, "");
    row("bits 6-7 = 10", 0x00, 0x00, 0x80, "");
}

void TestRvx3410Panel::stateBytes()
{
    QFETCH(uint8_t, b26);
    QFETCH(uint8_t, b27);
    QFETCH(uint8_t, b28);
    QFETCH(QString, on);
    const bool rec = on.contains("rec"), pause = on.contains("pause"), stream = on.contains("stream"),
               rotate = on.contains("rotate"), ftbBlinks = on.contains("ftb");

    Rig rig;
    rig.settle();
    RVX_3410_Upper_Widget *up = rig.panel.upperRow();
    // From everything lit and from everything dark, the record alone decides.
    for (const QByteArray &before : {record(0, 0x10, 0x04, 0x40), record(0, 0x00, 0x00, 0x00)}) {
        rig.panel.on_toRead_3210Dtat(before);
        rig.panel.on_toRead_3210Dtat(record(0, b26, b27, b28));
        QCOMPARE(up->f4On(), rec);
        QCOMPARE(up->f5On(), pause);
        QCOMPARE(up->f6On(), stream);
        QCOMPARE(up->f8On(), rotate);
        QCOMPARE(lit(up->btnF5(), "green/F5.bmp"), pause);
        QCOMPARE(lit(up->btnF6(), "green/F6.bmp"), stream);
        QCOMPARE(lit(up->btnF8(), "green/F8.bmp"), rotate);
        if (rec != ftbBlinks) // code 3 sets REC without touching its look
            QCOMPARE(lit(up->btnF4(), "red/F4.bmp"), rec);
        QCOMPARE(up->blinkTimer()->isActive(), ftbBlinks);
        QVERIFY(!up->recBlinkTimer()->isActive());
        QVERIFY(!up->ftbOn());
    }
}

void TestRvx3410Panel::shortRecordLeavesExtrasAlone()
{
    Rig rig;
    rig.settle();
    rig.panel.on_toRead_3210Dtat(record(0, 0x10, 0x04, 0x40));
    // An RVX3210-sized record carries no bytes 26-28.
    rig.panel.on_toRead_3210Dtat(record(1, 0, 0, 0).left(26));
    RVX_3410_Upper_Widget *up = rig.panel.upperRow();
    QVERIFY(up->f4On() && up->f5On() && up->f6On() && up->f8On());
    QVERIFY(up->ftbOn());
    QCOMPARE(rig.panel.lowerRow()->BtnPGMstate(), uint8_t(1));
}

void TestRvx3410Panel::keys_data()
{
    QTest::addColumn<QString>("presses");
    QTest::addColumn<QStringList>("sent");
    QTest::addColumn<bool>("rec");
    QTest::addColumn<bool>("pause");

    const QString recOn = "a56c1500a5ff01000000000000000000b2017e03ae";
    const QString recOff = "a56c1500a5ff01000000000000000000b2007d03ae";
    const QString pause = "a56c1400a5ff01000000000000000000c58f03ae";
    QTest::newRow("pause alone") << "5" << QStringList() << false << false;
    QTest::newRow("rec") << "4" << QStringList{recOn} << true << false;
    QTest::newRow("rec, pause") << "45" << QStringList{recOn, pause} << true << true;
    QTest::newRow("rec, pause, resume") << "455" << QStringList{recOn, pause, pause} << true << false;
    QTest::newRow("stop ends the pause") << "454" << QStringList{recOn, pause, recOff} << false << false;
    QTest::newRow("pause after stop") << "4545" << QStringList{recOn, pause, recOff} << false << false;
    const QString rotate = "a56c1400a5ff01000000000000000000d59f03ae";
    QTest::newRow("stream on, off") << "66"
                                    << QStringList{"a56c1500a5ff0100000000000000000087015303ae",
                                                   "a56c1500a5ff0100000000000000000087005203ae"}
                                    << false << false;
    QTest::newRow("rotate twice") << "88" << QStringList{rotate, rotate} << false << false;
}

void TestRvx3410Panel::keys()
{
    QFETCH(QString, presses);
    QFETCH(QStringList, sent);
    QFETCH(bool, rec);
    QFETCH(bool, pause);

    Rig rig;
    rig.settle();
    RVX_3410_Upper_Widget *up = rig.panel.upperRow();
    bool stream = false;
    bool rotate = false;
    for (QChar key : presses) {
        if (key == '4')
            up->btnF4()->click();
        else if (key == '5')
            up->btnF5()->click();
        else if (key == '6')
            up->btnF6()->click(), stream = !stream;
        else if (key == '8')
            up->btnF8()->click(), rotate = !rotate;
    }
    QCOMPARE(rig.wire(), frames(sent));
    QCOMPARE(up->f4On(), rec);
    QCOMPARE(up->f5On(), pause);
    QCOMPARE(lit(up->btnF4(), "red/F4.bmp"), rec);
    QCOMPARE(lit(up->btnF5(), "green/F5.bmp"), pause);
    QCOMPARE(up->f6On(), stream);
    QCOMPARE(up->f8On(), rotate);
    QCOMPARE(lit(up->btnF8(), "green/F8.bmp"), rotate);
}

void TestRvx3410Panel::menuKeys_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("litPicture");
    QTest::addColumn<QStringList>("onPress");
    QTest::addColumn<QStringList>("onRelease");

    QTest::newRow("up") << 0 << "green/Up.bmp" << QStringList{"a56c1600a5ff01000000000000000000d94101e703ae"}
                        << QStringList{"a56c1600a5ff01000000000000000000d94100e603ae"};
    // The menu key sends its press only.
    QTest::newRow("menu") << 1 << "rgb(41,129,36)"
                          << QStringList{"a56c1600a5ff01000000000000000000d96b011104ae"} << QStringList();
    QTest::newRow("down") << 2 << "green/Down.bmp"
                          << QStringList{"a56c1600a5ff01000000000000000000d94201e803ae"}
                          << QStringList{"a56c1600a5ff01000000000000000000d94200e703ae"};
}

void TestRvx3410Panel::menuKeys()
{
    QFETCH(int, key);
    QFETCH(QString, litPicture);
    QFETCH(QStringList, onPress);
    QFETCH(QStringList, onRelease);

    Rig rig;
    rig.settle();
    RVX_3410_Middle_widget *mid = rig.panel.middleRow();
    QPushButton *button = QList<QPushButton *>{mid->btnMenuUp(), mid->btnMenu(), mid->btnMenuDown()}.at(key);
    const QByteArray pictureName = litPicture.toLatin1();

    QTest::mousePress(button, Qt::LeftButton);
    QCOMPARE(rig.wire(), frames(onPress));
    QVERIFY(lit(button, pictureName.constData()));
    QTest::mouseRelease(button, Qt::LeftButton);
    QCOMPARE(rig.wire(), frames(onRelease));
    QVERIFY(!lit(button, pictureName.constData()));
}

void TestRvx3410Panel::sourcesStartAtFirstEntry()
{
    Rig rig;
    RVX_3410_Middle_widget *mid = rig.panel.middleRow();
    QCOMPARE(mid->ch1Source()->currentIndex() + mid->ch2Source()->currentIndex(), 0);
    // Showing the first source sent nothing: only the read of the binding went out.
    QCOMPARE(rig.wire(), QList<QByteArray>{ReadState});
    rig.settle();
    // A source is chosen, so a level goes out without a warning.
    mid->ch1Volume()->setValue(30);
    QCOMPARE(rig.wire(), frames({"a56c1500a5ff01000000000000000000ce1eb703ae"}));
}

void TestRvx3410Panel::delayedRead()
{
    QElapsedTimer clock;
    clock.start();
    Rig rig;
    QVERIFY(rig.panel.upperRow()->stateReadTimer()->isActive());
    QVERIFY(rig.unit.waitFor(1));
    QVERIFY(rig.unit.waitFor(2, 6000));
    // A coarse timer may fire up to 5 % early.
    QVERIFY2(clock.elapsed() >= 2850, qPrintable(QString::number(clock.elapsed())));
    QCOMPARE(rig.wire(), (QList<QByteArray>{ReadState, ReadState}));
    QVERIFY(!rig.panel.upperRow()->stateReadTimer()->isActive());
}

void TestRvx3410Panel::readKeyCancelsDelayedRead()
{
    Rig rig;
    rig.panel.upperRow()->btnRead()->click();
    QVERIFY(!rig.panel.upperRow()->stateReadTimer()->isActive());
    QCOMPARE(rig.wire(), (QList<QByteArray>{ReadState, ReadState}));
}

void TestRvx3410Panel::returnKeyEmitsExit()
{
    Rig rig;
    QSignalSpy exits(&rig.panel, &RVX3410UI::ExitSignals);
    rig.panel.upperRow()->btnReturn()->click();
    QCOMPARE(exits.count(), 1);
    QVERIFY(!rig.panel.upperRow()->btnClose());
    QCOMPARE(rig.panel.titleBar()->modelName()->text(), QStringLiteral("RVX3410"));
}

QTEST_MAIN(TestRvx3410Panel)
#include "tst_rvx3410ui.moc"
