#include "unitlinks.h"

#include "rvx3210_workdata.h"
#include "rvx3220_workdata.h"
#include "rvx5all_workdata.h"

UnitLink *createUnitLink(Family family, QObject *parent)
{
    UnitLink *link = nullptr;
    switch (family) {
    case Family::Rvx3220:
        link = new RVX3220_workdata(parent);
        break;
    case Family::Rvx5310:
    case Family::Rvx5370:
    case Family::Rvx5350:
    case Family::Rvx5120:
        link = new RVX5ALL_workdata(parent);
        break;
    case Family::Rvx3210:
    case Family::Rvx3410:
        link = new RVX3210_workdata(parent);
        break;
    }
    link->setFamily(family);
    return link;
}
