#include "framecodec.h"

#include "workdata.h"

namespace FrameCodec {

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
        if (length < SWITCHER_DATA::MinFrame)
            continue;
        if (uint8_t(buffer.at(i + length - 1)) == 0xAE)
            joined->append(buffer.constData() + i, length);
    }
    return Scan::Done;
}

bool checksumOk(const QByteArray &frame)
{
    if (frame.size() < SWITCHER_DATA::MinFrame)
        return false;
    const int n = frame.size();
    const uint16_t stored = uint16_t(uint8_t(frame.at(n - 3)) | (uint8_t(frame.at(n - 2)) << 8));
    return stored == SWITCHER_DATA::CalcCheckSum(reinterpret_cast<const uint8_t *>(frame.constData()), n - 3);
}

} // namespace FrameCodec
