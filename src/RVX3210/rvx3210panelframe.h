#pragma once

#include "SwitcherData/unitaddress.h"
#include "common/unitbinding.h"

#include <QDialog>
#include <QString>
#include <cstdint>

class Below_Widget;
class Middle_widget;
class Plane_Botton;
class Plane_Right;
class Plane_Top;
class QSlider_Left;
class QSlider_Right;
class QSplitter;
class RVX3210_workdata;
class TbarSequencer;
class UnitState;
class Upper_Widget;

// What the RVX3210 and RVX3410 panels have in common: the link object, the title bar, the
// audio faders, the T-bar and its sequencing, the lower row, the PIP settings pane and the
// network page, laid out around a central column. Each panel adds its own upper and middle
// rows (init3210ui_2), its own fan-out of the state record and its own return signal.
class Rvx3210PanelFrame : public QDialog, public UnitBinding<Rvx3210PanelFrame>
{
    Q_OBJECT
public:
    // Binds the unit's boards as the search found them, then asks for the unit's state.
    void bindUnit(const UnitAddress &unit, const UnitAddress &his);

    RVX3210_workdata *link() const { return m_link; }
    Plane_Top *titleBar() const { return m_top; }
    Below_Widget *lowerRow() const { return m_below; }
    Plane_Right *pipPane() const { return m_pip; }
    QSlider_Left *audioSliders() const { return m_left; }
    QSlider_Right *tbar() const { return m_tbar; }
    Plane_Botton *networkPage() const { return m_bottom; }
    TbarSequencer *tbarSequencer() const { return m_seq; }

public slots:
    // A state record as the link signals it: decoded by the link's layout and shown.
    void on_toRead_3210Dtat(const QByteArray &data);
    // Each panel fans a unit's state out to its rows its own way.
    virtual void showUnitState(const UnitState &state) = 0;
    // Each panel keeps its own memory of the T-bar's last end (a static of its own).
    virtual void setslider0(int v) = 0;
    void setslider1(int v);
    void btnAuto_and_slider();
    void set_audio_vol();
    void setPGM_PVWCH();
    void on_Middle_Singnale_btnPIP(bool on);
    void on_Topwidge_Singnale_btnwinmax(bool) {}

protected:
    // Esc and close() do not hide the panel: hidden, it would leave no window while the program
    // runs on and holds port 7000. It is left by its return key or a close key.
    void reject() override;

    explicit Rvx3210PanelFrame(QWidget *parent);

    // The frame around the central column.
    void init3210ui_1();
    // The central column: the panel's upper and middle rows over the shared lower row.
    void init3210ui_2(Upper_Widget *upper, Middle_widget *middle);
    // The central column's parent, for the panel's rows.
    QWidget *centre() const { return m_centre; }

private:
    RVX3210_workdata *m_link = nullptr;
    Plane_Top *m_top = nullptr;
    Below_Widget *m_below = nullptr;
    Plane_Right *m_pip = nullptr;
    QSlider_Left *m_left = nullptr;
    QSlider_Right *m_tbar = nullptr;
    Plane_Botton *m_bottom = nullptr;
    QSplitter *m_splitter = nullptr;
    QWidget *m_centre = nullptr;
    TbarSequencer *m_seq = nullptr;
};
