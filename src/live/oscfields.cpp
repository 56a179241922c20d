#include "oscfields.h"

namespace {
QVariant fieldValue(const UnitState &s, UnitState::Field f)
{
    switch (f) {
    case UnitState::Transition:
        switch (s.transition()) {
        case 1:
            return QStringLiteral("mix");
        case 2:
            return QStringLiteral("fade");
        case 4:
            return QStringLiteral("wipe");
        default:
            return s.transition();
        }
    case UnitState::Serial:
        return QString::fromLatin1(s.serial().toHex());
    default:
        return s.value(f);
    }
}
} // namespace

OscFields oscStateFields(const UnitState &state, UnitState::FieldSet which)
{
    OscFields out;
    for (int f = 0; f < UnitState::FieldCount; ++f) {
        const auto field = UnitState::Field(f);
        if (which.test(size_t(f)) && state.has(field))
            out.append({QLatin1String(UnitState::fieldName(field)), fieldValue(state, field)});
    }
    return out;
}
