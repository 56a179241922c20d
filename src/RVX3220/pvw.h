#pragma once

#include "busrow.h"

// Preview bus: green lamps, each key selects the next input.
class PVW : public BusRow
{
    Q_OBJECT
public:
    PVW(QWidget *parent, UnitControl *link);

    quint8 BtnPVWstate() const { return litInput(); }
    // Display only, for the panel's bus swap.
    void setPVWCHstate(quint8 id) { setStyle(id); }
    // One key lit; the others keep their look.
    void setbtnStyle_green1() { lightKey(1); }
    void setbtnStyle_green2() { lightKey(2); }
    void setbtnStyle_green3() { lightKey(3); }
    void setbtnStyle_green4() { lightKey(4); }
    void setbtnStyle_green5() { lightKey(5); }
    void setbtnStyle_green6() { lightKey(6); }

protected:
    void sendInput(quint8 id) override;
    void lightInput(quint8 id) override;
};
