#include "familyregistry.h"

#include <QHash>
#include <cstdio>
#include <cstdlib>

namespace {

struct Entry
{
    QString family;
    FamilyRegistry::Factory factory;
};

// Function-local so registration from other files' static initialisers finds it built.
QHash<uint8_t, Entry> &table()
{
    static QHash<uint8_t, Entry> entries;
    return entries;
}

} // namespace

bool FamilyRegistry::add(std::initializer_list<uint8_t> childTypes, const char *family, Factory factory)
{
    for (uint8_t type : childTypes) {
        if (table().contains(type)) {
            std::fprintf(stderr, "kova-emulator: child type 0x%02x claimed by %s and %s\n", type,
                         qPrintable(table().value(type).family), family);
            std::abort();
        }
        table().insert(type, Entry{QString::fromLatin1(family), factory});
    }
    return true;
}

std::unique_ptr<UnitBehaviour> FamilyRegistry::create(const UnitConfig &unit)
{
    const auto it = table().constFind(unit.childType);
    if (it == table().constEnd())
        return std::make_unique<UnitBehaviour>(unit);
    return it->factory(unit);
}

QString FamilyRegistry::family(uint8_t childType)
{
    const auto it = table().constFind(childType);
    return it == table().constEnd() ? QStringLiteral("none") : it->family;
}
