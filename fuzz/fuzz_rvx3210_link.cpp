// The RVX3210 family's receive path (RVX3210 and RVX3410 units), a datagram sequence at a time.
#include "SwitcherData/rvx3210_workdata.h"
#include "reportinglinkfuzz.h"

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    ReportingLinkFuzz::initialize<RVX3210_workdata>(argc, argv);
    // The RVX3410's layout reads all of the RVX3210's fields and its own bit fields too.
    ReportingLinkFuzz::link<RVX3210_workdata>().setFamily(Family::Rvx3410);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    ReportingLinkFuzz::run<RVX3210_workdata>(data, size);
    return 0;
}
