// The reporting link through the RVX3210 family: the commands and the decoding both families
// share are checked here, the 8000 series' own codes in tst_rvx5all_workdata.
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
    void init() { QVERIFY(m_rig.open()); }
    void cleanup() { m_rig.close(); }

    void commandOnTheWire_data();
    void commandOnTheWire() { LinkTest::checkOnTheWire(m_rig); }
    void addressChangesMoveLaterCommands();
    void urlFrame();
    void decode_data();
    void decode() { LinkTest::checkDecode(m_rig); }
    void hisRepliesDecoded_data();
    void hisRepliesDecoded();
    void hisReplyMovesLaterCommands();
    void stallAt1057();

private:
    LinkTest::Rig<Link> m_rig;
};

void TestRvx3210Link::commandOnTheWire_data()
{
    QTest::addColumn<Call>("call");
    QTest::addColumn<QByteArray>("frames");
    using W = Link;
    const auto row = LinkTest::wireRow<Link>;
    row("read state", "a56c1400" TO_MAIN "491303ae", &W::SendCMDRead3210state);
    row("pgm 2", "a56c1500" TO_MAIN "80024d03ae", [](W &w) { w.SendCDMPGMCH(2); });
    row("pvw 9", "a56c1500" TO_MAIN "81095503ae", [](W &w) { w.SendCMDPVWCH(9); });
    row("t-bar", "a56c1600" TO_MAIN "821080de03ae", [](W &w) { w.SwndCMDslider(0x10, 0x80); });
    row("cut", "a56c1400" TO_MAIN "834d03ae", &W::SendCMDCUT);
    row("auto", "a56c1400" TO_MAIN "844e03ae", &W::SendCMDAUTO);
    row("ftb", "a56c1400" TO_MAIN "854f03ae", &W::SendCMDFTB);
    row("pip on", "a56c1500" TO_MAIN "86015203ae", [](W &w) { w.SendCMDPIP(1); });
    row("stream low byte", "a56c1500" TO_MAIN "87348603ae", [](W &w) { w.SendCMDSTREAM(0x1234); });
    row("mix", "a56c1400" TO_MAIN "8d5703ae", [](W &w) { w.SendCMDTRANSITIONS(1); });
    row("fade", "a56c1400" TO_MAIN "8e5803ae", [](W &w) { w.SendCMDTRANSITIONS(2); });
    row("transition 7", "", [](W &w) { w.SendCMDTRANSITIONS(7); });
    // A wipe selects the wipe family, then this family's direction: U 25, D 29, L 23, R 27.
    row("wipe up", "a56c1400" TO_MAIN "8f5903ae a56c1500" TO_MAIN "92258203ae",
        [](W &w) { w.SendCMDTRANSITIONS(3); });
    row("wipe right", "a56c1400" TO_MAIN "8f5903ae a56c1500" TO_MAIN "92278403ae",
        [](W &w) { w.SendCMDTRANSITIONS(6); });
    row("set wipe", "a56c1400" TO_MAIN "8f5903ae", &W::SET_WIPE);
    row("border on", "a56c1500" TO_MAIN "9d016903ae", [](W &w) { w.SendCMDPIP_Border_Enable(1); });
    row("border colour", "a56c1500" TO_MAIN "9e036c03ae", [](W &w) { w.SendCMDPIP_Border_Color(3); });
    row("border width", "a56c1500" TO_MAIN "9f056f03ae", [](W &w) { w.SendCMDPIP_Border_Width(5); });
    row("h low first", "a56c1600" TO_MAIN "a023019003ae", [](W &w) { w.SendCMDPIP_H_Position(0x123); });
    row("v low first", "a56c1600" TO_MAIN "a15604c703ae", [](W &w) { w.SendCMDPIP_V_Position(0x456); });
    row("pip size", "a56c1500" TO_MAIN "a2026f03ae", [](W &w) { w.SendCMDPIP_Border_Size(2); });
    // This family sends the output format as its list position.
    row("output format", "a56c1500" TO_MAIN "a3067403ae", [](W &w) { w.SendCMDF1(6); });
    row("rate", "a56c1500" TO_MAIN "b1027e03ae", [](W &w) { w.SendCMDRATE(2); });
    row("rec low byte", "a56c1500" TO_MAIN "b2017e03ae", [](W &w) { w.SendCMDREC(0x101); });
    row("levels", "a56c1800" TO_MAIN "b40a14001ebe03ae", [](W &w) { w.SendCMDLeftSliderVOL(10, 20, 0, 30); });
    row("ch1 source 0 aux", "a56c1500" TO_MAIN "b9078b03ae", [](W &w) { w.SendCMDCH1(0); });
    row("ch1 source 5", "a56c1500" TO_MAIN "b9088c03ae", [](W &w) { w.SendCMDCH1(5); });
    row("ch2 source 6 mic 2", "a56c1500" TO_MAIN "ba008503ae", [](W &w) { w.SendCMDCH2(6); });
    row("pause", "a56c1400" TO_MAIN "c58f03ae", &W::SendCMDPAUSE);
    row("mix audio", "a56c1400" TO_MAIN "cb9503ae", &W::SendCMDMIX);
    row("afv", "a56c1400" TO_MAIN "cc9603ae", &W::SendCMDAFV);
    row("still", "a56c1400" TO_MAIN "cd9703ae", &W::SendCMDSTILL);
    row("ch1 volume", "a56c1500" TO_MAIN "ce32cb03ae", [](W &w) { w.SendCMDCH1_VOL(50); });
    row("ch2 volume", "a56c1500" TO_MAIN "cf64fe03ae", [](W &w) { w.SendCMDCH2_VOL(100); });
    row("f2", "a56c1400" TO_MAIN "d09a03ae", &W::SendCMDF2);
    row("f3", "a56c1400" TO_MAIN "d49e03ae", &W::SendCMDF3);
    row("rotate", "a56c1400" TO_MAIN "d59f03ae", &W::SendCMDROTATE);
    row("f7", "a56c1400" TO_MAIN "d6a003ae", &W::SendCMDF7);
    row("menu", "a56c1600" TO_MAIN "d90301a903ae", [](W &w) { w.SendCMDMenu(3, 1); });
    row("raw test bytes", "0102aa", [](W &w) { w.SendCMDTest(hex("0102aa")); });
    row("read his network", "a56c2000" TO_HIS "240000000000000000000000003503ae", &W::SendCMD_Read_His_IP);
    row("read url slot", "a56c1500" TO_HIS "6a027203ae", [](W &w) { w.SendCMD_Read_Url(0x102); });
    row("set his dns", "a56c1c00" TO_HIS "230808040402503b8c6104ae",
        [](W &w) { w.SendCMD_Set_HIS_DNS(hex("08080404"), "8.8.4.4"); });
}

void TestRvx3210Link::addressChangesMoveLaterCommands()
{
    // The address command still goes to the old address, every later command to the new one.
    WireCapture mainMoved("127.0.0.4"), hisMoved("127.0.0.5");
    m_rig.link->SendCMD_SetIP(hex("7f000004"), "127.0.0.4");
    QCOMPARE(m_rig.main->take(1).value(0),
             hex("a56c2000a5ff00000000000000000000057f00000400000000000000005d03ae"));
    QCOMPARE(m_rig.link->on_DevIP(), QString("127.0.0.4"));
    m_rig.link->SendCMDCUT();
    QCOMPARE(mainMoved.take(1).value(0), hex("a56c1400a5ff01000000000000000000834d03ae"));

    m_rig.link->SendCMD_Set_HIS_IP(hex("7f000005"), hex("ff000000"), hex("7f000001"),
                                   {"127.0.0.5", "255.0.0.0", "127.0.0.1"});
    QCOMPARE(m_rig.his->take(1).value(0),
             hex("a56c2000e0ff01000000000000000000057f000005ff0000007f0000011905ae"));
    QCOMPARE(m_rig.link->on_HIS_IP() + ' ' + m_rig.link->on_HIS_Subnet() + ' ' + m_rig.link->on_HIS_Gateway(),
             QString("127.0.0.5 255.0.0.0 127.0.0.1"));
    m_rig.link->SendCMD_Read_Url(1);
    QCOMPARE(hisMoved.take(1).value(0), hex("a56c1500e0ff010000000000000000006a017103ae"));
    QVERIFY(m_rig.main->takeAll().isEmpty());
    QVERIFY(m_rig.his->takeAll().isEmpty());
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
    using LinkTest::longBody;
    using LinkTest::stateReply;
    QTest::addColumn<QByteArrayList>("datagrams");
    QTest::addColumn<QStringList>("signals");
    using Row = QByteArrayList;

    const QByteArray shortForm = stateReply("#\x01#" + Record + "#");
    QTest::newRow("short form") << Row{shortForm} << emits("state", Record);
    QTest::newRow("short record passed as is")
        << Row{stateReply("#\x01#" + Record.left(10) + "#")} << emits("state", Record.left(10));
    QByteArray withHash = Record;
    withHash[4] = '#'; // a CH1 level of 35 cuts the record there
    QTest::newRow("'#' in the record cuts it")
        << Row{stateReply("#\x01#" + withHash + "#")} << emits("state", Record.left(4));
    QTest::newRow("no separators") << Row{stateReply(hex("0102"))} << QStringList();
    QTest::newRow("long form: serial, then the record as the 18th piece")
        << Row{stateReply(longBody("SN-0042", 18) + Record + "#")}
        << emits("serial", "SN-0042") + emits("state", Record);
    QTest::newRow("long form of 16 pieces") << Row{stateReply(longBody("SN", 16) + "x")} << QStringList();
    // This family passes an empty record on where a long reply has no record piece.
    QTest::newRow("long form of 17 pieces")
        << Row{stateReply(longBody("SN", 17) + "x")} << emits("serial", "SN") + emits("state", "");

    QTest::newRow("split over two datagrams")
        << Row{shortForm.left(30), shortForm.mid(30)} << emits("state", Record);
    QTest::newRow("19 bytes kept") << Row{shortForm.left(19), shortForm.mid(19)} << emits("state", Record);
    QTest::newRow("two frames in one datagram dropped, the next decodes")
        << Row{shortForm + shortForm, shortForm} << emits("state", Record);
    QByteArray badSum = shortForm;
    badSum[badSum.size() - 3] = char(badSum.at(badSum.size() - 3) ^ 1);
    QTest::newRow("bad checksum") << Row{badSum} << QStringList();
    QByteArray badEnd = shortForm;
    badEnd[badEnd.size() - 1] = 0;
    QTest::newRow("bad end byte") << Row{badEnd} << QStringList();

    const QByteArray net = hex("0000c0a80132ffffff00c0a80101000000000000 08080404");
    QTest::newRow("his network E0") << Row{reply(0xE0FF, 0x24, net + "$")} << emits("his", net);
    QTest::newRow("his network E5") << Row{reply(0xE5FF, 0x24, net + "$")} << emits("his", net);
    QTest::newRow("E5 FE is not a his board") << Row{reply(0xE5FE, 0x24, net + "$")} << QStringList();
    QTest::newRow("his network with byte 17 set")
        << Row{reply(0xE0FF, 0x24, hex("01") + net.mid(1) + "$")} << QStringList();
    QTest::newRow("network reply from the main board")
        << Row{reply(0xA5FF, 0x24, net + "$")} << QStringList();
    const QByteArray url = hex("000203") + "cam" + QByteArray(13, '\0') + hex("0400") + "rtmp";
    QTest::newRow("his url") << Row{reply(0xE0FF, 0x6a, url + "j")} << emits("url", url);

    const QByteArray f3410 = reply(0xA5FF, 0x49, "#\x01#" + Record + "#", 0x27);
    QTest::newRow("rvx3410 state frame") << Row{f3410} << emits("3410", f3410) + emits("state", Record);
    const QByteArray other3410 = reply(0xA5FF, 0x30, hex("01"), 0x27);
    QTest::newRow("rvx3410 other frame") << Row{other3410} << emits("3410", other3410);
}

void TestRvx3210Link::hisRepliesDecoded_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QStringList>("decoded");
    // Addresses at 2, 6, 10 and 20 of the payload; the slot at 1, the name's length at 2, the
    // name at 3, the URL's length (low byte first) at 19, the URL at 21. "-" is a null text.
    const QByteArray net = hex("0000 7f000006 ffffff00 7f000001 000000000000 08080404");
    QTest::newRow("addresses") << reply(0xE0FF, 0x24, net + "$")
                               << QStringList{"127.0.0.6", "255.255.255.0", "127.0.0.1", "8.8.4.4"};
    QTest::newRow("addresses cut inside the gateway")
        << reply(0xE0FF, 0x24, net.left(12) + "$") << QStringList{"127.0.0.6", "255.255.255.0", "-", "-"};
    const QByteArray name = QByteArray("cam").leftJustified(16, '\0');
    QTest::newRow("url") << reply(0xE0FF, 0x6a, hex("0003 03") + name + hex("0400") + "rtmpj")
                         << QStringList{"3", "cam", "rtmp"};
    QTest::newRow("url shorter than its length")
        << reply(0xE0FF, 0x6a, hex("0001 02") + name + hex("c800") + "rtmp://xj")
        << QStringList{"1", "ca", "rtmp://x"};
    QTest::newRow("url cut inside the name")
        << reply(0xE0FF, 0x6a, hex("0004 10") + "abcj") << QStringList{"4", "abc", "-"};
    QTest::newRow("url of a slot alone")
        << reply(0xE0FF, 0x6a, hex("0004") + "j") << QStringList{"-1", "-", "-"};
}

void TestRvx3210Link::hisRepliesDecoded()
{
    QFETCH(QByteArray, reply);
    QFETCH(QStringList, decoded);
    auto text = [](const QString &s) { return s.isNull() ? QStringLiteral("-") : s; };
    QStringList got;
    QObject context;
    connect(m_rig.link.get(), &Link::hisAddressesReported, &context, [&](const HisAddresses &a) {
        got = QStringList{text(a.ip), text(a.subnet), text(a.gateway), text(a.dns)};
    });
    connect(m_rig.link.get(), &Link::streamUrlReported, &context, [&](const StreamUrl &u) {
        got = QStringList{QString::number(u.slot), text(u.name), text(u.url)};
    });
    LinkTest::deliver(m_rig, {reply});
    QCOMPARE(got, decoded);
}

void TestRvx3210Link::hisReplyMovesLaterCommands()
{
    // What the HIS board reports is the link's: later HIS commands go to the address reported,
    // and what a short reply stops short of stays as it was.
    WireCapture reported("127.0.0.6");
    m_rig.link->get_HIS_INFO("127.0.0.3", "255.0.0.0", "127.0.0.1", "1.1.1.1");
    LinkTest::deliver(m_rig, {reply(0xE0FF, 0x24, hex("0000 7f000006 ffffff00 7f00") + "$")});
    QCOMPARE(m_rig.link->on_HIS_IP() + ' ' + m_rig.link->on_HIS_Subnet() + ' ' +
                 m_rig.link->on_HIS_Gateway() + ' ' + m_rig.link->on_HIS_DNS(),
             QString("127.0.0.6 255.255.255.0 127.0.0.1 1.1.1.1"));
    m_rig.link->readUrl(2);
    QCOMPARE(reported.take(1).value(0), hex("a56c1500e0ff010000000000000000006a027203ae"));
    QVERIFY(m_rig.his->takeAll().isEmpty());
}

void TestRvx3210Link::stallAt1057()
{
    // A head declaring 1056 bytes is held and, once complete, still decodes.
    QSignalSpy his(m_rig.link.get(), &Link::on_signals_3210HISData);
    const QByteArray big = seal(hex("a56c2004e0ff010000000000000000002400") + QByteArray(1035, '\x11'));
    LinkTest::deliver(m_rig, {big.left(1000), big.mid(1000)});
    QCOMPARE(his.count(), 1);
    QCOMPARE(his.at(0).at(0).toByteArray().left(3), hex("001111"));

    // A head declaring more: at 1057 held bytes the link decodes nothing more.
    QSignalSpy state(m_rig.link.get(), &Link::on_signals_3210Data);
    LinkTest::deliver(m_rig, {hex("a56cffff") + QByteArray(1000, '\0'), QByteArray(57, '\0'),
                              LinkTest::stateReply("#\x01#" + Record + "#")});
    QCOMPARE(state.count(), 0);
}

QTEST_GUILESS_MAIN(TestRvx3210Link)
#include "tst_rvx3210_workdata.moc"
