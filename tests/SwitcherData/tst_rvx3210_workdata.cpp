#include "SwitcherData/rvx3210_workdata.h"
#include "linktest.h"

using Link = RVX3210_workdata;
using Call = LinkTest::Call<Link>;
Q_DECLARE_METATYPE(Call)

namespace {

const QByteArray Record = hex("0201010732036401000000010203010110008000010b00000000");

} // namespace

class TestRvx3210Link : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { LinkTest::keepSendLogOn("kova.rvx3210"); }
    void init() { QVERIFY(m_rig.open()); }
    void cleanup() { m_rig.close(); }

    void commandOnTheWire_data();
    void commandOnTheWire() { LinkTest::checkOnTheWire(m_rig, "kova.rvx3210"); }
    void setIpMovesLaterCommands() { LinkTest::checkSetIpMovesLaterCommands(m_rig); }
    void setHisIpStoresTextsAndMoves();
    void urlFrame();

    void decode_data();
    void decode() { LinkTest::checkDecode(m_rig); }
    void stallAt1057();
    void releasePortFreesIt();

private:
    LinkTest::Rig<Link> m_rig;
};

void TestRvx3210Link::commandOnTheWire_data()
{
    LinkTest::wireColumns<Link>();
    LinkTest::sharedWireRows<Link>();

    using W = Link;
    const auto row = LinkTest::wireRow<Link>;
    // A wipe selects the wipe family, then the direction: U 25, D 29, L 23, R 27.
    row("wipe up", "", "a56c1400a5ff010000000000000000008f5903ae a56c1500a5ff0100000000000000000092258203ae",
        [](W &w) { w.SendCMDTRANSITIONS(3); });
    row("wipe down", "",
        "a56c1400a5ff010000000000000000008f5903ae a56c1500a5ff0100000000000000000092298603ae",
        [](W &w) { w.SendCMDTRANSITIONS(4); });
    row("wipe left", "",
        "a56c1400a5ff010000000000000000008f5903ae a56c1500a5ff0100000000000000000092238003ae",
        [](W &w) { w.SendCMDTRANSITIONS(5); });
    row("wipe right", "",
        "a56c1400a5ff010000000000000000008f5903ae a56c1500a5ff0100000000000000000092278403ae",
        [](W &w) { w.SendCMDTRANSITIONS(6); });
    row("set wipe", "", "a56c1400a5ff010000000000000000008f5903ae", &W::SET_WIPE);
    // The output format goes out as its list position.
    row("output format", "", "a56c1500a5ff01000000000000000000a3067403ae", [](W &w) { w.SendCMDF1(6); });
    row("rate", "", "a56c1500a5ff01000000000000000000b1027e03ae", [](W &w) { w.SendCMDRATE(2); });
    row("ch1 source 3", "", "a56c1500a5ff01000000000000000000b9058903ae", [](W &w) { w.SendCMDCH1(3); });
    row("ch1 source 4", "", "a56c1500a5ff01000000000000000000b9068a03ae", [](W &w) { w.SendCMDCH1(4); });
    row("ch1 source 5", "", "a56c1500a5ff01000000000000000000b9088c03ae", [](W &w) { w.SendCMDCH1(5); });
    row("ch2 source 1", "", "a56c1500a5ff01000000000000000000ba038803ae", [](W &w) { w.SendCMDCH2(1); });
    row("ch2 source 2", "", "a56c1500a5ff01000000000000000000ba048903ae", [](W &w) { w.SendCMDCH2(2); });
    row("menu", "", "a56c1600a5ff01000000000000000000d90301a903ae", [](W &w) { w.SendCMDMenu(3, 1); });
    row("raw test bytes", "", "0102aa", [](W &w) { w.SendCMDTest(hex("0102aa")); });
    row("read url slot", "", "a56c1500e0ff010000000000000000006a027203ae",
        [](W &w) { w.SendCMD_Read_Url(0x102); });
    row("set his network", "设置设备上His板IP、网关、掩码、senbuf的数据",
        "a56c2000e0ff0100000000000000000005c0a80132ffffff00c0a801011809ae", [](W &w) {
            w.SendCMD_Set_HIS_IP(hex("c0a80132"), hex("ffffff00"), hex("c0a80101"),
                                 {"192.168.1.50", "255.255.255.0", "192.168.1.1"});
        });
    row("set his dns", "设置设备上His板DNS senbuf的数据",
        "a56c1c00e0ff01000000000000000000230808040402503b8c6104ae",
        [](W &w) { w.SendCMD_Set_HIS_DNS(hex("08080404"), "8.8.4.4"); });
}

void TestRvx3210Link::setHisIpStoresTextsAndMoves()
{
    LinkTest::checkSetHisIpMoves(m_rig, [this](WireCapture &moved) {
        m_rig.link->SendCMD_Read_Url(1);
        QCOMPARE(moved.take(1).value(0), hex("a56c1500e0ff010000000000000000006a017103ae"));
    });
}

void TestRvx3210Link::urlFrame()
{
    m_rig.link->SendCMD_Set_Url(3, "cam", "rtmp://127.0.0.9/live/a");
    const QByteArray got = m_rig.his->take(1).value(0);
    QCOMPARE(got.size(), 809);
    QCOMPARE(got.left(20).toHex(' '), hex("a56c2903e0ff0100000000000000000067000303").toHex(' '));
    QCOMPARE(got.mid(20, 16), QByteArray("cam").leftJustified(16, '\0'));
    QCOMPARE(got.mid(36, 2), hex("1700"));
    QCOMPARE(got.mid(38, 768), QByteArray("rtmp://127.0.0.9/live/a").leftJustified(768, '\0'));
    QCOMPARE(got, seal(got.left(806)));
}

void TestRvx3210Link::decode_data()
{
    using LinkTest::emits;
    LinkTest::sharedDecodeRows(Record);

    // The RVX3210 family passes an empty record on where the long form has no record piece.
    QTest::newRow("long form of 17 pieces passes an empty record")
        << QByteArrayList{LinkTest::stateReply(LinkTest::longBody("SN", 17) + "x")}
        << emits("serial", "SN") + emits("state", "");

    const QByteArray f3410 = reply(0xA5FF, 0x49, "#\x01#" + Record + "#", 0x27);
    QTest::newRow("rvx3410 state frame")
        << QByteArrayList{f3410} << emits("3410", f3410) + emits("state", Record);
    const QByteArray other3410 = reply(0xA5FF, 0x30, hex("01"), 0x27);
    QTest::newRow("rvx3410 other frame") << QByteArrayList{other3410} << emits("3410", other3410);
}

void TestRvx3210Link::stallAt1057()
{
    QSignalSpy sState(m_rig.link.get(), &Link::on_signals_3210Data);
    const QByteArray shortForm = seal(hex("a56c3200a5ff0100000000000000000049") + "#\x01#" + Record + "#");

    // A frame head declaring 1056 bytes holds the buffer; completed, it still decodes.
    QByteArray big = hex("a56c2004e0ff010000000000000000002400") + QByteArray(1035, '\x11');
    big = seal(big);
    QCOMPARE(big.size(), 1056);
    QSignalSpy sHis(m_rig.link.get(), &Link::on_signals_3210HISData);
    LinkTest::deliver(m_rig, {big.left(1000), big.mid(1000)});
    QCOMPARE(sHis.count(), 1);
    QCOMPARE(sHis.at(0).at(0).toByteArray().left(3), hex("001111"));

    // A head declaring more than the buffer may ever hold: once 1057 bytes are held the link
    // decodes nothing more.
    LinkTest::deliver(m_rig, {hex("a56cffff") + QByteArray(1000, '\0'), QByteArray(57, '\0'), shortForm});
    QCOMPARE(sState.count(), 0);
}

void TestRvx3210Link::releasePortFreesIt()
{
    m_rig.main.reset();
    m_rig.his.reset();
    m_rig.link->releasePort();
    QVERIFY(!m_rig.link->isBound());
    // Bound without sharing: succeeds only when nobody else holds the port.
    QUdpSocket exclusive;
    QVERIFY(exclusive.bind(QHostAddress::AnyIPv4, LinkTest::Port, QAbstractSocket::DontShareAddress));
}

QTEST_GUILESS_MAIN(TestRvx3210Link)
#include "tst_rvx3210_workdata.moc"
