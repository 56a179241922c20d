#include "rvx3210ui.h"

#include "SwitcherData/rvx3210_workdata.h"
#include "common/centre.h"
#include "common/tbarsequencer.h"
#include "middle_widget.h"
#include "statefanout.h"
#include "upper_widget.h"

namespace {
constexpr int PanelWidth = 1400;
constexpr int PanelHeight = 800;
} // namespace

RVX3210UI::RVX3210UI(QWidget *parent) : Rvx3210PanelFrame(parent)
{
    centreWindow(this, {PanelWidth, PanelHeight}, CentreOn::AvailableGeometry);
    init3210ui_1();
    m_upper = new Upper_Widget(centre(), link());
    m_middle = new Middle_widget(centre(), link());
    init3210ui_2(m_upper, m_middle);
    connect(m_upper, &Upper_Widget::on_Singnals_returnloginwin, this,
            &RVX3210UI::m_on_Singnals_returnloginwin);
}

void RVX3210UI::showUnitState(const UnitState &state)
{
    StateFanout::apply(state, m_upper, m_middle, lowerRow(), pipPane(), [] {});
    StateFanout::dump(state);
}

void RVX3210UI::setslider0(int v)
{
    // Remembers across calls that the T-bar was last seen at an end.
    static bool falg = true;
    tbarSequencer()->setslider0(v, falg);
}
