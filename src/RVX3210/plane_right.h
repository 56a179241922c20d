#pragma once

#include "common/pipsettingspane.h"

class UnitControl;

// PIP settings pane of the RVX3210-family panels: the panel kit's pane with captions in a
// grid, on the panel's grey. Shown only while PIP is on. A state value that changes a
// control goes back to the unit once, as an operator's change would.
class Plane_Right : public PipSettingsPane
{
    Q_OBJECT
public:
    Plane_Right(QWidget *parent, UnitControl *link);
};
