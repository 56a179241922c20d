#pragma once

#include <QByteArray>

// One tally display message as a listener reads it, decoded here by the published layout, never
// by the code under test. All fields little-endian: PBC (the bytes that follow), VER, FLAGS,
// SCREEN, INDEX, CONTROL (right tally in bits 0-1, text tally 2-3, left tally 4-5, brightness
// 6-7), LENGTH, then the text.
struct TallyDisplay
{
    int screen = -1;
    int index = -1;
    int right = 0, text = 0, left = 0, brightness = 0;
    QByteArray label;
};

inline int tallyLe16(const QByteArray &d, int at)
{
    return uint8_t(d.at(at)) | uint8_t(d.at(at + 1)) << 8;
}

// False for anything that is not one whole display message of version 0.
inline bool decodeTally(const QByteArray &d, TallyDisplay *out)
{
    if (d.size() < 12 || tallyLe16(d, 0) != d.size() - 2 || d.at(2) != 0 || d.at(3) != 0 ||
        12 + tallyLe16(d, 10) != d.size())
        return false;
    const int control = tallyLe16(d, 8);
    *out = {tallyLe16(d, 4),  tallyLe16(d, 6),  control & 3, control >> 2 & 3,
            control >> 4 & 3, control >> 6 & 3, d.mid(12)};
    return true;
}
