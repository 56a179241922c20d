#pragma once

#include "SwitcherData/protocol.h"

#include <QObject>
#include <cstdint>
#include <functional>
#include <initializer_list>

class QAbstractButton;
class QButtonGroup;
class QPushButton;
class QSlider;
class QTimer;
class UnitControl;
class TbarSequencer;
class UnitState;

// What the 8000-series front panels share on their video side: the PGM and PVW lamps, CUT
// with its 300 ms lamp, AUTO with the fader run whose length follows the rate, the T-bar's
// strokes, the MIX/FADE/WIPE keys with the wipe direction cycle, and the keyboard of every
// front panel (PanelKeys: Space CUT, Return/Enter AUTO, digits the digit row, Shift+digit the
// other; Esc does nothing). A panel hands over the keys it has; a key it lacks stays null and
// its part does nothing.
class FrontPanel8000 : public QObject
{
    Q_OBJECT
public:
    struct Keys
    {
        // Inputs by number from 1, and BarId for the colour bars where a unit has them.
        QButtonGroup *pgm = nullptr;
        QButtonGroup *pvw = nullptr;
        QPushButton *cut = nullptr;
        QPushButton *autoKey = nullptr;
        QSlider *fader = nullptr;
        QButtonGroup *transitions = nullptr; // ids 1 MIX, 2 FADE, 4 WIPE
    };
    // Where the panels differ.
    struct Hooks
    {
        // Relights the buses when a transition has gone through (default: PGM and PVW lamps
        // change places).
        std::function<void()> buses;
        // Digits pick this row; with Shift the other one. Null: digits do nothing.
        QButtonGroup *digitRow = nullptr;
        QButtonGroup *shiftDigitRow = nullptr;
    };

    static constexpr int CutLampMs = 300;
    // The bus value of the colour bars. No digit stands for them: they are not an input.
    static constexpr int BarId = 9;
    static constexpr int FaderTop = Protocol::TbarMax;
    static constexpr int WipeSteps = 4;

    // A bus row: the keys numbered from 1 in order.
    static QButtonGroup *inputRow(QObject *owner, std::initializer_list<QAbstractButton *> keys);
    // MIX, FADE and WIPE with their ids.
    static QButtonGroup *transitionRow(QObject *owner, QAbstractButton *mix, QAbstractButton *fade,
                                       QAbstractButton *wipe);

    // Wires the keys' clicks and gives `panel` its keyboard; the panel owns this object.
    FrontPanel8000(QWidget *panel, UnitControl *link, Keys keys, Hooks hooks);

    // Lamps, also from the unit's state. Any value is stored; only a key's id lights it.
    void set_PGMCH_Style(uint8_t ch);
    void set_PVWCH_Style(uint8_t ch);
    uint8_t lastPgm() const { return m_lastPgm; }
    uint8_t lastPvw() const { return m_lastPvw; }
    // PGM shows what PVW showed and the other way round.
    void setPGM_PVWCH();

    // While an inset (PIP, KEY, POP) is on, a CUT changes the inset, not the buses.
    void setOverlay(bool on) { m_overlay = on; }
    bool overlay() const { return m_overlay; }

    // The transition rate 0-2 sets how far AUTO runs the fader; other values change nothing.
    void setRate(uint8_t rate);
    uint8_t rate() const { return m_rate; }

    // The unit's transition type (1, 2, 4) and wipe, the latter as a transition type 3-6
    // (the panels read the unit's wipe codes differently). Nothing is sent.
    void showTransition(uint8_t type);
    void showWipe(int transitionType);
    int wipeIndex() const { return m_wipeIndex; }
    // The buses (where the panel has them), the transition and the wipe of the unit's state.
    void showReport(const UnitState &s);

    void on_btn_cut_clicked();
    void on_btn_auto_clicked();
    void btnGrp_clicked(int id);
    void setslider0(int v);

    bool autoRunning() const { return m_autoRunning; }
    QTimer *cutTimer() const { return m_cutTimer; }

private:
    void lightGroup(QButtonGroup *group, int id, const char *litSheet);
    void cutLamp(bool lit);
    void autoLamp(bool lit);
    void showWipeKey();
    // Runs the fader over the rate's range to the far end and back to the full range.
    void btnAuto_and_slider();

    QWidget *m_panel;
    UnitControl *m_link;
    Keys m_keys;
    Hooks m_hooks;
    TbarSequencer *m_tbar = nullptr;
    QTimer *m_cutTimer = nullptr;
    uint8_t m_lastPgm = 0;
    uint8_t m_lastPvw = 0;
    uint8_t m_rate = 0;
    bool m_overlay = false;
    bool m_autoRunning = false;
    bool m_faderAtEnd = true;
    int m_wipeIndex = 0;
    // Set while the WIPE key shows a direction: a press then steps to the next one.
    bool m_wipeShown = true;
};
