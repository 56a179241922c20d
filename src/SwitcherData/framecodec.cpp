#include "framecodec.h"

#include <cstring>

namespace FrameCodec {

uint16_t checkSum(const uint8_t *data, int count)
{
    uint16_t sum = 0;
    for (int i = 0; i < count; ++i)
        sum = uint16_t((sum + data[i]) & 0xFFFF);
    return sum;
}

int writeHead(uint8_t *buf, uint16_t length, uint8_t devClass, uint8_t devNum, uint8_t cmd)
{
    buf[0] = 0xA5;
    buf[1] = 0x6C;
    buf[2] = lowByte(length);
    buf[3] = highByte(length);
    buf[4] = devClass;
    buf[5] = devNum;
    buf[6] = 0x01;
    std::memset(buf + 7, 0, 9);
    buf[16] = cmd;
    return 17;
}

uint16_t writeTail(uint8_t *buf, int pos)
{
    const uint16_t sum = checkSum(buf, pos);
    buf[pos] = lowByte(sum);
    buf[pos + 1] = highByte(sum);
    buf[pos + 2] = 0xAE;
    return uint16_t(pos + 3);
}

uint16_t dataFrame(uint8_t *buf, uint8_t devClass, uint8_t devNum, uint8_t cmd, const uint8_t *data,
                   int count)
{
    int pos = writeHead(buf, uint16_t(MinFrame + count), devClass, devNum, cmd);
    for (int i = 0; i < count; ++i)
        buf[pos++] = data[i];
    return writeTail(buf, pos);
}

Scan joinFrames(const QByteArray &buffer, QByteArray *joined)
{
    joined->clear();
    const int size = buffer.size();
    for (int i = 0; i < size - 3; ++i) {
        if (uint8_t(buffer.at(i)) != 0xA5 || uint8_t(buffer.at(i + 1)) != 0x6C)
            continue;
        const int length = uint8_t(buffer.at(i + 2)) | (uint8_t(buffer.at(i + 3)) << 8);
        if (i + length > size)
            return Scan::Incomplete;
        if (length < MinFrame)
            continue;
        if (uint8_t(buffer.at(i + length - 1)) == 0xAE)
            joined->append(buffer.constData() + i, length);
    }
    return Scan::Done;
}

bool checksumOk(const QByteArray &frame)
{
    if (frame.size() < MinFrame)
        return false;
    const int n = frame.size();
    const uint16_t stored = uint16_t(uint8_t(frame.at(n - 3)) | (uint8_t(frame.at(n - 2)) << 8));
    return stored == checkSum(reinterpret_cast<const uint8_t *>(frame.constData()), n - 3);
}

} // namespace FrameCodec
