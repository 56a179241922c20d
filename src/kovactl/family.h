#pragma once

#include <QString>
#include <cstdint>

// Which command set and state record a unit speaks, told by the child type of its search
// reply, as the search window tells which panel to open.
enum class Family
{
    Rvx3210, // RVX3210, RVX3210S, RVX3210P, RVX3210(2021) and any type the window opens so
    Rvx3410,
    Rvx3220,
    Series8000, // RVX5310, RVX5370
    Rvx5350,    // an 8000-series unit with two inputs and four audio sources
};

constexpr Family AllFamilies[] = {Family::Rvx3210, Family::Rvx3410, Family::Rvx3220, Family::Series8000,
                                  Family::Rvx5350};

Family familyOf(uint8_t childType);
// "RVX3210S", "RVX5370", ...; "unknown (0x99)" for a type no model carries.
QString modelName(uint8_t childType);
// How messages and JSON name the family: "RVX3210", "RVX3410", "RVX3220", "8000 series", "RVX5350".
QString familyName(Family family);
// The identifier in JSON output: "rvx3210", "rvx3410", "rvx3220", "8000", "rvx5350".
QString familyKey(Family family);
