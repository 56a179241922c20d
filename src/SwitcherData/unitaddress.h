#pragma once

#include <QHostAddress>
#include <QString>
#include <cstdint>

struct DevInfo_DATA;

// Where a board of a unit answers: its IPv4 address and the device address (class and number
// bytes) every frame to it carries. Made once from the search reply and handed around as it is;
// only the operator's typing and the search list deal in text.
struct UnitAddress
{
    QHostAddress host;
    uint8_t devClass = 0;
    uint8_t devNum = 0;

    UnitAddress() = default;
    UnitAddress(const QHostAddress &h, uint8_t cls, uint8_t num) : host(h), devClass(cls), devNum(num) {}

    // The main board and the HIS board of a device-table record.
    static UnitAddress mainBoard(const DevInfo_DATA &rec);
    static UnitAddress hisBoard(const DevInfo_DATA &rec);
    // An address typed or passed on as dotted text; an unreadable text gives a null host, to
    // which nothing is ever sent.
    static UnitAddress fromText(const QString &dotted, uint8_t cls, uint8_t num);

    bool isNull() const { return host.isNull(); }
    // Dotted text, empty for a null host.
    QString text() const { return host.isNull() ? QString() : host.toString(); }

    friend bool operator==(const UnitAddress &a, const UnitAddress &b)
    {
        return a.host == b.host && a.devClass == b.devClass && a.devNum == b.devNum;
    }
    friend bool operator!=(const UnitAddress &a, const UnitAddress &b) { return !(a == b); }
};
