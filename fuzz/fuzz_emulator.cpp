// The emulator's own decoder and its families' command handling, fed as the emulator's
// receive loop feeds them: each datagram parsed on its own, a framed and summed one handed to
// the unit's behaviour, and every reply it makes parsed back. The emulator plays units in the
// lab against the application, so it must survive whatever the application (or a fault in it)
// sends, and its own replies must be whole frames.
//
// Input: the child type of the unit, a byte whose low bit picks the board the datagrams
// arrive at, then datagrams as in datagrams.h.
#include "datagrams.h"
#include "emuframe.h"
#include "emulatorlog.h"
#include "familyregistry.h"
#include "unitplan.h"

#include <QCoreApplication>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

void checkReply(const Reply &reply)
{
    (void)EmulatorLog::frameLine("tx", QStringLiteral("10.77.1.1"), QStringLiteral("main"), reply.bytes,
                                 QStringLiteral("to"), QStringLiteral("10.77.0.1:7000"));
    const EmuFrame::Parsed p = EmuFrame::parse(reply.bytes);
    if (!p.framed || !p.checksumOk)
        std::abort();
}

// The per-frame info lines some families print are the lab's log, not the fuzzer's.
void quiet(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type >= QtWarningMsg)
        std::fprintf(stderr, "%s\n", qPrintable(message));
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static QCoreApplication app(*argc, *argv);
    qInstallMessageHandler(quiet);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 2)
        return 0;
    UnitConfig unit = UnitPlan::defaults(0);
    unit.childType = data[0];
    if (!UnitPlan::modelHasHis(unit.childType))
        unit.hisIp = QHostAddress();
    const Board board = (data[1] & 1) && unit.hasHis() ? Board::His : Board::Main;
    std::unique_ptr<UnitBehaviour> behaviour = FamilyRegistry::create(unit);
    behaviour->setHost(checkReply, [] {});

    for (const QByteArray &datagram : FuzzDatagrams::split(data + 2, size - 2)) {
        (void)EmulatorLog::frameLine("rx", QStringLiteral("10.77.1.1"), QStringLiteral("main"), datagram,
                                     QStringLiteral("from"), QStringLiteral("10.77.0.1:7000"));
        const EmuFrame::Parsed p = EmuFrame::parse(datagram);
        if (p.framed && p.data.size() != datagram.size() - EmuFrame::kMinLength)
            std::abort();
        if (!p.framed || !p.checksumOk || p.command == EmuFrame::kSearchCommand)
            continue;
        for (const Reply &r : behaviour->handle(board, p.command, p.data, datagram))
            checkReply(r);
    }
    (void)behaviour->state();
    return 0;
}
