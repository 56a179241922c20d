// The search socket's decoder fed a sequence of datagrams, as the receive loop hands them
// over: reassembly of split replies, the size and command checks, the sum, and the binding of
// main and HIS replies into the device table. Needs no socket: a link object that has not
// searched holds none.
#include "SwitcherData/workdata.h"
#include "datagrams.h"

#include <QCoreApplication>
#include <cstdlib>
#include <cstring>

namespace {

bool allZero(const void *p, size_t n)
{
    const auto *b = static_cast<const uint8_t *>(p);
    for (size_t i = 0; i < n; ++i)
        if (b[i])
            return false;
    return true;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static QCoreApplication app(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    SWITCHER_DATA search;
    int announced = 0;
    QObject::connect(&search, &SWITCHER_DATA::sigend_datapack, [&] { ++announced; });
    // Replies come from a few senders, so main and HIS records of one unit can meet.
    const QHostAddress senders[] = {QHostAddress(quint32(0x0A4D0101)), QHostAddress(quint32(0x0A4D6501))};
    int n = 0;
    for (const QByteArray &datagram : FuzzDatagrams::split(data, size))
        search.MYanalysis(senders[n++ % 2], datagram, datagram.size());

    // The table never passes its end, every listed unit was announced once, and the zero
    // record after the last one the search window walks onto stays zero.
    const int count = search.DevInfo_DATA_IDX();
    if (count < 0 || count > SWITCHER_DATA::MaxDevices || count != announced)
        std::abort();
    if (!allZero(&search.devices()[count], sizeof(DevInfo_DATA)))
        std::abort();
    return 0;
}
