#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QString>
#include <QStringList>
#include <cstdint>

// Frames built with the tests' own arithmetic (the layout is written out, only the sum is
// computed), and what a widget shows.

inline QByteArray hex(const char *h)
{
    return QByteArray::fromHex(h);
}

// Frames written as hex, separated by blanks.
inline QList<QByteArray> hexList(const QByteArray &frames)
{
    QList<QByteArray> out;
    for (const QByteArray &h : frames.split(' '))
        if (!h.isEmpty())
            out << QByteArray::fromHex(h);
    return out;
}

// Appends the 16-bit sum (low byte first) and the end byte 0xAE.
inline QByteArray seal(QByteArray body)
{
    uint16_t sum = 0;
    for (char c : body)
        sum = uint16_t(sum + uint8_t(c));
    return body.append(char(sum & 0xFF)).append(char(sum >> 8)).append(char(0xAE));
}

// A reply as a unit sends it: lead-in, length, device address `dev` (class and number, e.g.
// 0xA5FF), child type at 14, command at 16, then `data`, sealed. The length counts the whole frame.
inline QByteArray reply(uint16_t dev, uint8_t cmd, const QByteArray &data, uint8_t childType = 0)
{
    QByteArray f = hex("a56c0000") + char(dev >> 8) + char(dev & 0xFF) + hex("01000000000000") + char(0) +
                   char(childType) + char(0) + char(cmd) + data;
    const int len = f.size() + 3;
    f[2] = char(len & 0xFF);
    f[3] = char(len >> 8);
    return seal(f);
}

// A T-bar frame to A5 FF: the stroke (0 down, 1 up) and the travel.
inline QByteArray lever(int stroke, int travel)
{
    return seal(hex("a56c1600a5ff0100000000000000000082") + char(stroke) + char(travel));
}

// A search reply: device address at 4-5, child type at 14, command 0xFF, then one byte and
// the name field from 17, the unit identifier in the last three data bytes.
inline QByteArray searchReply(uint8_t devClass, uint8_t childType, const QByteArray &nameField,
                              const QByteArray &id)
{
    return reply(uint16_t(devClass << 8 | 0xFF), 0xFF, char(0x01) + nameField + id, childType);
}

// The texts of a list widget's items, in order.
template <typename List> QStringList itemTexts(const List *list)
{
    QStringList out;
    for (int i = 0; i < list->count(); ++i)
        out << list->item(i)->text();
    return out;
}

// A key is lit when its style sheet names the picture (a template: GUI-less tests include this).
template <typename Key> bool lit(const Key *key, const char *picture)
{
    return key && key->styleSheet().contains(QLatin1String(picture));
}
