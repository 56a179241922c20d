#include "rvx3210behaviour.h"

#include "emuframe.h"
#include "familyregistry.h"

namespace {

// Output format: the command carries the list index, the state reports the unit's own code.
constexpr uint8_t OutputCodes[] = {7, 11, 9, 1, 3, 13, 5};

} // namespace

Rvx3210Behaviour::Rvx3210Behaviour(const UnitConfig &unit, QObject *parent) : RecordBehaviour(unit, parent)
{
    powerUpRecord(RecordLength3210, 0x07, 0x03);
}

bool Rvx3210Behaviour::applyMain(uint8_t command, const QByteArray &data)
{
    const uint8_t d0 = EmuFrame::byteAt(data, 0);
    switch (command) {
    case 0x92:
        setField(WipeType, uint8_t(d0 - 0x23));
        break;
    case 0xA2:
        setField(PipSize, d0);
        break;
    case 0xA3:
        if (d0 < sizeof(OutputCodes))
            setField(OutputFormat, OutputCodes[d0]);
        break;
    case 0xB1:
        setField(Rate, d0);
        break;
    case 0xD4:
        setField(StaticValue, field(StaticValue) ? 0 : 255);
        break;
    default:
        return applyCommon(command, data);
    }
    return true;
}

REGISTER_FAMILY(Rvx3210Behaviour, 0x21, 0x23, 0x24, 0x25, 0x26, 0x47)
