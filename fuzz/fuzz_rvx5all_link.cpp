// The 8000 series' receive path, a datagram sequence at a time. It shares the reporting link
// with the RVX3210 family but drops a long state reply that has no payload piece.
#include "SwitcherData/rvx5all_workdata.h"
#include "reportinglinkfuzz.h"

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    ReportingLinkFuzz::initialize<RVX5ALL_workdata>(argc, argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    ReportingLinkFuzz::run<RVX5ALL_workdata>(data, size);
    return 0;
}
