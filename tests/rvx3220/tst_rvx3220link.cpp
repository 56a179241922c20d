// RVX3220 link object: every sender on the wire, and the receive checks.
#include "rvx3220_workdata.h"
#include "testframes.h"
#include "wirecapture.h"

#include <QtTest>
#include <functional>
#include <memory>

using Action = std::function<void(RVX3220_workdata &)>;
Q_DECLARE_METATYPE(Action)
Q_DECLARE_METATYPE(RVX3220_workdata::Verdict)

namespace {

// The state-read request to A5 FF, used to close every capture.
const QByteArray Marker = QByteArray::fromHex("a56c1400a5ff01000000000000000000491303ae");

QByteArray frameOf(int size, std::initializer_list<std::pair<int, uint8_t>> bytes)
{
    QByteArray f(size, '\0');
    for (const auto &b : bytes)
        f[b.first] = char(b.second);
    return f;
}

// Records what reaches the receive check instead of dropping it unseen.
class WatchedLink : public RVX3220_workdata
{
public:
    using RVX3220_workdata::RVX3220_workdata;
    void Read3220State_Data(const QByteArray &frame, int length) override
    {
        seen.append(frame.left(length));
        RVX3220_workdata::Read3220State_Data(frame, length);
    }
    QList<QByteArray> seen;
};

} // namespace

class TestRvx3220Link : public QObject
{
    Q_OBJECT
private slots:
    void senders_data();
    void senders();
    void addressChangeMovesLaterCommands();
    void portTakenStillSends();
    void releaseFreesThePort();
    void examine_data();
    void examine();
    void queuedDatagramsAreAllExamined();
    void receivingChangesNothing();
};

void TestRvx3220Link::senders_data()
{
    QTest::addColumn<Action>("action");
    QTest::addColumn<QList<QByteArray>>("wire");

    auto row = [](const char *name, Action a, QList<QByteArray> wire) { QTest::newRow(name) << a << wire; };
    using L = RVX3220_workdata;
    row("PGM 3", [](L &l) { l.SendCMDPGM(3); }, {hex("a56c1500a5ff0100000000000000000080034e03ae")});
    row("PVW 6", [](L &l) { l.SendCMDPVW(6); }, {hex("a56c1500a5ff0100000000000000000081065203ae")});
    row("lever stroke 0 at 125", [](L &l) { l.SwndCMDslider(0, 125); },
        {hex("a56c1600a5ff0100000000000000000082007dcb03ae")});
    row("lever stroke 1 at 0", [](L &l) { l.SwndCMDslider(1, 0); },
        {hex("a56c1600a5ff010000000000000000008201004f03ae")});
    row("CUT", [](L &l) { l.SendCMDCUT(); }, {hex("a56c1400a5ff01000000000000000000834d03ae")});
    row("AUTO sends nothing", [](L &l) { l.SendCMDAUTO(); }, {});
    row("PIP on", [](L &l) { l.SendCMDPIP(1); }, {hex("a56c1500a5ff0100000000000000000086015203ae")});
    row("PIP off", [](L &l) { l.SendCMDPIP(0); }, {hex("a56c1500a5ff0100000000000000000086005103ae")});

    // Effects: MIX and FADE alone, each wipe behind a 0x90.
    const QByteArray wipe = hex("a56c1400a5ff01000000000000000000905a03ae");
    row("effect 0", [](L &l) { l.SendCMDTRANSITIONS(0); }, {});
    row("effect 1 MIX", [](L &l) { l.SendCMDTRANSITIONS(1); },
        {hex("a56c1400a5ff010000000000000000008e5803ae")});
    row("effect 2 FADE", [](L &l) { l.SendCMDTRANSITIONS(2); },
        {hex("a56c1400a5ff010000000000000000008f5903ae")});
    row("effect 3 up", [](L &l) { l.SendCMDTRANSITIONS(3); },
        {wipe, hex("a56c1500a5ff0100000000000000000092258203ae")});
    row("effect 4 down", [](L &l) { l.SendCMDTRANSITIONS(4); },
        {wipe, hex("a56c1500a5ff0100000000000000000092298603ae")});
    row("effect 5 left", [](L &l) { l.SendCMDTRANSITIONS(5); },
        {wipe, hex("a56c1500a5ff0100000000000000000092238003ae")});
    row("effect 6 right", [](L &l) { l.SendCMDTRANSITIONS(6); },
        {wipe, hex("a56c1500a5ff0100000000000000000092278403ae")});
    row("effect 7", [](L &l) { l.SendCMDTRANSITIONS(7); }, {});

    row("PIP border enable", [](L &l) { l.SendCMDPIP_Border_Enable(1); },
        {hex("a56c1500a5ff010000000000000000009d016903ae")});
    row("PIP border colour", [](L &l) { l.SendCMDPIP_Border_Color(3); },
        {hex("a56c1500a5ff010000000000000000009e036c03ae")});
    row("PIP border width", [](L &l) { l.SendCMDPIP_Border_Width(7); },
        {hex("a56c1500a5ff010000000000000000009f077103ae")});
    row("PIP H 1440 low byte first", [](L &l) { l.SendCMDPIP_H_Position(1440); },
        {hex("a56c1600a5ff01000000000000000000a0a0051104ae")});
    row("PIP V 810", [](L &l) { l.SendCMDPIP_V_Position(810); },
        {hex("a56c1600a5ff01000000000000000000a12a039a03ae")});
    row("PIP size large", [](L &l) { l.SendCMDPIP_Border_Size(2); },
        {hex("a56c1500a5ff01000000000000000000a2026f03ae")});

    const char *outs[] = {
        "a56c1500a5ff01000000000000000000a3077503ae", "a56c1500a5ff01000000000000000000a30b7903ae",
        "a56c1500a5ff01000000000000000000a3097703ae", "a56c1500a5ff01000000000000000000a3016f03ae",
        "a56c1500a5ff01000000000000000000a3037103ae", "a56c1500a5ff01000000000000000000a30d7b03ae",
        "a56c1500a5ff01000000000000000000a3057303ae"};
    for (int i = 0; i < 7; ++i) {
        QTest::addRow("output format %d", i)
            << Action([i](L &l) { l.SendCMDPGM_OUT(i); }) << QList<QByteArray>{hex(outs[i])};
    }
    row("output format 7", [](L &l) { l.SendCMDPGM_OUT(7); }, {});
    row("output format -1", [](L &l) { l.SendCMDPGM_OUT(-1); }, {});

    row("POP on", [](L &l) { l.SendCMDPOP(1); }, {hex("a56c1500a5ff01000000000000000000a7017303ae")});
    row("POP window 2", [](L &l) { l.SendCMDPOP_Window(2); },
        {hex("a56c1500a5ff01000000000000000000a8027503ae")});
    row("POP border on", [](L &l) { l.SendCMDPOP_Border_Enable(1); },
        {hex("a56c1500a5ff01000000000000000000a9017503ae")});
    row("POP border colour", [](L &l) { l.SendCMDPOP_Border_Color(2); },
        {hex("a56c1500a5ff01000000000000000000aa027703ae")});
    row("POP border width", [](L &l) { l.SendCMDPOP_Border_Width(5); },
        {hex("a56c1500a5ff01000000000000000000ab057b03ae")});
    row("POP H 960", [](L &l) { l.SendCMDPOP_H_Position(960); },
        {hex("a56c1600a5ff01000000000000000000acc0033b04ae")});
    row("POP V 540", [](L &l) { l.SendCMDPOP_V_Position(540); },
        {hex("a56c1600a5ff01000000000000000000ad1c029703ae")});

    // Both volumes ride on 0xB8; the source code (with 0x02 skipped) is all that differs.
    const QByteArray vol_in1_60 = hex("a56c1600a5ff01000000000000000000b8033cc303ae");
    row("CH1 volume IN1 60", [](L &l) { l.SendCMDCH1_VOL(2, 60); }, {vol_in1_60});
    row("CH2 volume IN1 60", [](L &l) { l.SendCMDCH2_VOL(2, 60); }, {vol_in1_60});
    row("CH1 volume Phone_IN 100", [](L &l) { l.SendCMDCH1_VOL(0, 100); },
        {hex("a56c1600a5ff01000000000000000000b80064e803ae")});
    row("CH2 volume IN6 0", [](L &l) { l.SendCMDCH2_VOL(7, 0); },
        {hex("a56c1600a5ff01000000000000000000b808008c03ae")});
    row("CH1 volume past the list", [](L &l) { l.SendCMDCH1_VOL(8, 50); }, {});
    row("CH1 source RCA_IN", [](L &l) { l.SendCMDCH1(1); },
        {hex("a56c1500a5ff01000000000000000000b9018503ae")});
    row("CH1 source IN1", [](L &l) { l.SendCMDCH1(2); }, {hex("a56c1500a5ff01000000000000000000b9038703ae")});
    row("CH2 source IN6", [](L &l) { l.SendCMDCH2(7); }, {hex("a56c1500a5ff01000000000000000000ba088d03ae")});
    row("CH2 source -1", [](L &l) { l.SendCMDCH2(-1); }, {});
    row("MIX", [](L &l) { l.SendCMDMIX(); }, {hex("a56c1400a5ff01000000000000000000cb9503ae")});
    row("AFV", [](L &l) { l.SendCMDAFV(); }, {hex("a56c1400a5ff01000000000000000000cc9603ae")});
    row("read state", [](L &l) { l.SendCMDReadstate(); }, {Marker});
}

void TestRvx3220Link::senders()
{
    QFETCH(Action, action);
    QFETCH(QList<QByteArray>, wire);

    RVX3220_workdata link;
    link.DevTypeID(QStringLiteral("127.0.0.2"), 0xA5, 0xFF);
    WireCapture unit;
    QVERIFY(unit.isBound());

    action(link);
    link.SendCMDReadstate();
    if (!wire.isEmpty() && wire.last() == Marker)
        wire.removeLast(); // the marker row itself: its frame is consumed as the marker
    QCOMPARE(unit.until(Marker), wire);
}

void TestRvx3220Link::addressChangeMovesLaterCommands()
{
    RVX3220_workdata link;
    link.DevTypeID(QStringLiteral("127.0.0.2"), 0xA5, 0xFF);
    WireCapture oldAddress(QStringLiteral("127.0.0.2"));
    WireCapture newAddress(QStringLiteral("127.0.0.3"));
    QVERIFY(oldAddress.isBound() && newAddress.isBound());

    QByteArray ip4("\x7f\x00\x00\x03", 4);
    link.SendCMD_IP(ip4, QStringLiteral("127.0.0.3"));
    link.SendCMDCUT();

    QCOMPARE(oldAddress.take(1),
             QList<QByteArray>{hex("a56c2000a5ff00000000000000000000057f00000300000000000000005c03ae")});
    QCOMPARE(newAddress.take(1), QList<QByteArray>{hex("a56c1400a5ff01000000000000000000834d03ae")});
    QCOMPARE(link.unitAddress(), QStringLiteral("127.0.0.3"));
}

void TestRvx3220Link::portTakenStillSends()
{
    // A socket that does not share holds port 7000 on one address.
    auto holder = std::make_unique<QUdpSocket>();
    QVERIFY(holder->bind(QHostAddress::LocalHost, 7000, QUdpSocket::DontShareAddress));

    RVX3220_workdata link;
    QVERIFY(!link.isBound());
    link.DevTypeID(QStringLiteral("127.0.0.2"), 0xA5, 0xFF);
    WireCapture unit;
    QVERIFY(unit.isBound());
    link.SendCMDCUT();
    QCOMPARE(unit.take(1), QList<QByteArray>{hex("a56c1400a5ff01000000000000000000834d03ae")});
}

void TestRvx3220Link::releaseFreesThePort()
{
    RVX3220_workdata link;
    QVERIFY(link.isBound());
    QUdpSocket exclusive;
    QVERIFY(!exclusive.bind(QHostAddress::LocalHost, 7000, QUdpSocket::DontShareAddress));
    link.releasePort();
    QVERIFY(!link.isBound());
    QVERIFY(exclusive.bind(QHostAddress::LocalHost, 7000, QUdpSocket::DontShareAddress));
}

void TestRvx3220Link::examine_data()
{
    using V = RVX3220_workdata::Verdict;
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<int>("length");
    QTest::addColumn<V>("verdict");

    const QByteArray reply0 =
        frameOf(20, {{0, 0xA5}, {1, 0x6C}, {2, 0x14}, {16, 0x49}, {17, 0x00}, {19, 0xAE}});
    const QByteArray reply1 =
        frameOf(20, {{0, 0xA5}, {1, 0x6C}, {2, 0x14}, {16, 0x49}, {17, 0x01}, {19, 0xAE}});
    QTest::newRow("empty") << QByteArray() << 0 << V::TooShort;
    QTest::newRow("one byte") << hex("a5") << 1 << V::TooShort;
    QTest::newRow("state reply, data 0") << reply0 << 20 << V::StateReply;
    QTest::newRow("state reply, data 1") << reply1 << 20 << V::StateReply;
    QTest::newRow("bad lead-in byte 0")
        << frameOf(20, {{0, 0xA4}, {1, 0x6C}, {16, 0x49}, {19, 0xAE}}) << 20 << V::BadLeadIn;
    QTest::newRow("bad lead-in byte 1")
        << frameOf(20, {{0, 0xA5}, {1, 0x6D}, {16, 0x49}, {19, 0xAE}}) << 20 << V::BadLeadIn;
    QTest::newRow("bad trailer") << frameOf(20, {{0, 0xA5}, {1, 0x6C}, {16, 0x49}, {19, 0xAF}}) << 20
                                 << V::BadTrailer;
    // The trailer is found by the read count, not by the buffer size.
    QTest::newRow("trailer before the count")
        << frameOf(20, {{0, 0xA5}, {1, 0x6C}, {16, 0x49}, {18, 0xAE}}) << 20 << V::BadTrailer;
    QTest::newRow("count past the buffer") << reply0 << 400 << V::BadTrailer;
    QTest::newRow("other command") << frameOf(20, {{0, 0xA5}, {1, 0x6C}, {16, 0x83}, {19, 0xAE}}) << 20
                                   << V::NotState;
    QTest::newRow("18 bytes, state code")
        << frameOf(18, {{0, 0xA5}, {1, 0x6C}, {16, 0x49}, {17, 0xAE}}) << 18 << V::StateReply;
    QTest::newRow("17 bytes") << frameOf(17, {{0, 0xA5}, {1, 0x6C}, {16, 0xAE}}) << 17 << V::NotState;
    QTest::newRow("3 bytes") << hex("a56cae") << 3 << V::NotState;
}

void TestRvx3220Link::examine()
{
    QFETCH(QByteArray, frame);
    QFETCH(int, length);
    QFETCH(RVX3220_workdata::Verdict, verdict);
    // A detached copy of exactly the bytes, so a read past the end shows under the sanitizer.
    const QByteArray exact(frame.constData(), frame.size());
    QCOMPARE(RVX3220_workdata::examine(exact, length), verdict);
}

void TestRvx3220Link::queuedDatagramsAreAllExamined()
{
    WatchedLink link;
    QVERIFY(link.isBound());
    const QByteArray a = frameOf(20, {{0, 0xA5}, {1, 0x6C}, {16, 0x49}, {19, 0xAE}});
    const QByteArray b = hex("0102");

    // Hold readyRead back so both datagrams are waiting when the drain runs once.
    link.socket()->blockSignals(true);
    QUdpSocket peer;
    peer.writeDatagram(a, QHostAddress::LocalHost, 7000);
    peer.writeDatagram(b, QHostAddress::LocalHost, 7000);
    QTRY_VERIFY(link.socket()->hasPendingDatagrams());
    link.ReceiveData();
    link.socket()->blockSignals(false);
    QCOMPARE(link.seen, (QList<QByteArray>{a, b}));
}

void TestRvx3220Link::receivingChangesNothing()
{
    WatchedLink link;
    link.DevTypeID(QStringLiteral("127.0.0.2"), 0xA5, 0x07);
    QUdpSocket peer;
    peer.writeDatagram(frameOf(24, {{0, 0xA5}, {1, 0x6C}, {16, 0x49}, {17, 0x00}, {23, 0xAE}}),
                       QHostAddress::LocalHost, 7000);
    QTRY_COMPARE(link.seen.size(), 1);
    QCOMPARE(link.unitAddress(), QStringLiteral("127.0.0.2"));
    QCOMPARE(link.devClass(), quint8(0xA5));
    QCOMPARE(link.devNum(), quint8(0x07));
}

QTEST_GUILESS_MAIN(TestRvx3220Link)
#include "tst_rvx3220link.moc"
