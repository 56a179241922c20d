#include "emuframe.h"

namespace EmuFrame {

uint16_t sum(const QByteArray &bytes, int count)
{
    uint16_t total = 0;
    const int end = qMin(count, bytes.size());
    for (int i = 0; i < end; ++i)
        total = uint16_t(total + uint8_t(bytes.at(i)));
    return total;
}

QByteArray build(uint8_t deviceClass, uint8_t deviceNumber, uint8_t command, const QByteArray &data,
                 uint8_t kind)
{
    const int length = kMinLength + data.size();
    QByteArray frame;
    frame.reserve(length);
    frame.append(char(kStart1));
    frame.append(char(kStart2));
    frame.append(char(length & 0xFF));
    frame.append(char((length >> 8) & 0xFF));
    frame.append(char(deviceClass));
    frame.append(char(deviceNumber));
    frame.append(char(kind));
    frame.append(QByteArray(9, '\0'));
    frame.append(char(command));
    frame.append(data);
    const uint16_t total = sum(frame, frame.size());
    frame.append(char(total & 0xFF));
    frame.append(char(total >> 8));
    frame.append(char(kEnd));
    return frame;
}

void reseal(QByteArray &frame)
{
    if (frame.size() < kMinLength)
        return;
    const uint16_t total = sum(frame, frame.size() - 3);
    frame[frame.size() - 3] = char(total & 0xFF);
    frame[frame.size() - 2] = char(total >> 8);
}

Parsed parse(const QByteArray &datagram)
{
    Parsed p;
    const int size = datagram.size();
    if (size < kMinLength) {
        p.problem = QStringLiteral("short");
        return p;
    }
    if (size > kMaxLength) {
        p.problem = QStringLiteral("long");
        return p;
    }
    if (byteAt(datagram, 0) != kStart1 || byteAt(datagram, 1) != kStart2) {
        p.problem = QStringLiteral("nostart");
        return p;
    }
    const int declared = byteAt(datagram, 2) | (byteAt(datagram, 3) << 8);
    if (declared != size) {
        p.problem = QStringLiteral("length%1").arg(declared);
        return p;
    }
    if (byteAt(datagram, size - 1) != kEnd) {
        p.problem = QStringLiteral("noend");
        return p;
    }
    p.framed = true;
    p.deviceClass = byteAt(datagram, 4);
    p.deviceNumber = byteAt(datagram, 5);
    p.command = byteAt(datagram, kCommandOffset);
    p.data = datagram.mid(kDataOffset, size - 3 - kDataOffset);
    const uint16_t stored = uint16_t(byteAt(datagram, size - 3) | (byteAt(datagram, size - 2) << 8));
    p.checksumOk = stored == sum(datagram, size - 3);
    return p;
}

QString hex(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.toHex());
}

QString hexByte(int v)
{
    return QStringLiteral("0x%1").arg(v, 2, 16, QLatin1Char('0'));
}

} // namespace EmuFrame
