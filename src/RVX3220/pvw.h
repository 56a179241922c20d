#pragma once

#include "busrow.h"

// Preview bus: green lamps, each key selects the next input.
class PVW : public BusRow
{
    Q_OBJECT
public:
    PVW(QWidget *parent, RVX3220_workdata *model);

    quint8 BtnPVWstate() const { return litInput(); }
    // Display only, for the panel's bus swap.
    void setPVWCHstate(quint8 id) { setStyle(id); }

protected:
    void sendInput(quint8 id) override;
};
