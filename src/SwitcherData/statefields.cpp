#include "statefields.h"

#include "protocol.h"

namespace {

using namespace Protocol;
using F = UnitState::Field;

QString lowered(const char *text)
{
    return QString::fromLatin1(text).toLower().replace(QLatin1Char('_'), QLatin1Char('-'));
}

// A name from `names` by the value, the number itself when it names nothing.
template <int N> QJsonValue named(int v, const char *const (&names)[N])
{
    return v >= 0 && v < N && names[v] ? QJsonValue(QLatin1String(names[v])) : QJsonValue(v);
}

QJsonValue source(const UnitState &s, F field, int index)
{
    if (index < 0)
        return s.value(field);
    const char *name =
        s.layout() == StateLayout::Rvx5350 ? AudioSources5350[index].name : AudioSources[index].name;
    return lowered(name);
}

QJsonValue wipe(const UnitState &s)
{
    static const char *const directions[] = {"up", "down", "left", "right"};
    const int type = s.wipeType();
    return type >= 3 && type <= 6 ? QJsonValue(QLatin1String(directions[type - 3])) : QJsonValue(s.wipe());
}

// The 8000 series (which sends its serial with a long reply) against the RVX3210 family.
bool series8000(const UnitState &s)
{
    return UnitState::reportedBy(s.layout()).test(F::Serial);
}

QJsonValue shown(const UnitState &s, F field)
{
    static const char *const audioModes[] = {"afv", "mix"};
    static const char *const sizes[] = {"small", "medium", "large"};
    static const char *const colors[] = {"white", "red", "blue", "green"};
    static const char *const recording[] = {"idle", "recording", "paused"};
    switch (field) {
    case F::Pgm:
    case F::Pvw:
        return busValue(s.value(field));
    case F::AudioMode:
        return named(s.audioMode(), audioModes);
    case F::Ch1Source:
        return source(s, field, s.ch1SourceIndex());
    case F::Ch2Source:
        return source(s, field, s.ch2SourceIndex());
    case F::Transition: {
        const QString name = transitionName(s.transition());
        return name.isEmpty() ? QJsonValue(s.transition()) : QJsonValue(name);
    }
    case F::Wipe:
        return wipe(s);
    case F::Ftb:
    case F::Pip:
    case F::PipBorder:
    case F::Still:
    case F::Streaming:
        return s.value(field) != 0;
    case F::PipBorderColor:
        return named(s.pipBorderColor(), colors);
    case F::PipSize:
        return named(s.pipSize(), sizes);
    case F::Rate:
        // The rate keys are numbered from 1, the unit counts from 0.
        return s.rate() + 1;
    case F::Format: {
        const int i = s.formatIndex();
        return i < 0 ? QJsonValue(s.format()) : QJsonValue(lowered(OutputFormats[i].name));
    }
    case F::Mute:
        // The 8000 series' mute key; the RVX3210 family's F3 byte, shown as it comes.
        return series8000(s) ? QJsonValue(s.mute()) : QJsonValue(s.value(field));
    case F::Recording:
        return named(s.recording(), recording);
    case F::Rotation:
        return s.rotated();
    default:
        return s.value(field);
    }
}

} // namespace

QVector<StateField> stateFields(const UnitState &state)
{
    // Printed in record order, the serial first; the bytes only logged are left out.
    static constexpr F Printed[] = {
        F::Serial,   F::Pgm,       F::Pvw,       F::AudioMode,      F::Ch1Source,
        F::Ch1Level, F::Ch2Source, F::Ch2Level,  F::Transition,     F::Wipe,
        F::Ftb,      F::Pip,       F::PipBorder, F::PipBorderColor, F::PipBorderWidth,
        F::PipSize,  F::PipH,      F::PipV,      F::Still,          F::Rate,
        F::Format,   F::Mute,      F::Recording, F::Streaming,      F::Rotation,
    };
    QVector<StateField> out;
    for (F field : Printed) {
        if (!state.has(field))
            continue;
        if (field == F::Serial) {
            // Bytes, as the settings dialogs show them.
            out.append({QStringLiteral("serial"), QString::fromLatin1(state.serial().toHex())});
            continue;
        }
        // The RVX3210 family calls the mute byte by its key, F3.
        const char *name = field == F::Mute && !series8000(state) ? "f3" : UnitState::fieldName(field);
        out.append({QLatin1String(name), shown(state, field)});
    }
    return out;
}

QJsonValue busValue(int input)
{
    return input == Protocol::BarInput ? QJsonValue(QStringLiteral("bar")) : QJsonValue(input);
}

QString transitionName(int code)
{
    static const char *const names[] = {nullptr, "mix", "fade", nullptr, "wipe"};
    return code >= 0 && code < 5 && names[code] ? QLatin1String(names[code]) : QString();
}

QJsonObject stateJson(const UnitState &state)
{
    QJsonObject values;
    for (const StateField &f : stateFields(state))
        values.insert(f.name, f.value);
    return values;
}

QString fieldText(const QJsonValue &value)
{
    if (value.isBool())
        return value.toBool() ? QStringLiteral("on") : QStringLiteral("off");
    if (value.isDouble())
        return QString::number(value.toInt());
    return value.toString();
}
