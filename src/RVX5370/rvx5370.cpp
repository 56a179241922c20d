#include "rvx5370.h"

#include "RVX8000/audiochannels.h"
#include "RVX8000/audiomodekey.h"
#include "RVX8000/f1qwidget.h"
#include "RVX8000/frontpanel8000.h"
#include "RVX8000/insetkeys.h"
#include "RVX8000/keyblink.h"
#include "RVX8000/lampkeys.h"
#include "RVX8000/panelsetup8000.h"
#include "RVX8000/pipgro.h"
#include "RVX8000/report8000.h"
#include "RVX8000/setdialog.h"
#include "SwitcherData/protocol.h"
#include "SwitcherData/rvx5all_workdata.h"
#include "common/keysheet.h"
#include "rvx5370styles.h"
#include "ui_rvx5370.h"

namespace S = Rvx5370Styles;
using namespace Protocol;

namespace {

constexpr int ReadWaitMs = 400;
constexpr uint8_t PhoneInCode = 0x07;

// The main list, but for the phone input's own label; the unit takes the levels as the
// sliders give them, unscaled.
AudioChannels::Sources sources()
{
    AudioChannels::Sources sources = AudioChannels::mainList(1.0);
    sources.name = [](int index) {
        const AudioSource &source = AudioSources[index];
        return QString::fromLatin1(source.code == PhoneInCode ? S::PhoneIn : source.name);
    };
    return sources;
}

} // namespace

RVX5370::RVX5370(QWidget *parent) : QWidget(parent), ui(std::make_unique<Ui::RVX5370>())
{
    ui->setupUi(this);
    PanelSetup8000::dressWindow(this, S::WindowTitle, S::Window, true);
    m_link = new RVX5ALL_workdata(this);
    m_link->setFamily(Family::Rvx5370);

    ui->pip_area->setStyleSheet(QString::fromLatin1(S::PreviewArea));
    m_pipBox = new PIPGro(m_link, ui->pip_area);
    m_pipBox->setStyleSheet(QString::fromLatin1(S::PreviewBox));
    // Both sub-widgets take the same place on the panel; one at a time is shown.
    m_f1 = new F1QWidget(ui->sub_area, m_link);
    PanelSetup8000::placeSub(m_f1, S::F1Name, S::F1Title, QSize(300, 222));
    m_set = new SetDialog(ui->sub_area, m_link);
    // Drawn inside the panel, not as a window of its own: the panel keeps the keyboard.
    m_set->setWindowFlags(Qt::Widget);
    m_set->move(0, 0);
    PanelSetup8000::placeSub(m_set, S::SetName, S::SetTitle, QSize(300, 268));

    PanelSetup8000::style(
        {ui->label_title, ui->label_version, ui->label_ch1, ui->label_ch2, ui->label_reso, ui->label_pip_sz},
        S::White);
    ui->label_pgm->setStyleSheet(QString::fromLatin1(S::Red));
    ui->label_pvw->setStyleSheet(QString::fromLatin1(S::Green));
    ui->label_rate->setStyleSheet(QString::fromLatin1(S::Green));
    PanelSetup8000::style({ui->g_upper, ui->g_audio, ui->g_transition, ui->g_pip, ui->g_bus, ui->g_fader},
                          S::GroupBox);

    ui->slider_video->setStyleSheet(QString::fromLatin1(S::Tbar));
    initUpper();
    initBelow();

    connect(m_link, &RVX5ALL_workdata::stateReported, this, &RVX5370::showUnitState);
    connect(m_set, &SetDialog::setPIPSZ_Style, this, &RVX5370::setPIPSZ_Style);
    connect(m_set, &SetDialog::setRATE_Style, this, &RVX5370::setRATE_Style);
}

RVX5370::~RVX5370() = default;

void RVX5370::initUpper()
{
    LampKeys::wire(this, {{ui->btn_rec, &RVX5370::on_btn_rec_clicked},
                          {ui->btn_rtmp, &RVX5370::on_btn_rtmp_clicked},
                          {ui->btn_ftb, &RVX5370::on_btn_ftb_clicked},
                          {ui->btn_still, &RVX5370::on_btn_still_clicked},
                          {ui->btn_bar, &RVX5370::on_btn_bar_clicked},
                          {ui->btn_pause, &RVX5370::on_btn_pause_clicked},
                          {ui->btn_ds, &RVX5370::on_btn_ds_clicked}});
    LampKeys::toggles({ui->btn_rec, ui->btn_rtmp, ui->btn_ftb, ui->btn_still, ui->btn_bar, ui->btn_pause},
                      KeySheet::GradientRed);
    m_ftbBlink = new KeyBlink(ui->btn_ftb);
}

void RVX5370::initBelow()
{
    LampKeys::wire(this, {{ui->btn_f1, &RVX5370::on_btn_f1_clicked},
                          {ui->btn_ch1, &RVX5370::on_btn_ch1_clicked},
                          {ui->btn_set, &RVX5370::on_btn_set_clicked},
                          {ui->btn_mute, &RVX5370::on_btn_mute_clicked},
                          {ui->btn_ch2, &RVX5370::on_btn_ch2_clicked}});
    ui->btn_mute->setSheets(KeySheet::GradientRed, KeySheet::GradientOff);
    connect(ui->slider_ch1, &QSlider::valueChanged, this, &RVX5370::set_audio_vol);
    connect(ui->slider_ch2, &QSlider::valueChanged, this, &RVX5370::set_audio_vol);
    m_audioMode = new AudioModeKey(ui->btn_afv, ui->btn_ch1, ui->btn_ch2, m_link, this);
    m_audio = new AudioChannels(this, m_link, {ui->btn_ch1, ui->label_ch1, ui->slider_ch1},
                                {ui->btn_ch2, ui->label_ch2, ui->slider_ch2}, sources());

    FrontPanel8000::Keys keys8000;
    keys8000.pgm = FrontPanel8000::inputRow(this, {ui->btn_pgm1, ui->btn_pgm2, ui->btn_pgm3, ui->btn_pgm4});
    keys8000.pvw = FrontPanel8000::inputRow(this, {ui->btn_pvw1, ui->btn_pvw2, ui->btn_pvw3, ui->btn_pvw4});
    keys8000.cut = ui->btn_cut;
    keys8000.autoKey = ui->btn_auto;
    keys8000.fader = ui->slider_video;
    keys8000.transitions = FrontPanel8000::transitionRow(this, ui->btn_mix_t, ui->btn_fade, ui->btn_wipe);
    FrontPanel8000::Hooks hooks;
    hooks.digitRow = keys8000.pvw;
    hooks.shiftDigitRow = keys8000.pgm;
    m_front = new FrontPanel8000(this, m_link, keys8000, hooks);

    // PIP and KEY each switch on their own; POP ends both and either ends POP.
    m_insets = new InsetKeys(ui->btn_pip, ui->btn_key, ui->btn_pop, InsetKeys::Pop::Exclusive, m_link, this);
    connect(m_insets, &InsetKeys::overlayChanged, m_front, &FrontPanel8000::setOverlay);
    // SET's PIP size key works only while there is a PIP to size.
    connect(m_insets, &InsetKeys::pipChanged, m_set, &SetDialog::setPIP_size_unlock_falg_slots);
}

void RVX5370::DevTypeID(QString ip, uchar b4, uchar b5, QString hisIp, uchar h4, uchar h5)
{
    bindUnit(UnitAddress::fromText(ip, b4, b5), UnitAddress::fromText(hisIp, h4, h5));
}

void RVX5370::bindUnit(const UnitAddress &unit, const UnitAddress &his)
{
    m_link->bindBoards(unit, his);
    m_pipBox->bindUnit(unit, his);
    m_set->getDevIP(unit.text());
    m_f1->getDevIP(unit.text());
    // F1 shows the unit's address: it has one now.
    ui->btn_f1->setEnabled(true);
    m_link->readState();
}

bool RVX5370::ftbBlinking() const
{
    return m_ftbBlink->isActive();
}

void RVX5370::on_btn_rec_clicked()
{
    m_link->rec(LampKeys::toggleRecord(ui->btn_rec, ui->btn_pause));
}

void RVX5370::on_btn_rtmp_clicked()
{
    m_link->stream(ui->btn_rtmp->toggle());
}

void RVX5370::on_btn_ftb_clicked()
{
    m_ftbBlink->toggle();
    m_link->ftb();
}

void RVX5370::on_btn_still_clicked()
{
    ui->btn_still->toggle();
    m_link->still();
}

void RVX5370::on_btn_bar_clicked()
{
    // The bars go to both buses, programme first.
    m_link->bar(ui->btn_bar->toggle());
}

void RVX5370::on_btn_pause_clicked()
{
    ui->btn_pause->toggle();
    m_link->pause();
}

void RVX5370::on_btn_ds_clicked()
{
    LampKeys::flash(this, ui->btn_ds, ReadWaitMs, [this] { m_link->readState(); });
}

void RVX5370::on_btn_mute_clicked()
{
    ui->btn_mute->toggle();
    m_link->mute();
}

void RVX5370::showSubWidget(QWidget *shown, QWidget *hidden)
{
    hidden->hide();
    shown->setVisible(!shown->isVisibleTo(this));
    setLamp(ui->btn_f1, m_f1->isVisibleTo(this), KeySheet::GradientGreen, KeySheet::GradientOff);
    setLamp(ui->btn_set, m_set->isVisibleTo(this), KeySheet::GradientGreen, KeySheet::GradientOff);
}

void RVX5370::on_btn_f1_clicked()
{
    showSubWidget(m_f1, m_set);
}

void RVX5370::on_btn_set_clicked()
{
    showSubWidget(m_set, m_f1);
}

void RVX5370::on_btn_ch1_clicked()
{
    m_audio->press(0);
}

void RVX5370::on_btn_ch2_clicked()
{
    m_audio->press(1);
}

void RVX5370::set_audio_vol()
{
    m_audio->sendLevels();
}

void RVX5370::setPIPSZ_Style(int size)
{
    if (size < 0 || size >= PIPGro::SizeCount)
        return;
    ui->label_pip_sz->setText(QString::fromLatin1(S::PipSizeTexts[size]));
    m_pipBox->setRARE_V(size);
}

void RVX5370::setRATE_Style(int rate)
{
    if (rate < 0 || rate > 2)
        return;
    ui->label_rate->setText(QString::fromLatin1(S::RateTexts[rate]));
    m_front->setRate(uint8_t(rate));
}

void RVX5370::m_on_toRead_5370Dtat(const QByteArray &data)
{
    showUnitState(UnitState::decode(m_link->stateLayout(), data));
}

void RVX5370::showUnitState(const UnitState &s)
{
    showSharedReport(s, m_front, m_audioMode, m_audio, m_insets);
    if (s.has(UnitState::Serial))
        m_set->on_toRead_5370SMDtat(s.serial());
    if (s.has(UnitState::Ftb))
        m_ftbBlink->showReported(s.ftb());
    if (s.has(UnitState::PipSize)) {
        const int size = s.pipSize();
        setPIPSZ_Style(size);
        m_set->setPIP_S_V(size);
    }
    if (s.has(UnitState::PipV))
        m_pipBox->set_H_Vposition_Style(s.pipH(), s.pipV());
    if (s.has(UnitState::Still))
        ui->btn_still->setLit(s.still());
    if (s.has(UnitState::Mute))
        ui->btn_mute->setLit(s.mute());
    if (s.has(UnitState::Rate)) {
        const int rate = s.rate();
        setRATE_Style(rate);
        m_set->setRARE_V(rate);
    }
    if (s.has(UnitState::Format)) {
        const int index = s.formatIndex();
        if (index >= 0) {
            ui->label_reso->setText(QString::fromLatin1(OutputFormats[index].name));
            m_set->setRESO_V(index);
        }
    }
}
