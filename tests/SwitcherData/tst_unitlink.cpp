// What every link object shares, whatever its family: the process's one port-7000 endpoint,
// datagrams routed to the link whose unit sent them, and a receive path that nothing on the
// network can deafen, stall into growing, or use to hold the event loop or another unit's
// link. (An empty datagram to the search socket is among the rejects of tst_discovery.)
#include "SwitcherData/rvx3210_workdata.h"
#include "SwitcherData/rvx3220_workdata.h"
#include "SwitcherData/rvx5all_workdata.h"
#include "testframes.h"
#include "wirecapture.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTimer>
#include <QUdpSocket>
#include <QtTest>
#include <memory>

namespace {
const QByteArray Payload = hex("0102010364083204040001010201020280017000010b000001");
QByteArray stateReply(uint8_t pgm)
{
    QByteArray p = Payload;
    p[0] = char(pgm);
    return reply(0xA5FF, 0x49, "#\x01#" + p + "#");
}

// Whether another program could take port 7000 for itself alone right now.
bool portIsFree()
{
    QUdpSocket exclusive;
    return exclusive.bind(QHostAddress::AnyIPv4, 7000, QUdpSocket::DontShareAddress);
}
} // namespace

class TestUnitLink : public QObject
{
    Q_OBJECT

private slots:
    void oneEndpointPerProcess();
    void datagramsGoToTheirUnitsLink();
    void boardThatMovesTakesItsRoute();
    void emptyDatagramDoesNotDeafenALink();
    void stalledLinkHoldsNoMore();
    void floodIsDrainedInPasses();
    void floodFromOneUnitDoesNotHoldAnother();
};

void TestUnitLink::oneEndpointPerProcess()
{
    QVERIFY(portIsFree());
    {
        auto a = std::make_unique<RVX3210_workdata>();
        RVX3220_workdata b;
        RVX5ALL_workdata c;
        QVERIFY(a->isBound() && b.isBound() && c.isBound());
        QVERIFY(a->endpoint() == b.endpoint() && b.endpoint() == c.endpoint());
        // No link owns a socket of its own.
        QCOMPARE(a->findChildren<QUdpSocket *>().size() + c.findChildren<QUdpSocket *>().size(), 0);
        a.reset();
        QVERIFY(!portIsFree());
        c.releasePort();
        QVERIFY(!c.isBound() && b.isBound());
        QVERIFY(!portIsFree());
    }
    // The last link gone, the port is free again.
    QVERIFY(portIsFree());
    // The search socket is opened by the first search only.
    SWITCHER_DATA search;
    QCOMPARE(search.findChildren<QUdpSocket *>().size(), 0);
    search.setSearcheQuipment();
    search.setSearcheQuipment();
    QCOMPARE(search.findChildren<QUdpSocket *>().size(), 1);
}

void TestUnitLink::datagramsGoToTheirUnitsLink()
{
    // Two units: an 8000-series one at .2 (HIS board .3) and an RVX3210 at .4 (HIS .5).
    RVX5ALL_workdata first;
    first.get_DevTypeID("127.0.0.2", 0xA5, 0xFF);
    first.get_HISTypeID("127.0.0.3", 0xE0, 0xFF);
    RVX3210_workdata second;
    second.get_DevTypeID("127.0.0.4", 0xA5, 0xFF);
    second.get_HISTypeID("127.0.0.5", 0xE0, 0xFF);
    QSignalSpy firstState(&first, &ReportingLink::stateReported);
    QSignalSpy secondState(&second, &ReportingLink::stateReported);
    QSignalSpy firstHis(&first, &ReportingLink::on_signals_3210HISData);
    QSignalSpy secondHis(&second, &ReportingLink::on_signals_3210HISData);
    WireCapture unit1("127.0.0.2"), his1("127.0.0.3"), unit2("127.0.0.4"), his2("127.0.0.5"),
        stranger("127.0.0.9");
    const quint64 strangersBefore = first.endpoint()->strangers();

    // Commands leave from port 7000 to their own unit only.
    first.SendCMDCUT();
    second.SendCMDAUTO();
    QCOMPARE(unit1.take(1), hexList("a56c1400a5ff01000000000000000000834d03ae"));
    QCOMPARE(unit2.take(1), hexList("a56c1400a5ff01000000000000000000844e03ae"));

    // A stranger's state reply, then each unit's: each link sees its own unit alone.
    stranger.reply(stateReply(7));
    unit2.reply(stateReply(2));
    unit1.reply(stateReply(1));
    QTRY_COMPARE(firstState.count(), 1);
    QTRY_COMPARE(secondState.count(), 1);
    QTRY_COMPARE(first.endpoint()->strangers(), strangersBefore + 1);
    QCOMPARE(firstState.at(0).at(0).value<UnitState>().pgm(), 1);
    QCOMPARE(secondState.at(0).at(0).value<UnitState>().pgm(), 2);

    // The HIS board's replies go to the link of its unit.
    const QByteArray hisReply = reply(0xE0FF, 0x24, hex("00c0a80005ffffff00c0a8000124"));
    his2.reply(hisReply);
    QTRY_COMPARE(secondHis.count(), 1);
    QCOMPARE(firstHis.count(), 0);
    QCOMPARE(unit1.takeAll().size() + unit2.takeAll().size() + his1.takeAll().size(), 0);
}

void TestUnitLink::boardThatMovesTakesItsRoute()
{
    RVX5ALL_workdata link;
    link.get_DevTypeID("127.0.0.2", 0xA5, 0xFF);
    QSignalSpy state(&link, &ReportingLink::stateReported);
    WireCapture oldAddress("127.0.0.2"), newAddress("127.0.0.6");
    link.SendCMD_SetIP(hex("7f000006"), QStringLiteral("127.0.0.6"));
    QCOMPARE(oldAddress.take(1).size(), 1);
    // The unit answers from its new address; the old one is no longer the unit.
    oldAddress.reply(stateReply(4));
    newAddress.reply(stateReply(5));
    QTRY_COMPARE(state.count(), 1);
    QCOMPARE(state.at(0).at(0).value<UnitState>().pgm(), 5);
}

void TestUnitLink::emptyDatagramDoesNotDeafenALink()
{
    RVX5ALL_workdata link;
    link.get_DevTypeID("127.0.0.2", 0xA5, 0xFF);
    QSignalSpy state(&link, &RVX5ALL_workdata::on_signals_3210Data);
    WireCapture unit;
    unit.reply(QByteArray());
    unit.reply(stateReply(3));
    QTRY_COMPARE(state.count(), 1);
    QCOMPARE(state.at(0).at(0).toByteArray(), stateReply(3).mid(20, 25));
}

void TestUnitLink::stalledLinkHoldsNoMore()
{
    RVX3210_workdata link;
    link.get_DevTypeID("127.0.0.2", 0xA5, 0xFF);
    QSignalSpy state(&link, &RVX3210_workdata::on_signals_3210Data);
    WireCapture unit;
    // A head that declares more than the buffer may hold stalls the link at 1057 bytes.
    unit.reply(hex("a56cffff") + QByteArray(1100, '\0'));
    QTRY_VERIFY(link.heldBytes() >= ReportingLink::StallSize);
    const int atStall = link.heldBytes();
    for (int burst = 0; burst < 20; ++burst) {
        for (int i = 0; i < 50; ++i)
            unit.reply(QByteArray(1400, '\x5a'));
        QTRY_VERIFY(!link.endpoint()->hasPendingDatagrams() && !link.holdsBack());
    }
    QCOMPARE(link.heldBytes(), atStall);
    // Stalled for good: a valid reply is no longer decoded.
    unit.reply(stateReply(1));
    QTRY_VERIFY(!link.endpoint()->hasPendingDatagrams() && !link.holdsBack());
    QCOMPARE(state.count(), 0);
}

void TestUnitLink::floodIsDrainedInPasses()
{
    RVX5ALL_workdata link;
    link.get_DevTypeID("127.0.0.2", 0xA5, 0xFF);
    int ticks = 0;
    QList<int> ticksAtState;
    QByteArrayList shown;
    QTimer everyPass;
    connect(&everyPass, &QTimer::timeout, [&] { ++ticks; });
    everyPass.start(0);
    connect(&link, &RVX5ALL_workdata::on_signals_3210Data, [&](const QByteArray &record) {
        ticksAtState << ticks;
        shown << record;
    });

    // 100 replies queued at once, each with its own program input (none of them the
    // separator 0x23): a pass takes a batch and shows only the newest state of it.
    WireCapture unit;
    constexpr int Replies = 100;
    constexpr int Batch = UnitLink::LinkDrainBatch;
    auto program = [](int i) { return uint8_t(0x40 + i); };
    for (int i = 0; i < Replies; ++i)
        unit.reply(stateReply(program(i)));
    // However the replies were split between passes, each pass showed the newest of at most a
    // batch of them, and the last one shown is the last one sent.
    QTRY_COMPARE(shown.isEmpty() ? QByteArray() : shown.last(), stateReply(program(Replies - 1)).mid(20, 25));
    QVERIFY(shown.size() >= (Replies + Batch - 1) / Batch);
    int before = -1;
    for (const QByteArray &record : shown) {
        const int at = uint8_t(record.at(0)) - 0x40;
        QVERIFY2(at > before && at - before <= Batch, "a pass took more than a batch");
        before = at;
    }
    // The event loop ran between every two passes.
    for (int i = 1; i < ticksAtState.size(); ++i)
        QVERIFY2(ticksAtState.at(i) > ticksAtState.at(i - 1), "two batches were taken in one pass");
}

void TestUnitLink::floodFromOneUnitDoesNotHoldAnother()
{
    RVX5ALL_workdata flooded, quiet;
    flooded.get_DevTypeID("127.0.0.2", 0xA5, 0xFF);
    quiet.get_DevTypeID("127.0.0.4", 0xA5, 0xFF);
    QSignalSpy quietState(&quiet, &ReportingLink::stateReported);
    WireCapture floodUnit("127.0.0.2"), quietUnit("127.0.0.4");

    // A burst of replies from one unit (as many as the kernel queues on loopback), then one
    // from the other, all waiting before the loop runs.
    constexpr int Flood = 200;
    for (int i = 0; i < Flood; ++i)
        floodUnit.reply(stateReply(uint8_t(0x40 + i % 64)));
    quietUnit.reply(stateReply(9));
    QVERIFY(quietState.wait(2000));
    QCOMPARE(quietState.at(0).at(0).value<UnitState>().pgm(), 9);
    // However the reader and the passes split the flood, the quiet unit's reply was not
    // dropped, and its link lost nothing.
    QTRY_VERIFY(!flooded.endpoint()->hasPendingDatagrams() && !flooded.holdsBack());
    QCOMPARE(quiet.droppedHeld(), 0u);
}

QTEST_GUILESS_MAIN(TestUnitLink)
#include "tst_unitlink.moc"
