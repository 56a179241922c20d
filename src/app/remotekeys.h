#pragma once

#include "SwitcherData/unitmodel.h"

class QWidget;

// Gives the keys of a panel of `kind` the stable names a remote presses them by (beyond the
// buses, CUT and AUTO, which every panel's keyboard already knows), and its T-bar.
void nameRemoteKeys(PanelKind kind, QWidget *panel);
