#pragma once

#include "common/pipsettingspane.h"

class UnitControl;

// Right-hand column for picture-in-picture: inset position, size and border, on the panel
// kit's pane. The unit reports no state, and a position goes out whether or not a size was
// chosen.
class PIP : public PipSettingsPane
{
    Q_OBJECT
public:
    PIP(QWidget *parent, UnitControl *link);

public slots:
    // The family's names for the pane's operator slots.
    void setSpboxHPosition(int v) { on_spboxValueChanged_Hposition(v); }
    void setSpboxVPosition(int v) { on_spboxValueChanged_Vposition(v); }
    void setCoboxSize(int i) { on_coboxIndexChanged_Size(i); }
    void setCoboxBorder_Enable(int i) { on_coboxIndexChanged_BorderEnable(i); }
    void setSpboxBorder_Width(int v) { on_spboxValueChanged_BorderWidth(v); }
    void setCoboxBorder_Color(int i) { on_coboxIndexChanged_BorderColor(i); }
};
