#pragma once

#include <QByteArray>
#include <QList>
#include <cstddef>
#include <cstdint>

// How every sequence target reads its input: a run of datagrams, each a 16-bit length (low
// byte first) followed by that many bytes. A length that reaches past the end takes the rest,
// so any input is a valid sequence and a single raw frame is its own one-datagram seed once
// prefixed with its length.
namespace FuzzDatagrams {

// Larger than any UDP datagram, so a lying length costs nothing but the rest of the input.
constexpr int MaxDatagrams = 512;

inline QList<QByteArray> split(const uint8_t *data, size_t size)
{
    QList<QByteArray> out;
    size_t pos = 0;
    while (pos + 2 <= size && out.size() < MaxDatagrams) {
        const size_t declared = size_t(data[pos]) | size_t(data[pos + 1]) << 8;
        pos += 2;
        const size_t take = declared < size - pos ? declared : size - pos;
        out << QByteArray(reinterpret_cast<const char *>(data + pos), int(take));
        pos += take;
    }
    return out;
}

// The inverse, for the seed writer.
inline QByteArray join(const QList<QByteArray> &datagrams)
{
    QByteArray out;
    for (const QByteArray &d : datagrams) {
        out.append(char(d.size() & 0xFF));
        out.append(char((d.size() >> 8) & 0xFF));
        out.append(d);
    }
    return out;
}

} // namespace FuzzDatagrams
