// The 8000 series' own codes and tables on the reporting link; what it shares with the RVX3210
// family is checked in tst_rvx3210_workdata.
#include "SwitcherData/rvx5all_workdata.h"
#include "linktest.h"

using Link = RVX5ALL_workdata;
using Call = LinkTest::Call<Link>;
Q_DECLARE_METATYPE(Call)

class TestRvx5AllWorkdata : public QObject
{
    Q_OBJECT

private slots:
    void init() { QVERIFY(m_rig.open()); }
    void cleanup() { m_rig.close(); }

    void commandOnTheWire_data();
    void commandOnTheWire() { LinkTest::checkOnTheWire(m_rig); }
    void decode_data();
    void decode() { LinkTest::checkDecode(m_rig); }

private:
    LinkTest::Rig<Link> m_rig;
};

void TestRvx5AllWorkdata::commandOnTheWire_data()
{
    QTest::addColumn<Call>("call");
    QTest::addColumn<QByteArray>("frames");
    using W = Link;
    const auto row = LinkTest::wireRow<Link>;
    row("rate has its own code", "a56c1500" TO_MAIN "a5027203ae", [](W &w) { w.SendCMDRATE(2); });
    // Its own wipe patterns: U 2A, D 2E, L 28, R 2C.
    row("wipe up", "a56c1400" TO_MAIN "8f5903ae a56c1500" TO_MAIN "922a8703ae",
        [](W &w) { w.SendCMDTRANSITIONS(3); });
    row("wipe down", "a56c1400" TO_MAIN "8f5903ae a56c1500" TO_MAIN "922e8b03ae",
        [](W &w) { w.SendCMDTRANSITIONS(4); });
    row("wipe left", "a56c1400" TO_MAIN "8f5903ae a56c1500" TO_MAIN "92288503ae",
        [](W &w) { w.SendCMDTRANSITIONS(5); });
    row("wipe right", "a56c1400" TO_MAIN "8f5903ae a56c1500" TO_MAIN "922c8903ae",
        [](W &w) { w.SendCMDTRANSITIONS(6); });
    // The output format goes out as its code, not its list position.
    row("format 0 is 1080P60", "a56c1500" TO_MAIN "a3077503ae", [](W &w) { w.SendCMDF1(0); });
    row("format 3 is 1080I50", "a56c1500" TO_MAIN "a3016f03ae", [](W &w) { w.SendCMDF1(3); });
    row("format 6 is 1080P24", "a56c1500" TO_MAIN "a3057303ae", [](W &w) { w.SendCMDF1(6); });
    row("format past the table", "", [](W &w) { w.SendCMDF1(7); });
    row("pop", "a56c1500" TO_MAIN "a7017303ae", [](W &w) { w.SendCMDPOP(1); });
    row("pop window", "a56c1500" TO_MAIN "a8027503ae", [](W &w) { w.SendCMDPOP_Window(2); });
    row("pop border on", "a56c1500" TO_MAIN "a9017503ae", [](W &w) { w.SendCMDPOP_Border_Enable(1); });
    row("pop border colour", "a56c1500" TO_MAIN "aa047903ae", [](W &w) { w.SendCMDPOP_Border_Color(4); });
    row("pop border width", "a56c1500" TO_MAIN "ab067c03ae", [](W &w) { w.SendCMDPOP_Border_Width(6); });
    row("pop h low first", "a56c1600" TO_MAIN "ac23019c03ae", [](W &w) { w.SendCMDPOP_H_Position(0x123); });
    row("pop v low first", "a56c1600" TO_MAIN "ad5604d303ae", [](W &w) { w.SendCMDPOP_V_Position(0x456); });
    row("rvx5350 ch1 in1", "a56c1500" TO_MAIN "b9038703ae", [](W &w) { w.SendCMDCH1_for5350(0); });
    row("rvx5350 ch2 mic 1", "a56c1500" TO_MAIN "ba088d03ae", [](W &w) { w.SendCMDCH2_for5350(2); });
    row("rvx5350 ch2 mic 2", "a56c1500" TO_MAIN "ba008503ae", [](W &w) { w.SendCMDCH2_for5350(3); });
    row("rvx5350 source past the table", "", [](W &w) { w.SendCMDCH1_for5350(4); });
    row("pgm bar", "a56c1500" TO_MAIN "d701a303ae", [](W &w) { w.SendCMDPGMBAR(0x101); });
    row("pvw bar", "a56c1500" TO_MAIN "d800a303ae", [](W &w) { w.SendCMDPVWBAR(0); });
    row("reset", "a56c1400" TO_MAIN "0bd502ae", &W::SendCMDRESET);
}

void TestRvx5AllWorkdata::decode_data()
{
    using LinkTest::longBody;
    using LinkTest::stateReply;
    QTest::addColumn<QByteArrayList>("datagrams");
    QTest::addColumn<QStringList>("signals");
    const QByteArray payload = hex("0102010364083204040001010201020280017000010b000001");
    // The 8000 series drops a long reply without a record piece, and reads the next one.
    QTest::newRow("long form of 17 pieces dropped")
        << QByteArrayList{stateReply(longBody("SN-1", 17) + "x"),
                          stateReply(longBody("SN-2", 18) + payload + "#")}
        << LinkTest::emits("serial", "SN-2") + LinkTest::emits("state", payload);
}

QTEST_GUILESS_MAIN(TestRvx5AllWorkdata)
#include "tst_rvx5all_workdata.moc"
