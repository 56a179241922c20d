#include "rvx3410ui.h"

#include "RVX3210/below_widget.h"
#include "RVX3210/plane_botton.h"
#include "RVX3210/plane_right.h"
#include "RVX3210/plane_top.h"
#include "RVX3210/qslider_left.h"
#include "RVX3210/qslider_right.h"
#include "RVX3210/statefanout.h"
#include "RVX3210/tbarsequencer.h"
#include "rvx3210_workdata.h"
#include "rvx3410log.h"
#include "rvx3410styles.h"
#include "rvx_3410_middle_widget.h"
#include "rvx_3410_upper_widget.h"

#include <QGuiApplication>
#include <QIcon>
#include <QLabel>
#include <QScreen>
#include <QSplitter>
#include <QVBoxLayout>

namespace S = Rvx3210Styles;

namespace {
constexpr int PanelWidth = 1400;
constexpr int PanelHeight = 800;

// Bytes of the RVX3410 record beyond the RVX3210's 26.
constexpr int RecordingByte = 26;
constexpr int StreamingByte = 27;
constexpr int RotateByte = 28;
} // namespace

RVX3410UI::RVX3410UI(QWidget *parent) : QDialog(parent)
{
    setWindowTitle(QString::fromLatin1(S::WindowTitle));
    setWindowIcon(QIcon(QString::fromLatin1(S::WindowIcon)));
    setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint);
    setAttribute(Qt::WA_StyledBackground);
    setObjectName(QString::fromLatin1(S::DialogName));
    setStyleSheet(QString::fromLatin1(S::Dialog));
    const QRect desk = QGuiApplication::primaryScreen()->geometry();
    m_centreLeft = (desk.width() - PanelWidth) / 2;
    m_centreTop = (desk.height() - PanelHeight) / 2;
    setGeometry(m_centreLeft, m_centreTop, PanelWidth, PanelHeight);
    init3210ui_1();
    init3210ui_2();
    // The shared title bar knows only the RVX3210-family names.
    m_top->modelName()->setText(QString::fromLatin1(Rvx3410Styles::ModelName));
}

void RVX3410UI::init3210ui_1()
{
    m_link = new RVX3210_workdata(this);
    m_top = new Plane_Top(this, m_link);
    m_top->setFixedHeight(30);
    m_pip = new Plane_Right(nullptr, m_link);
    m_left = new QSlider_Left(this, m_link);
    m_tbar = new QSlider_Right(this, m_link);
    m_bottom = new Plane_Botton(this, m_link);
    m_centre = new QWidget(this);

    // Panes left to right: audio faders, central column, T-bar, PIP settings.
    m_splitter = new QSplitter(Qt::Horizontal, this);
    m_splitter->setStyleSheet(QString::fromLatin1(S::Splitter));
    m_splitter->addWidget(m_left);
    m_splitter->addWidget(m_centre);
    m_splitter->addWidget(m_tbar);
    m_splitter->addWidget(m_pip);
    const int stretch[] = {1, 2, 1, 1};
    for (int i = 0; i < 4; ++i)
        m_splitter->setStretchFactor(i, stretch[i]);
    m_splitter->setSizes({240, 760, 160, 240});
    m_pip->hide();

    auto *outer = new QVBoxLayout(this);
    outer->setSpacing(0);
    outer->setContentsMargins(1, 0, 1, 0);
    outer->addWidget(m_top);
    outer->addWidget(m_splitter, 1);
    outer->addWidget(m_bottom);

    connect(m_top, &Plane_Top::on_signals_setWinmax, this, &RVX3410UI::on_Topwidge_Singnale_btnwinmax);
    connect(m_top, &Plane_Top::on_signals_setWinmin, this, &QWidget::showMinimized);
    connect(m_link, &RVX3210_workdata::on_signals_3210Data, this, &RVX3410UI::on_toRead_3210Dtat);
    connect(m_tbar, &QSlider_Right::on_slider_auto, this, &RVX3410UI::setslider0);
    connect(m_left, &QSlider_Left::on_slider_ch1_vol, this, &RVX3410UI::set_audio_vol);
    connect(m_left, &QSlider_Left::on_slider_ch2_vol, this, &RVX3410UI::set_audio_vol);
    connect(m_left, &QSlider_Left::on_slider_mastre_vol, this, &RVX3410UI::set_audio_vol);
}

void RVX3410UI::init3210ui_2()
{
    m_upper = new RVX_3410_Upper_Widget(m_centre, m_link);
    m_middle = new RVX_3410_Middle_widget(m_centre, m_link);
    m_below = new Below_Widget(m_centre, m_link);
    auto *col = new QVBoxLayout(m_centre);
    col->setSpacing(0);
    col->setContentsMargins(0, 0, 0, 0);
    col->addWidget(m_upper, 1);
    col->addWidget(m_middle, 2);
    col->addWidget(m_below, 3);

    m_seq = new TbarSequencer(this, m_link, m_tbar, m_below);

    connect(m_middle, &Middle_widget::on_Singnale_btnPIP, this, &RVX3410UI::on_Middle_Singnale_btnPIP);
    connect(m_upper, &Upper_Widget::on_Singnals_returnloginwin, this, &RVX3410UI::ExitSignals);
    connect(m_below, &Below_Widget::on_get_slider_vol, this, &RVX3410UI::btnAuto_and_slider);
}

void RVX3410UI::DevTypeID(QString devIp, uint8_t a, uint8_t b, QString hisIp, uint8_t c, uint8_t d)
{
    m_link->get_DevTypeID(devIp, a, b);
    m_link->get_HISTypeID(hisIp, c, d);
    // Read at once; the upper row reads once more 3 s later unless the operator did.
    m_link->SendCMDRead3210state();
}

void RVX3410UI::on_toRead_3210Dtat(const QByteArray &data)
{
    // The recording, streaming and rotation bytes go out right after the FTB byte.
    StateFanout::apply(data, m_upper, m_middle, m_below, m_pip, [this, &data] {
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
    m_seq->setslider0(v, falg);
}

void RVX3410UI::setslider1(int v)
{
    m_seq->setslider1(v);
}

void RVX3410UI::btnAuto_and_slider()
{
    m_seq->btnAuto_and_slider();
}

void RVX3410UI::set_audio_vol()
{
    const uint8_t ch1 = m_left->get_Slider_ch1_valueChanged();
    const uint8_t ch2 = m_left->get_Slider_ch2_valueChanged();
    const uint8_t master = m_left->get_Slider_master_valueChanged();
    m_link->SendCMDLeftSliderVOL(ch1, ch2, 0, master);
}

void RVX3410UI::setPGM_PVWCH()
{
    m_seq->setPGM_PVWCH();
}

void RVX3410UI::on_Middle_Singnale_btnPIP(bool on)
{
    m_below->setPipFlag(on);
    m_pip->setVisible(on);
}
