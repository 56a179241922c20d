#include "SwitcherData/rvx5all_workdata.h"
#include "linktest.h"

using Link = RVX5ALL_workdata;
using Call = LinkTest::Call<Link>;
Q_DECLARE_METATYPE(Call)

namespace {

// A 25-byte state payload: PGM 1, PVW 2, MIX, CH1 IN1 at 100, CH2 MIC_IN1 at 50, wipe 4 ...
const QByteArray Payload = hex("0102010364083204040001010201020280017000010b000001");

} // namespace

class TestRvx5AllWorkdata : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { LinkTest::keepSendLogOn("kova.rvx5all"); }
    void init() { QVERIFY(m_rig.open()); }
    void cleanup() { m_rig.close(); }

    void commandOnTheWire_data();
    void commandOnTheWire() { LinkTest::checkOnTheWire(m_rig, "kova.rvx5all"); }
    void setIpMovesLaterCommands() { LinkTest::checkSetIpMovesLaterCommands(m_rig); }
    void hisAddressAndDns();

    void decode_data();
    void decode() { LinkTest::checkDecode(m_rig); }

private:
    LinkTest::Rig<Link> m_rig;
};

void TestRvx5AllWorkdata::commandOnTheWire_data()
{
    LinkTest::wireColumns<Link>();
    LinkTest::sharedWireRows<Link>();

    using W = Link;
    const auto row = LinkTest::wireRow<Link>;
    row("rate has its own code", "点击RATE切换特效senbuf的数据", "a56c1500a5ff01000000000000000000a5027203ae",
        [](W &w) { w.SendCMDRATE(2); });
    // The 8000 series has its own wipe patterns: U 2A, D 2E, L 28, R 2C.
    row("wipe up", "", "a56c1400a5ff010000000000000000008f5903ae a56c1500a5ff01000000000000000000922a8703ae",
        [](W &w) { w.SendCMDTRANSITIONS(3); });
    row("wipe down", "",
        "a56c1400a5ff010000000000000000008f5903ae a56c1500a5ff01000000000000000000922e8b03ae",
        [](W &w) { w.SendCMDTRANSITIONS(4); });
    row("wipe left", "",
        "a56c1400a5ff010000000000000000008f5903ae a56c1500a5ff0100000000000000000092288503ae",
        [](W &w) { w.SendCMDTRANSITIONS(5); });
    row("wipe right", "",
        "a56c1400a5ff010000000000000000008f5903ae a56c1500a5ff01000000000000000000922c8903ae",
        [](W &w) { w.SendCMDTRANSITIONS(6); });
    // The output format goes out as its code, not its list position.
    row("format 0 is 1080P60", "F1 分辨率设置 senbuf的数据", "a56c1500a5ff01000000000000000000a3077503ae",
        [](W &w) { w.SendCMDF1(0); });
    row("format 1 is 1080P50", "", "a56c1500a5ff01000000000000000000a30b7903ae",
        [](W &w) { w.SendCMDF1(1); });
    row("format 3 is 1080I50", "", "a56c1500a5ff01000000000000000000a3016f03ae",
        [](W &w) { w.SendCMDF1(3); });
    row("format 5 is 1080P25", "", "a56c1500a5ff01000000000000000000a30d7b03ae",
        [](W &w) { w.SendCMDF1(5); });
    row("format 6 is 1080P24", "", "a56c1500a5ff01000000000000000000a3057303ae",
        [](W &w) { w.SendCMDF1(6); });
    row("format past the table", "", "", [](W &w) { w.SendCMDF1(7); });
    row("pop", "点击POP按钮senbuf的数据", "a56c1500a5ff01000000000000000000a7017303ae",
        [](W &w) { w.SendCMDPOP(1); });
    // The inset commands of POP are sent without a log line.
    row("pop window", "-", "a56c1500a5ff01000000000000000000a8027503ae",
        [](W &w) { w.SendCMDPOP_Window(2); });
    row("pop border enable", "-", "a56c1500a5ff01000000000000000000a9017503ae",
        [](W &w) { w.SendCMDPOP_Border_Enable(1); });
    row("pop border colour", "-", "a56c1500a5ff01000000000000000000aa047903ae",
        [](W &w) { w.SendCMDPOP_Border_Color(4); });
    row("pop border width", "-", "a56c1500a5ff01000000000000000000ab067c03ae",
        [](W &w) { w.SendCMDPOP_Border_Width(6); });
    row("pop h low first", "-", "a56c1600a5ff01000000000000000000ac23019c03ae",
        [](W &w) { w.SendCMDPOP_H_Position(0x0123); });
    row("pop v low first", "-", "a56c1600a5ff01000000000000000000ad5604d303ae",
        [](W &w) { w.SendCMDPOP_V_Position(0x0456); });
    row("rvx5350 ch1 in1", "选择CH1下拉列表 senbuf的数据", "a56c1500a5ff01000000000000000000b9038703ae",
        [](W &w) { w.SendCMDCH1_for5350(0); });
    // CH2 of the RVX5350 logs the CH1 label.
    row("rvx5350 ch2 mic 1", "选择CH1下拉列表 senbuf的数据", "a56c1500a5ff01000000000000000000ba088d03ae",
        [](W &w) { w.SendCMDCH2_for5350(2); });
    row("rvx5350 ch2 mic 2", "", "a56c1500a5ff01000000000000000000ba008503ae",
        [](W &w) { w.SendCMDCH2_for5350(3); });
    row("rvx5350 source past the table", "", "", [](W &w) { w.SendCMDCH1_for5350(4); });
    row("pgm bar", "点击bar按钮senbuf的数据", "a56c1500a5ff01000000000000000000d701a303ae",
        [](W &w) { w.SendCMDPGMBAR(0x101); });
    row("pvw bar", "点击bar按钮senbuf的数据", "a56c1500a5ff01000000000000000000d800a303ae",
        [](W &w) { w.SendCMDPVWBAR(0); });
    row("reset", "点击复位按钮senbuf的数据", "a56c1400a5ff010000000000000000000bd502ae", &W::SendCMDRESET);
    row("read url goes to the his board", "读取设备上His板URL信息 senbuf的数据",
        "a56c1500e0ff010000000000000000006a037303ae", [](W &w) { w.SendCMD_Read_Url(3); });
}

void TestRvx5AllWorkdata::hisAddressAndDns()
{
    m_rig.link->SendCMD_Set_HIS_DNS(hex("08080404"), "8.8.4.4");
    QCOMPARE(m_rig.his->take(1).value(0), hex("a56c1c00e0ff01000000000000000000230808040402503b8c6104ae"));
    QCOMPARE(m_rig.link->on_HIS_DNS(), QString("8.8.4.4"));

    LinkTest::checkSetHisIpMoves(m_rig, [this](WireCapture &moved) {
        m_rig.link->SendCMD_Set_Url(2, "key", "rtmp://x");
        const QByteArray url = moved.take(1).value(0);
        QCOMPARE(url.size(), 809);
        QCOMPARE(url.left(20), hex("a56c2903e0ff0100000000000000000067000203"));
        QCOMPARE(url.mid(36, 2), hex("0800"));
        QCOMPARE(url, seal(url.left(806)));
    });
}

void TestRvx5AllWorkdata::decode_data()
{
    LinkTest::sharedDecodeRows(Payload);
    // The 8000 series drops a long reply that has no record piece.
    QTest::newRow("long form of exactly 17 pieces is dropped")
        << QByteArrayList{LinkTest::stateReply(LinkTest::longBody("SN-0042", 17) + "x")} << QStringList{};
}

QTEST_GUILESS_MAIN(TestRvx5AllWorkdata)
#include "tst_rvx5all_workdata.moc"
