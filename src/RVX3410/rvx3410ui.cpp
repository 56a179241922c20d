#include "rvx3410ui.h"

#include "RVX3210/plane_top.h"
#include "RVX3210/statefanout.h"
#include "SwitcherData/rvx3210_workdata.h"
#include "common/centre.h"
#include "common/tbarsequencer.h"
#include "rvx3410log.h"
#include "rvx3410styles.h"
#include "rvx_3410_middle_widget.h"
#include "rvx_3410_upper_widget.h"

#include <QLabel>

namespace {
constexpr int PanelWidth = 1400;
constexpr int PanelHeight = 800;
} // namespace

RVX3410UI::RVX3410UI(QWidget *parent) : Rvx3210PanelFrame(parent)
{
    // The whole desktop, as the search window measures it, not one screen of it.
    const QRect centred = centreWindow(this, {PanelWidth, PanelHeight}, CentreOn::WholeDesktop);
    m_centreLeft = centred.x();
    m_centreTop = centred.y();
    init3210ui_1();
    link()->setFamily(Family::Rvx3410);
    m_upper = new RVX_3410_Upper_Widget(centre(), link());
    m_middle = new RVX_3410_Middle_widget(centre(), link());
    init3210ui_2(m_upper, m_middle);
    connect(m_upper, &Upper_Widget::on_Singnals_returnloginwin, this, &RVX3410UI::ExitSignals);
    // The shared title bar knows only the RVX3210-family names.
    titleBar()->modelName()->setText(QString::fromLatin1(Rvx3410Styles::ModelName));
}

void RVX3410UI::showUnitState(const UnitState &state)
{
    using F = UnitState::Field;
    // The recording, streaming and rotation fields go out right after the FTB field.
    StateFanout::apply(state, m_upper, m_middle, lowerRow(), pipPane(), [this, &state] {
        if (state.has(F::Recording))
            m_upper->set_Style_btnF4(state.recording());
        if (state.has(F::Streaming))
            m_upper->set_Style_btnF6(state.streaming());
        if (state.has(F::Rotation))
            m_upper->set_Style_btnF8(state.rotated());
    });
    qCDebug(lcRvx3410) << "data" << state.record().toHex(' ');
}

void RVX3410UI::setslider0(int v)
{
    // This panel's own memory of the T-bar's last end, apart from the RVX3210 panel's.
    static bool falg = true;
    tbarSequencer()->setslider0(v, falg);
}
