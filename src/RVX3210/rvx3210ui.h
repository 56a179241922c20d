#pragma once

#include "rvx3210panelframe.h"

class Middle_widget;
class Upper_Widget;

// Control panel of one RVX3210 unit: the shared frame with the RVX3210's upper and middle
// rows, fanning each state reply out to the rows.
class RVX3210UI : public Rvx3210PanelFrame
{
    Q_OBJECT
public:
    explicit RVX3210UI(QWidget *parent = nullptr);

    Upper_Widget *upperRow() const { return m_upper; }
    Middle_widget *middleRow() const { return m_middle; }

signals:
    void m_on_Singnals_returnloginwin();

public slots:
    void showUnitState(const UnitState &state) override;
    void setslider0(int v) override;

private:
    Upper_Widget *m_upper = nullptr;
    Middle_widget *m_middle = nullptr;
};
