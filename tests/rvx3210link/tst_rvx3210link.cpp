#include "rvx3210_workdata.h"

#include <QLoggingCategory>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QUdpSocket>
#include <QtTest>
#include <functional>
#include <memory>

using Call = std::function<void(RVX3210_workdata &)>;
Q_DECLARE_METATYPE(Call)

namespace {

// The link object talks to the unit's main board at 127.0.0.2 and its HIS board at 127.0.0.3;
// the test listens there on port 7000 and talks back to the link on 127.0.0.1.
const char *const MainIp = "127.0.0.2";
const char *const HisIp = "127.0.0.3";
constexpr quint16 Port = 7000;
constexpr auto Share = QAbstractSocket::ShareAddress | QAbstractSocket::ReuseAddressHint;

QByteArray hex(const char *h)
{
    return QByteArray::fromHex(h);
}

// Appends the 16-bit sum (low byte first) and the end byte.
QByteArray seal(QByteArray body)
{
    quint16 sum = 0;
    for (char c : body)
        sum = quint16(sum + uint8_t(c));
    body.append(char(sum & 0xFF));
    body.append(char(sum >> 8));
    body.append(char(0xAE));
    return body;
}

const QByteArray Record = hex("0201010732036401000000010203010110008000010b00000000");

QByteArray next(QUdpSocket &s)
{
    if (!s.hasPendingDatagrams() && !s.waitForReadyRead(3000))
        return QByteArray();
    QByteArray d(int(s.pendingDatagramSize()), 0);
    s.readDatagram(d.data(), d.size());
    return d;
}

} // namespace

class TestRvx3210Link : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void commandOnTheWire_data();
    void commandOnTheWire();
    void wipeTransitionsSendTwoDatagrams_data();
    void wipeTransitionsSendTwoDatagrams();
    void unknownTransitionSendsNothing();
    void setIpMovesLaterCommands();
    void setHisIpStoresTextsAndMoves();
    void dnsFrame();
    void urlFrame();

    void decode_data();
    void decode();
    void stallAt1057();
    void releasePortFreesIt();

private:
    void sendToLink(const QByteArray &datagram);

    std::unique_ptr<RVX3210_workdata> m_link;
    std::unique_ptr<QUdpSocket> m_main;
    std::unique_ptr<QUdpSocket> m_his;
    QUdpSocket *m_linkSocket = nullptr;
};

namespace {
QLoggingCategory::CategoryFilter previousFilter = nullptr;

// The send log is checked below; keep it on whatever QT_LOGGING_RULES says.
void sendLogOn(QLoggingCategory *category)
{
    if (previousFilter)
        previousFilter(category);
    if (qstrcmp(category->categoryName(), "kova.rvx3210") == 0)
        category->setEnabled(QtDebugMsg, true);
}
} // namespace

void TestRvx3210Link::initTestCase()
{
    previousFilter = QLoggingCategory::installFilter(sendLogOn);
}

void TestRvx3210Link::init()
{
    m_link = std::make_unique<RVX3210_workdata>();
    QVERIFY(m_link->isBound());
    m_link->get_DevTypeID(MainIp, 0xA5, 0xFF);
    m_link->get_HISTypeID(HisIp, 0xE0, 0xFF);
    m_main = std::make_unique<QUdpSocket>();
    m_his = std::make_unique<QUdpSocket>();
    QVERIFY(m_main->bind(QHostAddress(MainIp), Port, Share));
    QVERIFY(m_his->bind(QHostAddress(HisIp), Port, Share));
    m_linkSocket = nullptr;
    for (QUdpSocket *s : m_link->findChildren<QUdpSocket *>())
        if (s->localPort() == Port)
            m_linkSocket = s;
    QVERIFY(m_linkSocket);
}

void TestRvx3210Link::cleanup()
{
    m_main.reset();
    m_his.reset();
    m_link.reset();
}

void TestRvx3210Link::sendToLink(const QByteArray &datagram)
{
    QUdpSocket out;
    QCOMPARE(out.writeDatagram(datagram, QHostAddress::LocalHost, Port), qint64(datagram.size()));
    // Loopback queues the datagram before writeDatagram returns; once the link's socket has
    // nothing pending, the link has read and handled it.
    QTRY_VERIFY(!m_linkSocket->hasPendingDatagrams());
}

void TestRvx3210Link::commandOnTheWire_data()
{
    QTest::addColumn<Call>("call");
    QTest::addColumn<bool>("toHis");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QByteArray>("frame");

    using W = RVX3210_workdata;
    auto row = [](const char *name, Call c, bool his, const char *label, const char *frame) {
        QTest::newRow(name) << c << his << QString::fromUtf8(label) << hex(frame);
    };
    row("read state", &W::SendCMDRead3210state, false, "点击DS按钮senbuf的数据",
        "a56c1400a5ff01000000000000000000491303ae");
    row(
        "pgm 2", [](W &w) { w.SendCDMPGMCH(2); }, false, "点击PGM通道senbuf的数据",
        "a56c1500a5ff0100000000000000000080024d03ae");
    row(
        "pvw 9", [](W &w) { w.SendCMDPVWCH(9); }, false, "点击PVW通道senbuf的数据",
        "a56c1500a5ff0100000000000000000081095503ae");
    row(
        "t-bar", [](W &w) { w.SwndCMDslider(0x10, 0x80); }, false, "点击视频推杆senbuf的数据",
        "a56c1600a5ff01000000000000000000821080de03ae");
    row("cut", &W::SendCMDCUT, false, "点击CUT切换senbuf的数据", "a56c1400a5ff01000000000000000000834d03ae");
    row("auto", &W::SendCMDAUTO, false, "点击AUTO切换senbuf的数据",
        "a56c1400a5ff01000000000000000000844e03ae");
    row("ftb", &W::SendCMDFTB, false, "FTB senbuf的数据", "a56c1400a5ff01000000000000000000854f03ae");
    row(
        "pip on", [](W &w) { w.SendCMDPIP(1); }, false, "PIP senbuf的数据",
        "a56c1500a5ff0100000000000000000086015203ae");
    row(
        "stream low byte", [](W &w) { w.SendCMDSTREAM(0x1234); }, false, "点击RTMP按钮senbuf的数据",
        "a56c1500a5ff0100000000000000000087348603ae");
    row(
        "transition mix", [](W &w) { w.SendCMDTRANSITIONS(1); }, false, "TRANSITONS设置 senbuf的数据",
        "a56c1400a5ff010000000000000000008d5703ae");
    row(
        "transition fade", [](W &w) { w.SendCMDTRANSITIONS(2); }, false, "TRANSITONS设置 senbuf的数据",
        "a56c1400a5ff010000000000000000008e5803ae");
    row("set wipe", &W::SET_WIPE, false, "SET_WIPE senbuf的数据", "a56c1400a5ff010000000000000000008f5903ae");
    row(
        "border enable", [](W &w) { w.SendCMDPIP_Border_Enable(1); }, false, "PIP_Border_Enable senbuf的数据",
        "a56c1500a5ff010000000000000000009d016903ae");
    row(
        "border colour", [](W &w) { w.SendCMDPIP_Border_Color(3); }, false, "PIP_Border_Color senbuf的数据",
        "a56c1500a5ff010000000000000000009e036c03ae");
    row(
        "border width", [](W &w) { w.SendCMDPIP_Border_Width(5); }, false, "PIP_Border_Width senbuf的数据",
        "a56c1500a5ff010000000000000000009f056f03ae");
    row(
        "h position low first", [](W &w) { w.SendCMDPIP_H_Position(0x0123); }, false,
        "PIP_H_Position senbuf的数据", "a56c1600a5ff01000000000000000000a023019003ae");
    row(
        "v position low first", [](W &w) { w.SendCMDPIP_V_Position(0x0456); }, false,
        "PIP_V_Position senbuf的数据", "a56c1600a5ff01000000000000000000a15604c703ae");
    row(
        "pip size", [](W &w) { w.SendCMDPIP_Border_Size(2); }, false, "PIP_Border_Size senbuf的数据",
        "a56c1500a5ff01000000000000000000a2026f03ae");
    row(
        "output format", [](W &w) { w.SendCMDF1(6); }, false, "F1 分辨率设置 senbuf的数据",
        "a56c1500a5ff01000000000000000000a3067403ae");
    row(
        "rate", [](W &w) { w.SendCMDRATE(2); }, false, "点击RATE切换特效senbuf的数据",
        "a56c1500a5ff01000000000000000000b1027e03ae");
    row(
        "rec low byte", [](W &w) { w.SendCMDREC(0x101); }, false, "点击REC按钮senbuf的数据",
        "a56c1500a5ff01000000000000000000b2017e03ae");
    row(
        "levels", [](W &w) { w.SendCMDLeftSliderVOL(10, 20, 0, 30); }, false, "CH3_vol senbuf的数据",
        "a56c1800a5ff01000000000000000000b40a14001ebe03ae");
    row(
        "ch1 source 0", [](W &w) { w.SendCMDCH1(0); }, false, "选择CH1下拉列表 senbuf的数据",
        "a56c1500a5ff01000000000000000000b9078b03ae");
    row(
        "ch1 source 3", [](W &w) { w.SendCMDCH1(3); }, false, "选择CH1下拉列表 senbuf的数据",
        "a56c1500a5ff01000000000000000000b9058903ae");
    row(
        "ch1 source 4", [](W &w) { w.SendCMDCH1(4); }, false, "选择CH1下拉列表 senbuf的数据",
        "a56c1500a5ff01000000000000000000b9068a03ae");
    row(
        "ch1 source 5", [](W &w) { w.SendCMDCH1(5); }, false, "选择CH1下拉列表 senbuf的数据",
        "a56c1500a5ff01000000000000000000b9088c03ae");
    row(
        "ch2 source 1", [](W &w) { w.SendCMDCH2(1); }, false, "选择CH2下拉列表 senbuf的数据",
        "a56c1500a5ff01000000000000000000ba038803ae");
    row(
        "ch2 source 2", [](W &w) { w.SendCMDCH2(2); }, false, "选择CH2下拉列表 senbuf的数据",
        "a56c1500a5ff01000000000000000000ba048903ae");
    row(
        "ch2 source 6", [](W &w) { w.SendCMDCH2(6); }, false, "选择CH2下拉列表 senbuf的数据",
        "a56c1500a5ff01000000000000000000ba008503ae");
    row("pause", &W::SendCMDPAUSE, false, "点击暂停按钮senbuf的数据",
        "a56c1400a5ff01000000000000000000c58f03ae");
    row("mix", &W::SendCMDMIX, false, "点击MXI senbuf的数据", "a56c1400a5ff01000000000000000000cb9503ae");
    row("afv", &W::SendCMDAFV, false, "点击AFV senbuf的数据", "a56c1400a5ff01000000000000000000cc9603ae");
    row("still", &W::SendCMDSTILL, false, "STILL senbuf的数据", "a56c1400a5ff01000000000000000000cd9703ae");
    row(
        "ch1 volume", [](W &w) { w.SendCMDCH1_VOL(50); }, false, "CH1_vol senbuf的数据",
        "a56c1500a5ff01000000000000000000ce32cb03ae");
    row(
        "ch2 volume", [](W &w) { w.SendCMDCH2_VOL(100); }, false, "CH2_vol senbuf的数据",
        "a56c1500a5ff01000000000000000000cf64fe03ae");
    row("f2", &W::SendCMDF2, false, "F2 senbuf的数据", "a56c1400a5ff01000000000000000000d09a03ae");
    row("f3", &W::SendCMDF3, false, "F3 senbuf的数据", "a56c1400a5ff01000000000000000000d49e03ae");
    row("rotate shares the pause label", &W::SendCMDROTATE, false, "点击暂停按钮senbuf的数据",
        "a56c1400a5ff01000000000000000000d59f03ae");
    row("f7", &W::SendCMDF7, false, "F7 senbuf的数据", "a56c1400a5ff01000000000000000000d6a003ae");
    row(
        "menu", [](W &w) { w.SendCMDMenu(3, 1); }, false, "点击菜单按钮senbuf的数据",
        "a56c1600a5ff01000000000000000000d90301a903ae");
    row(
        "raw test bytes", [](W &w) { w.SendCMDTest(hex("0102aa")); }, false, "点击确定按钮senbuf的数据",
        "0102aa");
    row("read his network", &W::SendCMD_Read_His_IP, true, "ReadHis_IP senbuf的数据",
        "a56c2000e0ff01000000000000000000240000000000000000000000003503ae");
    row(
        "read url slot", [](W &w) { w.SendCMD_Read_Url(0x102); }, true, "读取设备上His板URL信息 senbuf的数据",
        "a56c1500e0ff010000000000000000006a027203ae");
    row(
        "set his network",
        [](W &w) {
            w.SendCMD_Set_HIS_IP(hex("c0a80132"), hex("ffffff00"), hex("c0a80101"),
                                 {"192.168.1.50", "255.255.255.0", "192.168.1.1"});
        },
        true, "设置设备上His板IP、网关、掩码、senbuf的数据",
        "a56c2000e0ff0100000000000000000005c0a80132ffffff00c0a801011809ae");
    row(
        "set his dns", [](W &w) { w.SendCMD_Set_HIS_DNS(hex("08080404"), "8.8.4.4"); }, true,
        "设置设备上His板DNS senbuf的数据", "a56c1c00e0ff01000000000000000000230808040402503b8c6104ae");
}

void TestRvx3210Link::commandOnTheWire()
{
    QFETCH(Call, call);
    QFETCH(bool, toHis);
    QFETCH(QString, label);
    QFETCH(QByteArray, frame);

    QSignalSpy shown(m_link.get(), &RVX3210_workdata::showCurrentData);
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression("^" + QRegularExpression::escape(label) + " "));
    call(*m_link);

    QUdpSocket &target = toHis ? *m_his : *m_main;
    QUdpSocket &other = toHis ? *m_main : *m_his;
    QCOMPARE(next(target).toHex(' '), frame.toHex(' '));
    QVERIFY(!other.hasPendingDatagrams());
    QCOMPARE(shown.count(), 1);
    QCOMPARE(shown.at(0).at(0).toByteArray(), frame);
}

void TestRvx3210Link::wipeTransitionsSendTwoDatagrams_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QByteArray>("second");
    QTest::newRow("3 up") << 3 << hex("a56c1500a5ff0100000000000000000092258203ae");
    QTest::newRow("4 down") << 4 << hex("a56c1500a5ff0100000000000000000092298603ae");
    QTest::newRow("5 left") << 5 << hex("a56c1500a5ff0100000000000000000092238003ae");
    QTest::newRow("6 right") << 6 << hex("a56c1500a5ff0100000000000000000092278403ae");
}

void TestRvx3210Link::wipeTransitionsSendTwoDatagrams()
{
    QFETCH(int, type);
    QFETCH(QByteArray, second);
    QSignalSpy shown(m_link.get(), &RVX3210_workdata::showCurrentData);
    m_link->SendCMDTRANSITIONS(uint8_t(type));
    QCOMPARE(next(*m_main), hex("a56c1400a5ff010000000000000000008f5903ae"));
    QCOMPARE(next(*m_main), second);
    QCOMPARE(shown.count(), 2);
}

void TestRvx3210Link::unknownTransitionSendsNothing()
{
    QSignalSpy shown(m_link.get(), &RVX3210_workdata::showCurrentData);
    m_link->SendCMDTRANSITIONS(0);
    m_link->SendCMDTRANSITIONS(7);
    m_link->SendCMDCUT();
    // The first thing on the wire is the CUT sent afterwards.
    QCOMPARE(next(*m_main), hex("a56c1400a5ff01000000000000000000834d03ae"));
    QCOMPARE(shown.count(), 1);
}

void TestRvx3210Link::setIpMovesLaterCommands()
{
    QUdpSocket moved;
    QVERIFY(moved.bind(QHostAddress("127.0.0.4"), Port, Share));
    m_link->SendCMD_SetIP(hex("7f000004"), "127.0.0.4");
    // The address frame itself still goes to the old address.
    QCOMPARE(next(*m_main), hex("a56c2000a5ff00000000000000000000057f00000400000000000000005d03ae"));
    QCOMPARE(m_link->on_DevIP(), QString("127.0.0.4"));
    m_link->SendCMDCUT();
    QCOMPARE(next(moved), hex("a56c1400a5ff01000000000000000000834d03ae"));
    QVERIFY(!m_main->hasPendingDatagrams());
}

void TestRvx3210Link::setHisIpStoresTextsAndMoves()
{
    QUdpSocket moved;
    QVERIFY(moved.bind(QHostAddress("127.0.0.5"), Port, Share));
    m_link->SendCMD_Set_HIS_IP(hex("7f000005"), hex("ff000000"), hex("7f000001"),
                               {"127.0.0.5", "255.0.0.0", "127.0.0.1"});
    QCOMPARE(next(*m_his), hex("a56c2000e0ff01000000000000000000057f000005ff0000007f0000011905ae"));
    QCOMPARE(m_link->on_HIS_IP(), QString("127.0.0.5"));
    QCOMPARE(m_link->on_HIS_Subnet(), QString("255.0.0.0"));
    QCOMPARE(m_link->on_HIS_Gateway(), QString("127.0.0.1"));
    m_link->SendCMD_Read_Url(1);
    QCOMPARE(next(moved), hex("a56c1500e0ff010000000000000000006a017103ae"));
    QVERIFY(!m_his->hasPendingDatagrams());
}

void TestRvx3210Link::dnsFrame()
{
    m_link->SendCMD_Set_HIS_DNS(hex("01020304"), "1.2.3.4");
    const QByteArray got = next(*m_his);
    QCOMPARE(got.size(), 28);
    QCOMPARE(got, seal(hex("a56c1c00e0ff01000000000000000000230102030402503b8c")));
    QCOMPARE(m_link->on_HIS_DNS(), QString("1.2.3.4"));
}

void TestRvx3210Link::urlFrame()
{
    m_link->SendCMD_Set_Url(3, "cam", "rtmp://127.0.0.9/live/a");
    const QByteArray got = next(*m_his);
    QCOMPARE(got.size(), 809);
    QCOMPARE(got.left(20).toHex(' '), hex("a56c2903e0ff0100000000000000000067000303").toHex(' '));
    QCOMPARE(got.mid(20, 16), QByteArray("cam").leftJustified(16, '\0'));
    QCOMPARE(got.mid(36, 2), hex("1700"));
    QCOMPARE(got.mid(38, 768), QByteArray("rtmp://127.0.0.9/live/a").leftJustified(768, '\0'));
    QCOMPARE(got, seal(got.left(806)));
}

void TestRvx3210Link::decode_data()
{
    QTest::addColumn<QByteArrayList>("datagrams");
    QTest::addColumn<QByteArrayList>("state");
    QTest::addColumn<QByteArrayList>("extra");
    QTest::addColumn<QByteArrayList>("his");
    QTest::addColumn<QByteArrayList>("url");
    QTest::addColumn<QByteArrayList>("frame3410");

    const QByteArray shortHead = hex("a56c3200a5ff0100000000000000000049");
    const QByteArray shortForm = seal(shortHead + "#\x01#" + Record + "#");
    const QByteArrayList none;

    QTest::newRow("short form") << QByteArrayList{shortForm} << QByteArrayList{Record} << none << none << none
                                << none;
    QTest::newRow("short record under 26 bytes passed as is")
        << QByteArrayList{seal(hex("a56c2200a5ff0100000000000000000049") + "#\x01#" + Record.left(10) + "#")}
        << QByteArrayList{Record.left(10)} << none << none << none << none;
    QByteArray withHash = Record;
    withHash[5] = '#';
    QTest::newRow("'#' in the record cuts it")
        << QByteArrayList{seal(shortHead + "#\x01#" + withHash + "#")} << QByteArrayList{Record.left(5)}
        << none << none << none << none;
    QTest::newRow("no separators") << QByteArrayList{seal(hex("a56c1600a5ff01000000000000000000490102"))}
                                   << none << none << none << none << none;

    const QByteArray longHead = hex("a56c5000a5ff0100000000000000000049");
    QByteArray longBody = "#SN##";
    for (int i = 0; i < 14; ++i)
        longBody += "x#";
    QTest::newRow("long form") << QByteArrayList{seal(longHead + longBody + Record + "#")}
                               << QByteArrayList{Record} << QByteArrayList{"SN"} << none << none << none;
    QByteArray body17 = "#SN##";
    for (int i = 0; i < 13; ++i)
        body17 += "x#";
    QTest::newRow("long form of 17 pieces passes an empty record")
        << QByteArrayList{seal(hex("a56c3400a5ff0100000000000000000049") + body17 + "x")}
        << QByteArrayList{QByteArray()} << QByteArrayList{"SN"} << none << none << none;
    QByteArray body16 = "#SN##";
    for (int i = 0; i < 12; ++i)
        body16 += "x#";
    QTest::newRow("long form of 16 pieces")
        << QByteArrayList{seal(hex("a56c3200a5ff0100000000000000000049") + body16 + "x")} << none << none
        << none << none << none;

    QTest::newRow("split over two datagrams") << QByteArrayList{shortForm.left(30), shortForm.mid(30)}
                                              << QByteArrayList{Record} << none << none << none << none;
    QTest::newRow("19 bytes kept") << QByteArrayList{shortForm.left(19), shortForm.mid(19)}
                                   << QByteArrayList{Record} << none << none << none << none;
    QTest::newRow("two frames in one datagram dropped")
        << QByteArrayList{shortForm + shortForm} << none << none << none << none << none;
    QTest::newRow("after a dropped pair the next frame decodes")
        << QByteArrayList{shortForm + shortForm, shortForm} << QByteArrayList{Record} << none << none << none
        << none;
    QByteArray badSum = shortForm;
    badSum[badSum.size() - 3] = char(badSum.at(badSum.size() - 3) ^ 1);
    QTest::newRow("bad checksum") << QByteArrayList{badSum} << none << none << none << none << none;
    QByteArray badEnd = shortForm;
    badEnd[badEnd.size() - 1] = 0;
    QTest::newRow("bad end byte") << QByteArrayList{badEnd} << none << none << none << none << none;

    const QByteArray hisPayload = hex("0000c0a80132ffffff00c0a80101000000000000"
                                      "08080404");
    const QByteArray hisTail = hex("2400");
    QTest::newRow("his network E0") << QByteArrayList{seal(hex("a56c2e00e0ff0100000000000000000024") +
                                                           hisPayload + hisTail)}
                                    << none << none << QByteArrayList{hisPayload} << none << none;
    QTest::newRow("his network E5") << QByteArrayList{seal(hex("a56c2e00e5ff0100000000000000000024") +
                                                           hisPayload + hisTail)}
                                    << none << none << QByteArrayList{hisPayload} << none << none;
    QTest::newRow("his network E5 FE ignored")
        << QByteArrayList{seal(hex("a56c2e00e5fe0100000000000000000024") + hisPayload + hisTail)} << none
        << none << none << none << none;
    QTest::newRow("his network with byte 17 set ignored")
        << QByteArrayList{seal(hex("a56c2e00e0ff0100000000000000000024") + hex("01") + hisPayload.mid(1) +
                               hisTail)}
        << none << none << none << none << none;
    QTest::newRow("network reply from the main board ignored")
        << QByteArrayList{seal(hex("a56c2e00a5ff0100000000000000000024") + hisPayload + hisTail)} << none
        << none << none << none << none;

    const QByteArray urlPayload = hex("000203") + "cam" + QByteArray(13, '\0') + hex("0400") + "rtmp";
    QTest::newRow("his url") << QByteArrayList{seal(hex("a56c2e00e0ff010000000000000000006a") + urlPayload +
                                                    hex("6a"))}
                             << none << none << none << QByteArrayList{urlPayload} << none;

    const QByteArray f3410 = seal(hex("a56c3200a5ff0100000000000000270049") + "#\x01#" + Record + "#");
    QTest::newRow("rvx3410 state frame")
        << QByteArrayList{f3410} << QByteArrayList{Record} << none << none << none << QByteArrayList{f3410};
    const QByteArray other3410 = seal(hex("a56c1500a5ff010000000000000027003001"));
    QTest::newRow("rvx3410 other frame")
        << QByteArrayList{other3410} << none << none << none << none << QByteArrayList{other3410};
}

void TestRvx3210Link::decode()
{
    QFETCH(QByteArrayList, datagrams);
    QFETCH(QByteArrayList, state);
    QFETCH(QByteArrayList, extra);
    QFETCH(QByteArrayList, his);
    QFETCH(QByteArrayList, url);
    QFETCH(QByteArrayList, frame3410);

    QSignalSpy sState(m_link.get(), &RVX3210_workdata::on_signals_3210Data);
    QSignalSpy sExtra(m_link.get(), &RVX3210_workdata::on_signals_5370Data);
    QSignalSpy sHis(m_link.get(), &RVX3210_workdata::on_signals_3210HISData);
    QSignalSpy sUrl(m_link.get(), &RVX3210_workdata::on_signals_3210HIS_URL_Data);
    QSignalSpy s3410(m_link.get(), &RVX3210_workdata::on_signals_3410Data);

    for (const QByteArray &d : datagrams)
        sendToLink(d);

    auto args = [](const QSignalSpy &spy) {
        QByteArrayList out;
        for (const QList<QVariant> &call : spy)
            out << call.at(0).toByteArray();
        return out;
    };
    QCOMPARE(args(sState), state);
    QCOMPARE(args(sExtra), extra);
    QCOMPARE(args(sHis), his);
    QCOMPARE(args(sUrl), url);
    QCOMPARE(args(s3410), frame3410);
}

void TestRvx3210Link::stallAt1057()
{
    QSignalSpy sState(m_link.get(), &RVX3210_workdata::on_signals_3210Data);
    const QByteArray shortForm = seal(hex("a56c3200a5ff0100000000000000000049") + "#\x01#" + Record + "#");

    // A frame head declaring 1056 bytes holds the buffer; completed, it still decodes.
    QByteArray big = hex("a56c2004e0ff010000000000000000002400") + QByteArray(1035, '\x11');
    big = seal(big);
    QCOMPARE(big.size(), 1056);
    QSignalSpy sHis(m_link.get(), &RVX3210_workdata::on_signals_3210HISData);
    sendToLink(big.left(1000));
    sendToLink(big.mid(1000));
    QCOMPARE(sHis.count(), 1);
    QCOMPARE(sHis.at(0).at(0).toByteArray().left(3), hex("001111"));

    // A head declaring more than the buffer may ever hold: once 1057 bytes are held the link
    // decodes nothing more.
    sendToLink(hex("a56cffff") + QByteArray(1000, '\0'));
    sendToLink(QByteArray(57, '\0'));
    sendToLink(shortForm);
    QCOMPARE(sState.count(), 0);
}

void TestRvx3210Link::releasePortFreesIt()
{
    m_main.reset();
    m_his.reset();
    m_link->releasePort();
    QVERIFY(!m_link->isBound());
    // Bound without sharing: succeeds only when nobody else holds the port.
    QUdpSocket exclusive;
    QVERIFY(exclusive.bind(QHostAddress::AnyIPv4, Port, QAbstractSocket::DontShareAddress));
}

QTEST_GUILESS_MAIN(TestRvx3210Link)
#include "tst_rvx3210link.moc"
