#include "pvw.h"

#include "SwitcherData/rvx3220_workdata.h"
#include "rvx3220styles.h"

PVW::PVW(QWidget *parent, RVX3220_workdata *model) : BusRow(parent, model, "PVW", RVX3220Styles::PvwLit) {}

void PVW::sendInput(quint8 id)
{
    m_model->SendCMDPVW(id);
}

void PVW::lightInput(quint8 id)
{
    using Setter = void (PVW::*)();
    static constexpr Setter setters[6] = {&PVW::setbtnStyle_green1, &PVW::setbtnStyle_green2,
                                          &PVW::setbtnStyle_green3, &PVW::setbtnStyle_green4,
                                          &PVW::setbtnStyle_green5, &PVW::setbtnStyle_green6};
    (this->*setters[id - 1])();
}
