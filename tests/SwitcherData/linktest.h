#pragma once

// What the link tests of the RVX3210 family and the 8000 series share: both links are the
// reporting link with a few codes of their own, so they are opened, checked on the wire and fed
// replies the same way, and most commands go out as the same bytes.

#include "testframes.h"
#include "wirecapture.h"

#include <QLoggingCategory>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QUdpSocket>
#include <QtTest>
#include <functional>
#include <memory>

namespace LinkTest {

// The unit's main board listens at 127.0.0.2 and its HIS board at 127.0.0.3; the link is on
// 127.0.0.1:7000.
constexpr const char *MainIp = "127.0.0.2";
constexpr const char *HisIp = "127.0.0.3";
constexpr quint16 Port = 7000;

// A CH1 level of 127 to the main board, sent after every action: it closes the main board's
// capture, and by the time it arrives everything sent before it has reached the HIS board's.
inline QByteArray marker()
{
    return hex("a56c1500a5ff01000000000000000000ce7f1804ae");
}

// The send log is checked; keep it on whatever QT_LOGGING_RULES says.
inline void keepSendLogOn(const char *category)
{
    static const char *name = nullptr;
    static QLoggingCategory::CategoryFilter previous = nullptr;
    name = category;
    previous = QLoggingCategory::installFilter([](QLoggingCategory *c) {
        if (previous)
            previous(c);
        if (qstrcmp(c->categoryName(), name) == 0)
            c->setEnabled(QtDebugMsg, true);
    });
}

template <typename Link> using Call = std::function<void(Link &)>;

// A link addressed to the unit's two boards, and the stand-ins listening as those boards.
template <typename Link> struct Rig
{
    std::unique_ptr<Link> link;
    std::unique_ptr<WireCapture> main;
    std::unique_ptr<WireCapture> his;

    bool open()
    {
        link = std::make_unique<Link>();
        if (!link->isBound())
            return false;
        link->get_DevTypeID(MainIp, 0xA5, 0xFF);
        link->get_HISTypeID(HisIp, 0xE0, 0xFF);
        main = std::make_unique<WireCapture>(MainIp);
        his = std::make_unique<WireCapture>(HisIp);
        return main->isBound() && his->isBound();
    }

    void close()
    {
        main.reset();
        his.reset();
        link.reset();
    }
};

// One row of a wire table: the call, the log label it must write ("" not checked, "-" no line
// at all) and the frames it must send, in hex with a blank between frames.
template <typename Link> void wireColumns()
{
    QTest::addColumn<Call<Link>>("call");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QByteArray>("frames");
}

template <typename Link>
void wireRow(const char *name, const char *label, const char *frames, Call<Link> call)
{
    QTest::newRow(name) << call << QString::fromUtf8(label) << QByteArray(frames);
}

// The commands both families send as the same bytes under the same label.
template <typename Link> void sharedWireRows()
{
    using W = Link;
    const auto row = wireRow<Link>;
    row("read state", "点击DS按钮senbuf的数据", "a56c1400a5ff01000000000000000000491303ae",
        &W::SendCMDRead3210state);
    row("pgm 2", "点击PGM通道senbuf的数据", "a56c1500a5ff0100000000000000000080024d03ae",
        [](W &w) { w.SendCDMPGMCH(2); });
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
    row("rec low byte", "", "a56c1500a5ff01000000000000000000b2017e03ae", [](W &w) { w.SendCMDREC(0x101); });
    row("levels", "CH3_vol senbuf的数据", "a56c1800a5ff01000000000000000000b40a14001ebe03ae",
        [](W &w) { w.SendCMDLeftSliderVOL(10, 20, 0, 30); });
    row("ch1 source 0 aux", "", "a56c1500a5ff01000000000000000000b9078b03ae", [](W &w) { w.SendCMDCH1(0); });
    row("ch2 source 6 mic 2", "", "a56c1500a5ff01000000000000000000ba008503ae",
        [](W &w) { w.SendCMDCH2(6); });
    row("pause", "", "a56c1400a5ff01000000000000000000c58f03ae", &W::SendCMDPAUSE);
    row("mix", "点击MXI senbuf的数据", "a56c1400a5ff01000000000000000000cb9503ae", &W::SendCMDMIX);
    row("afv", "", "a56c1400a5ff01000000000000000000cc9603ae", &W::SendCMDAFV);
    row("still", "", "a56c1400a5ff01000000000000000000cd9703ae", &W::SendCMDSTILL);
    row("ch1 volume", "", "a56c1500a5ff01000000000000000000ce32cb03ae", [](W &w) { w.SendCMDCH1_VOL(50); });
    row("ch2 volume", "", "a56c1500a5ff01000000000000000000cf64fe03ae", [](W &w) { w.SendCMDCH2_VOL(100); });
    row("f2", "", "a56c1400a5ff01000000000000000000d09a03ae", &W::SendCMDF2);
    row("f3", "", "a56c1400a5ff01000000000000000000d49e03ae", &W::SendCMDF3);
    row("rotate logs the pause label", "点击暂停按钮senbuf的数据", "a56c1400a5ff01000000000000000000d59f03ae",
        &W::SendCMDROTATE);
    row("f7", "", "a56c1400a5ff01000000000000000000d6a003ae", &W::SendCMDF7);
    row("read his network", "ReadHis_IP senbuf的数据",
        "a56c2000e0ff01000000000000000000240000000000000000000000003503ae", &W::SendCMD_Read_His_IP);
}

// Runs the current row of a wire table (see wireColumns) on a link logging under `category`: the label logged
// (or, for "-", no line of the link's category), the frames shown, and the same frames on the board they are
// meant for, none on the other.
template <typename Link> void checkOnTheWire(Rig<Link> &rig, const char *category)
{
    QFETCH(Call<Link>, call);
    QFETCH(QString, label);
    QFETCH(QByteArray, frames);
    const QByteArrayList expected = hexList(frames);
    QSignalSpy shown(rig.link.get(), &Link::showCurrentData);

    // Any line from the link during a "-" row trips the flag; QtTest's own handler, which
    // does the ignoreMessage bookkeeping, is put back afterwards.
    static bool logged;
    static const char *watched;
    logged = false;
    watched = category;
    QtMessageHandler testHandler = nullptr;
    if (label == "-") {
        testHandler = qInstallMessageHandler([](QtMsgType, const QMessageLogContext &ctx, const QString &) {
            if (qstrcmp(ctx.category, watched) == 0)
                logged = true;
        });
    } else if (!label.isEmpty()) {
        QTest::ignoreMessage(QtDebugMsg, QRegularExpression("^" + QRegularExpression::escape(label) + " "));
    }
    call(*rig.link);
    if (label == "-") {
        qInstallMessageHandler(testHandler);
        QVERIFY(!logged);
    }

    QByteArrayList shownFrames;
    for (const QList<QVariant> &args : shown)
        shownFrames << args.at(0).toByteArray();
    QCOMPARE(shownFrames, expected);

    // Frames for the HIS board carry its class E0 at byte 4.
    rig.link->SendCMDCH1_VOL(0x7F);
    const bool toHis = !expected.isEmpty() && expected[0].size() > 4 && uint8_t(expected[0].at(4)) == 0xE0;
    const QByteArrayList main = rig.main->until(marker());
    const QByteArrayList his = rig.his->takeAll();
    QCOMPARE(toHis ? his : main, expected);
    QVERIFY((toHis ? main : his).isEmpty());
}

// The address command still goes to the old address; every later command to the new one.
template <typename Link> void checkSetIpMovesLaterCommands(Rig<Link> &rig)
{
    WireCapture moved("127.0.0.4");
    rig.link->SendCMD_SetIP(hex("7f000004"), "127.0.0.4");
    QCOMPARE(rig.main->take(1).value(0),
             hex("a56c2000a5ff00000000000000000000057f00000400000000000000005d03ae"));
    QCOMPARE(rig.link->on_DevIP(), QString("127.0.0.4"));
    rig.link->SendCMDCUT();
    QCOMPARE(moved.take(1).value(0), hex("a56c1400a5ff01000000000000000000834d03ae"));
    QVERIFY(rig.main->takeAll().isEmpty());
}

// The HIS board's address command keeps the texts it was given and moves later HIS frames to
// the new address, which `then` checks from there.
template <typename Link>
void checkSetHisIpMoves(Rig<Link> &rig, const std::function<void(WireCapture &)> &then)
{
    WireCapture moved("127.0.0.5");
    rig.link->SendCMD_Set_HIS_IP(hex("7f000005"), hex("ff000000"), hex("7f000001"),
                                 {"127.0.0.5", "255.0.0.0", "127.0.0.1"});
    QCOMPARE(rig.his->take(1).value(0),
             hex("a56c2000e0ff01000000000000000000057f000005ff0000007f0000011905ae"));
    QCOMPARE(rig.link->on_HIS_IP(), QString("127.0.0.5"));
    QCOMPARE(rig.link->on_HIS_Subnet(), QString("255.0.0.0"));
    QCOMPARE(rig.link->on_HIS_Gateway(), QString("127.0.0.1"));
    then(moved);
    QVERIFY(rig.his->takeAll().isEmpty());
}

// Sends the datagrams to the link as the unit's main board and waits until the link has read
// them all: loopback queues a datagram before the send returns, so once the link's socket has
// nothing pending, the link has handled every one.
template <typename Link> void deliver(Rig<Link> &rig, const QByteArrayList &datagrams)
{
    for (const QByteArray &d : datagrams)
        rig.main->reply(d);
    QUdpSocket *socket = rig.link->socket();
    QTRY_VERIFY(!socket->hasPendingDatagrams());
}

// Runs the current row of a decode table (see sharedDecodeRows): what the link signals for the
// datagrams, in the order it signals, as "<signal>:<hex payload>" with signal one of state,
// serial, his, url, 3410.
template <typename Link> void checkDecode(Rig<Link> &rig)
{
    QFETCH(QByteArrayList, datagrams);
    QStringList got;
    QObject context;
    auto record = [&got](const char *name) {
        return [&got, name](const QByteArray &d) { got << QString::fromLatin1(name) + ':' + d.toHex(); };
    };
    using W = Link;
    QObject::connect(rig.link.get(), &W::on_signals_3210Data, &context, record("state"));
    QObject::connect(rig.link.get(), &W::on_signals_5370Data, &context, record("serial"));
    QObject::connect(rig.link.get(), &W::on_signals_3210HISData, &context, record("his"));
    QObject::connect(rig.link.get(), &W::on_signals_3210HIS_URL_Data, &context, record("url"));
    QObject::connect(rig.link.get(), &W::on_signals_3410Data, &context, record("3410"));
    deliver(rig, datagrams);
    QTEST(got, "signals");
}

inline QStringList emits(const char *signal, const QByteArray &payload)
{
    return {QString::fromLatin1(signal) + ':' + QString::fromLatin1(payload.toHex())};
}

inline QByteArray stateReply(const QByteArray &body)
{
    return reply(0xA5FF, 0x49, body);
}

// A long state reply cut into `pieces` at '#': the serial, an empty piece, then filler.
inline QByteArray longBody(const QByteArray &serial, int pieces)
{
    return "#" + serial + "##" + QByteArray("x#").repeated(pieces - 4);
}

// Replies both families decode alike, around the family's own state record.
inline void sharedDecodeRows(const QByteArray &record)
{
    QTest::addColumn<QByteArrayList>("datagrams");
    QTest::addColumn<QStringList>("signals"); // in the order they were emitted

    const QByteArray shortForm = stateReply("#\x01#" + record + "#");
    QTest::newRow("short form") << QByteArrayList{shortForm} << emits("state", record);
    QTest::newRow("short record under its length passed as is")
        << QByteArrayList{stateReply("#\x01#" + record.left(10) + "#")} << emits("state", record.left(10));
    QByteArray withHash = record;
    withHash[4] = '#'; // a CH1 level of 35 cuts the payload there
    QTest::newRow("'#' in the record cuts it")
        << QByteArrayList{stateReply("#\x01#" + withHash + "#")} << emits("state", record.left(4));
    QTest::newRow("no separators") << QByteArrayList{stateReply(hex("0102"))} << QStringList();

    // The long form: serial number, then the record as the 18th '#'-separated piece.
    QTest::newRow("long form: serial first, then the record")
        << QByteArrayList{stateReply(longBody("SN-0042", 18) + record + "#")}
        << emits("serial", "SN-0042") + emits("state", record);
    QTest::newRow("long form of 16 pieces")
        << QByteArrayList{stateReply(longBody("SN", 16) + "x")} << QStringList();

    QTest::newRow("split over two datagrams")
        << QByteArrayList{shortForm.left(30), shortForm.mid(30)} << emits("state", record);
    QTest::newRow("19 bytes kept") << QByteArrayList{shortForm.left(19), shortForm.mid(19)}
                                   << emits("state", record);
    QTest::newRow("two frames in one datagram dropped")
        << QByteArrayList{shortForm + shortForm} << QStringList();
    QTest::newRow("after a dropped pair the next frame decodes")
        << QByteArrayList{shortForm + shortForm, shortForm} << emits("state", record);
    QByteArray badSum = shortForm;
    badSum[badSum.size() - 3] = char(badSum.at(badSum.size() - 3) ^ 1);
    QTest::newRow("bad checksum") << QByteArrayList{badSum} << QStringList();
    QByteArray badEnd = shortForm;
    badEnd[badEnd.size() - 1] = 0;
    QTest::newRow("bad end byte") << QByteArrayList{badEnd} << QStringList();

    const QByteArray net = hex("0000c0a80132ffffff00c0a80101000000000000 08080404");
    QTest::newRow("his network E0") << QByteArrayList{reply(0xE0FF, 0x24, net + "$")} << emits("his", net);
    QTest::newRow("his network E5") << QByteArrayList{reply(0xE5FF, 0x24, net + "$")} << emits("his", net);
    QTest::newRow("E5 FE is not a his board")
        << QByteArrayList{reply(0xE5FE, 0x24, net + "$")} << QStringList();
    QTest::newRow("his network with byte 17 set ignored")
        << QByteArrayList{reply(0xE0FF, 0x24, hex("01") + net.mid(1) + "$")} << QStringList();
    QTest::newRow("network reply from the main board ignored")
        << QByteArrayList{reply(0xA5FF, 0x24, net + "$")} << QStringList();

    const QByteArray url = hex("000203") + "cam" + QByteArray(13, '\0') + hex("0400") + "rtmp";
    QTest::newRow("his url") << QByteArrayList{reply(0xE0FF, 0x6a, url + "j")} << emits("url", url);
}

} // namespace LinkTest
