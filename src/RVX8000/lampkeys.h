#pragma once

#include "common/keyflash.h"
#include "common/keysheet.h"

#include <QPushButton>
#include <functional>
#include <initializer_list>
#include <utility>

// Key habits the 8000-series panels share.
namespace LampKeys {

// A key that switches something on and off: flips `on`, lights the key with `litSheet` while
// on, and returns the new state.
inline bool toggle(bool &on, QPushButton *key, const char *litSheet)
{
    on = !on;
    setLamp(key, on, litSheet, KeySheet::GradientOff);
    return on;
}

// What the unit reports for such a key: remembered in `on`, lit red while on.
inline void showReported(bool &on, QPushButton *key, bool reported)
{
    on = reported;
    setLamp(key, on, KeySheet::GradientRed, KeySheet::GradientOff);
}

// REC: stopping the recording also ends its pause. Returns whether it records now.
inline bool toggleRecord(bool &recOn, QPushButton *rec, bool &pauseOn, QPushButton *pause)
{
    if (toggle(recOn, rec, KeySheet::GradientRed))
        return true;
    pauseOn = false;
    setKeySheet(pause, QString::fromLatin1(KeySheet::GradientOff));
    return false;
}

// A panel's plain keys: unlit, each wired to its press.
template <class Panel>
void wire(Panel *panel, std::initializer_list<std::pair<QPushButton *, void (Panel::*)()>> keys)
{
    for (const auto &[key, press] : keys) {
        setKeySheet(key, QString::fromLatin1(KeySheet::GradientOff));
        QObject::connect(key, &QPushButton::clicked, panel, press);
    }
}

// A key that acts once: lit green, the wait, then `act` (may be null), then unlit.
inline void flash(QObject *owner, QPushButton *key, int waitMs, const std::function<void()> &act)
{
    lightWaitActUnlight(
        owner, waitMs, [key](bool lit) { setLamp(key, lit, KeySheet::GradientGreen, KeySheet::GradientOff); },
        act);
}

} // namespace LampKeys
