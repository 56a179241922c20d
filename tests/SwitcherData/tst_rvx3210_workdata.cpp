#include "rvx3210_workdata.h"
#include "testframes.h"
#include "wirecapture.h"

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

const QByteArray Record = hex("0201010732036401000000010203010110008000010b00000000");

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
    void setIpMovesLaterCommands();
    void setHisIpStoresTextsAndMoves();
    void urlFrame();

    void decode_data();
    void decode();
    void stallAt1057();
    void releasePortFreesIt();

private:
    void sendToLink(const QByteArray &datagram);

    std::unique_ptr<RVX3210_workdata> m_link;
    std::unique_ptr<WireCapture> m_main;
    std::unique_ptr<WireCapture> m_his;
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
    m_main = std::make_unique<WireCapture>(MainIp);
    m_his = std::make_unique<WireCapture>(HisIp);
    QVERIFY(m_main->isBound() && m_his->isBound());
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
    QTest::addColumn<QString>("label");
    QTest::addColumn<QByteArray>("frames"); // hex, blank between frames

    using W = RVX3210_workdata;
    auto row = [](const char *name, const char *label, const char *frame, Call c) {
        QTest::newRow(name) << c << QString::fromUtf8(label) << QByteArray(frame);
    };
    // Each send is logged under its own label (checked where given); ROTATE borrows PAUSE's.
    row("read state", "点击DS按钮senbuf的数据", "a56c1400a5ff01000000000000000000491303ae",
        &W::SendCMDRead3210state);
    row("pgm 2", "", "a56c1500a5ff0100000000000000000080024d03ae", [](W &w) { w.SendCDMPGMCH(2); });
    row("pvw 9", "", "a56c1500a5ff0100000000000000000081095503ae", [](W &w) { w.SendCMDPVWCH(9); });
    row("t-bar", "", "a56c1600a5ff01000000000000000000821080de03ae",
        [](W &w) { w.SwndCMDslider(0x10, 0x80); });
    row("cut", "", "a56c1400a5ff01000000000000000000834d03ae", &W::SendCMDCUT);
    row("auto", "", "a56c1400a5ff01000000000000000000844e03ae", &W::SendCMDAUTO);
    row("ftb", "", "a56c1400a5ff01000000000000000000854f03ae", &W::SendCMDFTB);
    row("pip on", "", "a56c1500a5ff0100000000000000000086015203ae", [](W &w) { w.SendCMDPIP(1); });
    row("stream low byte", "", "a56c1500a5ff0100000000000000000087348603ae",
        [](W &w) { w.SendCMDSTREAM(0x1234); });
    row("transition mix", "", "a56c1400a5ff010000000000000000008d5703ae",
        [](W &w) { w.SendCMDTRANSITIONS(1); });
    row("transition fade", "", "a56c1400a5ff010000000000000000008e5803ae",
        [](W &w) { w.SendCMDTRANSITIONS(2); });
    // A wipe selects the wipe family, then the direction; other types send nothing.
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
    row("transition 0", "", "", [](W &w) { w.SendCMDTRANSITIONS(0); });
    row("transition 7", "", "", [](W &w) { w.SendCMDTRANSITIONS(7); });
    row("set wipe", "", "a56c1400a5ff010000000000000000008f5903ae", &W::SET_WIPE);
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
    row("output format", "", "a56c1500a5ff01000000000000000000a3067403ae", [](W &w) { w.SendCMDF1(6); });
    row("rate", "", "a56c1500a5ff01000000000000000000b1027e03ae", [](W &w) { w.SendCMDRATE(2); });
    row("rec low byte", "", "a56c1500a5ff01000000000000000000b2017e03ae", [](W &w) { w.SendCMDREC(0x101); });
    row("levels", "CH3_vol senbuf的数据", "a56c1800a5ff01000000000000000000b40a14001ebe03ae",
        [](W &w) { w.SendCMDLeftSliderVOL(10, 20, 0, 30); });
    row("ch1 source 0", "", "a56c1500a5ff01000000000000000000b9078b03ae", [](W &w) { w.SendCMDCH1(0); });
    row("ch1 source 3", "", "a56c1500a5ff01000000000000000000b9058903ae", [](W &w) { w.SendCMDCH1(3); });
    row("ch1 source 4", "", "a56c1500a5ff01000000000000000000b9068a03ae", [](W &w) { w.SendCMDCH1(4); });
    row("ch1 source 5", "", "a56c1500a5ff01000000000000000000b9088c03ae", [](W &w) { w.SendCMDCH1(5); });
    row("ch2 source 1", "", "a56c1500a5ff01000000000000000000ba038803ae", [](W &w) { w.SendCMDCH2(1); });
    row("ch2 source 2", "", "a56c1500a5ff01000000000000000000ba048903ae", [](W &w) { w.SendCMDCH2(2); });
    row("ch2 source 6", "", "a56c1500a5ff01000000000000000000ba008503ae", [](W &w) { w.SendCMDCH2(6); });
    row("pause", "", "a56c1400a5ff01000000000000000000c58f03ae", &W::SendCMDPAUSE);
    row("mix", "", "a56c1400a5ff01000000000000000000cb9503ae", &W::SendCMDMIX);
    row("afv", "", "a56c1400a5ff01000000000000000000cc9603ae", &W::SendCMDAFV);
    row("still", "", "a56c1400a5ff01000000000000000000cd9703ae", &W::SendCMDSTILL);
    row("ch1 volume", "", "a56c1500a5ff01000000000000000000ce32cb03ae", [](W &w) { w.SendCMDCH1_VOL(50); });
    row("ch2 volume", "", "a56c1500a5ff01000000000000000000cf64fe03ae", [](W &w) { w.SendCMDCH2_VOL(100); });
    row("f2", "", "a56c1400a5ff01000000000000000000d09a03ae", &W::SendCMDF2);
    row("f3", "", "a56c1400a5ff01000000000000000000d49e03ae", &W::SendCMDF3);
    row("rotate shares the pause label", "点击暂停按钮senbuf的数据",
        "a56c1400a5ff01000000000000000000d59f03ae", &W::SendCMDROTATE);
    row("f7", "", "a56c1400a5ff01000000000000000000d6a003ae", &W::SendCMDF7);
    row("menu", "", "a56c1600a5ff01000000000000000000d90301a903ae", [](W &w) { w.SendCMDMenu(3, 1); });
    row("raw test bytes", "", "0102aa", [](W &w) { w.SendCMDTest(hex("0102aa")); });
    row("read his network", "", "a56c2000e0ff01000000000000000000240000000000000000000000003503ae",
        &W::SendCMD_Read_His_IP);
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

void TestRvx3210Link::commandOnTheWire()
{
    QFETCH(Call, call);
    QFETCH(QString, label);
    QFETCH(QByteArray, frames);
    const QByteArrayList expected = hexList(frames);

    QSignalSpy shown(m_link.get(), &RVX3210_workdata::showCurrentData);
    if (!label.isEmpty())
        QTest::ignoreMessage(QtDebugMsg, QRegularExpression("^" + QRegularExpression::escape(label) + " "));
    call(*m_link);
    QByteArrayList shownFrames;
    for (const QList<QVariant> &args : shown)
        shownFrames << args.at(0).toByteArray();
    QCOMPARE(shownFrames, expected);

    // Frames for the HIS board carry its class E0 at byte 4; a marker bounds the main board's.
    const QByteArray marker("end of capture");
    m_link->SendCMDTest(marker);
    const QByteArrayList main = m_main->until(marker), his = m_his->takeAll();
    const bool toHis = !expected.isEmpty() && expected[0].size() > 4 && uint8_t(expected[0].at(4)) == 0xE0;
    QCOMPARE(toHis ? his : main, expected);
    QVERIFY((toHis ? main : his).isEmpty());
}

void TestRvx3210Link::setIpMovesLaterCommands()
{
    WireCapture moved("127.0.0.4");
    m_link->SendCMD_SetIP(hex("7f000004"), "127.0.0.4");
    // The address frame itself still goes to the old address.
    QCOMPARE(m_main->take(1).value(0),
             hex("a56c2000a5ff00000000000000000000057f00000400000000000000005d03ae"));
    QCOMPARE(m_link->on_DevIP(), QString("127.0.0.4"));
    m_link->SendCMDCUT();
    QCOMPARE(moved.take(1).value(0), hex("a56c1400a5ff01000000000000000000834d03ae"));
    QVERIFY(m_main->takeAll().isEmpty());
}

void TestRvx3210Link::setHisIpStoresTextsAndMoves()
{
    WireCapture moved("127.0.0.5");
    m_link->SendCMD_Set_HIS_IP(hex("7f000005"), hex("ff000000"), hex("7f000001"),
                               {"127.0.0.5", "255.0.0.0", "127.0.0.1"});
    QCOMPARE(m_his->take(1).value(0),
             hex("a56c2000e0ff01000000000000000000057f000005ff0000007f0000011905ae"));
    QCOMPARE(m_link->on_HIS_IP(), QString("127.0.0.5"));
    QCOMPARE(m_link->on_HIS_Subnet(), QString("255.0.0.0"));
    QCOMPARE(m_link->on_HIS_Gateway(), QString("127.0.0.1"));
    m_link->SendCMD_Read_Url(1);
    QCOMPARE(moved.take(1).value(0), hex("a56c1500e0ff010000000000000000006a017103ae"));
    QVERIFY(m_his->takeAll().isEmpty());
}

void TestRvx3210Link::urlFrame()
{
    m_link->SendCMD_Set_Url(3, "cam", "rtmp://127.0.0.9/live/a");
    const QByteArray got = m_his->take(1).value(0);
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
    QTest::addColumn<QStringList>("signals"); // "<signal>:<hex argument>" in the order decode() lists them
    auto emits = [](const char *signal, const QByteArray &arg) {
        return QStringList{QString::fromLatin1(signal) + ':' + QString::fromLatin1(arg.toHex())};
    };
    auto state = [](const QByteArray &body) { return reply(0xA5FF, 0x49, body); };

    const QByteArray shortForm = state("#\x01#" + Record + "#");
    QTest::newRow("short form") << QByteArrayList{shortForm} << emits("state", Record);
    QTest::newRow("short record under 26 bytes passed as is")
        << QByteArrayList{state("#\x01#" + Record.left(10) + "#")} << emits("state", Record.left(10));
    QByteArray withHash = Record;
    withHash[5] = '#';
    QTest::newRow("'#' in the record cuts it")
        << QByteArrayList{state("#\x01#" + withHash + "#")} << emits("state", Record.left(5));
    QTest::newRow("no separators") << QByteArrayList{state(hex("0102"))} << QStringList();

    // The long form: serial number, then the record as the 18th '#'-separated piece.
    auto longBody = [](int pieces) { return "#SN##" + QByteArray("x#").repeated(pieces - 4); };
    QTest::newRow("long form") << QByteArrayList{state(longBody(18) + Record + "#")}
                               << emits("state", Record) + emits("extra", "SN");
    QTest::newRow("long form of 17 pieces passes an empty record")
        << QByteArrayList{state(longBody(17) + "x")} << emits("state", "") + emits("extra", "SN");
    QTest::newRow("long form of 16 pieces") << QByteArrayList{state(longBody(16) + "x")} << QStringList();

    QTest::newRow("split over two datagrams")
        << QByteArrayList{shortForm.left(30), shortForm.mid(30)} << emits("state", Record);
    QTest::newRow("19 bytes kept") << QByteArrayList{shortForm.left(19), shortForm.mid(19)}
                                   << emits("state", Record);
    QTest::newRow("two frames in one datagram dropped")
        << QByteArrayList{shortForm + shortForm} << QStringList();
    QTest::newRow("after a dropped pair the next frame decodes")
        << QByteArrayList{shortForm + shortForm, shortForm} << emits("state", Record);
    QByteArray badSum = shortForm;
    badSum[badSum.size() - 3] = char(badSum.at(badSum.size() - 3) ^ 1);
    QTest::newRow("bad checksum") << QByteArrayList{badSum} << QStringList();
    QByteArray badEnd = shortForm;
    badEnd[badEnd.size() - 1] = 0;
    QTest::newRow("bad end byte") << QByteArrayList{badEnd} << QStringList();

    const QByteArray net = hex("0000c0a80132ffffff00c0a80101000000000000 08080404");
    QTest::newRow("his network E0") << QByteArrayList{reply(0xE0FF, 0x24, net + "$")} << emits("his", net);
    QTest::newRow("his network E5") << QByteArrayList{reply(0xE5FF, 0x24, net + "$")} << emits("his", net);
    QTest::newRow("his network E5 FE ignored")
        << QByteArrayList{reply(0xE5FE, 0x24, net + "$")} << QStringList();
    QTest::newRow("his network with byte 17 set ignored")
        << QByteArrayList{reply(0xE0FF, 0x24, hex("01") + net.mid(1) + "$")} << QStringList();
    QTest::newRow("network reply from the main board ignored")
        << QByteArrayList{reply(0xA5FF, 0x24, net + "$")} << QStringList();

    const QByteArray url = hex("000203") + "cam" + QByteArray(13, '\0') + hex("0400") + "rtmp";
    QTest::newRow("his url") << QByteArrayList{reply(0xE0FF, 0x6a, url + "j")} << emits("url", url);

    const QByteArray f3410 = reply(0xA5FF, 0x49, "#\x01#" + Record + "#", 0x27);
    QTest::newRow("rvx3410 state frame")
        << QByteArrayList{f3410} << emits("state", Record) + emits("3410", f3410);
    const QByteArray other3410 = reply(0xA5FF, 0x30, hex("01"), 0x27);
    QTest::newRow("rvx3410 other frame") << QByteArrayList{other3410} << emits("3410", other3410);
}

void TestRvx3210Link::decode()
{
    QFETCH(QByteArrayList, datagrams);
    using W = RVX3210_workdata;
    const QList<QPair<const char *, void (W::*)(const QByteArray &)>> watched{
        {"state", &W::on_signals_3210Data},
        {"extra", &W::on_signals_5370Data},
        {"his", &W::on_signals_3210HISData},
        {"url", &W::on_signals_3210HIS_URL_Data},
        {"3410", &W::on_signals_3410Data}};
    std::vector<std::unique_ptr<QSignalSpy>> spies;
    for (const auto &w : watched)
        spies.push_back(std::make_unique<QSignalSpy>(m_link.get(), w.second));

    for (const QByteArray &d : datagrams)
        sendToLink(d);

    QStringList got;
    for (size_t i = 0; i < spies.size(); ++i) {
        for (const QList<QVariant> &call : *spies[i])
            got << QString::fromLatin1(watched[int(i)].first) + ':' + call.at(0).toByteArray().toHex();
    }
    QTEST(got, "signals");
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
#include "tst_rvx3210_workdata.moc"
