#pragma once

#include <QByteArray>
#include <QMetaType>
#include <QString>

// One streaming URL slot as the HIS board's URL reply reports it, decoded once. The reply is
// laid out as the URL record (ST_RTMP_URL): slot, name length, 16 name bytes, URL length (low
// byte first), URL bytes; the texts are Latin-1. What a short reply does not reach is a null
// string, and a length beyond what arrived gives what there is.
struct StreamUrl
{
    int slot = -1;
    QString name;
    QString url;

    static StreamUrl decode(const QByteArray &payload);
};

Q_DECLARE_METATYPE(StreamUrl)
