#include "rvx3210panelframe.h"

#include "SwitcherData/rvx3210_workdata.h"
#include "below_widget.h"
#include "common/panelkeys.h"
#include "common/pictureiconengine.h"
#include "common/pixmapcachesweep.h"
#include "common/tbarsequencer.h"
#include "middle_widget.h"
#include "plane_botton.h"
#include "plane_right.h"
#include "plane_top.h"
#include "qslider_left.h"
#include "qslider_right.h"
#include "rvx3210log.h"
#include "rvx3210styles.h"
#include "upper_widget.h"

#include <QButtonGroup>
#include <QIcon>
#include <QPushButton>
#include <QSlider>
#include <QSplitter>
#include <QVBoxLayout>

namespace S = Rvx3210Styles;

Rvx3210PanelFrame::Rvx3210PanelFrame(QWidget *parent) : QDialog(parent)
{
    // The keys' pictures come from their sheets and are restyled with every state reply.
    PictureIconEngine::install();
    PixmapCacheSweep::install();
    setWindowTitle(QString::fromLatin1(S::WindowTitle));
    setWindowIcon(QIcon(QString::fromLatin1(S::WindowIcon)));
    // Frameless like the search window: the title strip carries the drag and the keys.
    setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint);
    setAttribute(Qt::WA_StyledBackground);
    setObjectName(QString::fromLatin1(S::DialogName));
    setStyleSheet(QString::fromLatin1(S::Dialog));
}

void Rvx3210PanelFrame::init3210ui_1()
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

    connect(m_top, &Plane_Top::on_signals_setWinmax, this,
            &Rvx3210PanelFrame::on_Topwidge_Singnale_btnwinmax);
    connect(m_top, &Plane_Top::on_signals_setWinmin, this, &QWidget::showMinimized);
    connect(m_link, &RVX3210_workdata::stateReported, this, &Rvx3210PanelFrame::showUnitState);
    connect(m_tbar, &QSlider_Right::on_slider_auto, this, &Rvx3210PanelFrame::setslider0);
    connect(m_left, &QSlider_Left::on_slider_ch1_vol, this, &Rvx3210PanelFrame::set_audio_vol);
    connect(m_left, &QSlider_Left::on_slider_ch2_vol, this, &Rvx3210PanelFrame::set_audio_vol);
    connect(m_left, &QSlider_Left::on_slider_mastre_vol, this, &Rvx3210PanelFrame::set_audio_vol);
}

void Rvx3210PanelFrame::init3210ui_2(Upper_Widget *upper, Middle_widget *middle)
{
    m_below = new Below_Widget(m_centre, m_link);
    auto *col = new QVBoxLayout(m_centre);
    col->setSpacing(0);
    col->setContentsMargins(0, 0, 0, 0);
    col->addWidget(upper, 1);
    col->addWidget(middle, 2);
    col->addWidget(m_below, 3);

    TbarSequencer::Hooks hooks;
    hooks.send = [this](uint8_t direction, uint8_t distance) { m_link->fader(direction, distance); };
    hooks.swapBuses = [this] { setPGM_PVWCH(); };
    hooks.autoLamp = [this](bool lit) { m_below->on_Style_btnAuto(lit); };
    hooks.log = &lcRvx3210;
    m_seq = new TbarSequencer(this, m_tbar->slider(), std::move(hooks));

    PanelKeys::Keys keys;
    keys.cut = m_below->btnCut();
    keys.autoKey = m_below->btnAuto();
    keys.preview = m_below->pvwGroup()->buttons();
    keys.program = m_below->pgmGroup()->buttons();
    new PanelKeys(this, std::move(keys));

    connect(middle, &Middle_widget::on_Singnale_btnPIP, this, &Rvx3210PanelFrame::on_Middle_Singnale_btnPIP);
    connect(m_below, &Below_Widget::on_get_slider_vol, this, &Rvx3210PanelFrame::btnAuto_and_slider);
}

void Rvx3210PanelFrame::bindUnit(const UnitAddress &unit, const UnitAddress &his)
{
    m_link->bindBoards(unit, his);
    // The one read of the binding; nothing polls (the RVX3410 upper row reads once more, 3 s on).
    m_link->readState();
}

void Rvx3210PanelFrame::on_toRead_3210Dtat(const QByteArray &data)
{
    showUnitState(UnitState::decode(m_link->stateLayout(), data));
}

void Rvx3210PanelFrame::reject() {}

void Rvx3210PanelFrame::setslider1(int v)
{
    m_seq->setslider1(v);
}

void Rvx3210PanelFrame::btnAuto_and_slider()
{
    m_seq->btnAuto_and_slider();
}

void Rvx3210PanelFrame::set_audio_vol()
{
    const uint8_t ch1 = m_left->get_Slider_ch1_valueChanged();
    const uint8_t ch2 = m_left->get_Slider_ch2_valueChanged();
    const uint8_t master = m_left->get_Slider_master_valueChanged();
    m_link->levels(ch1, ch2, 0, master);
}

void Rvx3210PanelFrame::setPGM_PVWCH()
{
    m_below->swapBusLights();
}

void Rvx3210PanelFrame::on_Middle_Singnale_btnPIP(bool on)
{
    m_below->setPipFlag(on);
    m_pip->setVisible(on);
}
