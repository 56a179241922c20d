#include "rvx3410ui.h"

#include "RVX3210/plane_top.h"
#include "RVX3210/statefanout.h"
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

// Bytes of the RVX3410 record beyond the RVX3210's 26.
constexpr int RecordingByte = 26;
constexpr int StreamingByte = 27;
constexpr int RotateByte = 28;
} // namespace

RVX3410UI::RVX3410UI(QWidget *parent) : Rvx3210PanelFrame(parent)
{
    // The whole desktop, as the search window measures it, not one screen of it.
    const QRect centred = centreWindow(this, {PanelWidth, PanelHeight}, CentreOn::WholeDesktop);
    m_centreLeft = centred.x();
    m_centreTop = centred.y();
    init3210ui_1();
    m_upper = new RVX_3410_Upper_Widget(centre(), link());
    m_middle = new RVX_3410_Middle_widget(centre(), link());
    init3210ui_2(m_upper, m_middle);
    connect(m_upper, &Upper_Widget::on_Singnals_returnloginwin, this, &RVX3410UI::ExitSignals);
    // The shared title bar knows only the RVX3210-family names.
    titleBar()->modelName()->setText(QString::fromLatin1(Rvx3410Styles::ModelName));
}

void RVX3410UI::on_toRead_3210Dtat(const QByteArray &data)
{
    // The recording, streaming and rotation bytes go out right after the FTB byte.
    StateFanout::apply(data, m_upper, m_middle, lowerRow(), pipPane(), [this, &data] {
        using StateFanout::at;
        using StateFanout::has;
        if (has(data, RecordingByte))
            m_upper->set_Style_btnF4(at(data, RecordingByte));
        if (has(data, StreamingByte))
            m_upper->set_Style_btnF6(at(data, StreamingByte));
        if (has(data, RotateByte))
            m_upper->set_Style_btnF8(at(data, RotateByte));
    });
    qCDebug(lcRvx3410) << "data" << data.toHex(' ');
}

void RVX3410UI::setslider0(int v)
{
    // This panel's own memory of the T-bar's last end, apart from the RVX3210 panel's.
    static bool falg = true;
    tbarSequencer()->setslider0(v, falg);
}
