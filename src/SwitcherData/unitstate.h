#pragma once

#include "statelayout.h"

#include <QByteArray>
#include <QMetaType>
#include <array>
#include <bitset>

// A unit's state as data: one state record decoded once, by the layout of the family that sent
// it, into named fields. A record that stops short carries only the fields it holds. Panels,
// kovactl and anything else that shows a unit's state read fields here, never record offsets.
class UnitState
{
public:
    // In record order. Values are as the unit sent them unless told otherwise.
    enum Field
    {
        Pgm, // input on PGM: 1-4, 9 the bars
        Pvw,
        AudioMode, // 0 AFV, 1 MIX
        Ch1Source, // the unit's source code; ch1SourceIndex() is its list position
        Ch1Level,
        Ch2Source,
        Ch2Level,
        Transition, // 1 mix, 2 fade, 4 wipe
        Wipe,       // the family's wipe code; wipeType() reads it
        Ftb,
        Pip,
        PipBorder,
        PipBorderColor,
        PipBorderWidth,
        PipSize,
        PipH, // the 16-bit position (high byte first in the record)
        PipV,
        Still,
        Rate,      // 0-2
        Format,    // the output format's code; formatIndex() is its list position
        RtdSource, // RVX3210 family, only logged
        UvcValue,  // RVX3210 family, only logged
        Mute,      // the F3 byte: the 8000 series' mute (non-zero), the RVX3210 family's F3 (0, 0xFF)
        Rotate,    // RVX3210 family byte 25, only logged
        Recording, // RVX3410: 0 idle, 1 recording, 2 paused, 3 recording with FTB blinking
        Streaming, // RVX3410: 0 or 1
        Rotation,  // RVX3410: the two rotation bits; 1 is rotated
        Serial,    // 8000 series: the serial piece of a long reply, in serial(); value() is 0
        FieldCount
    };
    using FieldSet = std::bitset<FieldCount>;

    UnitState() = default;

    // `serial` is the serial piece of a long reply (kept where the layout reports one).
    static UnitState decode(StateLayout layout, const QByteArray &record, const QByteArray &serial = {});
    // The fields a family's record holds when it is long enough.
    static FieldSet reportedBy(StateLayout layout);
    // Stable lower-case name, as kovactl prints it ("pgm", "ch1-source", "pip-h", ...).
    static const char *fieldName(Field field);

    StateLayout layout() const { return m_layout; }
    FieldSet fields() const { return m_present; }
    bool has(Field field) const { return m_present.test(size_t(field)); }
    // The reported value, 0 for a field the record did not carry.
    int value(Field field) const { return has(field) ? m_values[size_t(field)] : 0; }

    int pgm() const { return value(Pgm); }
    int pvw() const { return value(Pvw); }
    int audioMode() const { return value(AudioMode); }
    int ch1Source() const { return value(Ch1Source); }
    int ch1Level() const { return value(Ch1Level); }
    int ch2Source() const { return value(Ch2Source); }
    int ch2Level() const { return value(Ch2Level); }
    int transition() const { return value(Transition); }
    int wipe() const { return value(Wipe); }
    bool ftb() const { return value(Ftb) != 0; }
    bool pip() const { return value(Pip) != 0; }
    bool pipBorder() const { return value(PipBorder) != 0; }
    int pipBorderColor() const { return value(PipBorderColor); }
    int pipBorderWidth() const { return value(PipBorderWidth); }
    int pipSize() const { return value(PipSize); }
    int pipH() const { return value(PipH); }
    int pipV() const { return value(PipV); }
    bool still() const { return value(Still) != 0; }
    int rate() const { return value(Rate); }
    int format() const { return value(Format); }
    int rtdSource() const { return value(RtdSource); }
    int uvcValue() const { return value(UvcValue); }
    bool mute() const { return value(Mute) != 0; }
    int rotate() const { return value(Rotate); }
    int recording() const { return value(Recording); }
    bool streaming() const { return value(Streaming) != 0; }
    bool rotated() const { return value(Rotation) == 1; }
    QByteArray serial() const { return m_serial; }

    // The wipe as a transition type 3-6 (up, down, left, right), read in the family's coding;
    // 0 for a code outside it or no wipe reported.
    int wipeType() const;
    // List positions of the output format and of the audio sources in the family's lists; -1
    // for a code outside the table or a field not reported.
    int formatIndex() const;
    int ch1SourceIndex() const { return sourceIndex(Ch1Source); }
    int ch2SourceIndex() const { return sourceIndex(Ch2Source); }

    // The fields whose presence or value differ from `before`'s. Between layouts every field
    // either reports differs: the same number means something else there.
    FieldSet changedFrom(const UnitState &before) const;
    // The record as it came, for developers' logs; fields are read through the above.
    QByteArray record() const { return m_record; }

    // Same layout and same fields with the same values; bytes no field reads do not count.
    bool operator==(const UnitState &other) const;
    bool operator!=(const UnitState &other) const { return !(*this == other); }

private:
    int sourceIndex(Field field) const;

    StateLayout m_layout = StateLayout::None;
    FieldSet m_present;
    std::array<int, FieldCount> m_values{};
    QByteArray m_serial;
    QByteArray m_record;
};

Q_DECLARE_METATYPE(UnitState)
