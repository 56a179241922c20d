#include "streamurl.h"

#include "framecodec.h"
#include "protocol.h"

#include <QtGlobal>

namespace {
constexpr int SlotAt = 1;
constexpr int NameLenAt = 2;
constexpr int NameAt = 3;
constexpr int UrlLenAt = 19;
constexpr int UrlAt = 21;
} // namespace

StreamUrl StreamUrl::decode(const QByteArray &payload)
{
    using FrameCodec::byteAt;
    StreamUrl u;
    if (payload.size() <= NameLenAt)
        return u;
    u.slot = byteAt(payload, SlotAt);
    const int nameLen = qMin(int(byteAt(payload, NameLenAt)), Protocol::UrlNameMax);
    u.name = QString::fromLatin1(payload.mid(NameAt, nameLen));
    if (payload.size() <= UrlLenAt + 1)
        return u;
    const int urlLen = qMin(byteAt(payload, UrlLenAt) | byteAt(payload, UrlLenAt + 1) << 8, Protocol::UrlMax);
    u.url = QString::fromLatin1(payload.mid(UrlAt, urlLen));
    return u;
}
