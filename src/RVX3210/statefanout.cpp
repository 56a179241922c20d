#include "statefanout.h"

#include "rvx3210log.h"

void StateFanout::dump(const UnitState &s)
{
    qCDebug(lcRvx3210) << "data" << s.record().toHex(' ');
    // One line per field the record carried, by the name kovactl prints it under.
    for (int f = 0; f < UnitState::FieldCount; ++f) {
        const auto field = UnitState::Field(f);
        if (s.has(field) && field != UnitState::Serial)
            qCDebug(lcRvx3210, "%-17s%d", UnitState::fieldName(field), s.value(field));
    }
}
