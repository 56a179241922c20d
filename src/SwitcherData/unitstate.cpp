#include "unitstate.h"

#include "protocol.h"

namespace {

using namespace Protocol;

// Where a field sits in the record: one byte, two bytes high first, or a bit field of a byte.
struct Place
{
    int offset;
    int width;
    int mask;
};

constexpr Place Places[UnitState::Serial] = {
    {State::Pgm, 1, 0xFF},
    {State::Pvw, 1, 0xFF},
    {State::AudioMode, 1, 0xFF},
    {State::Ch1Source, 1, 0xFF},
    {State::Ch1Level, 1, 0xFF},
    {State::Ch2Source, 1, 0xFF},
    {State::Ch2Level, 1, 0xFF},
    {State::Transition, 1, 0xFF},
    {State::Wipe, 1, 0xFF},
    {State::Ftb, 1, 0xFF},
    {State::Pip, 1, 0xFF},
    {State::PipBorderEnable, 1, 0xFF},
    {State::PipBorderColor, 1, 0xFF},
    {State::PipBorderWidth, 1, 0xFF},
    {State::PipSize, 1, 0xFF},
    {State::PipH, 2, 0xFFFF},
    {State::PipV, 2, 0xFFFF},
    {State::Still, 1, 0xFF},
    {State::Rate, 1, 0xFF},
    {State::Resolution, 1, 0xFF},
    {State::RtdSource, 1, 0xFF},
    {State::UvcValue, 1, 0xFF},
    {State::Mute, 1, 0xFF},
    {State::Rotate, 1, 0xFF},
    {State::Recording, 1, State::RecordingMask},
    {State::Streaming, 1, State::StreamingMask},
    {State::Rotation, 1, State::RotationMask},
};

constexpr const char *Names[UnitState::FieldCount] = {
    "pgm",        "pvw",   "audio",       "ch1-source", "ch1-level",  "ch2-source",       "ch2-level",
    "transition", "wipe",  "ftb",         "pip",        "pip-border", "pip-border-color", "pip-border-width",
    "pip-size",   "pip-h", "pip-v",       "still",      "rate",       "format",           "rtd-source",
    "uvc-value",  "mute",  "rotate-code", "rec",        "stream",     "rotate",           "serial",
};

int lowestBit(int mask)
{
    int shift = 0;
    while (mask && !(mask & 1)) {
        mask >>= 1;
        ++shift;
    }
    return shift;
}

UnitState::FieldSet range(UnitState::Field first, UnitState::Field last)
{
    UnitState::FieldSet set;
    for (int f = first; f <= last; ++f)
        set.set(size_t(f));
    return set;
}

} // namespace

UnitState::FieldSet UnitState::reportedBy(StateLayout layout)
{
    switch (layout) {
    case StateLayout::None:
        break;
    case StateLayout::Rvx3210:
        return range(Pgm, Rotate);
    case StateLayout::Rvx3410:
        return range(Pgm, Rotation);
    case StateLayout::Series8000:
    case StateLayout::Rvx5350:
        // Bytes 22 and 23 mean nothing there; the record ends with the mute byte.
        return range(Pgm, Format).set(Mute).set(Serial);
    }
    return {};
}

UnitState UnitState::decode(StateLayout layout, const QByteArray &record, const QByteArray &serial)
{
    UnitState s;
    s.m_layout = layout;
    s.m_record = record;
    const FieldSet reported = reportedBy(layout);
    for (int f = 0; f < Serial; ++f) {
        const Place &p = Places[f];
        if (!reported.test(size_t(f)) || p.offset + p.width > record.size())
            continue;
        int v = 0;
        for (int i = 0; i < p.width; ++i)
            v = v << 8 | uint8_t(record.at(p.offset + i));
        s.m_values[size_t(f)] = (v & p.mask) >> lowestBit(p.mask);
        s.m_present.set(size_t(f));
    }
    if (reported.test(Serial) && !serial.isEmpty()) {
        s.m_serial = serial;
        s.m_present.set(Serial);
    }
    return s;
}

const char *UnitState::fieldName(Field field)
{
    return field >= 0 && field < FieldCount ? Names[field] : "";
}

int UnitState::wipeType() const
{
    if (!has(Wipe))
        return 0;
    const auto code = uint8_t(wipe());
    return m_layout == StateLayout::Rvx5350 ? wipeTypeFromReport5350(code) : wipeTypeFromReport(code);
}

int UnitState::formatIndex() const
{
    return has(Format) ? outputFormatIndex(uint8_t(format())) : -1;
}

int UnitState::sourceIndex(Field field) const
{
    if (!has(field))
        return -1;
    const auto code = uint8_t(value(field));
    return m_layout == StateLayout::Rvx5350 ? audioSource5350Index(code) : audioSourceIndex(code);
}

UnitState::FieldSet UnitState::changedFrom(const UnitState &before) const
{
    if (m_layout != before.m_layout)
        return m_present | before.m_present;
    FieldSet changed = m_present ^ before.m_present;
    for (int f = 0; f < Serial; ++f) {
        if (m_present.test(size_t(f)) && before.m_present.test(size_t(f)) &&
            m_values[size_t(f)] != before.m_values[size_t(f)])
            changed.set(size_t(f));
    }
    if (m_serial != before.m_serial)
        changed.set(Serial);
    return changed;
}

bool UnitState::operator==(const UnitState &other) const
{
    return m_layout == other.m_layout && changedFrom(other).none();
}
