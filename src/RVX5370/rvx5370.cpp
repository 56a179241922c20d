#include "rvx5370.h"

#include "RVX8000/f1qwidget.h"
#include "RVX8000/panelsetup8000.h"
#include "RVX8000/pipgro.h"
#include "RVX8000/setdialog.h"
#include "SwitcherData/protocol.h"
#include "rvx5370styles.h"
#include "ui_rvx5370.h"

namespace S = Rvx5370Styles;
using namespace Protocol;

namespace {

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

RVX5370::RVX5370(QWidget *parent)
    : Panel8000<QWidget>(parent, Family::Rvx5370), ui(std::make_unique<Ui::RVX5370>())
{
    ui->setupUi(this);
    PanelSetup8000::dressWindow(this, S::WindowTitle, S::Window, true);

    m_pipBox = PanelSetup8000::previewBox<PIPGro>(ui->pip_area, link());
    // Both sub-widgets take the same place on the panel; one at a time is shown.
    m_f1 = new F1QWidget(ui->sub_area, link());
    PanelSetup8000::placeSub(m_f1, S::F1Name, S::F1Title, QSize(300, 222));
    m_set = new SetDialog(ui->sub_area, link());
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
    initKeys();

    connect(m_set, &SetDialog::setPIPSZ_Style, this, &RVX5370::setPIPSZ_Style);
    connect(m_set, &SetDialog::setRATE_Style, this, &RVX5370::setRATE_Style);
}

RVX5370::~RVX5370() = default;

void RVX5370::initKeys()
{
    LampKeys::wire(this, {{ui->btn_bar, &RVX5370::on_btn_bar_clicked},
                          {ui->btn_f1, &RVX5370::on_btn_f1_clicked},
                          {ui->btn_set, &RVX5370::on_btn_set_clicked}});
    LampKeys::toggles({ui->btn_bar}, KeySheet::GradientRed);

    Keys keys;
    keys.front.pgm = FrontPanel8000::inputRow(this, {ui->btn_pgm1, ui->btn_pgm2, ui->btn_pgm3, ui->btn_pgm4});
    keys.front.pvw = FrontPanel8000::inputRow(this, {ui->btn_pvw1, ui->btn_pvw2, ui->btn_pvw3, ui->btn_pvw4});
    keys.front.cut = ui->btn_cut;
    keys.front.autoKey = ui->btn_auto;
    keys.front.fader = ui->slider_video;
    keys.front.transitions = FrontPanel8000::transitionRow(this, ui->btn_mix_t, ui->btn_fade, ui->btn_wipe);
    keys.hooks.digitRow = keys.front.pvw;
    keys.hooks.shiftDigitRow = keys.front.pgm;
    // PIP and KEY each switch on their own; POP ends both and either ends POP.
    keys.pip = ui->btn_pip;
    keys.key = ui->btn_key;
    keys.pop = ui->btn_pop;
    keys.afv = ui->btn_afv;
    keys.ch1 = {ui->btn_ch1, ui->label_ch1, ui->slider_ch1};
    keys.ch2 = {ui->btn_ch2, ui->label_ch2, ui->slider_ch2};
    keys.sources = sources();
    keys.ds = ui->btn_ds;
    keys.mute = ui->btn_mute;
    keys.rec = ui->btn_rec;
    keys.pause = ui->btn_pause;
    keys.stream = ui->btn_rtmp;
    keys.ftb = ui->btn_ftb;
    keys.still = ui->btn_still;
    initFrame(keys);
    // SET's PIP size key works only while there is a PIP to size.
    connect(insets(), &InsetKeys::pipChanged, m_set, &SetDialog::setPIP_size_unlock_falg_slots);
}

void RVX5370::unitBound(const UnitAddress &unit)
{
    m_set->getDevIP(unit.text());
    m_f1->getDevIP(unit.text());
    // F1 shows the unit's address: it has one now.
    ui->btn_f1->setEnabled(true);
}

void RVX5370::on_btn_bar_clicked()
{
    // The bars go to both buses, programme first.
    link()->bar(ui->btn_bar->toggle());
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
    front()->setRate(uint8_t(rate));
}

void RVX5370::m_on_toRead_5370Dtat(const QByteArray &data)
{
    showUnitState(UnitState::decode(link()->stateLayout(), data));
}

void RVX5370::showUnitState(const UnitState &s)
{
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
