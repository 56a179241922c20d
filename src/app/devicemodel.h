#pragma once

#include <QString>
#include <cstdint>

// What a unit's child type (byte 14 of its search reply) means to the search window:
// the label under the model filters and the panel a double-click opens.
namespace DeviceModel {

enum class Panel
{
    RVX3210,
    RVX3410,
    RVX3220,
    RVX5310,
    RVX5370,
    RVX5350
};

enum class Filter
{
    All = 0,
    RVX3210 = 1,
    RVX3220 = 2,
    RVX5370 = 3
};

// "RVX3210: " and the like, or an empty string for a type that no model filter lists.
QString filterLabel(uint8_t childType);

// True when the filter shows this child type.
bool admits(Filter filter, uint8_t childType);

Panel panelFor(uint8_t childType);

} // namespace DeviceModel
