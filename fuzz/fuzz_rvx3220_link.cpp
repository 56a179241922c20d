// The RVX3220 link's receive path: every datagram is checked for shape and dropped, and
// nothing is kept between datagrams. The verdict must follow from the datagram's own bytes.
#include "SwitcherData/rvx3220_workdata.h"
#include "datagrams.h"
#include "netnsguard.h"

#include <QCoreApplication>
#include <cstdlib>

namespace {

class Link : public RVX3220_workdata
{
public:
    using RVX3220_workdata::datagramArrived;
    void Read3220State_Data(const QByteArray &frame, int length) override
    {
        RVX3220_workdata::Read3220State_Data(frame, length);
        const Verdict v = examine(frame, length);
        // A state reply is at least a head and a command byte, framed A5 6C ... AE.
        if (v == Verdict::StateReply &&
            (length < 18 || uint8_t(frame.at(0)) != 0xA5 || uint8_t(frame.at(length - 1)) != 0xAE))
            std::abort();
        if (v == Verdict::TooShort && frame.size() >= 2)
            std::abort();
    }
};

Link *link = nullptr;

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static QCoreApplication app(*argc, *argv);
    requirePrivateNetwork();
    // Binds port 7000 once for the whole run: run the fuzzer inside tests/netns-run.sh.
    link = new Link;
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    for (const QByteArray &datagram : FuzzDatagrams::split(data, size))
        link->datagramArrived(datagram, datagram.size());
    return 0;
}
