#include "pgm.h"

#include "SwitcherData/unitcontrol.h"
#include "rvx3220styles.h"

PGM::PGM(QWidget *parent, UnitControl *link) : BusRow(parent, link, "PGM", RVX3220Styles::PgmLit) {}

void PGM::sendInput(quint8 id)
{
    m_link->programme(id);
}

void PGM::lightInput(quint8 id)
{
    switch (id) {
    case 1:
        setbtnStyle_red1();
        break;
    case 2:
        setbtnStyle_red2();
        break;
    case 3:
        setbtnStyle_red3();
        break;
    case 4:
        setbtnStyle_red4();
        break;
    case 5:
        setbtnStyle_red5();
        break;
    case 6:
        setbtnStyle_red6();
        break;
    default:
        break;
    }
}
