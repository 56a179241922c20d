#pragma once

#include "RVX3210/upper_widget.h"

#include <cstdint>

class QLabel;
class QPushButton;
class QTimer;
class UnitControl;

// Top row of the RVX3410 panel. FTB, F1 (output format), F2, F3 (MUTE), F7 and the
// read-state and return keys behave as on the RVX3210 (Upper_Widget); what the RVX3410 adds
// is here: REC, PAUSE, STREAM and ROTATE with their state fields, a caption under each
// function key, no close key, and a second state read 3 s after the panel opens.
class RVX_3410_Upper_Widget : public Upper_Widget
{
    Q_OBJECT
public:
    RVX_3410_Upper_Widget(QWidget *parent, UnitControl *link);

    // The unit's recording state (0-3), streaming and rotation, as its state reports them.
    void set_Style_btnF4(int recording);
    void set_Style_btnF6(bool streaming);
    void set_Style_btnF8(bool rotated);

    bool f4On() const { return m_btnF4->isLit(); }
    bool f5On() const { return m_btnF5->isLit(); }
    bool f6On() const { return m_btnF6->isLit(); }
    bool f8On() const { return m_btnF8->isLit(); }
    bool recPhase() const { return m_recPhase; }
    const QTimer *recBlinkTimer() const { return m_recBlink; }
    const QTimer *stateReadTimer() const { return m_readTimer; }

    LampKey *btnF4() const { return m_btnF4; }
    LampKey *btnF5() const { return m_btnF5; }
    LampKey *btnF6() const { return m_btnF6; }
    LampKey *btnF8() const { return m_btnF8; }

public slots:
    void on_btnclicked_F4();
    void on_btnclicked_F5();
    void on_btnclicked_F6();
    void on_btnclicked_F8();
    // Asks for the state now, which makes the delayed read unnecessary.
    void on_btnclicked_Read3210data() override;
    void on_timerour_REC();
    void on_timerour_DS();

    void on_Style_btnF4(bool on);
    void on_Style_btnF5(bool on);
    void on_Style_btnF6(bool on);
    void on_Style_btnF8(bool on);

private:
    void layOutRow();

    LampKey *m_btnF4 = nullptr;
    LampKey *m_btnF5 = nullptr;
    LampKey *m_btnF6 = nullptr;
    LampKey *m_btnF8 = nullptr;
    QTimer *m_recBlink = nullptr;
    QTimer *m_readTimer = nullptr;
    bool m_recPhase = false;
};
