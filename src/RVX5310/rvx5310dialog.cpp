#include "rvx5310dialog.h"

#include "RVX8000/panelsetup8000.h"
#include "RVX8000/pip_body.h"
#include "RVX8000/resobody.h"
#include "rvx5310styles.h"
#include "ui_rvx5310dialog.h"

#include <QButtonGroup>
#include <QVBoxLayout>
#include <initializer_list>

namespace S = Rvx5310Styles;

namespace {

constexpr int KeyWaitMs = 200;
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

RVX5310Dialog::RVX5310Dialog(QWidget *parent)
    : Panel8000<QDialog>(parent, Family::Rvx5310), ui(std::make_unique<Ui::RVX5310Dialog>())
{
    ui->setupUi(this);
    PanelSetup8000::dressWindow(this, S::WindowTitle, S::Window, false);
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
    initPGM_PVWCH();

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
    m_pip = new PIP_Body(ui->area_pip, link());
    embed(ui->area_pip, m_pip);
    // Shown while PIP is on.
    ui->area_pip->hide();
}

void RVX5310Dialog::initRESO()
{
    m_reso = new Resobody(ui->area_reso, link());
    embed(ui->area_reso, m_reso);
}

void RVX5310Dialog::initUpper()
{
    LampKeys::wire(this, {{ui->btn_reset, &RVX5310Dialog::on_btn_reset_clicked}});
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

void RVX5310Dialog::initPGM_PVWCH()
{
    Keys keys;
    QButtonGroup *pgm =
        FrontPanel8000::inputRow(this, {ui->btn_pgm1, ui->btn_pgm2, ui->btn_pgm3, ui->btn_pgm4});
    QButtonGroup *pvw =
        FrontPanel8000::inputRow(this, {ui->btn_pvw1, ui->btn_pvw2, ui->btn_pvw3, ui->btn_pvw4});
    pgm->addButton(ui->btn_pgm_bar, FrontPanel8000::BarId);
    pvw->addButton(ui->btn_pvw_bar, FrontPanel8000::BarId);
    keys.front.pgm = pgm;
    keys.front.pvw = pvw;
    keys.front.cut = ui->btn_cut;
    keys.front.autoKey = ui->btn_auto;
    keys.front.fader = ui->slider_video;
    keys.front.transitions = FrontPanel8000::transitionRow(this, ui->btn_mix_t, ui->btn_fade, ui->btn_wipe);
    keys.hooks.digitRow = pvw;
    keys.hooks.shiftDigitRow = pgm;
    // PIP, KEY and POP (F2) each switch on their own; while the key pressed last is on, CUT
    // changes the inset instead of the buses.
    keys.pip = ui->btn_pip;
    keys.key = ui->btn_key;
    keys.pop = ui->btn_f2;
    keys.popRule = InsetKeys::Pop::Beside;
    keys.afv = ui->btn_afv;
    keys.mix = ui->btn_mix;
    keys.ch1 = {ui->btn_ch1, ui->label_ch1, ui->slider_ch1};
    keys.ch2 = {ui->btn_ch2, ui->label_ch2, ui->slider_ch2};
    keys.sources = AudioChannels::mainList(LevelScale);
    keys.ds = ui->btn_ds;
    keys.mute = ui->btn_mute;
    keys.rec = ui->btn_rec;
    keys.pause = ui->btn_pause;
    keys.stream = ui->btn_f1;
    keys.ftb = ui->btn_ftb;
    keys.still = ui->btn_still;
    initFrame(keys);
    // The PIP settings show while PIP is on.
    connect(insets(), &InsetKeys::pipChanged, ui->area_pip, &QWidget::setVisible);
}

void RVX5310Dialog::on_btn_reset_clicked()
{
    LampKeys::flash(this, ui->btn_reset, KeyWaitMs, [this] { link()->reset(); });
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
    front()->setRate(uint8_t(rate));
}

void RVX5310Dialog::on_btnGrp_Rate_clicked(int id)
{
    showRate(id);
    // The keys count from 0, the rate keys of UnitControl from 1.
    link()->rate(id + 1);
}

void RVX5310Dialog::on_toRead_5370Dtat(const QByteArray &data)
{
    showUnitState(UnitState::decode(link()->stateLayout(), data));
}

void RVX5310Dialog::showUnitState(const UnitState &s)
{
    // What the unit reports is shown, never sent back (but for the format list, whose change
    // the unit expects to hear again).
    showSharedState(s);
    m_pip->showReport(s);
    if (s.has(UnitState::Rate)) {
        const int rate = s.rate();
        if (rate < RateCount)
            showRate(rate);
    }
    if (s.has(UnitState::Format))
        m_reso->setPGMState(uint8_t(s.format()));
}
