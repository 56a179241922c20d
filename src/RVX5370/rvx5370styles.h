#pragma once

#include "RVX8000/styles8000.h"

// Looks and texts of the RVX5370 panel, kept verbatim in one place.
namespace Rvx5370Styles {

using namespace Styles8000;

inline constexpr char F1Name[] = "f1Widget";
inline constexpr char F1Title[] = "F1";
// "RARE" is how this unit's panel spells it.
inline constexpr const char *RateTexts[] = {"RARE:1", "RARE:2", "RARE:3"};
// Source code 0x07 is a telephone socket on this unit.
inline constexpr char PhoneIn[] = "PHONE_IN";

} // namespace Rvx5370Styles
