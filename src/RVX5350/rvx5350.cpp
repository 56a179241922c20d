#include "rvx5350.h"

#include "RVX8000/audiochannels.h"
#include "RVX8000/audiomodekey.h"
#include "RVX8000/frontpanel8000.h"
#include "RVX8000/insetkeys.h"
#include "RVX8000/keyblink.h"
#include "RVX8000/lampkeys.h"
#include "RVX8000/panelsetup8000.h"
#include "RVX8000/pipgro.h"
#include "RVX8000/report8000.h"
#include "RVX8000/set.h"
#include "SwitcherData/protocol.h"
#include "SwitcherData/rvx5all_workdata.h"
#include "common/delay.h"
#include "common/keysheet.h"
#include "rvx5350styles.h"
#include "ui_rvx5350.h"

#include <QButtonGroup>
#include <QPointer>
#include <QToolButton>

namespace S = Rvx5350Styles;
using namespace Protocol;

namespace {

constexpr int KeyWaitMs = 200;
constexpr int ReadWaitMs = 400;
// SET starts the strip's clock and shows the strip a second later, when the first tick is due.
constexpr int SetOpenMs = 1000;
constexpr int RateCount = 3;

} // namespace

RVX5350::RVX5350(QWidget *parent) : QWidget(parent), ui(std::make_unique<Ui::RVX5350>())
{
    ui->setupUi(this);
    PanelSetup8000::dressWindow(this, S::WindowTitle, S::Window, true);
    m_link = new RVX5ALL_workdata(this);
    // Its wipe and audio source codes are its own.
    m_link->setFamily(Family::Rvx5350);

    ui->pip_area->setStyleSheet(QString::fromLatin1(S::PreviewArea));
    m_pipBox = new PIPGro5350(m_link, ui->pip_area);
    m_pipBox->setStyleSheet(QString::fromLatin1(S::PreviewBox));
    m_set = new Set(ui->sub_area, m_link);
    PanelSetup8000::placeSub(m_set, S::SetName, S::SetTitle, QSize(300, 268));

    PanelSetup8000::style({ui->label_title, ui->label_version, ui->label_ch1, ui->label_ch2, ui->label_vol1,
                           ui->label_vol2, ui->label_reso, ui->label_pip_sz},
                          S::White);
    ui->label_rate->setStyleSheet(QString::fromLatin1(S::Green));
    PanelSetup8000::style({ui->g_upper, ui->g_transition, ui->g_right, ui->g_fader}, S::GroupBox);

    ui->slider_video->setStyleSheet(QString::fromLatin1(S::Tbar));
    initUpper();
    initRight();

    connect(m_link, &RVX5ALL_workdata::stateReported, this, &RVX5350::showUnitState);
    connect(m_set, &Set::setPIPSZ_Style, this, &RVX5350::setPIPSZ_Style);
}

RVX5350::~RVX5350() = default;

void RVX5350::initUpper()
{
    LampKeys::wire(this, {{ui->btn_ds, &RVX5350::on_btn_ds_clicked},
                          {ui->btn_ch1, &RVX5350::on_btn_ch1_clicked},
                          {ui->btn_mute, &RVX5350::on_btn_mute_clicked},
                          {ui->btn_ch2, &RVX5350::on_btn_ch2_clicked}});
    ui->btn_mute->setSheets(KeySheet::GradientRed, KeySheet::GradientOff);
    connect(ui->slider_ch1, &QSlider::valueChanged, this, &RVX5350::set_audio_vol);
    connect(ui->slider_ch2, &QSlider::valueChanged, this, &RVX5350::set_audio_vol);
    m_audioMode = new AudioModeKey(ui->btn_afv, ui->btn_ch1, ui->btn_ch2, m_link, this);
    m_audio = new AudioChannels(this, m_link, {ui->btn_ch1, ui->label_ch1, ui->slider_ch1, ui->label_vol1},
                                {ui->btn_ch2, ui->label_ch2, ui->slider_ch2, ui->label_vol2},
                                AudioChannels::list5350());
}

void RVX5350::initRight()
{
    LampKeys::wire(this, {{ui->btn_reso, &RVX5350::on_btn_reso_clicked},
                          {ui->btn_rate, &RVX5350::on_btn_rate_clicked},
                          {ui->btn_rec, &RVX5350::on_btn_rec_clicked},
                          {ui->btn_micvol, &RVX5350::on_btn_micvol_clicked},
                          {ui->btn_still, &RVX5350::on_btn_still_clicked},
                          {ui->btn_set, &RVX5350::on_btn_set_clicked},
                          {ui->btn_rtmp, &RVX5350::on_btn_rtmp_clicked}});
    LampKeys::toggles({ui->btn_rec, ui->btn_still, ui->btn_rtmp}, KeySheet::GradientRed);
    m_stillBlink = new KeyBlink(ui->btn_still);

    m_inputs = FrontPanel8000::inputRow(this, {ui->btn_in1, ui->btn_in2});
    connect(m_inputs, &QButtonGroup::idClicked, this, &RVX5350::setInput);
    for (QGroupBox *box : {ui->g_in1, ui->g_in2})
        box->setStyleSheet(QString::fromLatin1(S::OffAirBox));
    for (QToolButton *key : {ui->btn_in1, ui->btn_in2})
        setKeySheet(key, QString::fromLatin1(KeySheet::GradientOff));

    FrontPanel8000::Keys keys8000;
    keys8000.autoKey = ui->btn_auto;
    keys8000.fader = ui->slider_video;
    keys8000.transitions = FrontPanel8000::transitionRow(this, ui->btn_mix_t, ui->btn_fade, ui->btn_wipe);
    FrontPanel8000::Hooks hooks;
    hooks.buses = [this] { in1_in2_style(); };
    // One bus: a digit puts that input on air, with or without Shift.
    hooks.digitRow = m_inputs;
    hooks.shiftDigitRow = m_inputs;
    m_front = new FrontPanel8000(this, m_link, keys8000, hooks);

    // PIP and POP end each other.
    m_insets = new InsetKeys(ui->btn_pip, nullptr, ui->btn_pop, InsetKeys::Pop::Exclusive, m_link, this);
    connect(m_insets, &InsetKeys::overlayChanged, m_front, &FrontPanel8000::setOverlay);
    // SET's PIP size key works only while there is a PIP to size.
    connect(m_insets, &InsetKeys::pipChanged, m_set, &Set::setPIP_size_unlock_falg_slots);
}

void RVX5350::DevTypeID(QString ip, uchar b4, uchar b5, QString hisIp, uchar h4, uchar h5)
{
    bindUnit(UnitAddress::fromText(ip, b4, b5), UnitAddress::fromText(hisIp, h4, h5));
}

void RVX5350::bindUnit(const UnitAddress &unit, const UnitAddress &his)
{
    m_link->bindBoards(unit, his);
    m_pipBox->bindUnit(unit, his);
    m_set->getDevIP(unit.text());
    m_link->readState();
}

bool RVX5350::stillBlinking() const
{
    return m_stillBlink->isActive();
}

void RVX5350::showInput(int input)
{
    if (input != 1 && input != 2)
        return;
    m_onAir = input;
    ui->g_in1->setStyleSheet(QString::fromLatin1(input == 1 ? S::OnAirBox : S::OffAirBox));
    ui->g_in2->setStyleSheet(QString::fromLatin1(input == 2 ? S::OnAirBox : S::OffAirBox));
    setLamp(ui->btn_in1, input == 1, KeySheet::GradientRed, KeySheet::GradientOff);
    setLamp(ui->btn_in2, input == 2, KeySheet::GradientRed, KeySheet::GradientOff);
}

void RVX5350::setInput(int input)
{
    showInput(input);
    m_link->programme(input);
}

void RVX5350::in1_in2_style()
{
    if (m_onAir)
        showInput(3 - m_onAir);
}

void RVX5350::on_btn_ds_clicked()
{
    LampKeys::flash(this, ui->btn_ds, ReadWaitMs, [this] { m_link->readState(); });
}

void RVX5350::on_btn_mute_clicked()
{
    ui->btn_mute->toggle();
    m_link->mute();
}

void RVX5350::on_btn_ch1_clicked()
{
    m_audio->press(0);
}

void RVX5350::on_btn_ch2_clicked()
{
    m_audio->press(1);
}

void RVX5350::set_audio_vol()
{
    m_audio->sendLevels();
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
        m_link->format(m_resolution);
    });
}

void RVX5350::setRate(int rate)
{
    m_rate = rate;
    ui->label_rate->setText(QString::fromLatin1(S::RateTexts[rate]));
    m_front->setRate(uint8_t(rate));
}

void RVX5350::on_btn_rate_clicked()
{
    LampKeys::flash(this, ui->btn_rate, KeyWaitMs, [this] {
        setRate((m_rate + 1) % RateCount);
        m_link->rate(m_rate + 1);
    });
}

void RVX5350::on_btn_rec_clicked()
{
    m_link->rec(ui->btn_rec->toggle());
}

void RVX5350::on_btn_rtmp_clicked()
{
    m_link->stream(ui->btn_rtmp->toggle());
}

void RVX5350::on_btn_micvol_clicked()
{
    LampKeys::flash(this, ui->btn_micvol, KeyWaitMs, nullptr);
}

void RVX5350::on_btn_still_clicked()
{
    m_stillBlink->toggle();
    m_link->still();
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
    showUnitState(UnitState::decode(m_link->stateLayout(), data));
}

void RVX5350::showUnitState(const UnitState &s)
{
    if (s.has(UnitState::Pgm))
        showInput(s.pgm());
    showSharedReport(s, m_front, m_audioMode, m_audio, m_insets);
    if (s.has(UnitState::Serial))
        m_set->on_toRead_5370SMDtat(s.serial());
    if (s.has(UnitState::PipSize)) {
        const int size = s.pipSize();
        setPIPSZ_Style(size);
        m_set->setPIP_S_V(size);
    }
    if (s.has(UnitState::PipV))
        m_pipBox->set_H_Vposition_Style(s.pipH(), s.pipV());
    if (s.has(UnitState::Still))
        m_stillBlink->showReported(s.still());
    if (s.has(UnitState::Mute))
        ui->btn_mute->setLit(s.mute());
    if (s.has(UnitState::Rate) && s.rate() < RateCount)
        setRate(s.rate());
    if (s.has(UnitState::Format)) {
        const int index = s.formatIndex();
        if (index >= 0)
            setResolution(index);
    }
}
