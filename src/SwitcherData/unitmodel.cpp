#include "unitmodel.h"

#include "protocol.h"

#include <iterator>

namespace {

using A = UnitAction;

// What every family's panel sends.
const ActionSet Common = {
    A::Programme,      A::Preview,        A::Cut,       A::Fader,   A::Transition,  A::Format,
    A::AudioMode,      A::Source,         A::Pip,       A::PipSize, A::PipPosition, A::PipBorder,
    A::PipBorderColor, A::PipBorderWidth, A::SetAddress};
// What the units that report their state and have a HIS board add.
const ActionSet Reporting = Common | ActionSet{A::ReadState, A::Auto,       A::Rate,   A::Ftb, A::Still,
                                               A::Mute,      A::HisAddress, A::HisDns, A::Url};

const char *const Sources3220[] = {"PHONE_IN", "RCA_IN", "IN1", "IN2", "IN3", "IN4", "IN5", "IN6"};

const FamilyTraits Families[] = {
    {Family::Rvx3210, "RVX3210", "rvx3210", StateLayout::Rvx3210,
     Reporting | ActionSet{A::Level, A::Levels, A::F2, A::F7}, 4, true, Protocol::TravelMax,
     Protocol::PipHMax[0], Protocol::PipVMax[0], Protocol::AudioSourceCount, false},
    {Family::Rvx3410, "RVX3410", "rvx3410", StateLayout::Rvx3410,
     Reporting |
         ActionSet{A::Level, A::Levels, A::F2, A::F7, A::Rec, A::Pause, A::Stream, A::Rotate, A::Menu},
     4, true, Protocol::TravelMax, Protocol::PipHMax[0], Protocol::PipVMax[0], Protocol::AudioSourceCount,
     false},
    {Family::Rvx3220, "RVX3220", "rvx3220", StateLayout::None,
     Common | ActionSet{A::Level, A::Pop, A::PopWindow, A::PopBorder, A::PopBorderColor, A::PopBorderWidth,
                        A::PopPosition},
     6, false, Protocol::Travel3220Max, Protocol::Pip3220HMax, Protocol::Pip3220VMax,
     int(std::size(Sources3220)), true},
    {Family::Series8000, "8000 series", "8000", StateLayout::Series8000,
     Reporting | ActionSet{A::Levels, A::Pop, A::Bar, A::Rec, A::Pause, A::Stream, A::Reset}, 4, true,
     Protocol::TravelMax, Protocol::PipHMax[0], Protocol::PipVMax[0], Protocol::AudioSourceCount, false},
    {Family::Rvx5350, "RVX5350", "rvx5350", StateLayout::Rvx5350,
     Reporting | ActionSet{A::Levels, A::Pop, A::Rec, A::Stream, A::Reset}, 2, true, Protocol::TravelMax,
     Protocol::PipHMax[0], Protocol::PipVMax[0], Protocol::AudioSource5350Count, false},
};

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
    {"RVX5310", {0x4F, 0x53, 0x54}, 3, nullptr, ModelFilter::All, PanelKind::Rvx5310, Family::Series8000},
    {"RVX5370", {0x51, 0x52, 0x56}, 3, nullptr, ModelFilter::All, PanelKind::Rvx5370, Family::Series8000},
    {"RVX5350", {0x55}, 1, nullptr, ModelFilter::All, PanelKind::Rvx5350, Family::Rvx5350},
    // Opened from the search window's key, with no unit: no search reply carries it.
    {"RVX5120", {}, 0, nullptr, ModelFilter::All, PanelKind::Rvx5120, Family::Series8000},
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
