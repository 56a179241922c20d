#pragma once

#include <QByteArray>
#include <cstdint>

// A search reply as a unit sends it: device address at 4-5, child type at 14, command 0xFF,
// then one byte and the name field from 17, the unit identifier in the last three data bytes.
// The sum is added here; the layout is what the tests exercise, not the arithmetic.
inline QByteArray searchReply(uint8_t devClass, uint8_t childType, const QByteArray &nameField,
                              const QByteArray &id)
{
    QByteArray f;
    f.append(char(0xA5)).append(char(0x6C)).append(2, '\0');
    f.append(char(devClass)).append(char(0xFF)).append(char(0x01)).append(7, '\0');
    f.append(char(childType)).append('\0').append(char(0xFF));
    f.append(char(0x01)).append(nameField).append(id);
    const int len = f.size() + 3;
    f[2] = char(len & 0xFF);
    f[3] = char(len >> 8);
    uint16_t sum = 0;
    for (char c : f)
        sum = uint16_t(sum + uint8_t(c));
    f.append(char(sum & 0xFF)).append(char(sum >> 8)).append(char(0xAE));
    return f;
}
