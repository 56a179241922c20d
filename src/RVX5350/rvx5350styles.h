#pragma once

#include "RVX8000/styles8000.h"

// Looks and texts of the RVX5350 panel, kept verbatim in one place.
namespace Rvx5350Styles {

using namespace Styles8000;

inline constexpr char OnAirBox[] = "QGroupBox{border:1px solid red;}";
inline constexpr char OffAirBox[] = "QGroupBox{border:1px solid white;}";

// "RARE" is how this unit's panel spells it.
inline constexpr const char *RateTexts[] = {"RARE1", "RARE2", "RARE3"};

} // namespace Rvx5350Styles
