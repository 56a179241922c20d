#pragma once

#include "busrow.h"

// Program bus: red lamps, each key puts its input on air.
class PGM : public BusRow
{
    Q_OBJECT
public:
    PGM(QWidget *parent, UnitControl *link);

    quint8 BtnPGMstate() const { return litInput(); }
    // Display only, for the panel's bus swap.
    void setPGMCHstate(quint8 id) { setStyle(id); }
    // One key lit; the others keep their look.
    void setbtnStyle_red1() { lightKey(1); }
    void setbtnStyle_red2() { lightKey(2); }
    void setbtnStyle_red3() { lightKey(3); }
    void setbtnStyle_red4() { lightKey(4); }
    void setbtnStyle_red5() { lightKey(5); }
    void setbtnStyle_red6() { lightKey(6); }

protected:
    void sendInput(quint8 id) override;
    void lightInput(quint8 id) override;
};
