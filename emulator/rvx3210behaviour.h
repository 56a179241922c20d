#pragma once

#include "recordbehaviour.h"

#include <cstdint>

// An RVX3210-family unit: the state record of 26 bytes, which ends with the RTD source, the
// UVC value, F3 (0 or 255) and rotation, and the state reply with lead 01. The output format
// command carries the list index and the record reports the unit's own code.
class Rvx3210Behaviour : public RecordBehaviour
{
    Q_OBJECT
public:
    enum Field3210
    {
        RecordLength3210 = 26,
    };

    explicit Rvx3210Behaviour(const UnitConfig &unit, QObject *parent = nullptr);

protected:
    bool applyMain(uint8_t command, const QByteArray &data) override;
};
