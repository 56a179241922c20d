#include "statefanout.h"

#include "rvx3210log.h"

namespace {

constexpr int RecordSize = 26;
constexpr const char *Labels[RecordSize] = {
    "pgmCh:",         "pvwCh:",         "AudioType:",    "AudioCh1:",     "AudioVol1:",    "AudioCh2:",
    "AudioVol2:",     "TransType:",     "WipeType:",     "FTB:",          "PIP_State:",    "PIP_Bor_En:",
    "PIP_Bor_Color:", "PIP_Bor_Width:", "PIP_Rect_Num:", "PIP_Rect_H_H:", "PIP_Rect_H_L:", "PIP_Rect_V_H:",
    "PIP_Rect_V_L:",  "StillState:",    "Rate:",         "outputReso:",   "RtdSource:",    "UVCVloue:",
    "StaticVloue:",   "Rotate:"};

} // namespace

void StateFanout::dump(const UnitState &s)
{
    const QByteArray d = s.record();
    qCDebug(lcRvx3210) << "data" << d.toHex(' ');
    const int n = qMin(int(d.size()), RecordSize);
    for (int i = 0; i < n; ++i)
        qCDebug(lcRvx3210, "%-15s%02x", Labels[i], unsigned(uint8_t(d.at(i))));
}
