// Control-frame builders against byte vectors written out by hand from the wire format.
#include "SwitcherData/workdata.h"
#include "testframes.h"

#include <QDateTime>
#include <QtTest>
#include <functional>

using Builder = std::function<uint16_t(uint8_t *)>;
Q_DECLARE_METATYPE(Builder)

class tst_Frames : public QObject
{
    Q_OBJECT
private slots:
    void builders_data();
    void builders();
    void checksumKeepsSixteenBits_data();
    void checksumKeepsSixteenBits();
};

void tst_Frames::builders_data()
{
    QTest::addColumn<Builder>("build");
    QTest::addColumn<QByteArray>("expected");
    using S = SWITCHER_DATA;
    auto row = [](const char *name, Builder b, const char *h) { QTest::newRow(name) << b << hex(h); };
    // The reference frame: A5 FF, command 0x10, sum 0x02DA.
    row(
        "none", [](uint8_t *b) { return S::None_Char_Data(b, 0xA5, 0xFF, 0x10); },
        "a56c1400a5ff0100000000000000000010da02ae");
    row(
        "single", [](uint8_t *b) { return S::Single_Char_Data(b, 0xA5, 0xFF, 0x10, 1); },
        "a56c1500a5ff010000000000000000001001dc02ae");
    row(
        "double", [](uint8_t *b) { return S::Double_Char_Data(b, 0xA5, 0xFF, 0x10, 1, 2); },
        "a56c1600a5ff01000000000000000000100102df02ae");
    row(
        "three", [](uint8_t *b) { return S::Three_Char_Data(b, 0xA5, 0xFF, 0x10, 1, 2, 3); },
        "a56c1700a5ff0100000000000000000010010203e302ae");
    row(
        "four", [](uint8_t *b) { return S::Four_Char_Data(b, 0xA5, 0xFF, 0x10, 1, 2, 3, 4); },
        "a56c1800a5ff010000000000000000001001020304e802ae");
    // 2026-11-15 was a Sunday: day of week 7. Every field is packed BCD.
    row(
        "search",
        [](uint8_t *b) { return S::searchFrameAt(b, QDateTime(QDate(2026, 11, 15), QTime(19, 40, 5))); },
        "a56c1b0081ff01000000000000000000ff261115071940055d04ae");
    // New address 192.168.1.20, mask 255.255.255.0, gateway 192.168.1.1, command 5.
    static const SET_DEV_IP rec = {{192, 168, 1, 20}, {255, 255, 255, 0}, {192, 168, 1, 1}};
    row(
        "address, main board A5: kind 00", [](uint8_t *b) { return S::Set_ipCom(b, 0xA5, 0xFF, 0x05, rec); },
        "a56c2000a5ff0000000000000000000005c0a80114ffffff00c0a80101be08ae");
    row(
        "address, HIS board E0: kind 01", [](uint8_t *b) { return S::Set_ipCom(b, 0xE0, 0xFF, 0x05, rec); },
        "a56c2000e0ff0100000000000000000005c0a80114ffffff00c0a80101fa08ae");
    // Any other class: no kind byte, everything one place earlier, sum over 29 bytes that
    // include the caller's zero at offset 28, last byte left as the buffer had it.
    row(
        "address, HIS board E5: shifted", [](uint8_t *b) { return S::Set_ipCom(b, 0xE5, 0xFF, 0x05, rec); },
        "a56c2000e5ff00000000000000000005c0a80114ffffff00c0a80101fe08ae00");
}

void tst_Frames::builders()
{
    QFETCH(Builder, build);
    QFETCH(QByteArray, expected);
    uint8_t buf[128] = {};
    const uint16_t len = build(buf);
    QCOMPARE(QByteArray(reinterpret_cast<const char *>(buf), len).toHex(' '), expected.toHex(' '));
    for (int i = len; i < 128; ++i) // the rest of the buffer is left alone
        QCOMPARE(buf[i], uint8_t(0));
}

void tst_Frames::checksumKeepsSixteenBits_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<int>("sum");
    QTest::newRow("empty") << QByteArray() << 0;
    QTest::newRow("plain") << hex("010203") << 6;
    // 258 bytes of 0xFF add up to 0x100FE: only 0x00FE survives.
    QTest::newRow("wraps past 0xFFFF") << QByteArray(258, char(0xFF)) << 0x00FE;
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

QTEST_APPLESS_MAIN(tst_Frames)
#include "tst_frames.moc"
