#pragma once

#include <QByteArray>
#include <QHostAddress>
#include <QSet>
#include <QString>
#include <cstdint>

// Faults a unit can be told to show. Search faults shape the search replies; the frame
// faults (split, bad checksum) apply to every reply the unit sends.
enum class Fault
{
    Duplicate,   // the main-board search reply is sent twice
    HisFirst,    // the HIS-board search reply leaves before the main-board one
    Split,       // every reply goes out as two datagrams: the first 19 bytes, then the rest
    BadChecksum, // every reply carries a checksum off by one
    Silent,      // the unit answers nothing at all (it still logs what it receives)
};

// Which form of the state reply an 8000-series unit gives: the long one carries the serial
// number before the state, the short one the state alone.
enum class StateForm
{
    FirstLong, // the long reply to the unit's first state read, the short one after
    Long,
    Short,
};

// What one emulated unit is: fixed at start-up, read by the unit's behaviour.
struct UnitConfig
{
    int index = 0;           // position among the emulator's units, from 0
    uint8_t childType = 0;   // byte 14 of the main-board search reply
    QString name;            // ASCII, no "-" and no 0xFF
    QByteArray id;           // 3-byte unit identifier
    QHostAddress mainIp;     // main control board
    QHostAddress hisIp;      // HIS board; null when the unit has none
    uint8_t hisClass = 0xE0; // device class byte of the HIS board: 0xE0 or 0xE5
    QSet<Fault> faults;
    QByteArray serial; // 8000 series: serial number bytes of the long state reply; empty = from the id
    StateForm stateForm = StateForm::FirstLong;

    bool hasHis() const { return !hisIp.isNull(); }
    bool has(Fault f) const { return faults.contains(f); }
};

inline uint qHash(Fault f, uint seed = 0)
{
    return ::qHash(int(f), seed);
}
