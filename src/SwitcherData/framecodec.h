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

inline uint8_t byteAt(const QByteArray &data, int index)
{
    return index >= 0 && index < data.size() ? uint8_t(data.at(index)) : 0;
}

} // namespace FrameCodec
