#pragma once

#include "statelayout.h"

#include <QMetaType>
#include <QString>
#include <cstdint>
#include <initializer_list>

// Which command set and state record a unit speaks, and which of those commands its panel
// sends: one family per panel, as each panel offers its own keys and ranges.
enum class Family
{
    Rvx3210, // RVX3210, RVX3210S, RVX3210P, RVX3210(2021) and any type nobody knows
    Rvx3410,
    Rvx3220,
    Rvx5310, // the 8000 series, each with its own keys
    Rvx5370,
    Rvx5350, // two inputs and four audio sources
    Rvx5120, // opens unbound and sends nothing
};
constexpr Family AllFamilies[] = {Family::Rvx3210, Family::Rvx3410, Family::Rvx3220, Family::Rvx5310,
                                  Family::Rvx5370, Family::Rvx5350, Family::Rvx5120};

// What a unit can be told, whatever its family calls it on the wire.
enum class UnitAction
{
    ReadState,
    Programme,
    Preview,
    Cut,
    Auto,
    Fader,
    Transition,
    Rate,
    Ftb,
    Still,
    Format,
    AudioMode,
    Source,
    Level,
    Levels,
    Pip,
    PipSize,
    PipPosition,
    PipBorder,
    PipBorderColor,
    PipBorderWidth,
    Pop,
    PopWindow,
    PopBorder,
    PopBorderColor,
    PopBorderWidth,
    PopPosition,
    F2,
    Mute, // the F3 key; audio mute on the 8000 series
    F7,
    Bar,
    Rec,
    Pause,
    Stream,
    Rotate,
    Menu,
    Reset,
    SetAddress,
    HisAddress,
    HisDns,
    ReadHis, // ask the HIS board for its addresses
    ReadUrl, // ask the HIS board for one streaming URL slot
    Url,
    Count
};

class ActionSet
{
public:
    constexpr ActionSet() = default;
    constexpr ActionSet(std::initializer_list<UnitAction> actions)
    {
        for (UnitAction a : actions)
            m_bits |= bit(a);
    }
    constexpr bool has(UnitAction a) const { return (m_bits & bit(a)) != 0; }
    constexpr ActionSet operator|(ActionSet o) const { return fromBits(m_bits | o.m_bits); }
    constexpr ActionSet operator-(ActionSet o) const { return fromBits(m_bits & ~o.m_bits); }

private:
    static constexpr uint64_t bit(UnitAction a) { return uint64_t(1) << int(a); }
    static constexpr ActionSet fromBits(uint64_t bits)
    {
        ActionSet s;
        s.m_bits = bits;
        return s;
    }
    uint64_t m_bits = 0;
};

// The values from lo to hi.
struct Range
{
    int lo;
    int hi;
    constexpr bool has(int v) const { return v >= lo && v <= hi; }
};

// A family's command set and the ranges its panel's keys and lists give.
struct FamilyTraits
{
    Family family;
    const char *name; // "RVX3210", "RVX5370", ...: how messages name it
    const char *key;  // "rvx3210", "8000", ...: how JSON names it
    StateLayout state;
    ActionSet actions;
    int inputs;      // bus inputs 1..inputs
    bool barInput;   // the bars as bus input 9
    Range travel[2]; // the T-bar's travel byte in stroke 0 and stroke 1
    // PIP positions at the smallest size, whose range is the widest; POP positions.
    Range pipH;
    Range pipV;
    Range popH;
    Range popV;
    int sourceCount; // entries of the audio source list
    // The audio source list's names ("AUX_IN", "IN1", ...), in list order.
    const char *sourceName(int index) const;
    // The unit takes a channel's level together with the source that channel plays.
    bool levelTakesSource;
    // The master fader of the audio levels frame (whose third level is always 0).
    Range levelsMaster;
    // 0.0.0.0 goes out as a new main board address (the RVX3220's panel refuses it).
    bool zeroAddress;
};

const FamilyTraits &familyTraits(Family family);

// The panel a model opens.
enum class PanelKind
{
    Rvx3210,
    Rvx3410,
    Rvx3220,
    Rvx5310,
    Rvx5370,
    Rvx5350,
    Rvx5120,
};

Q_DECLARE_METATYPE(PanelKind)

// The search window's model filters, by their key order.
enum class ModelFilter
{
    All = 0,
    Rvx3210 = 1,
    Rvx3220 = 2,
    Rvx5370 = 3,
};

// One switcher model: the child types its search reply carries (byte 14), how the search
// window labels and filters it, the panel it opens and the family it speaks. Adding a model
// is a row here and its panel.
struct UnitModel
{
    const char *name;
    uint8_t childTypes[3];
    int childTypeCount;
    const char *filterLabel; // "RVX3210S: ", or null where no filter lists it by name
    ModelFilter filter;      // the filter besides "all" that shows it (All: none)
    PanelKind panel;
    Family family;

    const FamilyTraits &traits() const { return familyTraits(family); }
    bool carries(uint8_t childType) const;
};

namespace UnitModels {

// Every model, in the order of the panels.
const UnitModel *begin();
const UnitModel *end();
// The model of a child type; a type no model carries opens the RVX3210 panel and gets the
// RVX3210 family, under the name "unknown (0x99)".
const UnitModel &forChildType(uint8_t childType);
bool isKnown(uint8_t childType);
QString modelName(uint8_t childType);
// The search window's label ("RVX3210: ") or an empty string.
QString filterLabel(uint8_t childType);
bool admits(ModelFilter filter, uint8_t childType);
const UnitModel &forPanel(PanelKind panel);

} // namespace UnitModels
