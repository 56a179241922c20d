#pragma once

#include "unitconfig.h"

#include <QHostAddress>
#include <QString>
#include <cstdint>

// Unit descriptions and the lab's address plan (10.77.0.0/16): unit n (from 0) has its
// main board at 10.77.(1 + n/250).(1 + n%250) and its HIS board at 10.77.(101 + n/250).(1 + n%250).
class UnitPlan
{
public:
    static constexpr int kMaxUnits = 25000;

    static QHostAddress mainAddress(int index);
    static QHostAddress hisAddress(int index);

    // Defaults for unit n: type 0x21, name "Unit_000n+1" (no blank: the search window cuts an entry at its
    // first blank), identifier 4b hh ll (n+1), plan address, and the plan's HIS address where the model has a
    // HIS board.
    static UnitConfig defaults(int index);

    // Every model but the RVX3220 has a second network endpoint, the HIS board.
    static bool modelHasHis(uint8_t childType);

    // "type=0x21,name=Studio A,id=0a0b0c,ip=10.77.1.1,his=10.77.101.1,hisclass=e0,fault=split+duplicate"
    // Every key is optional; without "his" (or with his=auto) a unit whose model has a HIS
    // board gets the plan's HIS address; his=none leaves it out. The 8000 series also takes
    // serial=<hex> and state=first|long|short (the form of its state reply).
    static bool parseUnit(const QString &description, int index, UnitConfig *unit, QString *error);

    static bool parseFault(const QString &name, Fault *fault);
    static bool parseByte(const QString &text, uint8_t *value); // "0x21", "21h" is not accepted
    static QString faultName(Fault fault);

    // The name travels between a skipped byte and a "-" in a part of the reply that the
    // receiver cuts at 0xFF: it must be printable ASCII without "-".
    static bool validName(const QString &name);
};
