// RVX3220 link object: every sender on the wire, and the receive checks.
#include "SwitcherData/rvx3220_workdata.h"
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

    auto row = [](const char *name, const char *wire, Action a) {
        QTest::newRow(name) << a << hexList(wire);
    };
    using L = RVX3220_workdata;
    row("PGM 3", "a56c1500a5ff0100000000000000000080034e03ae", [](L &l) { l.SendCMDPGM(3); });
    row("PVW 6", "a56c1500a5ff0100000000000000000081065203ae", [](L &l) { l.SendCMDPVW(6); });
    row("lever stroke 0 at 125", "a56c1600a5ff0100000000000000000082007dcb03ae",
        [](L &l) { l.SwndCMDslider(0, 125); });
    row("lever stroke 1 at 0", "a56c1600a5ff010000000000000000008201004f03ae",
        [](L &l) { l.SwndCMDslider(1, 0); });
    row("CUT", "a56c1400a5ff01000000000000000000834d03ae", [](L &l) { l.SendCMDCUT(); });
    row("AUTO sends nothing", "", [](L &l) { l.SendCMDAUTO(); });
    row("PIP on", "a56c1500a5ff0100000000000000000086015203ae", [](L &l) { l.SendCMDPIP(1); });
    row("PIP off", "a56c1500a5ff0100000000000000000086005103ae", [](L &l) { l.SendCMDPIP(0); });

    // Effects: MIX and FADE alone, each wipe behind a 0x90.
    row("effect 0", "", [](L &l) { l.SendCMDTRANSITIONS(0); });
    row("effect 1 MIX", "a56c1400a5ff010000000000000000008e5803ae", [](L &l) { l.SendCMDTRANSITIONS(1); });
    row("effect 2 FADE", "a56c1400a5ff010000000000000000008f5903ae", [](L &l) { l.SendCMDTRANSITIONS(2); });
    row("effect 3 up", "a56c1400a5ff01000000000000000000905a03ae a56c1500a5ff0100000000000000000092258203ae",
        [](L &l) { l.SendCMDTRANSITIONS(3); });
    row("effect 4 down",
        "a56c1400a5ff01000000000000000000905a03ae a56c1500a5ff0100000000000000000092298603ae",
        [](L &l) { l.SendCMDTRANSITIONS(4); });
    row("effect 5 left",
        "a56c1400a5ff01000000000000000000905a03ae a56c1500a5ff0100000000000000000092238003ae",
        [](L &l) { l.SendCMDTRANSITIONS(5); });
    row("effect 6 right",
        "a56c1400a5ff01000000000000000000905a03ae a56c1500a5ff0100000000000000000092278403ae",
        [](L &l) { l.SendCMDTRANSITIONS(6); });
    row("effect 7", "", [](L &l) { l.SendCMDTRANSITIONS(7); });

    row("PIP border enable", "a56c1500a5ff010000000000000000009d016903ae",
        [](L &l) { l.SendCMDPIP_Border_Enable(1); });
    row("PIP border colour", "a56c1500a5ff010000000000000000009e036c03ae",
        [](L &l) { l.SendCMDPIP_Border_Color(3); });
    row("PIP border width", "a56c1500a5ff010000000000000000009f077103ae",
        [](L &l) { l.SendCMDPIP_Border_Width(7); });
    row("PIP H 1440 low byte first", "a56c1600a5ff01000000000000000000a0a0051104ae",
        [](L &l) { l.SendCMDPIP_H_Position(1440); });
    row("PIP V 810", "a56c1600a5ff01000000000000000000a12a039a03ae",
        [](L &l) { l.SendCMDPIP_V_Position(810); });
    row("PIP size large", "a56c1500a5ff01000000000000000000a2026f03ae",
        [](L &l) { l.SendCMDPIP_Border_Size(2); });

    const char *outs[] = {
        "a56c1500a5ff01000000000000000000a3077503ae", "a56c1500a5ff01000000000000000000a30b7903ae",
        "a56c1500a5ff01000000000000000000a3097703ae", "a56c1500a5ff01000000000000000000a3016f03ae",
        "a56c1500a5ff01000000000000000000a3037103ae", "a56c1500a5ff01000000000000000000a30d7b03ae",
        "a56c1500a5ff01000000000000000000a3057303ae"};
    for (int i = 0; i < 7; ++i) {
        QTest::addRow("output format %d", i)
            << Action([i](L &l) { l.SendCMDPGM_OUT(i); }) << hexList(outs[i]);
    }
    row("output format 7", "", [](L &l) { l.SendCMDPGM_OUT(7); });
    row("output format -1", "", [](L &l) { l.SendCMDPGM_OUT(-1); });

    row("POP on", "a56c1500a5ff01000000000000000000a7017303ae", [](L &l) { l.SendCMDPOP(1); });
    row("POP window 2", "a56c1500a5ff01000000000000000000a8027503ae", [](L &l) { l.SendCMDPOP_Window(2); });
    row("POP border on", "a56c1500a5ff01000000000000000000a9017503ae",
        [](L &l) { l.SendCMDPOP_Border_Enable(1); });
    row("POP border colour", "a56c1500a5ff01000000000000000000aa027703ae",
        [](L &l) { l.SendCMDPOP_Border_Color(2); });
    row("POP border width", "a56c1500a5ff01000000000000000000ab057b03ae",
        [](L &l) { l.SendCMDPOP_Border_Width(5); });
    row("POP H 960", "a56c1600a5ff01000000000000000000acc0033b04ae",
        [](L &l) { l.SendCMDPOP_H_Position(960); });
    row("POP V 540", "a56c1600a5ff01000000000000000000ad1c029703ae",
        [](L &l) { l.SendCMDPOP_V_Position(540); });

    // Both volumes ride on 0xB8; the source code (with 0x02 skipped) is all that differs.
    row("CH1 volume IN1 60", "a56c1600a5ff01000000000000000000b8033cc303ae",
        [](L &l) { l.SendCMDCH1_VOL(2, 60); });
    row("CH2 volume IN1 60", "a56c1600a5ff01000000000000000000b8033cc303ae",
        [](L &l) { l.SendCMDCH2_VOL(2, 60); });
    row("CH1 volume Phone_IN 100", "a56c1600a5ff01000000000000000000b80064e803ae",
        [](L &l) { l.SendCMDCH1_VOL(0, 100); });
    row("CH2 volume IN6 0", "a56c1600a5ff01000000000000000000b808008c03ae",
        [](L &l) { l.SendCMDCH2_VOL(7, 0); });
    row("CH1 volume past the list", "", [](L &l) { l.SendCMDCH1_VOL(8, 50); });
    row("CH1 source RCA_IN", "a56c1500a5ff01000000000000000000b9018503ae", [](L &l) { l.SendCMDCH1(1); });
    row("CH1 source IN1", "a56c1500a5ff01000000000000000000b9038703ae", [](L &l) { l.SendCMDCH1(2); });
    row("CH2 source IN6", "a56c1500a5ff01000000000000000000ba088d03ae", [](L &l) { l.SendCMDCH2(7); });
    row("CH2 source -1", "", [](L &l) { l.SendCMDCH2(-1); });
    row("MIX", "a56c1400a5ff01000000000000000000cb9503ae", [](L &l) { l.SendCMDMIX(); });
    row("AFV", "a56c1400a5ff01000000000000000000cc9603ae", [](L &l) { l.SendCMDAFV(); });
    row("read state", "a56c1400a5ff01000000000000000000491303ae", [](L &l) { l.SendCMDReadstate(); });
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
#include "tst_rvx3220_workdata.moc"
