#include "rvx5310dialog.h"

#include "RVX8000/audiochannels.h"
#include "RVX8000/audiomodekey.h"
#include "RVX8000/frontpanel8000.h"
#include "RVX8000/insetkeys.h"
#include "RVX8000/keyblink.h"
#include "RVX8000/lampkeys.h"
#include "RVX8000/panelsetup8000.h"
#include "RVX8000/pip_body.h"
#include "RVX8000/report8000.h"
#include "RVX8000/resobody.h"
#include "SwitcherData/rvx5all_workdata.h"
#include "common/keysheet.h"
#include "rvx5310styles.h"
#include "ui_rvx5310dialog.h"

#include <QButtonGroup>
#include <QVBoxLayout>
#include <initializer_list>

namespace S = Rvx5310Styles;

namespace {

constexpr int KeyWaitMs = 200;
constexpr int ReadWaitMs = 400;
constexpr int RateCount = 3;
// The unit's audio levels run to 127, the sliders to 100.
constexpr double LevelScale = 1.27;

// Puts `sub` into `area`, filling it.
void embed(QWidget *area, QWidget *sub)
{
    auto *column = new QVBoxLayout(area);
    column->setContentsMargins(6, 6, 6, 6);
    column->addWidget(sub);
}

} // namespace

RVX5310Dialog::RVX5310Dialog(QWidget *parent) : QDialog(parent), ui(std::make_unique<Ui::RVX5310Dialog>())
{
    ui->setupUi(this);
    PanelSetup8000::dressWindow(this, S::WindowTitle, S::Window, false);
    m_link = new RVX5ALL_workdata(this);
    initPIP();
    initRESO();

    PanelSetup8000::style({ui->label_title, ui->label_version, ui->label_ch1, ui->label_ch2}, S::White);
    ui->label_pgm->setStyleSheet(QString::fromLatin1(S::Red));
    ui->label_pvw->setStyleSheet(QString::fromLatin1(S::Green));
    ui->label_rtmp->setStyleSheet(QString::fromLatin1(S::RedSpaced));
    ui->label_pop->setStyleSheet(QString::fromLatin1(S::GreenSpaced));
    PanelSetup8000::style({ui->g_upper, ui->g_below}, S::GroupBox);
    PanelSetup8000::style({ui->area_reso, ui->area_pip}, S::SubPanelFrame);
    ui->slider_ch1->setStyleSheet(QString::fromLatin1(S::Slider));
    ui->slider_ch2->setStyleSheet(QString::fromLatin1(S::Slider));
    ui->slider_video->setStyleSheet(QString::fromLatin1(S::Tbar));

    initUpper();
    initMiddle();
    initPGM_PVWCH();
    init_Toggle_key();
    connect(m_link, &RVX5ALL_workdata::stateReported, this, &RVX5310Dialog::showUnitState);

    // This unit has no F3, F4 or KEY function, and its rate is set by the unit's own menu.
    for (QWidget *key : std::initializer_list<QWidget *>{ui->btn_f3, ui->btn_f4, ui->btn_key}) {
        key->setEnabled(false);
        setKeySheet(key, QString::fromLatin1(KeySheet::GradientDisabled));
    }
    for (QWidget *key : {ui->btn_rate_1, ui->btn_rate_2, ui->btn_rate_3})
        key->hide();
}

RVX5310Dialog::~RVX5310Dialog() = default;

void RVX5310Dialog::initPIP()
{
    m_pip = new PIP_Body(ui->area_pip, m_link);
    embed(ui->area_pip, m_pip);
    // Shown while PIP is on.
    ui->area_pip->hide();
}

void RVX5310Dialog::initRESO()
{
    m_reso = new Resobody(ui->area_reso, m_link);
    embed(ui->area_reso, m_reso);
}

void RVX5310Dialog::initUpper()
{
    LampKeys::wire(this, {{ui->btn_f1, &RVX5310Dialog::on_btn_f1_clicked},
                          {ui->btn_reset, &RVX5310Dialog::on_btn_reset_clicked},
                          {ui->btn_ftb, &RVX5310Dialog::on_btn_ftb_clicked},
                          {ui->btn_ds, &RVX5310Dialog::on_btn_ds_clicked},
                          {ui->btn_rec, &RVX5310Dialog::on_btn_rec_clicked}});
    LampKeys::toggles({ui->btn_f1, ui->btn_ftb, ui->btn_rec}, KeySheet::GradientRed);
    m_ftbBlink = new KeyBlink(ui->btn_ftb);
    connect(ui->btn_reso, &QPushButton::clicked, this, &RVX5310Dialog::on_btn_reso_clicked);
    connect(ui->btn_f3, &QPushButton::clicked, this, &RVX5310Dialog::on_btn_f3_clicked);
    connect(ui->btn_f4, &QPushButton::clicked, this, &RVX5310Dialog::on_btn_f4_clicked);
    on_btn_reso_clicked(false);

    m_rateKeys = new QButtonGroup(this);
    QPushButton *const rateKeys[RateCount] = {ui->btn_rate_1, ui->btn_rate_2, ui->btn_rate_3};
    for (int i = 0; i < RateCount; ++i)
        m_rateKeys->addButton(rateKeys[i], i);
    connect(m_rateKeys, &QButtonGroup::idClicked, this, &RVX5310Dialog::on_btnGrp_Rate_clicked);
}

void RVX5310Dialog::initMiddle()
{
    LampKeys::wire(this, {{ui->btn_ch1, &RVX5310Dialog::on_btn_ch1_clicked},
                          {ui->btn_ch2, &RVX5310Dialog::on_btn_ch2_clicked},
                          {ui->btn_pause, &RVX5310Dialog::on_btn_pause_clicked},
                          {ui->btn_mute, &RVX5310Dialog::on_btn_mute_clicked},
                          {ui->btn_still, &RVX5310Dialog::on_btn_still_clicked}});
    LampKeys::toggles({ui->btn_pause, ui->btn_mute, ui->btn_still}, KeySheet::GradientRed);
    m_audioMode = new AudioModeKey(ui->btn_afv, ui->btn_mix, ui->btn_ch1, ui->btn_ch2, m_link, this);
    connect(ui->slider_ch1, &QSlider::valueChanged, this, &RVX5310Dialog::set_audio_vol);
    connect(ui->slider_ch2, &QSlider::valueChanged, this, &RVX5310Dialog::set_audio_vol);
    m_audio =
        new AudioChannels(this, m_link, {ui->btn_ch1, ui->label_ch1, ui->slider_ch1},
                          {ui->btn_ch2, ui->label_ch2, ui->slider_ch2}, AudioChannels::mainList(LevelScale));
}

void RVX5310Dialog::initPGM_PVWCH()
{
    QButtonGroup *pgm =
        FrontPanel8000::inputRow(this, {ui->btn_pgm1, ui->btn_pgm2, ui->btn_pgm3, ui->btn_pgm4});
    QButtonGroup *pvw =
        FrontPanel8000::inputRow(this, {ui->btn_pvw1, ui->btn_pvw2, ui->btn_pvw3, ui->btn_pvw4});
    pgm->addButton(ui->btn_pgm_bar, FrontPanel8000::BarId);
    pvw->addButton(ui->btn_pvw_bar, FrontPanel8000::BarId);

    FrontPanel8000::Keys keys;
    keys.pgm = pgm;
    keys.pvw = pvw;
    keys.cut = ui->btn_cut;
    keys.autoKey = ui->btn_auto;
    keys.fader = ui->slider_video;
    keys.transitions = FrontPanel8000::transitionRow(this, ui->btn_mix_t, ui->btn_fade, ui->btn_wipe);
    FrontPanel8000::Hooks hooks;
    hooks.digitRow = pvw;
    hooks.shiftDigitRow = pgm;
    m_front = new FrontPanel8000(this, m_link, keys, hooks);
}

void RVX5310Dialog::init_Toggle_key()
{
    // PIP, KEY and POP (F2) each switch on their own; while the key pressed last is on, CUT
    // changes the inset instead of the buses. The PIP settings show while PIP is on.
    m_insets = new InsetKeys(ui->btn_pip, ui->btn_key, ui->btn_f2, InsetKeys::Pop::Beside, m_link, this);
    connect(m_insets, &InsetKeys::overlayChanged, m_front, &FrontPanel8000::setOverlay);
    connect(m_insets, &InsetKeys::pipChanged, ui->area_pip, &QWidget::setVisible);
}

void RVX5310Dialog::DevTypeID(QString ip, uchar b4, uchar b5, QString hisIp, uchar h4, uchar h5)
{
    bindUnit(UnitAddress::fromText(ip, b4, b5), UnitAddress::fromText(hisIp, h4, h5));
}

void RVX5310Dialog::bindUnit(const UnitAddress &unit, const UnitAddress &his)
{
    m_link->bindBoards(unit, his);
    m_link->readState();
}

bool RVX5310Dialog::ftbBlinking() const
{
    return m_ftbBlink->isActive();
}

void RVX5310Dialog::on_btn_f1_clicked()
{
    m_link->stream(ui->btn_f1->toggle());
}

void RVX5310Dialog::on_btn_ftb_clicked()
{
    m_ftbBlink->toggle();
    m_link->ftb();
}

void RVX5310Dialog::on_btn_rec_clicked()
{
    m_link->rec(LampKeys::toggleRecord(ui->btn_rec, ui->btn_pause));
}

void RVX5310Dialog::on_btn_pause_clicked()
{
    ui->btn_pause->toggle();
    m_link->pause();
}

void RVX5310Dialog::on_btn_still_clicked()
{
    ui->btn_still->toggle();
    m_link->still();
}

void RVX5310Dialog::on_btn_mute_clicked()
{
    ui->btn_mute->toggle();
    m_link->mute();
}

void RVX5310Dialog::on_btn_reset_clicked()
{
    LampKeys::flash(this, ui->btn_reset, KeyWaitMs, [this] { m_link->reset(); });
}

void RVX5310Dialog::on_btn_ds_clicked()
{
    LampKeys::flash(this, ui->btn_ds, ReadWaitMs, [this] { m_link->readState(); });
}

void RVX5310Dialog::on_btn_ch1_clicked()
{
    m_audio->press(0);
}

void RVX5310Dialog::on_btn_ch2_clicked()
{
    m_audio->press(1);
}

void RVX5310Dialog::on_btn_reso_clicked(bool checked)
{
    // Lit while the format list is shown.
    ui->area_reso->setVisible(!checked);
    setLamp(ui->btn_reso, !checked, KeySheet::GradientGreen, KeySheet::GradientOff);
}

void RVX5310Dialog::on_btn_f3_clicked(bool checked)
{
    ui->btn_f3->setCheckable(true);
    if (checked)
        setKeySheet(ui->btn_f3, QString::fromLatin1(KeySheet::GradientOff));
}

void RVX5310Dialog::on_btn_f4_clicked(bool checked)
{
    ui->btn_f4->setCheckable(true);
    if (checked)
        setKeySheet(ui->btn_f4, QString::fromLatin1(KeySheet::GradientOff));
}

void RVX5310Dialog::showRate(int rate)
{
    for (QAbstractButton *key : m_rateKeys->buttons())
        setLamp(key, m_rateKeys->id(key) == rate, KeySheet::GradientGreen, KeySheet::GradientOff);
    m_front->setRate(uint8_t(rate));
}

void RVX5310Dialog::on_btnGrp_Rate_clicked(int id)
{
    showRate(id);
    m_link->rate(id + 1);
}

void RVX5310Dialog::set_audio_vol()
{
    m_audio->sendLevels();
}

void RVX5310Dialog::on_toRead_5370Dtat(const QByteArray &data)
{
    showUnitState(UnitState::decode(m_link->stateLayout(), data));
}

void RVX5310Dialog::showUnitState(const UnitState &s)
{
    // What the unit reports is shown, never sent back (but for the format list, whose change
    // the unit expects to hear again).
    showSharedReport(s, m_front, m_audioMode, m_audio, m_insets);
    if (s.has(UnitState::Ftb))
        m_ftbBlink->showReported(s.ftb());
    m_pip->showReport(s);
    if (s.has(UnitState::Still))
        ui->btn_still->setLit(s.still());
    if (s.has(UnitState::Mute))
        ui->btn_mute->setLit(s.mute());
    if (s.has(UnitState::Rate)) {
        const int rate = s.rate();
        if (rate < RateCount)
            showRate(rate);
    }
    if (s.has(UnitState::Format))
        m_reso->setPGMState(uint8_t(s.format()));
}
