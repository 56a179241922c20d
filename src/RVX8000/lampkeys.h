#pragma once

#include "common/keyflash.h"
#include "common/keysheet.h"
#include "common/lampkey.h"

#include <QPushButton>
#include <functional>
#include <initializer_list>
#include <utility>

// Key habits the 8000-series panels share.
namespace LampKeys {

// REC: stopping the recording puts out PAUSE's lamp. PAUSE itself stays as it was, so the
// next PAUSE press flips it from there. Returns whether it records now.
inline bool toggleRecord(LampKey *rec, LampKey *pause)
{
    if (rec->toggle())
        return true;
    pause->showLamp(false);
    return false;
}

// Toggle keys of the 8000 series: lit with `litSheet`, unlit with the usual off sheet.
inline void toggles(std::initializer_list<LampKey *> keys, const char *litSheet)
{
    for (LampKey *key : keys)
        key->setSheets(litSheet, KeySheet::GradientOff);
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
