#pragma once

#include <QByteArray>
#include <cstdint>

// The ground floor of the link: byte helpers, the checksum, the data-frame builder and the
// reassembly steps every link object shares. Pure functions over bytes that call nothing
// above them, so a test or a fuzzer can use them without a socket or a link object.
namespace FrameCodec {

// A control frame is never shorter than head (17), sum (2) and end byte (1) plus nothing.
constexpr int MinFrame = 20;

constexpr uint8_t lowByte(uint16_t v)
{
    return uint8_t(v & 0xFF);
}
constexpr uint8_t highByte(uint16_t v)
{
    return uint8_t((v & 0xFFFF) >> 8);
}
// Packed BCD of a clock field below 100 (the search frame's date and time bytes).
constexpr uint8_t bcd(uint8_t v)
{
    return uint8_t(((v / 10) << 4) | (v % 10));
}

// 16-bit sum of `count` bytes, wrapping.
uint16_t checkSum(const uint8_t *data, int count);

// Writes the common head of a control frame: start bytes, total length, device address,
// kind 0x01, nine reserved zero bytes and the command code. Returns the offset of the first
// data byte (17).
int writeHead(uint8_t *buf, uint16_t length, uint8_t devClass, uint8_t devNum, uint8_t cmd);

// Appends the 16-bit sum of the `pos` bytes written so far, low byte first, and the end byte.
// Returns the frame length.
uint16_t writeTail(uint8_t *buf, int pos);

// A whole command frame with `count` data bytes (0 to 4 in use). `buf` must hold 20 + count
// bytes. Returns the frame length.
uint16_t dataFrame(uint8_t *buf, uint8_t devClass, uint8_t devNum, uint8_t cmd, const uint8_t *data,
                   int count);

enum class Scan
{
    Incomplete, // a frame's length field reaches past the bytes held: wait for more
    Done,       // the whole buffer was scanned; the frames found (maybe none) are joined
};

// Walks the buffer for the start pattern A5 6C at every position (one step at a time, so a
// start pattern inside a frame is examined too) and joins every span whose declared length
// ends on 0xAE. A declared length below 20 cannot hold a frame and is passed over.
Scan joinFrames(const QByteArray &buffer, QByteArray *joined);

// True when the 16-bit sum stored low byte first before the end byte matches the sum of all
// bytes before it. An empty or too short array is never valid.
bool checksumOk(const QByteArray &frame);

inline uint8_t byteAt(const QByteArray &data, int index)
{
    return index >= 0 && index < data.size() ? uint8_t(data.at(index)) : 0;
}

// High byte first, as the state records carry positions.
inline uint16_t bigEndianAt(const QByteArray &data, int index)
{
    return uint16_t(byteAt(data, index) << 8 | byteAt(data, index + 1));
}

} // namespace FrameCodec
