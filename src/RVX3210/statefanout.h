#pragma once

#include "below_widget.h"
#include "common/unitstateguard.h"
#include "plane_right.h"

#include <QByteArray>
#include <cstdint>

// The RVX3210 state record (26 bytes, one per field) and its fan-out to the panel rows,
// shared by the RVX3210 and RVX3410 panels. A record that stops short updates only the
// fields it carries; nothing is read past its end.
namespace StateFanout {

inline constexpr int RecordSize = 26;
inline constexpr const char *Labels[RecordSize] = {
    "pgmCh:",         "pvwCh:",         "AudioType:",    "AudioCh1:",     "AudioVol1:",    "AudioCh2:",
    "AudioVol2:",     "TransType:",     "WipeType:",     "FTB:",          "PIP_State:",    "PIP_Bor_En:",
    "PIP_Bor_Color:", "PIP_Bor_Width:", "PIP_Rect_Num:", "PIP_Rect_H_H:", "PIP_Rect_H_L:", "PIP_Rect_V_H:",
    "PIP_Rect_V_L:",  "StillState:",    "Rate:",         "outputReso:",   "RtdSource:",    "UVCVloue:",
    "StaticVloue:",   "Rotate:"};

inline bool has(const QByteArray &d, int i)
{
    return i >= 0 && i < d.size();
}

inline uint8_t at(const QByteArray &d, int i)
{
    return uint8_t(d.at(i));
}

// Debug dump: "data" with the whole record, then one line per byte the record carries.
void dump(const QByteArray &d);

// Calls the row setters in the record's order. `afterFtb` runs right after the FTB byte,
// where the RVX3410 panel reads its extra bytes.
template <class Upper, class Middle, class AfterFtb>
void apply(const QByteArray &d, Upper *upper, Middle *middle, Below_Widget *below, Plane_Right *pip,
           AfterFtb afterFtb)
{
    const UnitStateGuard showingUnitState;
    if (has(d, 0))
        below->set_PGMCH_Style(at(d, 0));
    if (has(d, 1))
        below->set_PVWCH_Style(at(d, 1));
    if (has(d, 2))
        middle->set_AFVorMIX_Style(at(d, 2));
    if (has(d, 3))
        middle->set_CH1_Style(at(d, 3));
    if (has(d, 4))
        middle->set_CH1VOL_Style(at(d, 4));
    if (has(d, 5))
        middle->set_CH2_Style(at(d, 5));
    if (has(d, 6))
        middle->set_CH2VOL_Style(at(d, 6));
    if (has(d, 8))
        middle->set_Trans_Style(at(d, 7), at(d, 8));
    if (has(d, 9))
        upper->set_FTB_Style(at(d, 9));
    afterFtb();
    if (has(d, 10))
        middle->set_PIP_Style(at(d, 10));
    if (has(d, 11))
        pip->set_BorderEnable_Style(at(d, 11));
    if (has(d, 12))
        pip->set_BorderColor_Style(at(d, 12));
    if (has(d, 13))
        pip->set_BorderWidth_Style(at(d, 13));
    if (has(d, 14))
        pip->set_Size_Style(at(d, 14));
    if (has(d, 16))
        pip->set_Hposition_Style(at(d, 15), at(d, 16));
    if (has(d, 18))
        pip->set_Vposition_Style(at(d, 17), at(d, 18));
    if (has(d, 19))
        middle->set_Stll_Style(at(d, 19));
    if (has(d, 20))
        below->set_Rate_Style(at(d, 20));
    if (has(d, 21))
        upper->set_F1_Style(at(d, 21));
    if (has(d, 24))
        upper->set_F3_Style(at(d, 24));
}

} // namespace StateFanout
