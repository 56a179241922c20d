#include "devicemodel.h"

namespace DeviceModel {

QString filterLabel(uint8_t childType)
{
    switch (childType) {
    case 0x21:
        return QStringLiteral("RVX3210: ");
    case 0x22:
        return QStringLiteral("RVX3220: ");
    case 0x24:
        return QStringLiteral("RVX3210S: ");
    case 0x25:
        return QStringLiteral("RVX3210(2021): ");
    case 0x26:
        return QStringLiteral("RVX3210P: ");
    default:
        return QString();
    }
}

bool admits(Filter filter, uint8_t childType)
{
    switch (filter) {
    case Filter::All:
        return true;
    case Filter::RVX3210:
        return childType == 0x21 || childType == 0x24 || childType == 0x25 || childType == 0x26;
    case Filter::RVX3220:
        return childType == 0x22;
    case Filter::RVX5370:
        return false;
    }
    return false;
}

Panel panelFor(uint8_t childType)
{
    switch (childType) {
    case 0x22:
        return Panel::RVX3220;
    case 0x27:
    case 0x28:
        return Panel::RVX3410;
    case 0x4F:
    case 0x53:
    case 0x54:
        return Panel::RVX5310;
    case 0x51:
    case 0x52:
    case 0x56:
        return Panel::RVX5370;
    case 0x55:
        return Panel::RVX5350;
    default:
        // 0x21, 0x23, 0x24-0x26, 0x47 and every unknown type open the RVX3210 panel.
        return Panel::RVX3210;
    }
}

} // namespace DeviceModel
