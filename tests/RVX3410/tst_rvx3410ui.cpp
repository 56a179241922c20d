// RVX3410 panel offscreen: the record bytes 26-28 and their lamps, REC/PAUSE/STREAM/ROTATE and
// the menu keys on the wire, and the delayed state read.
#include "RVX3210/below_widget.h"
#include "RVX3210/upper_widget.h"
#include "RVX3410/rvx3410ui.h"
#include "RVX3410/rvx_3410_middle_widget.h"
#include "RVX3410/rvx_3410_upper_widget.h"
#include "SwitcherData/rvx3210_workdata.h"
#include "testframes.h"
#include "wirecapture.h"

#include <QComboBox>
#include <QElapsedTimer>
#include <QPushButton>
#include <QSpinBox>
#include <QtTest>

namespace {

// Not a frame: bounds a capture, so "nothing more was sent" needs no wait.
const QByteArray Marker("end of capture");
const QByteArray ReadState = hex("a56c1400a5ff01000000000000000000491303ae");

// A 29-byte record of a unit at rest, with bytes 9 and 26-28 as given.
QByteArray record(uint8_t ftb, uint8_t b26, uint8_t b27, uint8_t b28)
{
    QByteArray r = hex("0102000732033201000000000002000000000000010700000000");
    r[9] = char(ftb);
    return r.append(char(b26)).append(char(b27)).append(char(b28));
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
};

void TestRvx3410Panel::stateBytes_data()
{
    QTest::addColumn<QByteArray>("bytes"); // 26, 27, 28
    QTest::addColumn<QString>("on");       // of "rec pause stream rotate ftb"
    QTest::newRow("idle") << hex("000000") << "";
    QTest::newRow("paused") << hex("100000") << "rec pause";
    // Code 3 blinks FTB (read after the FTB byte 0, which stops it), not REC.
    QTest::newRow("code 3") << hex("180000") << "rec ftb";
    QTest::newRow("other bits of 26") << hex("e70000") << "";
    QTest::newRow("recording among others") << hex("0f0000") << "rec";
    QTest::newRow("all of 27 but bit 2") << hex("00fb00") << "";
    QTest::newRow("streaming") << hex("000400") << "stream";
    QTest::newRow("rotated, low bits set") << hex("00007f") << "rotate";
    QTest::newRow("bits 6-7 = 11") << hex("0000c0") << "";
}

void TestRvx3410Panel::stateBytes()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, on);
    const bool rec = on.contains("rec"), pause = on.contains("pause"), stream = on.contains("stream"),
               rotate = on.contains("rotate"), ftbBlinks = on.contains("ftb");
    Rig rig;
    rig.settle();
    RVX_3410_Upper_Widget *up = rig.panel.upperRow();
    // From everything lit and from everything dark, the record alone decides.
    for (const QByteArray &before : {record(0, 0x10, 0x04, 0x40), record(0, 0x00, 0x00, 0x00)}) {
        rig.panel.on_toRead_3210Dtat(before);
        rig.panel.on_toRead_3210Dtat(record(0, uint8_t(bytes[0]), uint8_t(bytes[1]), uint8_t(bytes[2])));
        QCOMPARE((QList<bool>{up->f4On(), up->f5On(), up->f6On(), up->f8On()}),
                 (QList<bool>{rec, pause, stream, rotate}));
        QCOMPARE((QList<bool>{lit(up->btnF5(), "green/F5.bmp"), lit(up->btnF6(), "green/F6.bmp"),
                              lit(up->btnF8(), "green/F8.bmp")}),
                 (QList<bool>{pause, stream, rotate}));
        if (rec != ftbBlinks) // code 3 sets REC without touching its look
            QCOMPARE(lit(up->btnF4(), "red/F4.bmp"), rec);
        QCOMPARE(up->blinkTimer()->isActive(), ftbBlinks);
        QVERIFY(!up->recBlinkTimer()->isActive());
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
    QTest::addColumn<QByteArray>("sent");
    QTest::addColumn<bool>("rec");
    QTest::addColumn<bool>("pause");
    const QByteArray recOn = "a56c1500a5ff01000000000000000000b2017e03ae ";
    const QByteArray recOff = "a56c1500a5ff01000000000000000000b2007d03ae ";
    const QByteArray pause = "a56c1400a5ff01000000000000000000c58f03ae ";
    const QByteArray rotate = "a56c1400a5ff01000000000000000000d59f03ae ";
    QTest::newRow("pause alone") << "5" << QByteArray() << false << false;
    QTest::newRow("rec, pause") << "45" << recOn + pause << true << true;
    QTest::newRow("rec, pause, resume") << "455" << recOn + pause + pause << true << false;
    QTest::newRow("pause after stop") << "4545" << recOn + pause + recOff << false << false;
    QTest::newRow("stream on, off") << "66"
                                    << QByteArray("a56c1500a5ff0100000000000000000087015303ae "
                                                  "a56c1500a5ff0100000000000000000087005203ae")
                                    << false << false;
    QTest::newRow("rotate twice") << "88" << rotate + rotate << false << false;
}

void TestRvx3410Panel::keys()
{
    QFETCH(QString, presses);
    QFETCH(QByteArray, sent);
    QFETCH(bool, rec);
    QFETCH(bool, pause);
    Rig rig;
    rig.settle();
    RVX_3410_Upper_Widget *up = rig.panel.upperRow();
    const QMap<char, QPushButton *> key{
        {'4', up->btnF4()}, {'5', up->btnF5()}, {'6', up->btnF6()}, {'8', up->btnF8()}};
    for (QChar k : presses)
        key[k.toLatin1()]->click();
    QCOMPARE(rig.wire(), hexList(sent));
    // STREAM and ROTATE are pressed twice or never: off again.
    QCOMPARE((QList<bool>{up->f4On(), up->f5On(), up->f6On(), up->f8On()}),
             (QList<bool>{rec, pause, false, false}));
    QCOMPARE((QList<bool>{lit(up->btnF4(), "red/F4.bmp"), lit(up->btnF5(), "green/F5.bmp"),
                          lit(up->btnF8(), "green/F8.bmp")}),
             (QList<bool>{rec, pause, false}));
}

void TestRvx3410Panel::menuKeys_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("litPicture");
    QTest::addColumn<QByteArray>("onPress");
    QTest::addColumn<QByteArray>("onRelease");
    QTest::newRow("up") << 0 << "green/Up.bmp" << QByteArray("a56c1600a5ff01000000000000000000d94101e703ae")
                        << QByteArray("a56c1600a5ff01000000000000000000d94100e603ae");
    // The menu key sends its press only.
    QTest::newRow("menu") << 1 << "rgb(41,129,36)"
                          << QByteArray("a56c1600a5ff01000000000000000000d96b011104ae") << QByteArray();
    QTest::newRow("down") << 2 << "green/Down.bmp"
                          << QByteArray("a56c1600a5ff01000000000000000000d94201e803ae")
                          << QByteArray("a56c1600a5ff01000000000000000000d94200e703ae");
}

void TestRvx3410Panel::menuKeys()
{
    QFETCH(int, key);
    QFETCH(QString, litPicture);
    QFETCH(QByteArray, onPress);
    QFETCH(QByteArray, onRelease);
    Rig rig;
    rig.settle();
    RVX_3410_Middle_widget *mid = rig.panel.middleRow();
    QPushButton *button = QList<QPushButton *>{mid->btnMenuUp(), mid->btnMenu(), mid->btnMenuDown()}.at(key);
    const QByteArray picture = litPicture.toLatin1();
    QTest::mousePress(button, Qt::LeftButton);
    QCOMPARE(rig.wire(), hexList(onPress));
    QVERIFY(lit(button, picture.constData()));
    QTest::mouseRelease(button, Qt::LeftButton);
    QCOMPARE(rig.wire(), hexList(onRelease));
    QVERIFY(!lit(button, picture.constData()));
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
    QCOMPARE(rig.wire(), hexList("a56c1500a5ff01000000000000000000ce1eb703ae"));
}

void TestRvx3410Panel::delayedRead()
{
    QElapsedTimer clock;
    clock.start();
    {
        Rig rig;
        QVERIFY(rig.unit.waitFor(2, 6000));
        // A coarse timer may fire up to 5 % early.
        QVERIFY2(clock.elapsed() >= 2850, qPrintable(QString::number(clock.elapsed())));
        QCOMPARE(rig.wire(), (QList<QByteArray>{ReadState, ReadState}));
        QVERIFY(!rig.panel.upperRow()->stateReadTimer()->isActive());
    }
    // The read key stands in for the delayed read.
    Rig rig;
    rig.panel.upperRow()->btnRead()->click();
    QVERIFY(!rig.panel.upperRow()->stateReadTimer()->isActive());
    QCOMPARE(rig.wire(), (QList<QByteArray>{ReadState, ReadState}));
}

QTEST_MAIN(TestRvx3410Panel)
#include "tst_rvx3410ui.moc"
