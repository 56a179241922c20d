#include "pvw.h"

#include "SwitcherData/unitcontrol.h"
#include "rvx3220styles.h"

PVW::PVW(QWidget *parent, UnitControl *link) : BusRow(parent, link, "PVW", RVX3220Styles::PvwLit) {}

void PVW::sendInput(quint8 id)
{
    m_link->preview(id);
}

void PVW::lightInput(quint8 id)
{
    switch (id) {
    case 1:
        setbtnStyle_green1();
        break;
    case 2:
        setbtnStyle_green2();
        break;
    case 3:
        setbtnStyle_green3();
        break;
    case 4:
        setbtnStyle_green4();
        break;
    case 5:
        setbtnStyle_green5();
        break;
    case 6:
        setbtnStyle_green6();
        break;
    default:
        break;
    }
}
