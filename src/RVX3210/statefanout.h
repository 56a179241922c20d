#pragma once

#include "SwitcherData/unitstate.h"
#include "below_widget.h"
#include "common/unitstateguard.h"
#include "plane_right.h"

#include <cstdint>

// The fan-out of a unit's state to the panel rows, shared by the RVX3210 and RVX3410 panels.
// A state from a record that stopped short updates only the fields it carries.
namespace StateFanout {

// Debug dump: "data" with the whole record, then one line per field it carried.
void dump(const UnitState &s);

// Calls the row setters in the record's order. `afterFtb` runs right after the FTB field,
// where the RVX3410 panel shows its own fields.
template <class Upper, class Middle, class AfterFtb>
void apply(const UnitState &s, Upper *upper, Middle *middle, Below_Widget *below, Plane_Right *pip,
           AfterFtb afterFtb)
{
    using F = UnitState::Field;
    const UnitStateGuard showingUnitState;
    if (s.has(F::Pgm))
        below->set_PGMCH_Style(uint8_t(s.pgm()));
    if (s.has(F::Pvw))
        below->set_PVWCH_Style(uint8_t(s.pvw()));
    if (s.has(F::AudioMode))
        middle->set_AFVorMIX_Style(uint8_t(s.audioMode()));
    if (s.has(F::Ch1Source))
        middle->set_CH1_Style(uint8_t(s.ch1Source()));
    if (s.has(F::Ch1Level))
        middle->set_CH1VOL_Style(uint8_t(s.ch1Level()));
    if (s.has(F::Ch2Source))
        middle->set_CH2_Style(uint8_t(s.ch2Source()));
    if (s.has(F::Ch2Level))
        middle->set_CH2VOL_Style(uint8_t(s.ch2Level()));
    if (s.has(F::Wipe))
        middle->set_Trans_Style(uint8_t(s.transition()), uint8_t(s.wipe()));
    // These keys take only the values they know (FTB 0 and 1, PIP and STILL 0 and 1, F3 0
    // and 0xFF), so they are handed the byte as it came.
    if (s.has(F::Ftb))
        upper->set_FTB_Style(uint8_t(s.value(F::Ftb)));
    afterFtb();
    if (s.has(F::Pip))
        middle->set_PIP_Style(uint8_t(s.value(F::Pip)));
    pip->showReport(s);
    if (s.has(F::Still))
        middle->set_Stll_Style(uint8_t(s.value(F::Still)));
    if (s.has(F::Rate))
        below->set_Rate_Style(uint8_t(s.rate()));
    if (s.has(F::Format))
        upper->set_F1_Style(uint8_t(s.format()));
    if (s.has(F::Mute))
        upper->set_F3_Style(uint8_t(s.value(F::Mute)));
}

} // namespace StateFanout
