#pragma once

#include "unitbehaviour.h"

#include <QByteArray>
#include <QString>
#include <cstdint>

// The POP inset's settings as the RVX3220 and the 8000 series take them: 0xA8 window, 0xA9
// border, 0xAA colour, 0xAB width, 0xAC and 0xAD position (low byte first). No state record
// carries them; the state file shows them as pop_window ... pop_v.
struct PopSettings
{
    int window = 0;
    int border = 0;
    int color = 0;
    int width = 0;
    int h = 0;
    int v = 0;

    // Takes one of the codes above; false for any other.
    bool apply(uint8_t command, const QByteArray &data);
    // The setting a code last set, in words ("POP window 2"); empty for any other code.
    QString describe(uint8_t command) const;
    void appendState(StateLines &lines) const;
};
