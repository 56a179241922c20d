#include "rvx5350.h"

#include "RVX8000/panelsetup8000.h"
#include "RVX8000/pipgro.h"
#include "RVX8000/set.h"
#include "SwitcherData/protocol.h"
#include "common/delay.h"
#include "rvx5350styles.h"
#include "ui_rvx5350.h"

#include <QButtonGroup>
#include <QPointer>
#include <QToolButton>

namespace S = Rvx5350Styles;
using namespace Protocol;

namespace {

constexpr int KeyWaitMs = 200;
// SET starts the strip's clock and shows the strip a second later, when the first tick is due.
constexpr int SetOpenMs = 1000;
constexpr int RateCount = 3;

} // namespace

RVX5350::RVX5350(QWidget *parent)
    : Panel8000<QWidget>(parent, Family::Rvx5350), ui(std::make_unique<Ui::RVX5350>())
{
    ui->setupUi(this);
    PanelSetup8000::dressWindow(this, S::WindowTitle, S::Window, true);

    m_pipBox = PanelSetup8000::previewBox<PIPGro5350>(ui->pip_area, link());
    m_set = new Set(ui->sub_area, link());
    PanelSetup8000::placeSub(m_set, S::SetName, S::SetTitle, QSize(300, 268));

    PanelSetup8000::style({ui->label_title, ui->label_version, ui->label_ch1, ui->label_ch2, ui->label_vol1,
                           ui->label_vol2, ui->label_reso, ui->label_pip_sz},
                          S::White);
    ui->label_rate->setStyleSheet(QString::fromLatin1(S::Green));
    PanelSetup8000::style({ui->g_upper, ui->g_transition, ui->g_right, ui->g_fader}, S::GroupBox);

    ui->slider_video->setStyleSheet(QString::fromLatin1(S::Tbar));
    initKeys();

    connect(m_set, &Set::setPIPSZ_Style, this, &RVX5350::setPIPSZ_Style);
}

RVX5350::~RVX5350() = default;

void RVX5350::initKeys()
{
    LampKeys::wire(this, {{ui->btn_reso, &RVX5350::on_btn_reso_clicked},
                          {ui->btn_rate, &RVX5350::on_btn_rate_clicked},
                          {ui->btn_micvol, &RVX5350::on_btn_micvol_clicked},
                          {ui->btn_set, &RVX5350::on_btn_set_clicked}});

    m_inputs = FrontPanel8000::inputRow(this, {ui->btn_in1, ui->btn_in2});
    connect(m_inputs, &QButtonGroup::idClicked, this, &RVX5350::setInput);
    for (QGroupBox *box : {ui->g_in1, ui->g_in2})
        box->setStyleSheet(QString::fromLatin1(S::OffAirBox));
    for (QToolButton *key : {ui->btn_in1, ui->btn_in2})
        setKeySheet(key, QString::fromLatin1(KeySheet::GradientOff));

    Keys keys;
    keys.front.autoKey = ui->btn_auto;
    keys.front.fader = ui->slider_video;
    keys.front.transitions = FrontPanel8000::transitionRow(this, ui->btn_mix_t, ui->btn_fade, ui->btn_wipe);
    keys.hooks.buses = [this] { in1_in2_style(); };
    // One bus: a digit puts that input on air, with or without Shift.
    keys.hooks.digitRow = m_inputs;
    keys.hooks.shiftDigitRow = m_inputs;
    // PIP and POP end each other.
    keys.pip = ui->btn_pip;
    keys.pop = ui->btn_pop;
    keys.afv = ui->btn_afv;
    keys.ch1 = {ui->btn_ch1, ui->label_ch1, ui->slider_ch1, ui->label_vol1};
    keys.ch2 = {ui->btn_ch2, ui->label_ch2, ui->slider_ch2, ui->label_vol2};
    keys.sources = AudioChannels::list5350();
    keys.ds = ui->btn_ds;
    keys.mute = ui->btn_mute;
    keys.rec = ui->btn_rec;
    keys.stream = ui->btn_rtmp;
    keys.still = ui->btn_still;
    keys.stillBlinks = true;
    initFrame(keys);
    // SET's PIP size key works only while there is a PIP to size.
    connect(insets(), &InsetKeys::pipChanged, m_set, &Set::setPIP_size_unlock_falg_slots);
}

void RVX5350::unitBound(const UnitAddress &unit)
{
    m_set->getDevIP(unit.text());
}

void RVX5350::showInput(int input)
{
    if (input != 1 && input != 2)
        return;
    m_onAir = input;
    // A box given its sheet again repolishes every key in it: only a change is set.
    setLamp(ui->g_in1, input == 1, S::OnAirBox, S::OffAirBox);
    setLamp(ui->g_in2, input == 2, S::OnAirBox, S::OffAirBox);
    setLamp(ui->btn_in1, input == 1, KeySheet::GradientRed, KeySheet::GradientOff);
    setLamp(ui->btn_in2, input == 2, KeySheet::GradientRed, KeySheet::GradientOff);
}

void RVX5350::setInput(int input)
{
    showInput(input);
    link()->programme(input);
}

void RVX5350::in1_in2_style()
{
    if (m_onAir)
        showInput(3 - m_onAir);
}

void RVX5350::setResolution(int index)
{
    m_resolution = index;
    ui->label_reso->setText(QString::fromLatin1(OutputFormats[index].name));
}

void RVX5350::on_btn_reso_clicked()
{
    LampKeys::flash(this, ui->btn_reso, KeyWaitMs, [this] {
        setResolution((m_resolution + 1) % OutputFormatCount);
        link()->format(m_resolution);
    });
}

void RVX5350::setRate(int rate)
{
    m_rate = rate;
    ui->label_rate->setText(QString::fromLatin1(S::RateTexts[rate]));
    front()->setRate(uint8_t(rate));
}

void RVX5350::on_btn_rate_clicked()
{
    LampKeys::flash(this, ui->btn_rate, KeyWaitMs, [this] {
        setRate((m_rate + 1) % RateCount);
        // The key counts from 0, the rate keys of UnitControl from 1.
        link()->rate(m_rate + 1);
    });
}

void RVX5350::on_btn_micvol_clicked()
{
    LampKeys::flash(this, ui->btn_micvol, KeyWaitMs, nullptr);
}

void RVX5350::on_btn_set_clicked()
{
    if (m_set->isVisibleTo(this)) {
        m_set->setenablefalgSlots(false);
        m_set->hide();
        setKeySheet(ui->btn_set, QString::fromLatin1(KeySheet::GradientOff));
        return;
    }
    setKeySheet(ui->btn_set, QString::fromLatin1(KeySheet::GradientGreen));
    m_set->setenablefalgSlots(true);
    const QPointer<RVX5350> alive(this);
    Delay_MSec(SetOpenMs);
    if (alive)
        m_set->show();
}

void RVX5350::setPIPSZ_Style(int size)
{
    if (size < 0 || size >= PIPGro::SizeCount)
        return;
    ui->label_pip_sz->setText(QString::fromLatin1(S::PipSizeTexts[size]));
    m_pipBox->getPIP_SIZ(size);
}

void RVX5350::m_on_toRead_5370Dtat(const QByteArray &data)
{
    showUnitState(UnitState::decode(link()->stateLayout(), data));
}

void RVX5350::showUnitState(const UnitState &s)
{
    if (s.has(UnitState::Pgm))
        showInput(s.pgm());
    showSharedState(s);
    if (s.has(UnitState::Serial))
        m_set->on_toRead_5370SMDtat(s.serial());
    if (s.has(UnitState::PipSize)) {
        const int size = s.pipSize();
        setPIPSZ_Style(size);
        m_set->setPIP_S_V(size);
    }
    if (s.has(UnitState::PipV))
        m_pipBox->set_H_Vposition_Style(s.pipH(), s.pipV());
    if (s.has(UnitState::Rate) && s.rate() < RateCount)
        setRate(s.rate());
    if (s.has(UnitState::Format)) {
        const int index = s.formatIndex();
        if (index >= 0)
            setResolution(index);
    }
}
