// State replies faster than the panel can restyle must not take the GUI thread: the socket is
// read a batch at a time, the panel restyles once per batch, the event loop runs between
// batches, and the newest state is shown. Bursts fit the default receive buffer, so every reply
// arrives and the count of passes is exact.
#include "RVX3210/below_widget.h"
#include "RVX3210/rvx3210ui.h"
#include "SwitcherData/rvx3210_workdata.h"
#include "testframes.h"
#include "wirecapture.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QTimer>
#include <QtTest>

namespace {

// A state record with the given buses; the rest as a unit reports it at rest.
QByteArray stateReply(uint8_t pgm, uint8_t pvw)
{
    QByteArray record = hex("0102000332043201000000000002000000000000000700000000");
    record[0] = char(pgm);
    record[1] = char(pvw);
    return reply(0xA5FF, 0x49, "#\x01#" + record + "#");
}

} // namespace

class tst_PanelFlood : public QObject
{
    Q_OBJECT
private slots:
    void eventLoopRunsAndNewestStateIsShown();
};

void tst_PanelFlood::eventLoopRunsAndNewestStateIsShown()
{
    WireCapture unit;
    QVERIFY(unit.isBound());
    RVX3210UI panel;
    panel.show();
    panel.DevTypeID("127.0.0.2", 0xA5, 0xFF, "127.0.0.3", 0xE0, 0xFF);

    // A timer standing in for everything else the GUI thread has to do.
    int ticks = 0;
    QTimer pass;
    connect(&pass, &QTimer::timeout, [&] { ++ticks; });
    pass.start(0);
    QList<int> ticksAtReply;
    connect(panel.link(), &RVX3210_workdata::on_signals_3210Data,
            [&](const QByteArray &) { ticksAtReply << ticks; });

    constexpr int Bursts = 40;
    constexpr int PerBurst = 50;
    for (int b = 0; b < Bursts; ++b) {
        for (int i = 0; i < PerBurst; ++i)
            unit.reply(stateReply(uint8_t(1 + (b * PerBurst + i) % 4), 2));
        QTRY_VERIFY(!panel.link()->endpoint()->hasPendingDatagrams() && !panel.link()->holdsBack());
    }
    // The newest state: program on input 3, which no reply of the stream ended on.
    unit.reply(stateReply(3, 1));
    QTRY_VERIFY(lit(panel.lowerRow()->pgmGroup()->button(3), ":/images/red/png/3.png"));

    // Each pass took at most one batch of a burst and showed the newest state in it, and the
    // timer fired between every two passes.
    constexpr int PassesPerBurst = (PerBurst + UnitLink::LinkDrainBatch - 1) / UnitLink::LinkDrainBatch;
    QVERIFY(ticksAtReply.size() >= Bursts * PassesPerBurst + 1);
    for (int i = 1; i < ticksAtReply.size(); ++i)
        QVERIFY2(ticksAtReply.at(i) > ticksAtReply.at(i - 1), "two batches were read in one pass");

    QButtonGroup *pgm = panel.lowerRow()->pgmGroup();
    QVERIFY(lit(pgm->button(3), ":/images/red/png/3.png"));
    for (int key : {1, 2, 4})
        QVERIFY(!lit(pgm->button(key), ":/images/red/png/"));
}

QTEST_MAIN(tst_PanelFlood)
#include "tst_panelflood.moc"
