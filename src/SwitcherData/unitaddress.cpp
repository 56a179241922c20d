#include "unitaddress.h"

#include "workdata.h"

UnitAddress UnitAddress::mainBoard(const DevInfo_DATA &rec)
{
    return UnitAddress(QHostAddress(rec.ip), rec.devClass, rec.devNum);
}

// A unit whose HIS board has not answered keeps 0.0.0.0 there, as the device table does.
UnitAddress UnitAddress::hisBoard(const DevInfo_DATA &rec)
{
    return UnitAddress(QHostAddress(rec.ip2), rec.devClass2, rec.devNum2);
}

UnitAddress UnitAddress::fromText(const QString &dotted, uint8_t cls, uint8_t num)
{
    QHostAddress host(dotted);
    // The units speak IPv4 only.
    if (host.protocol() != QAbstractSocket::IPv4Protocol)
        host.clear();
    return UnitAddress(host, cls, num);
}
