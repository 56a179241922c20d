#pragma once

#include "SwitcherData/unitaddress.h"

#include <QString>

// The binding of a panel (or a part of one) to its unit as the search window hands it over: the
// unit's address text and device address, then its HIS board's. `Bound` binds the two boards
// in its own bindUnit(unit, his); the text form is turned into addresses here, once for all.
template <class Bound> class UnitBinding
{
public:
    void DevTypeID(QString ip, uchar b4, uchar b5, QString hisIp, uchar h4, uchar h5)
    {
        static_cast<Bound *>(this)->bindUnit(UnitAddress::fromText(ip, b4, b5),
                                             UnitAddress::fromText(hisIp, h4, h5));
    }
};
