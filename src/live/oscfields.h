#pragma once

#include "SwitcherData/unitstate.h"
#include "oscremote.h"

// A unit's reported state as the OSC remote names it: /kova/FIELD by the field's stable name,
// the transition by its name ("mix", "fade", "wipe"), the serial as hexadecimal text, every
// other field as the number the unit sent. Only the fields in `which` the state carries.
OscFields oscStateFields(const UnitState &state, UnitState::FieldSet which);
inline OscFields oscStateFields(const UnitState &state)
{
    return oscStateFields(state, state.fields());
}
