#pragma once

#include <QObject>

class Below_Widget;
class QSlider_Right;
class RVX3210_workdata;

// Turns the T-bar's travel into slider commands for the RVX3210-family panels: direction 1
// towards B with the distance 0-127, direction 0 back towards A, 128 at either end, and the
// PGM/PVW lights swapped once per completed transition. Both panels drive it; each keeps its
// own remembered end state (`falg`) and hands it in.
class TbarSequencer : public QObject
{
    Q_OBJECT
public:
    TbarSequencer(QObject *parent, RVX3210_workdata *link, QSlider_Right *tbar, Below_Widget *below);

    void setslider0(int v, bool &falg);
    void setslider1(int v);
    // Runs the T-bar one step every 20 ms to just short of the far end (126, or 1 then 0).
    void btnAuto_and_slider();
    void setPGM_PVWCH();

    bool slider_top_done = false;
    bool slider_bottom_done = false;
    bool slider_returning = false;

private:
    RVX3210_workdata *m_link = nullptr;
    QSlider_Right *m_tbar = nullptr;
    Below_Widget *m_below = nullptr;
};
