// What every link object shares, whatever its family: one socket, and a receive path that
// nothing on the network can deafen, stall into growing, or use to hold the event loop. (An
// empty datagram to the search socket is among the rejects of tst_discovery.)
#include "SwitcherData/rvx3210_workdata.h"
#include "SwitcherData/rvx3220_workdata.h"
#include "SwitcherData/rvx5all_workdata.h"
#include "testframes.h"
#include "wirecapture.h"

#include <QSignalSpy>
#include <QTimer>
#include <QUdpSocket>
#include <QtTest>

namespace {
const QByteArray Payload = hex("0102010364083204040001010201020280017000010b000001");
QByteArray stateReply(uint8_t pgm)
{
    QByteArray p = Payload;
    p[0] = char(pgm);
    return reply(0xA5FF, 0x49, "#\x01#" + p + "#");
}
} // namespace

class TestUnitLink : public QObject
{
    Q_OBJECT

private slots:
    void oneSocketPerLink();
    void emptyDatagramDoesNotDeafenALink();
    void stalledLinkHoldsNoMore();
    void floodIsDrainedInPasses();
};

template <typename Link> int socketsOf()
{
    Link link;
    return link.template findChildren<QUdpSocket *>().size();
}

void TestUnitLink::oneSocketPerLink()
{
    QCOMPARE(QList<int>({socketsOf<RVX3210_workdata>(), socketsOf<RVX3220_workdata>(),
                         socketsOf<RVX5ALL_workdata>()}),
             QList<int>({1, 1, 1}));
    RVX5ALL_workdata link;
    QVERIFY(link.isBound());
    link.get_DevTypeID("127.0.0.2", 0xA5, 0xFF);
    link.SendCMDCUT(); // sending opens nothing more
    QCOMPARE(link.findChildren<QUdpSocket *>().size(), 1);
    // The search socket is opened by the first search only.
    SWITCHER_DATA search;
    QCOMPARE(search.findChildren<QUdpSocket *>().size(), 0);
    search.setSearcheQuipment();
    search.setSearcheQuipment();
    QCOMPARE(search.findChildren<QUdpSocket *>().size(), 1);
}

void TestUnitLink::emptyDatagramDoesNotDeafenALink()
{
    RVX5ALL_workdata link;
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
    QSignalSpy state(&link, &RVX3210_workdata::on_signals_3210Data);
    WireCapture unit;
    // A head that declares more than the buffer may hold stalls the link at 1057 bytes.
    unit.reply(hex("a56cffff") + QByteArray(1100, '\0'));
    QTRY_VERIFY(link.heldBytes() >= ReportingLink::StallSize);
    const int atStall = link.heldBytes();
    for (int burst = 0; burst < 20; ++burst) {
        for (int i = 0; i < 50; ++i)
            unit.reply(QByteArray(1400, '\x5a'));
        QTRY_VERIFY(!link.socket()->hasPendingDatagrams());
    }
    QCOMPARE(link.heldBytes(), atStall);
    // Stalled for good: a valid reply is no longer decoded.
    unit.reply(stateReply(1));
    QTRY_VERIFY(!link.socket()->hasPendingDatagrams());
    QCOMPARE(state.count(), 0);
}

void TestUnitLink::floodIsDrainedInPasses()
{
    RVX5ALL_workdata link;
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
    // separator 0x23): a pass reads a batch and shows only the newest state of it.
    WireCapture unit;
    constexpr int Replies = 100;
    constexpr int Batch = UnitLink::LinkDrainBatch;
    auto program = [](int i) { return uint8_t(0x40 + i); };
    for (int i = 0; i < Replies; ++i)
        unit.reply(stateReply(program(i)));
    QByteArrayList expected;
    for (int last = Batch; last < Replies + Batch; last += Batch)
        expected << stateReply(program(qMin(last, Replies) - 1)).mid(20, 25);
    QTRY_COMPARE(shown, expected);
    // The event loop ran between every two passes.
    for (int i = 1; i < ticksAtState.size(); ++i)
        QVERIFY2(ticksAtState.at(i) > ticksAtState.at(i - 1), "two batches were read in one pass");
}

QTEST_GUILESS_MAIN(TestUnitLink)
#include "tst_unitlink.moc"
