#include "family.h"

#include "app/devicemodel.h"

Family familyOf(uint8_t childType)
{
    switch (DeviceModel::panelFor(childType)) {
    case DeviceModel::Panel::RVX3410:
        return Family::Rvx3410;
    case DeviceModel::Panel::RVX3220:
        return Family::Rvx3220;
    case DeviceModel::Panel::RVX5310:
    case DeviceModel::Panel::RVX5370:
        return Family::Series8000;
    case DeviceModel::Panel::RVX5350:
        return Family::Rvx5350;
    case DeviceModel::Panel::RVX3210:
        break;
    }
    return Family::Rvx3210;
}

QString modelName(uint8_t childType)
{
    // The variants that the search window labels carry their own name.
    QString label = DeviceModel::filterLabel(childType);
    if (label.endsWith(QLatin1String(": ")))
        return label.chopped(2);
    switch (DeviceModel::panelFor(childType)) {
    case DeviceModel::Panel::RVX3410:
        return QStringLiteral("RVX3410");
    case DeviceModel::Panel::RVX3220:
        return QStringLiteral("RVX3220");
    case DeviceModel::Panel::RVX5310:
        return QStringLiteral("RVX5310");
    case DeviceModel::Panel::RVX5370:
        return QStringLiteral("RVX5370");
    case DeviceModel::Panel::RVX5350:
        return QStringLiteral("RVX5350");
    case DeviceModel::Panel::RVX3210:
        break;
    }
    // Two more RVX3210 types are listed without a label; any other type is opened as an
    // RVX3210 too, but is no model of its own.
    if (childType == 0x23 || childType == 0x47)
        return QStringLiteral("RVX3210");
    return QStringLiteral("unknown (0x%1)").arg(childType, 2, 16, QLatin1Char('0'));
}

QString familyName(Family family)
{
    switch (family) {
    case Family::Rvx3210:
        return QStringLiteral("RVX3210");
    case Family::Rvx3410:
        return QStringLiteral("RVX3410");
    case Family::Rvx3220:
        return QStringLiteral("RVX3220");
    case Family::Series8000:
        return QStringLiteral("8000 series");
    case Family::Rvx5350:
        return QStringLiteral("RVX5350");
    }
    return QString();
}

QString familyKey(Family family)
{
    switch (family) {
    case Family::Rvx3210:
        return QStringLiteral("rvx3210");
    case Family::Rvx3410:
        return QStringLiteral("rvx3410");
    case Family::Rvx3220:
        return QStringLiteral("rvx3220");
    case Family::Series8000:
        return QStringLiteral("8000");
    case Family::Rvx5350:
        return QStringLiteral("rvx5350");
    }
    return QString();
}
