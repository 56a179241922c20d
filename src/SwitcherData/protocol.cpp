#include "protocol.h"

#include "framecodec.h"

#include <QStringList>

namespace Protocol {

namespace {
template <typename T, int N> int indexOfCode(const T (&table)[N], uint8_t code)
{
    for (int i = 0; i < N; ++i)
        if (table[i].code == code)
            return i;
    return -1;
}

template <typename T, int N> int codeAt(const T (&table)[N], int index)
{
    return index >= 0 && index < N ? table[index].code : -1;
}
} // namespace

int outputFormatIndex(uint8_t code)
{
    return indexOfCode(OutputFormats, code);
}
int outputFormatCode(int index)
{
    return codeAt(OutputFormats, index);
}
int audioSourceIndex(uint8_t code)
{
    return indexOfCode(AudioSources, code);
}
int audioSourceCode(int index)
{
    return codeAt(AudioSources, index);
}
int audioSource5350Index(uint8_t code)
{
    return indexOfCode(AudioSources5350, code);
}
int audioSource5350Code(int index)
{
    return codeAt(AudioSources5350, index);
}

int wipeTypeFromReport(uint8_t reported)
{
    for (int i = 0; i < 4; ++i)
        if (WipePatterns5All[i] - 0x28 == reported)
            return i + 3;
    return 0;
}

int wipeTypeFromReport5350(uint8_t reported)
{
    // 0 L, 1 R, 2 D, 3 U against the types 5 (L), 6 (R), 4 (D), 3 (U).
    static constexpr int Types[4] = {5, 6, 4, 3};
    return reported < 4 ? Types[reported] : 0;
}

QByteArray addressBytes(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char('.'));
    if (parts.size() != 4)
        return QByteArray();
    QByteArray bytes;
    for (const QString &p : parts) {
        if (p.isEmpty() || p.size() > 3)
            return QByteArray();
        uint v = 0;
        for (QChar c : p) {
            if (c < QLatin1Char('0') || c > QLatin1Char('9'))
                return QByteArray();
            v = v * 10 + uint(c.unicode() - '0');
        }
        if (v > 255)
            return QByteArray();
        bytes.append(char(uint8_t(v)));
    }
    return bytes;
}

QString dottedAt(const QByteArray &bytes, int at)
{
    if (at < 0 || at + 4 > bytes.size())
        return QString();
    return QStringLiteral("%1.%2.%3.%4")
        .arg(FrameCodec::byteAt(bytes, at))
        .arg(FrameCodec::byteAt(bytes, at + 1))
        .arg(FrameCodec::byteAt(bytes, at + 2))
        .arg(FrameCodec::byteAt(bytes, at + 3));
}

} // namespace Protocol
