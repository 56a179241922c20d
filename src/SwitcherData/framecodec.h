#pragma once

#include <QByteArray>

// Reassembly steps shared by every link object. Pure functions over bytes, so a test or a
// fuzzer can call them without a socket.
namespace FrameCodec {

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

// Writes the common head of a control frame: start bytes, total length, device address,
// kind 0x01, nine reserved zero bytes and the command code. Returns the offset of the first
// data byte (17).
int writeHead(uint8_t *buf, uint16_t length, uint8_t devClass, uint8_t devNum, uint8_t cmd);

// Appends the 16-bit sum of the `pos` bytes written so far, low byte first, and the end byte.
// Returns the frame length.
uint16_t writeTail(uint8_t *buf, int pos);

inline uint8_t byteAt(const QByteArray &data, int index)
{
    return index >= 0 && index < data.size() ? uint8_t(data.at(index)) : 0;
}

} // namespace FrameCodec
