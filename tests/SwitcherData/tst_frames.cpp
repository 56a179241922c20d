// Control-frame builders against byte vectors written out by hand from the wire format.
#include "SwitcherData/workdata.h"
#include "testframes.h"

#include <QDateTime>
#include <QtTest>
#include <functional>

using Builder = std::function<uint16_t(uint8_t *)>;
Q_DECLARE_METATYPE(Builder)

namespace {

QByteArray asArray(const uint8_t *buf, int len)
{
    return QByteArray(reinterpret_cast<const char *>(buf), len);
}

uint8_t bcd(int v)
{
    return uint8_t(v / 10 * 16 + v % 10);
}

} // namespace

class tst_Frames : public QObject
{
    Q_OBJECT
private slots:
    void dataCountBuilders_data();
    void dataCountBuilders();
    void checksumKeepsSixteenBits_data();
    void checksumKeepsSixteenBits();
    void searchFrameForFixedMoment();
    void searchFrameNowHasTodaysDate();
    void addressFrame_data();
    void addressFrame();
    void buildersLeaveTheRestOfTheBufferAlone();
};

void tst_Frames::dataCountBuilders_data()
{
    QTest::addColumn<Builder>("build");
    QTest::addColumn<QByteArray>("expected");
    using S = SWITCHER_DATA;
    // The reference frame: A5 FF, command 0x10, sum 0x02DA.
    QTest::newRow("none, A5 FF cmd 10")
        << Builder([](uint8_t *b) { return S::None_Char_Data(b, 0xA5, 0xFF, 0x10); })
        << hex("a56c1400a5ff0100000000000000000010da02ae");
    QTest::newRow("single") << Builder([](uint8_t *b) { return S::Single_Char_Data(b, 0xA5, 0xFF, 0x10, 1); })
                            << hex("a56c1500a5ff010000000000000000001001dc02ae");
    QTest::newRow("double") << Builder([](uint8_t *b) {
        return S::Double_Char_Data(b, 0xA5, 0xFF, 0x10, 1, 2);
    }) << hex("a56c1600a5ff01000000000000000000100102df02ae");
    QTest::newRow("three") << Builder([](uint8_t *b) {
        return S::Three_Char_Data(b, 0xA5, 0xFF, 0x10, 1, 2, 3);
    }) << hex("a56c1700a5ff0100000000000000000010010203e302ae");
    QTest::newRow("four") << Builder([](uint8_t *b) {
        return S::Four_Char_Data(b, 0xA5, 0xFF, 0x10, 1, 2, 3, 4);
    }) << hex("a56c1800a5ff010000000000000000001001020304e802ae");
}

void tst_Frames::dataCountBuilders()
{
    QFETCH(Builder, build);
    QFETCH(QByteArray, expected);
    uint8_t buf[128] = {};
    const uint16_t len = build(buf);
    QCOMPARE(asArray(buf, len).toHex(' '), expected.toHex(' '));
}

void tst_Frames::checksumKeepsSixteenBits_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<int>("sum");
    QTest::newRow("empty") << QByteArray() << 0;
    QTest::newRow("plain") << hex("010203") << 6;
    // 258 bytes of 0xFF add up to 0x100FE: only 0x00FE survives.
    QTest::newRow("wraps past 0xFFFF") << QByteArray(258, char(0xFF)) << 0x00FE;
    // 257 * 255 = 0xFFFF exactly, one more byte of 1 wraps to zero.
    QTest::newRow("wraps to zero") << QByteArray(257, char(0xFF)).append(char(1)) << 0;
}

void tst_Frames::checksumKeepsSixteenBits()
{
    QFETCH(QByteArray, data);
    QFETCH(int, sum);
    QCOMPARE(
        int(SWITCHER_DATA::CalcCheckSum(reinterpret_cast<const uint8_t *>(data.constData()), data.size())),
        sum);
}

void tst_Frames::searchFrameForFixedMoment()
{
    // 2026-11-15 was a Sunday: day of week 7. Every field is packed BCD.
    uint8_t buf[128] = {};
    const uint16_t len = SWITCHER_DATA::searchFrameAt(buf, QDateTime(QDate(2026, 11, 15), QTime(19, 40, 5)));
    QCOMPARE(asArray(buf, len).toHex(' '),
             hex("a56c1b0081ff01000000000000000000ff261115071940055d04ae").toHex(' '));
}

void tst_Frames::searchFrameNowHasTodaysDate()
{
    uint8_t buf[128] = {};
    const QDate before = QDate::currentDate();
    const uint16_t len = SWITCHER_DATA::SendBroadcastBuf(buf);
    const QDate after = QDate::currentDate();
    QCOMPARE(int(len), 27);
    const uint8_t day = buf[19];
    QVERIFY(day == bcd(before.day()) || day == bcd(after.day()));
    QCOMPARE(buf[20], bcd(after.dayOfWeek()));
    QCOMPARE(buf[26], uint8_t(0xAE));
}

void tst_Frames::addressFrame_data()
{
    QTest::addColumn<int>("devClass");
    QTest::addColumn<QByteArray>("expected");
    // New address 192.168.1.20, mask 255.255.255.0, gateway 192.168.1.1, command 5.
    QTest::newRow("main board A5: kind 00")
        << 0xA5 << hex("a56c2000a5ff0000000000000000000005c0a80114ffffff00c0a80101be08ae");
    QTest::newRow("HIS board E0: kind 01")
        << 0xE0 << hex("a56c2000e0ff0100000000000000000005c0a80114ffffff00c0a80101fa08ae");
    // Any other class: no kind byte, everything one place earlier, sum over 29 bytes that
    // include the caller's zero at offset 28, last byte left as the buffer had it.
    QTest::newRow("HIS board E5: shifted")
        << 0xE5 << hex("a56c2000e5ff00000000000000000005c0a80114ffffff00c0a80101fe08ae00");
}

void tst_Frames::addressFrame()
{
    QFETCH(int, devClass);
    QFETCH(QByteArray, expected);
    const SET_DEV_IP rec = {{192, 168, 1, 20}, {255, 255, 255, 0}, {192, 168, 1, 1}};
    uint8_t buf[128] = {};
    const uint16_t len = SWITCHER_DATA::Set_ipCom(buf, uint8_t(devClass), 0xFF, 0x05, rec);
    QCOMPARE(int(len), 32);
    QCOMPARE(asArray(buf, len).toHex(' '), expected.toHex(' '));
}

void tst_Frames::buildersLeaveTheRestOfTheBufferAlone()
{
    uint8_t buf[64];
    memset(buf, 0x5A, sizeof(buf));
    QCOMPARE(int(SWITCHER_DATA::Four_Char_Data(buf, 0xA5, 0xFF, 0xB4, 1, 2, 3, 4)), 24);
    for (int i = 24; i < 64; ++i)
        QCOMPARE(buf[i], uint8_t(0x5A));
}

QTEST_APPLESS_MAIN(tst_Frames)
#include "tst_frames.moc"
