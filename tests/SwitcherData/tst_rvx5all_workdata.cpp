#include "rvx5all_workdata.h"
#include "testframes.h"
#include "wirecapture.h"

#include <QLoggingCategory>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QUdpSocket>
#include <QtTest>
#include <functional>
#include <memory>

using Call = std::function<void(RVX5ALL_workdata &)>;
Q_DECLARE_METATYPE(Call)

namespace {

// The unit's main board listens at 127.0.0.2 and its HIS board at 127.0.0.3; the link is on
// 127.0.0.1:7000.
const char *const MainIp = "127.0.0.2";
const char *const HisIp = "127.0.0.3";
constexpr quint16 Port = 7000;

// A 25-byte state payload: PGM 1, PVW 2, MIX, CH1 IN1 at 100, CH2 MIC_IN1 at 50, wipe 4 ...
const QByteArray Payload = hex("0102010364083204040001010201020280017000010b000001");

QLoggingCategory::CategoryFilter previousFilter = nullptr;
void sendLogOn(QLoggingCategory *category)
{
    if (previousFilter)
        previousFilter(category);
    if (qstrcmp(category->categoryName(), "kova.rvx5all") == 0)
        category->setEnabled(QtDebugMsg, true);
}

} // namespace

class TestRvx5AllWorkdata : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { previousFilter = QLoggingCategory::installFilter(sendLogOn); }
    void init();
    void cleanup();

    void commandOnTheWire_data();
    void commandOnTheWire();
    void setIpMovesLaterCommands();
    void hisAddressAndDns();

    void decode_data();
    void decode();

private:
    std::unique_ptr<RVX5ALL_workdata> m_link;
    std::unique_ptr<WireCapture> m_main;
    std::unique_ptr<WireCapture> m_his;
};

void TestRvx5AllWorkdata::init()
{
    m_link = std::make_unique<RVX5ALL_workdata>();
    QVERIFY(m_link->isBound());
    m_link->get_DevTypeID(MainIp, 0xA5, 0xFF);
    m_link->get_HISTypeID(HisIp, 0xE0, 0xFF);
    m_main = std::make_unique<WireCapture>(MainIp);
    m_his = std::make_unique<WireCapture>(HisIp);
    QVERIFY(m_main->isBound() && m_his->isBound());
}

void TestRvx5AllWorkdata::cleanup()
{
    m_main.reset();
    m_his.reset();
    m_link.reset();
}

void TestRvx5AllWorkdata::commandOnTheWire_data()
{
    QTest::addColumn<Call>("call");
    QTest::addColumn<QString>("label"); // "-" when the send must write no log line
    QTest::addColumn<QByteArray>("frames");

    using W = RVX5ALL_workdata;
    auto row = [](const char *name, const char *label, const char *frames, Call c) {
        QTest::newRow(name) << c << QString::fromUtf8(label) << QByteArray(frames);
    };
    row("read state", "点击DS按钮senbuf的数据", "a56c1400a5ff01000000000000000000491303ae",
        &W::SendCMDRead3210state);
    row("pgm 2", "点击PGM通道senbuf的数据", "a56c1500a5ff0100000000000000000080024d03ae",
        [](W &w) { w.SendCDMPGMCH(2); });
    row("pvw 9", "", "a56c1500a5ff0100000000000000000081095503ae", [](W &w) { w.SendCMDPVWCH(9); });
    row("rate has its own code", "点击RATE切换特效senbuf的数据", "a56c1500a5ff01000000000000000000a5027203ae",
        [](W &w) { w.SendCMDRATE(2); });
    row("t-bar", "", "a56c1600a5ff01000000000000000000821080de03ae",
        [](W &w) { w.SwndCMDslider(0x10, 0x80); });
    row("cut", "", "a56c1400a5ff01000000000000000000834d03ae", &W::SendCMDCUT);
    row("auto", "", "a56c1400a5ff01000000000000000000844e03ae", &W::SendCMDAUTO);
    row("ftb", "", "a56c1400a5ff01000000000000000000854f03ae", &W::SendCMDFTB);
    row("pip", "", "a56c1500a5ff0100000000000000000086015203ae", [](W &w) { w.SendCMDPIP(1); });
    row("stream low byte", "", "a56c1500a5ff0100000000000000000087348603ae",
        [](W &w) { w.SendCMDSTREAM(0x1234); });
    row("mix", "", "a56c1400a5ff010000000000000000008d5703ae", [](W &w) { w.SendCMDTRANSITIONS(1); });
    row("fade", "", "a56c1400a5ff010000000000000000008e5803ae", [](W &w) { w.SendCMDTRANSITIONS(2); });
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
    row("transition 0", "", "", [](W &w) { w.SendCMDTRANSITIONS(0); });
    row("transition 7", "", "", [](W &w) { w.SendCMDTRANSITIONS(7); });
    row("border enable", "", "a56c1500a5ff010000000000000000009d016903ae",
        [](W &w) { w.SendCMDPIP_Border_Enable(1); });
    row("border colour", "", "a56c1500a5ff010000000000000000009e036c03ae",
        [](W &w) { w.SendCMDPIP_Border_Color(3); });
    row("border width", "", "a56c1500a5ff010000000000000000009f056f03ae",
        [](W &w) { w.SendCMDPIP_Border_Width(5); });
    row("h position low first", "", "a56c1600a5ff01000000000000000000a023019003ae",
        [](W &w) { w.SendCMDPIP_H_Position(0x0123); });
    row("v position low first", "", "a56c1600a5ff01000000000000000000a15604c703ae",
        [](W &w) { w.SendCMDPIP_V_Position(0x0456); });
    row("pip size", "", "a56c1500a5ff01000000000000000000a2026f03ae",
        [](W &w) { w.SendCMDPIP_Border_Size(2); });
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
    row("rec", "", "a56c1500a5ff01000000000000000000b2017e03ae", [](W &w) { w.SendCMDREC(0x101); });
    row("levels", "CH3_vol senbuf的数据", "a56c1800a5ff01000000000000000000b40a14001ebe03ae",
        [](W &w) { w.SendCMDLeftSliderVOL(10, 20, 0, 30); });
    row("ch1 aux", "", "a56c1500a5ff01000000000000000000b9078b03ae", [](W &w) { w.SendCMDCH1(0); });
    row("ch2 mic 2", "", "a56c1500a5ff01000000000000000000ba008503ae", [](W &w) { w.SendCMDCH2(6); });
    row("rvx5350 ch1 in1", "选择CH1下拉列表 senbuf的数据", "a56c1500a5ff01000000000000000000b9038703ae",
        [](W &w) { w.SendCMDCH1_for5350(0); });
    // CH2 of the RVX5350 logs the CH1 label.
    row("rvx5350 ch2 mic 1", "选择CH1下拉列表 senbuf的数据", "a56c1500a5ff01000000000000000000ba088d03ae",
        [](W &w) { w.SendCMDCH2_for5350(2); });
    row("rvx5350 ch2 mic 2", "", "a56c1500a5ff01000000000000000000ba008503ae",
        [](W &w) { w.SendCMDCH2_for5350(3); });
    row("rvx5350 source past the table", "", "", [](W &w) { w.SendCMDCH1_for5350(4); });
    row("pause", "", "a56c1400a5ff01000000000000000000c58f03ae", &W::SendCMDPAUSE);
    row("mix mode", "点击MXI senbuf的数据", "a56c1400a5ff01000000000000000000cb9503ae", &W::SendCMDMIX);
    row("afv", "", "a56c1400a5ff01000000000000000000cc9603ae", &W::SendCMDAFV);
    row("still", "", "a56c1400a5ff01000000000000000000cd9703ae", &W::SendCMDSTILL);
    row("ch1 level", "", "a56c1500a5ff01000000000000000000ce32cb03ae", [](W &w) { w.SendCMDCH1_VOL(50); });
    row("ch2 level", "", "a56c1500a5ff01000000000000000000cf64fe03ae", [](W &w) { w.SendCMDCH2_VOL(100); });
    row("f2", "", "a56c1400a5ff01000000000000000000d09a03ae", &W::SendCMDF2);
    row("f3", "", "a56c1400a5ff01000000000000000000d49e03ae", &W::SendCMDF3);
    row("rotate logs the pause label", "点击暂停按钮senbuf的数据", "a56c1400a5ff01000000000000000000d59f03ae",
        &W::SendCMDROTATE);
    row("f7", "", "a56c1400a5ff01000000000000000000d6a003ae", &W::SendCMDF7);
    row("pgm bar", "点击bar按钮senbuf的数据", "a56c1500a5ff01000000000000000000d701a303ae",
        [](W &w) { w.SendCMDPGMBAR(0x101); });
    row("pvw bar", "点击bar按钮senbuf的数据", "a56c1500a5ff01000000000000000000d800a303ae",
        [](W &w) { w.SendCMDPVWBAR(0); });
    row("reset", "点击复位按钮senbuf的数据", "a56c1400a5ff010000000000000000000bd502ae", &W::SendCMDRESET);
    row("read his network", "ReadHis_IP senbuf的数据",
        "a56c2000e0ff01000000000000000000240000000000000000000000003503ae", &W::SendCMD_Read_His_IP);
    row("read url goes to the his board", "读取设备上His板URL信息 senbuf的数据",
        "a56c1500e0ff010000000000000000006a037303ae", [](W &w) { w.SendCMD_Read_Url(3); });
}

void TestRvx5AllWorkdata::commandOnTheWire()
{
    QFETCH(Call, call);
    QFETCH(QString, label);
    QFETCH(QByteArray, frames);
    const QByteArrayList expected = hexList(frames);

    // Any line from the link during a "-" row trips the flag; QtTest's own handler, which
    // does the ignoreMessage bookkeeping, is put back afterwards.
    static bool logged;
    logged = false;
    QtMessageHandler testHandler = nullptr;
    if (label == "-") {
        testHandler = qInstallMessageHandler([](QtMsgType, const QMessageLogContext &ctx, const QString &) {
            if (qstrcmp(ctx.category, "kova.rvx5all") == 0)
                logged = true;
        });
    } else if (!label.isEmpty()) {
        QTest::ignoreMessage(QtDebugMsg, QRegularExpression("^" + QRegularExpression::escape(label) + " "));
    }
    call(*m_link);
    if (label == "-") {
        qInstallMessageHandler(testHandler);
        QVERIFY(!logged);
    }

    // A marker read request to the HIS board bounds both captures.
    m_link->SendCMD_Read_Url(0x7F);
    const QByteArray marker = hex("a56c1500e0ff010000000000000000006a7fef03ae");
    const bool toHis = !expected.isEmpty() && uint8_t(expected[0].at(4)) == 0xE0;
    QByteArrayList his = m_his->until(marker);
    const QByteArrayList main = m_main->takeAll();
    QCOMPARE(toHis ? his : main, expected);
    QVERIFY((toHis ? main : his).isEmpty());
}

void TestRvx5AllWorkdata::setIpMovesLaterCommands()
{
    WireCapture moved("127.0.0.4");
    m_link->SendCMD_SetIP(hex("7f000004"), "127.0.0.4");
    QCOMPARE(m_main->take(1).value(0),
             hex("a56c2000a5ff00000000000000000000057f00000400000000000000005d03ae"));
    m_link->SendCMDCUT();
    QCOMPARE(moved.take(1).value(0), hex("a56c1400a5ff01000000000000000000834d03ae"));
    QVERIFY(m_main->takeAll().isEmpty());
}

void TestRvx5AllWorkdata::hisAddressAndDns()
{
    m_link->SendCMD_Set_HIS_DNS(hex("08080404"), "8.8.4.4");
    QCOMPARE(m_his->take(1).value(0), hex("a56c1c00e0ff01000000000000000000230808040402503b8c6104ae"));
    QCOMPARE(m_link->on_HIS_DNS(), QString("8.8.4.4"));

    WireCapture moved("127.0.0.5");
    m_link->SendCMD_Set_HIS_IP(hex("7f000005"), hex("ff000000"), hex("7f000001"),
                               {"127.0.0.5", "255.0.0.0", "127.0.0.1"});
    QCOMPARE(m_his->take(1).value(0),
             hex("a56c2000e0ff01000000000000000000057f000005ff0000007f0000011905ae"));
    m_link->SendCMD_Set_Url(2, "key", "rtmp://x");
    const QByteArray url = moved.take(1).value(0);
    QCOMPARE(url.size(), 809);
    QCOMPARE(url.left(20), hex("a56c2903e0ff0100000000000000000067000203"));
    QCOMPARE(url.mid(36, 2), hex("0800"));
    QCOMPARE(url, seal(url.left(806)));
}

void TestRvx5AllWorkdata::decode_data()
{
    QTest::addColumn<QByteArrayList>("datagrams");
    QTest::addColumn<QStringList>("signals"); // in the order they were emitted

    auto state = [](const QByteArray &body) { return reply(0xA5FF, 0x49, body); };
    auto longBody = [](int pieces) { return "#SN-0042##" + QByteArray("x#").repeated(pieces - 4); };
    const QString st = "state:" + Payload.toHex();

    QTest::newRow("short form") << QByteArrayList{state("#\x01#" + Payload + "#")} << QStringList{st};
    QTest::newRow("long form: serial first, then the payload")
        << QByteArrayList{state(longBody(18) + Payload + "#")}
        << QStringList{"serial:" + QByteArray("SN-0042").toHex(), st};
    QTest::newRow("long form of exactly 17 pieces is dropped")
        << QByteArrayList{state(longBody(17) + "x")} << QStringList{};
    QByteArray withHash = Payload;
    withHash[4] = '#'; // a CH1 level of 35 cuts the payload there
    QTest::newRow("a level of 0x23 cuts the payload") << QByteArrayList{state("#\x01#" + withHash + "#")}
                                                      << QStringList{"state:" + Payload.left(4).toHex()};
    QTest::newRow("split over two datagrams")
        << QByteArrayList{state("#\x01#" + Payload + "#").left(19), state("#\x01#" + Payload + "#").mid(19)}
        << QStringList{st};
    const QByteArray net = hex("0000c0a80132ffffff00c0a80101000000000000 08080404");
    QTest::newRow("his network from E5")
        << QByteArrayList{reply(0xE5FF, 0x24, net + "$")} << QStringList{"his:" + net.toHex()};
    QTest::newRow("E5 FE is not a his board")
        << QByteArrayList{reply(0xE5FE, 0x24, net + "$")} << QStringList{};
}

void TestRvx5AllWorkdata::decode()
{
    QFETCH(QByteArrayList, datagrams);
    QStringList got;
    auto record = [&got](const char *name) {
        return [&got, name](const QByteArray &d) { got << QString::fromLatin1(name) + ':' + d.toHex(); };
    };
    using W = RVX5ALL_workdata;
    connect(m_link.get(), &W::on_signals_3210Data, this, record("state"));
    connect(m_link.get(), &W::on_signals_5370Data, this, record("serial"));
    connect(m_link.get(), &W::on_signals_3210HISData, this, record("his"));
    connect(m_link.get(), &W::on_signals_3210HIS_URL_Data, this, record("url"));

    for (const QByteArray &d : datagrams)
        m_main->reply(d);
    // A read request answered by nothing: once it is on the wire, the replies sent before it
    // have been delivered to the link's socket on loopback; wait for the link to drain them.
    QUdpSocket *socket = m_link->socket();
    QTRY_VERIFY(!socket->hasPendingDatagrams());
    QTEST(got, "signals");
    disconnect(m_link.get(), nullptr, this, nullptr);
}

QTEST_GUILESS_MAIN(TestRvx5AllWorkdata)
#include "tst_rvx5all_workdata.moc"
