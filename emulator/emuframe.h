#pragma once

#include <QByteArray>
#include <QString>
#include <cstdint>

// The emulator's own control-frame codec: A5 6C, 16-bit length, device class and number
// bytes, frame kind byte, nine zero bytes, command code, data bytes, 16-bit sum, AE.
// All 16-bit fields are little-endian. Kept apart from the application's codec on purpose.
namespace EmuFrame {

constexpr uint8_t kStart1 = 0xA5;
constexpr uint8_t kStart2 = 0x6C;
constexpr uint8_t kEnd = 0xAE;
constexpr int kMinLength = 20;
constexpr int kMaxLength = 1056;
constexpr int kCommandOffset = 16;
constexpr int kDataOffset = 17;

constexpr uint8_t kMainClass = 0xA5;
constexpr uint8_t kDeviceNumber = 0xFF;
constexpr uint8_t kSearchCommand = 0xFF;

// 16-bit sum of the bytes, each added as unsigned, wrapping at 0x10000.
uint16_t sum(const QByteArray &bytes, int count);

// A whole frame with the given device address, command code and data bytes of any length.
// Byte 6 (frame kind) is 0x01 unless told otherwise.
QByteArray build(uint8_t deviceClass, uint8_t deviceNumber, uint8_t command, const QByteArray &data,
                 uint8_t kind = 0x01);

// Rewrites the checksum of a whole frame after its bytes were changed in place.
void reseal(QByteArray &frame);

// Out-of-range reads give 0, so nothing received can be read past its end.
inline uint8_t byteAt(const QByteArray &bytes, int index)
{
    return index >= 0 && index < bytes.size() ? uint8_t(bytes.at(index)) : 0;
}

struct Parsed
{
    bool framed = false;     // start bytes, length field equal to the datagram size, end byte
    bool checksumOk = false; // only meaningful when framed
    uint8_t deviceClass = 0;
    uint8_t deviceNumber = 0;
    uint8_t command = 0;
    QByteArray data; // bytes between the command code and the checksum
    QString problem; // why it is not framed, for the log
};

// One datagram is one frame; anything else is reported as not framed.
Parsed parse(const QByteArray &datagram);

// A code as the log and state files name it: "0x0a".
QString hexByte(int v);

// Lower-case hexadecimal without separators ("0a0b0c"), as the log and state files use.
QString hex(const QByteArray &bytes);

} // namespace EmuFrame
