#pragma once

#include "RVX3210/middle_widget.h"

class QPushButton;
class UnitControl;

// Middle row of the RVX3410 panel. Audio, transitions, PIP and STILL behave as on the
// RVX3210 (Middle_widget); the RVX3410 adds the keys of the unit's on-screen menu, and its
// source lists show the first source from the start instead of none.
class RVX_3410_Middle_widget : public Middle_widget
{
    Q_OBJECT
public:
    RVX_3410_Middle_widget(QWidget *parent, UnitControl *link);

    QPushButton *btnMenuUp() const { return m_btnMenuUp; }
    QPushButton *btnMenu() const { return m_btnMenu; }
    QPushButton *btnMenuDown() const { return m_btnMenuDown; }

public slots:
    void on_btnpressed_MenuUp();
    void on_btnreleased_MenuUp();
    void on_btnpressed_Menu();
    void on_btnreleased_Menu();
    void on_btnpressed_MenuDown();
    void on_btnreleased_MenuDown();

private:
    QPushButton *m_btnMenuUp = nullptr;
    QPushButton *m_btnMenu = nullptr;
    QPushButton *m_btnMenuDown = nullptr;
};
