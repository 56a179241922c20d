#include "pgm.h"

#include "SwitcherData/rvx3220_workdata.h"
#include "rvx3220styles.h"

PGM::PGM(QWidget *parent, RVX3220_workdata *model) : BusRow(parent, model, "PGM", RVX3220Styles::PgmLit) {}

void PGM::sendInput(quint8 id)
{
    m_model->SendCMDPGM(id);
}

void PGM::lightInput(quint8 id)
{
    using Setter = void (PGM::*)();
    static constexpr Setter setters[6] = {&PGM::setbtnStyle_red1, &PGM::setbtnStyle_red2,
                                          &PGM::setbtnStyle_red3, &PGM::setbtnStyle_red4,
                                          &PGM::setbtnStyle_red5, &PGM::setbtnStyle_red6};
    (this->*setters[id - 1])();
}
