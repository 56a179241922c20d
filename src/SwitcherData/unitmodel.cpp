#include "unitmodel.h"

#include "protocol.h"

#include <iterator>

namespace {

using A = UnitAction;

// What every panel that talks to a unit sends: its programme and transition keys, audio mode and
// sources, the output format, and PIP with its size and position.
constexpr ActionSet Common = {A::Programme, A::Transition, A::Fader,   A::Format,     A::AudioMode,
                              A::Source,    A::Pip,        A::PipSize, A::PipPosition};
constexpr ActionSet PipBorder = {A::PipBorder, A::PipBorderColor, A::PipBorderWidth};
// The panels of the units that report their state.
constexpr ActionSet Reporting =
    Common | ActionSet{A::ReadState, A::Auto, A::Rate, A::Still, A::Mute, A::Levels};
// The RVX3210 family's panel: its rows and the network page of the main and HIS boards.
constexpr ActionSet Panel3210 =
    Reporting | PipBorder | ActionSet{A::Preview, A::Cut,     A::Ftb,        A::Level,
                                      A::F2,      A::F7,      A::SetAddress, A::HisAddress,
                                      A::HisDns,  A::ReadHis, A::ReadUrl,    A::Url};
// The 8000 series' panels: no network page, and keys of their own.
constexpr ActionSet Panel8000 = Reporting | ActionSet{A::Pop, A::Rec, A::Stream, A::Reset};

const char *const Sources3220[] = {"PHONE_IN", "RCA_IN", "IN1", "IN2", "IN3", "IN4", "IN5", "IN6"};

using Protocol::PipHMax;
using Protocol::PipVMax;
constexpr Range Travel{0, Protocol::TravelMax};
constexpr Range Level{0, Protocol::AudioLevelMax};
constexpr Range Empty{0, -1}; // no value
constexpr Range Master100{100, 100};

// Most families: PIP anywhere the smallest inset goes, no POP settings, a T-bar that marks a
// transition's end, levels without their source.
constexpr FamilyTraits traits(Family family, const char *name, const char *key, StateLayout state,
                              ActionSet actions, int inputs, bool bars, int sources, Range master,
                              bool zeroAddress)
{
    return {family,
            name,
            key,
            state,
            actions,
            inputs,
            bars,
            {Travel, Travel},
            {0, PipHMax[0]},
            {0, PipVMax[0]},
            Empty,
            Empty,
            sources,
            false,
            master,
            zeroAddress};
}

using Protocol::AudioSource5350Count;
using Protocol::AudioSourceCount;
using S = StateLayout;

// One row per family, in the order of Family.
constexpr FamilyTraits Families[] = {
    traits(Family::Rvx3210, "RVX3210", "rvx3210", S::Rvx3210, Panel3210, 4, true, AudioSourceCount, Level,
           true),
    traits(Family::Rvx3410, "RVX3410", "rvx3410", S::Rvx3410,
           Panel3210 | ActionSet{A::Rec, A::Pause, A::Stream, A::Rotate, A::Menu}, 4, true, AudioSourceCount,
           Level, true),
    // Its AUTO key only lights, and it never asks for the state; its lever marks no end, and a
    // level goes out with the source its channel plays.
    {Family::Rvx3220,
     "RVX3220",
     "rvx3220",
     S::None,
     Common | PipBorder |
         ActionSet{A::Preview, A::Cut, A::Level, A::Pop, A::PopWindow, A::PopBorder, A::PopBorderColor,
                   A::PopBorderWidth, A::PopPosition, A::SetAddress},
     6,
     false,
     {{0, Protocol::Travel3220ForwardMax}, {0, Protocol::Travel3220BackMax}},
     {0, PipHMax[0]},
     {0, PipVMax[0]},
     {0, Protocol::Pop3220HMax},
     {0, Protocol::Pop3220VMax},
     int(std::size(Sources3220)),
     true,
     Empty,
     false},
    // F1 streams and F2 is POP on this panel; its PIP settings have the border.
    traits(Family::Rvx5310, "RVX5310", "8000", S::Series8000,
           Panel8000 | PipBorder | ActionSet{A::Preview, A::Cut, A::Ftb, A::Pause}, 4, true, AudioSourceCount,
           Master100, false),
    // Its BAR key puts the bars on both buses; they are no input of its rows.
    traits(Family::Rvx5370, "RVX5370", "8000", S::Series8000,
           Panel8000 | ActionSet{A::Preview, A::Cut, A::Ftb, A::Pause, A::Bar}, 4, false, AudioSourceCount,
           Master100, false),
    // One bus of two inputs: no preview row, no CUT, FTB, PAUSE or bars.
    traits(Family::Rvx5350, "RVX5350", "rvx5350", S::Rvx5350, Panel8000, 2, false, AudioSource5350Count,
           Master100, false),
    {Family::Rvx5120,
     "RVX5120",
     "8000",
     S::Series8000,
     ActionSet{},
     0,
     false,
     {Empty, Empty},
     Empty,
     Empty,
     Empty,
     Empty,
     0,
     false,
     Empty,
     false},
};
static_assert(std::size(Families) == std::size(AllFamilies), "one row per family");

const UnitModel Models[] = {
    {"RVX3210", {0x21}, 1, "RVX3210: ", ModelFilter::Rvx3210, PanelKind::Rvx3210, Family::Rvx3210},
    // Two more RVX3210 types, which the filters do not list under the model's label.
    {"RVX3210", {0x23, 0x47}, 2, nullptr, ModelFilter::All, PanelKind::Rvx3210, Family::Rvx3210},
    {"RVX3210S", {0x24}, 1, "RVX3210S: ", ModelFilter::Rvx3210, PanelKind::Rvx3210, Family::Rvx3210},
    {"RVX3210(2021)",
     {0x25},
     1,
     "RVX3210(2021): ",
     ModelFilter::Rvx3210,
     PanelKind::Rvx3210,
     Family::Rvx3210},
    {"RVX3210P", {0x26}, 1, "RVX3210P: ", ModelFilter::Rvx3210, PanelKind::Rvx3210, Family::Rvx3210},
    {"RVX3410", {0x27, 0x28}, 2, nullptr, ModelFilter::All, PanelKind::Rvx3410, Family::Rvx3410},
    {"RVX3220", {0x22}, 1, "RVX3220: ", ModelFilter::Rvx3220, PanelKind::Rvx3220, Family::Rvx3220},
    {"RVX5310", {0x4F, 0x53, 0x54}, 3, nullptr, ModelFilter::All, PanelKind::Rvx5310, Family::Rvx5310},
    {"RVX5370", {0x51, 0x52, 0x56}, 3, nullptr, ModelFilter::All, PanelKind::Rvx5370, Family::Rvx5370},
    {"RVX5350", {0x55}, 1, nullptr, ModelFilter::All, PanelKind::Rvx5350, Family::Rvx5350},
    // Opened from the search window's key, with no unit: no search reply carries it.
    {"RVX5120", {}, 0, nullptr, ModelFilter::All, PanelKind::Rvx5120, Family::Rvx5120},
};

// Types no model carries open the RVX3210 panel.
const UnitModel Unknown = {"", {}, 0, nullptr, ModelFilter::All, PanelKind::Rvx3210, Family::Rvx3210};

const UnitModel *find(uint8_t childType)
{
    for (const UnitModel &m : Models) {
        if (m.carries(childType))
            return &m;
    }
    return nullptr;
}

} // namespace

const char *FamilyTraits::sourceName(int index) const
{
    if (index < 0 || index >= sourceCount)
        return nullptr;
    switch (family) {
    case Family::Rvx3220:
        return Sources3220[index];
    case Family::Rvx5350:
        return Protocol::AudioSources5350[index].name;
    default:
        return Protocol::AudioSources[index].name;
    }
}

const FamilyTraits &familyTraits(Family family)
{
    return Families[int(family)];
}

bool UnitModel::carries(uint8_t childType) const
{
    for (int i = 0; i < childTypeCount; ++i) {
        if (childTypes[i] == childType)
            return true;
    }
    return false;
}

namespace UnitModels {

const UnitModel *begin()
{
    return std::begin(Models);
}

const UnitModel *end()
{
    return std::end(Models);
}

const UnitModel &forChildType(uint8_t childType)
{
    const UnitModel *m = find(childType);
    return m ? *m : Unknown;
}

bool isKnown(uint8_t childType)
{
    return find(childType) != nullptr;
}

QString modelName(uint8_t childType)
{
    if (const UnitModel *m = find(childType))
        return QLatin1String(m->name);
    return QStringLiteral("unknown (0x%1)").arg(childType, 2, 16, QLatin1Char('0'));
}

QString filterLabel(uint8_t childType)
{
    const UnitModel *m = find(childType);
    return m && m->filterLabel ? QString::fromLatin1(m->filterLabel) : QString();
}

bool admits(ModelFilter filter, uint8_t childType)
{
    if (filter == ModelFilter::All)
        return true;
    const UnitModel *m = find(childType);
    return m && m->filter == filter;
}

const UnitModel &forPanel(PanelKind panel)
{
    for (const UnitModel &m : Models) {
        if (m.panel == panel)
            return m;
    }
    return Unknown;
}

} // namespace UnitModels
