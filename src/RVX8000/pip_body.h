#pragma once

#include "common/pipsettingspane.h"

class UnitControl;

// The RVX5310's PIP settings block, shown while PIP is on: size, positions and border, each
// change sent at once. A position waits for a size ("please choose Size"); what the unit
// reports is only shown, never sent back.
class PIP_Body : public PipSettingsPane
{
    Q_OBJECT
public:
    PIP_Body(QWidget *parent, UnitControl *model);

    // The unit's border colour and width are taken as they come, not checked as the RVX3210's
    // are: a colour no item has leaves the list without a choice, and the spin box holds a
    // width to 2-7.
    void set_BorderColor_Style(uint8_t v);
    void set_BorderWidth_Style(uint8_t v);
};
