#pragma once

#include "common/keyflash.h"
#include "common/keysheet.h"

#include <QPushButton>
#include <functional>

// Key habits the RVX5370 and RVX5350 panels share.
namespace LampKeys {

// A key that switches something on and off: flips `on`, lights the key with `litSheet` while
// on, and returns the new state.
inline bool toggle(bool &on, QPushButton *key, const char *litSheet)
{
    on = !on;
    setLamp(key, on, litSheet, KeySheet::GradientOff);
    return on;
}

// A key that acts once: lit green, the wait, then `act` (may be null), then unlit.
inline void flash(QObject *owner, QPushButton *key, int waitMs, const std::function<void()> &act)
{
    lightWaitActUnlight(
        owner, waitMs, [key](bool lit) { setLamp(key, lit, KeySheet::GradientGreen, KeySheet::GradientOff); },
        act);
}

} // namespace LampKeys
