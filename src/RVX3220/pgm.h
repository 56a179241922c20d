#pragma once

#include "busrow.h"

// Program bus: red lamps, each key puts its input on air.
class PGM : public BusRow
{
    Q_OBJECT
public:
    PGM(QWidget *parent, RVX3220_workdata *model);

    quint8 BtnPGMstate() const { return litInput(); }
    // Display only, for the panel's bus swap.
    void setPGMCHstate(quint8 id) { setStyle(id); }

protected:
    void sendInput(quint8 id) override;
};
