#pragma once

#include <QObject>
#include <cstdint>
#include <functional>

class QLoggingCategory;
class QSlider;

// Turns a T-bar's travel into slider commands the way the RVX3210 family and the 8000 series
// count it: direction 1 towards B with the distance 0-127, direction 0 back towards A, 128 at
// either end, the PGM/PVW lights swapped once per completed transition and the AUTO lamp lit
// while the lever is between its ends. It knows nothing of the panel: the slider is any
// QSlider, and what goes to the unit or to the lamps goes through the hooks.
class TbarSequencer : public QObject
{
    Q_OBJECT
public:
    struct Hooks
    {
        // One slider command: direction, then distance or the end mark.
        std::function<void(uint8_t direction, uint8_t distance)> send;
        // The panel's PGM/PVW light swap.
        std::function<void()> swapBuses;
        // The AUTO key's lamp.
        std::function<void(bool lit)> autoLamp;
        // Where the developer lines go (the panel's own category).
        const QLoggingCategory &(*log)() = nullptr;
    };

    TbarSequencer(QObject *parent, QSlider *tbar, Hooks hooks);

    // For every value the lever reports. `falg` remembers that the lever was last seen at an
    // end; each panel class keeps its own.
    void setslider0(int v, bool &falg);
    // The return stroke.
    void setslider1(int v);
    // Runs the lever one step every 20 ms to just short of the far end (126, or 1 then 0).
    void btnAuto_and_slider();

    bool slider_top_done = false;
    bool slider_bottom_done = false;
    bool slider_returning = false;

private:
    QSlider *m_tbar;
    Hooks m_hooks;
};
