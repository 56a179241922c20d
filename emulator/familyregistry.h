#pragma once

#include "unitbehaviour.h"

#include <QString>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>

// Child type -> behaviour factory. Families add themselves from their own .cpp with
// REGISTER_FAMILY, so adding a family touches no other file.
class FamilyRegistry
{
public:
    using Factory = std::function<std::unique_ptr<UnitBehaviour>(const UnitConfig &)>;

    // Returns true so it can initialise a static; a child type claimed twice aborts at start.
    static bool add(std::initializer_list<uint8_t> childTypes, const char *family, Factory factory);

    // The registered behaviour, or a plain UnitBehaviour (logs only, answers nothing).
    static std::unique_ptr<UnitBehaviour> create(const UnitConfig &unit);
    static QString family(uint8_t childType);
};

#define KOVA_FAMILY_CONCAT2(a, b) a##b
#define KOVA_FAMILY_CONCAT(a, b) KOVA_FAMILY_CONCAT2(a, b)

// REGISTER_FAMILY(Rvx3210Behaviour, 0x21, 0x23, 0x24): units of those child types get a
// Rvx3210Behaviour, constructed from the unit's UnitConfig.
#define REGISTER_FAMILY(Class, ...)                                                                          \
    namespace {                                                                                              \
    [[maybe_unused]] const bool KOVA_FAMILY_CONCAT(kRegistered_, Class) = FamilyRegistry::add(               \
        {__VA_ARGS__}, #Class, [](const UnitConfig &unit) -> std::unique_ptr<UnitBehaviour> {                \
            return std::make_unique<Class>(unit);                                                            \
        });                                                                                                  \
    }
