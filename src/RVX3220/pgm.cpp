#include "pgm.h"

#include "SwitcherData/rvx3220_workdata.h"
#include "rvx3220styles.h"

PGM::PGM(QWidget *parent, RVX3220_workdata *model) : BusRow(parent, model, "PGM", RVX3220Styles::PgmLit) {}

void PGM::sendInput(quint8 id)
{
    m_model->SendCMDPGM(id);
}
