#include "oscfields.h"

#include "SwitcherData/statefields.h"

namespace {
QVariant fieldValue(const UnitState &s, UnitState::Field f)
{
    switch (f) {
    case UnitState::Transition: {
        const QString name = transitionName(s.transition());
        return name.isEmpty() ? QVariant(s.transition()) : QVariant(name);
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
