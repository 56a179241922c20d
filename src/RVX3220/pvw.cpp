#include "pvw.h"

#include "SwitcherData/rvx3220_workdata.h"
#include "rvx3220styles.h"

PVW::PVW(QWidget *parent, RVX3220_workdata *model) : BusRow(parent, model, "PVW", RVX3220Styles::PvwLit) {}

void PVW::sendInput(quint8 id)
{
    m_model->SendCMDPVW(id);
}
