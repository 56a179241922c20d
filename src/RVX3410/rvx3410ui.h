#pragma once

#include "RVX3210/rvx3210panelframe.h"

#include <QPoint>

class RVX_3410_Middle_widget;
class RVX_3410_Upper_Widget;

// Control panel of one RVX3410 unit. The unit speaks the RVX3210 command set and sends the
// RVX3210 state record with three bytes more (26-28), so the panel is the RVX3210 panel's
// frame with the RVX3410's own upper and middle rows and the fan-out of the extra bytes.
class RVX3410UI : public Rvx3210PanelFrame
{
    Q_OBJECT
public:
    explicit RVX3410UI(QWidget *parent = nullptr);

    RVX_3410_Upper_Widget *upperRow() const { return m_upper; }
    RVX_3410_Middle_widget *middleRow() const { return m_middle; }
    QPoint centrePosition() const { return {m_centreLeft, m_centreTop}; }

signals:
    void ExitSignals();

public slots:
    void showUnitState(const UnitState &state) override;
    void setslider0(int v) override;

private:
    RVX_3410_Upper_Widget *m_upper = nullptr;
    RVX_3410_Middle_widget *m_middle = nullptr;
    int m_centreLeft = 0;
    int m_centreTop = 0;
};
