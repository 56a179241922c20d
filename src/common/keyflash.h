#pragma once

#include <functional>

class QObject;

// A key that acts for a moment: its lamp is lit, the panel waits with the event loop running
// (delay.h), then the lamp goes out. What the key does runs before the wait, after it, or
// both, as its panel has it: the 8000 series' settings keys light, wait, act and unlight; the
// RVX3210 family's F2 and AUTO light, send, wait, (swap the buses,) unlight.
//
// `owner` is the widget that holds the key. A click during the wait may close and free the
// panel; then nothing after the wait runs and the call returns false.
bool flashKey(QObject *owner, int waitMs, const std::function<void(bool lit)> &lamp,
              const std::function<void()> &beforeWait, const std::function<void()> &afterWait);

// Light, wait, act, unlight.
inline bool lightWaitActUnlight(QObject *owner, int waitMs, const std::function<void(bool lit)> &lamp,
                                const std::function<void()> &act)
{
    return flashKey(owner, waitMs, lamp, nullptr, act);
}
