// RVX3220 link object: its senders on the wire, the port it holds, and the receive checks.
#include "SwitcherData/rvx3220_workdata.h"
#include "testframes.h"
#include "wirecapture.h"

#include <QtTest>
#include <functional>

using Action = std::function<void(RVX3220_workdata &)>;
Q_DECLARE_METATYPE(Action)
Q_DECLARE_METATYPE(RVX3220_workdata::Verdict)

// What follows the length in every frame to the unit.
#define TO_MAIN "a5ff01000000000000000000"

namespace {

// The state-read request to A5 FF, used to close every capture.
const QByteArray Marker = hex("a56c1400a5ff01000000000000000000491303ae");

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
    void portTakenStillSendsAndReleaseFreesIt();
    void examine_data();
    void examine();
    void queuedDatagramsAreAllExamined();
    void receivingChangesNothing();
};

void TestRvx3220Link::senders_data()
{
    QTest::addColumn<Action>("action");
    QTest::addColumn<QByteArray>("wire");
    auto row = [](const char *name, const char *wire, Action a) {
        QTest::newRow(name) << a << QByteArray(wire);
    };
    using L = RVX3220_workdata;
    row("PGM 3", "a56c1500" TO_MAIN "80034e03ae", [](L &l) { l.SendCMDPGM(3); });
    row("PVW 6", "a56c1500" TO_MAIN "81065203ae", [](L &l) { l.SendCMDPVW(6); });
    row("lever stroke 0 at 125", "a56c1600" TO_MAIN "82007dcb03ae", [](L &l) { l.SwndCMDslider(0, 125); });
    row("CUT", "a56c1400" TO_MAIN "834d03ae", [](L &l) { l.SendCMDCUT(); });
    row("AUTO sends nothing", "", [](L &l) { l.SendCMDAUTO(); });
    row("PIP on", "a56c1500" TO_MAIN "86015203ae", [](L &l) { l.SendCMDPIP(1); });
    // Its own effect codes: MIX and FADE alone, each wipe behind a 0x90.
    row("effect 1 MIX", "a56c1400" TO_MAIN "8e5803ae", [](L &l) { l.SendCMDTRANSITIONS(1); });
    row("effect 2 FADE", "a56c1400" TO_MAIN "8f5903ae", [](L &l) { l.SendCMDTRANSITIONS(2); });
    row("effect 3 up", "a56c1400" TO_MAIN "905a03ae a56c1500" TO_MAIN "92258203ae",
        [](L &l) { l.SendCMDTRANSITIONS(3); });
    row("effect 6 right", "a56c1400" TO_MAIN "905a03ae a56c1500" TO_MAIN "92278403ae",
        [](L &l) { l.SendCMDTRANSITIONS(6); });
    row("effect 7", "", [](L &l) { l.SendCMDTRANSITIONS(7); });
    row("PIP border on", "a56c1500" TO_MAIN "9d016903ae", [](L &l) { l.SendCMDPIP_Border_Enable(1); });
    row("PIP border colour", "a56c1500" TO_MAIN "9e036c03ae", [](L &l) { l.SendCMDPIP_Border_Color(3); });
    row("PIP border width", "a56c1500" TO_MAIN "9f077103ae", [](L &l) { l.SendCMDPIP_Border_Width(7); });
    row("PIP H 1440", "a56c1600" TO_MAIN "a0a0051104ae", [](L &l) { l.SendCMDPIP_H_Position(1440); });
    row("PIP V 810", "a56c1600" TO_MAIN "a12a039a03ae", [](L &l) { l.SendCMDPIP_V_Position(810); });
    row("PIP size large", "a56c1500" TO_MAIN "a2026f03ae", [](L &l) { l.SendCMDPIP_Border_Size(2); });
    row("output format 0", "a56c1500" TO_MAIN "a3077503ae", [](L &l) { l.SendCMDPGM_OUT(0); });
    row("output format 5", "a56c1500" TO_MAIN "a30d7b03ae", [](L &l) { l.SendCMDPGM_OUT(5); });
    row("output format 7", "", [](L &l) { l.SendCMDPGM_OUT(7); });
    row("output format -1", "", [](L &l) { l.SendCMDPGM_OUT(-1); });
    row("POP on", "a56c1500" TO_MAIN "a7017303ae", [](L &l) { l.SendCMDPOP(1); });
    row("POP window 2", "a56c1500" TO_MAIN "a8027503ae", [](L &l) { l.SendCMDPOP_Window(2); });
    row("POP border on", "a56c1500" TO_MAIN "a9017503ae", [](L &l) { l.SendCMDPOP_Border_Enable(1); });
    row("POP border colour", "a56c1500" TO_MAIN "aa027703ae", [](L &l) { l.SendCMDPOP_Border_Color(2); });
    row("POP border width", "a56c1500" TO_MAIN "ab057b03ae", [](L &l) { l.SendCMDPOP_Border_Width(5); });
    row("POP H 960", "a56c1600" TO_MAIN "acc0033b04ae", [](L &l) { l.SendCMDPOP_H_Position(960); });
    row("POP V 540", "a56c1600" TO_MAIN "ad1c029703ae", [](L &l) { l.SendCMDPOP_V_Position(540); });
    // Both volumes ride on 0xB8; the source code (0x02 skipped) is all that differs.
    row("CH1 volume Phone_IN 100", "a56c1600" TO_MAIN "b80064e803ae", [](L &l) { l.SendCMDCH1_VOL(0, 100); });
    row("CH2 volume IN1 60", "a56c1600" TO_MAIN "b8033cc303ae", [](L &l) { l.SendCMDCH2_VOL(2, 60); });
    row("CH1 volume past the list", "", [](L &l) { l.SendCMDCH1_VOL(8, 50); });
    row("CH1 source RCA_IN", "a56c1500" TO_MAIN "b9018503ae", [](L &l) { l.SendCMDCH1(1); });
    row("CH2 source IN6", "a56c1500" TO_MAIN "ba088d03ae", [](L &l) { l.SendCMDCH2(7); });
    row("CH2 source -1", "", [](L &l) { l.SendCMDCH2(-1); });
    row("MIX", "a56c1400" TO_MAIN "cb9503ae", [](L &l) { l.SendCMDMIX(); });
    row("AFV", "a56c1400" TO_MAIN "cc9603ae", [](L &l) { l.SendCMDAFV(); });
    row("read state", "", [](L &l) { l.SendCMDReadstate(); }); // its frame is the marker itself
}

void TestRvx3220Link::senders()
{
    QFETCH(Action, action);
    QFETCH(QByteArray, wire);
    RVX3220_workdata link;
    link.DevTypeID("127.0.0.2", 0xA5, 0xFF);
    WireCapture unit;
    QVERIFY(unit.isBound());
    action(link);
    link.SendCMDReadstate();
    QCOMPARE(unit.until(Marker), hexList(wire));
}

void TestRvx3220Link::addressChangeMovesLaterCommands()
{
    RVX3220_workdata link;
    link.DevTypeID("127.0.0.2", 0xA5, 0xFF);
    WireCapture oldAddress("127.0.0.2"), newAddress("127.0.0.3");
    QVERIFY(oldAddress.isBound() && newAddress.isBound());
    QByteArray ip4 = hex("7f000003");
    link.SendCMD_IP(ip4, "127.0.0.3");
    link.SendCMDCUT();
    QCOMPARE(oldAddress.take(1), hexList("a56c2000a5ff00000000000000000000057f00000300000000000000005c03ae"));
    QCOMPARE(newAddress.take(1), hexList("a56c1400a5ff01000000000000000000834d03ae"));
    QCOMPARE(link.unitAddress(), QString("127.0.0.3"));
}

void TestRvx3220Link::portTakenStillSendsAndReleaseFreesIt()
{
    {
        // Another socket holds port 7000 without sharing: the link still sends.
        QUdpSocket holder;
        QVERIFY(holder.bind(QHostAddress::LocalHost, 7000, QUdpSocket::DontShareAddress));
        RVX3220_workdata link;
        QVERIFY(!link.isBound());
        link.DevTypeID("127.0.0.2", 0xA5, 0xFF);
        WireCapture unit;
        link.SendCMDCUT();
        QCOMPARE(unit.take(1), hexList("a56c1400a5ff01000000000000000000834d03ae"));
    }
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
    const QByteArray state = frameOf(20, {{0, 0xA5}, {1, 0x6C}, {2, 0x14}, {16, 0x49}, {19, 0xAE}});
    QTest::newRow("empty") << QByteArray() << 0 << V::TooShort;
    QTest::newRow("state reply") << state << 20 << V::StateReply;
    QTest::newRow("bad lead-in") << frameOf(20, {{0, 0xA5}, {1, 0x6D}, {16, 0x49}, {19, 0xAE}}) << 20
                                 << V::BadLeadIn;
    QTest::newRow("bad trailer") << frameOf(20, {{0, 0xA5}, {1, 0x6C}, {16, 0x49}, {19, 0xAF}}) << 20
                                 << V::BadTrailer;
    // The trailer is found by the read count, not by the buffer size.
    QTest::newRow("trailer before the count")
        << frameOf(20, {{0, 0xA5}, {1, 0x6C}, {16, 0x49}, {18, 0xAE}}) << 20 << V::BadTrailer;
    QTest::newRow("count past the buffer") << state << 400 << V::BadTrailer;
    QTest::newRow("other command") << frameOf(20, {{0, 0xA5}, {1, 0x6C}, {16, 0x83}, {19, 0xAE}}) << 20
                                   << V::NotState;
    QTest::newRow("18 bytes") << frameOf(18, {{0, 0xA5}, {1, 0x6C}, {16, 0x49}, {17, 0xAE}}) << 18
                              << V::StateReply;
    QTest::newRow("17 bytes") << frameOf(17, {{0, 0xA5}, {1, 0x6C}, {16, 0xAE}}) << 17 << V::NotState;
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
    const QByteArray a = frameOf(20, {{0, 0xA5}, {1, 0x6C}, {16, 0x49}, {19, 0xAE}});
    const QByteArray b = hex("0102");
    // Both datagrams of one pass are examined, in order.
    link.offer(a);
    link.offer(b);
    link.endPass();
    QCOMPARE(link.seen, (QList<QByteArray>{a, b}));
}

void TestRvx3220Link::receivingChangesNothing()
{
    WatchedLink link;
    link.DevTypeID("127.0.0.2", 0xA5, 0x07);
    WireCapture unit;
    unit.reply(frameOf(24, {{0, 0xA5}, {1, 0x6C}, {16, 0x49}, {23, 0xAE}}));
    QTRY_COMPARE(link.seen.size(), 1);
    QCOMPARE(link.unitAddress(), QString("127.0.0.2"));
    QCOMPARE(link.devClass(), quint8(0xA5));
    QCOMPARE(link.devNum(), quint8(0x07));
}

QTEST_GUILESS_MAIN(TestRvx3220Link)
#include "tst_rvx3220_workdata.moc"
