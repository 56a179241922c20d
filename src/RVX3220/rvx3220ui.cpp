#include "rvx3220ui.h"

#include "SwitcherData/rvx3220_workdata.h"
#include "audio.h"
#include "common/centre.h"
#include "common/fontsubstitutes.h"
#include "common/keyflash.h"
#include "common/keysheet.h"
#include "common/panelkeys.h"
#include "common/pictureiconengine.h"
#include "common/pixmapcachesweep.h"
#include "devlog.h"
#include "ipdialog.h"
#include "pgm.h"
#include "pip.h"
#include "pop.h"
#include "pvw.h"
#include "rvx3220styles.h"
#include "transitions.h"

#include <QButtonGroup>
#include <QFont>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QTimer>

namespace {

constexpr int NarrowWidth = 1000;
constexpr int WideWidth = 1280;
constexpr int Height = 600;
constexpr int TbarMax = 126;
// How long the unit's automatic transition takes; the buses swap when it is over.
constexpr int AutoTransitionMs = 900;
constexpr int CutLampMs = 300;

} // namespace

RVX3220UI::RVX3220UI(QWidget *parent) : QDialog(parent)
{
    // Its keys' pictures come from their sheets and are restyled with every state reply.
    PictureIconEngine::install();
    PixmapCacheSweep::install();
    m_reachedMax = m_reachedMin = m_strokeBack = m_pipOn = m_popOn = false;
    init();
}

void RVX3220UI::init()
{
    // The model caption names a font Debian lacks; its stand-in must be known before the
    // caption is measured, wherever the panel is built.
    registerFontSubstitutes();
    setWindowTitle(QString::fromLatin1(RVX3220Styles::WindowTitle));
    centreWindow(this, {NarrowWidth, Height}, CentreOn::PrimaryScreen);
    setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint);
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(QString::fromLatin1(RVX3220Styles::Window));
    initUI1();
    initUI2();
}

void RVX3220UI::initUI1()
{
    m_modelLabel = new QLabel(QString::fromLatin1(RVX3220Styles::ModelText), this);
    m_divider = new QLabel(this);
    m_tbar = new QSlider(Qt::Vertical, this);
    m_pipBtn = new QPushButton(this);
    m_popBtn = new QPushButton(this);
    m_cut = new QPushButton(this);
    m_auto = new QPushButton(this);
    m_settings = new QPushButton(this);
    m_return = new QPushButton(this);
    m_version = new QLabel(QString::fromLatin1(RVX3220Styles::VersionText), this);
    m_link = new RVX3220_workdata(this);
    m_titleBar = new Devlog(this, m_link);
    m_audio = new AUDIO(this, m_link);
    m_transitions = new Transitions(this, m_link);
    m_pgm = new PGM(this, m_link);
    m_pvw = new PVW(this, m_link);
    m_pip = new PIP(this, m_link);
    m_pop = new POP(this, m_link);
    m_cutTimer = new QTimer(this);

    btnCutStyle(false);
    btnAutoStyle(false);
    btnPIPStyle(false);
    btnPOPStyle(false);

    m_modelLabel->setStyleSheet(QString::fromUtf8(RVX3220Styles::ModelLabel));
    m_version->setStyleSheet(QString::fromLatin1(RVX3220Styles::VersionLabel));
    // The label is 54 x 12: the desktop's text size (12 pt offscreen, often 10 or 11 pt) runs
    // "V1.0.0" past it. 10 pixels is the size whose line fits the box.
    QFont versionFont = m_version->font();
    versionFont.setPixelSize(10);
    m_version->setFont(versionFont);
    setKeySheet(m_divider, KeySheet::text(RVX3220Styles::DividerHidden));
    m_tbar->setStyleSheet(QString::fromLatin1(RVX3220Styles::TbarGroove) +
                          QString::fromLatin1(RVX3220Styles::TbarHandle));
    m_settings->setStyleSheet(QString::fromLatin1(RVX3220Styles::SettingsButton));
    m_return->setStyleSheet(QString::fromLatin1(RVX3220Styles::ReturnButton));
    for (QPushButton *key : {m_pipBtn, m_popBtn, m_cut, m_auto, m_settings, m_return})
        key->setCursor(Qt::PointingHandCursor);
    m_tbar->setRange(0, TbarMax);

    connect(m_tbar, &QSlider::valueChanged, this, &RVX3220UI::setslider0);
    connect(m_cut, &QPushButton::clicked, this, &RVX3220UI::setBtncut);
    connect(m_auto, &QPushButton::clicked, this, &RVX3220UI::setBtnAUTO);
    connect(m_pipBtn, &QPushButton::clicked, this, &RVX3220UI::setBtnPIP);
    connect(m_popBtn, &QPushButton::clicked, this, &RVX3220UI::setBtnPOP);
    connect(m_settings, &QPushButton::clicked, this, &RVX3220UI::setBtnip);
    connect(m_return, &QPushButton::clicked, this, &QDialog::close);
    PanelKeys::Keys keys;
    keys.cut = m_cut;
    keys.autoKey = m_auto;
    keys.preview = m_pvw->buttonGroup()->buttons();
    keys.program = m_pgm->buttonGroup()->buttons();
    new PanelKeys(this, std::move(keys));
    // Connected once, not on every cut: turning the lamp off twice looks the same as once.
    connect(m_cutTimer, &QTimer::timeout, this, &RVX3220UI::setTimercut);
}

void RVX3220UI::initUI2()
{
    m_titleBar->setGeometry(0, 0, NarrowWidth, 30);
    m_audio->setGeometry(40, 95, 320, 220);
    m_transitions->setGeometry(390, 95, 250, 220);
    m_pgm->setGeometry(40, 340, 610, 125);
    m_pvw->setGeometry(40, 450, 610, 125);
    m_modelLabel->setGeometry(730, 70, 140, 70);
    m_pipBtn->setGeometry(700, 180, 55, 55);
    m_popBtn->setGeometry(850, 180, 55, 55);
    m_auto->setGeometry(850, 310, 66, 63);
    m_cut->setGeometry(850, 460, 66, 63);
    m_tbar->setGeometry(680, 280, 110, 300);
    m_divider->setGeometry(950, 30, 10, 570);
    m_settings->setGeometry(5, 575, 20, 20);
    m_return->setGeometry(0, 50, 30, 30);
    m_pip->setGeometry(1000, 150, 250, 350);
    m_pop->setGeometry(1000, 150, 250, 350);
    m_version->setGeometry(950, 575, 54, 12);
    m_pip->close();
    m_pop->close();
}

void RVX3220UI::DevTypeID(QString ip, quint8 classByte, quint8 numberByte)
{
    m_link->DevTypeID(ip, classByte, numberByte);
}

void RVX3220UI::bindUnit(const UnitAddress &unit, const UnitAddress &his)
{
    m_link->bindBoards(unit, his);
}

void RVX3220UI::done(int result)
{
    // The next panel gets port 7000 even if this one is kept.
    m_link->releasePort();
    QDialog::done(result);
}

void RVX3220UI::btnCutStyle(bool lit)
{
    setKeySheet(m_cut, KeySheet::borderImage(lit ? RVX3220Styles::CutLit : RVX3220Styles::CutUnlit));
}

void RVX3220UI::btnAutoStyle(bool lit)
{
    setKeySheet(m_auto, KeySheet::borderImage(lit ? RVX3220Styles::AutoLit : RVX3220Styles::AutoUnlit));
}

void RVX3220UI::btnPIPStyle(bool lit)
{
    setKeySheet(m_pipBtn, KeySheet::borderImage(lit ? RVX3220Styles::PipLit : RVX3220Styles::PipUnlit));
}

void RVX3220UI::btnPOPStyle(bool lit)
{
    setKeySheet(m_popBtn, KeySheet::borderImage(lit ? RVX3220Styles::PopLit : RVX3220Styles::PopUnlit));
}

void RVX3220UI::setPGM_PVWCH()
{
    const quint8 onAir = m_pgm->BtnPGMstate();
    const quint8 next = m_pvw->BtnPVWstate();
    m_pgm->setPGMCHstate(next);
    m_pvw->setPVWCHstate(onAir);
}

void RVX3220UI::setBtncut()
{
    btnCutStyle(true);
    m_link->cut();
    // With an inset on, a cut changes the inset's source, not the buses.
    if (!m_pipOn)
        setPGM_PVWCH();
    m_cutTimer->start(CutLampMs);
}

void RVX3220UI::setTimercut()
{
    btnCutStyle(false);
    m_cutTimer->stop();
}

void RVX3220UI::setBtnAUTO()
{
    flashKey(
        this, AutoTransitionMs, [this](bool lit) { btnAutoStyle(lit); }, [this] { m_link->autoTransition(); },
        [this] {
            if (!m_pipOn)
                setPGM_PVWCH();
        });
}

void RVX3220UI::setBtnPIP()
{
    switchInset(m_pipOn, m_popOn, m_pip, m_pop, &UnitControl::pip, &RVX3220UI::btnPIPStyle);
}

void RVX3220UI::setBtnPOP()
{
    switchInset(m_popOn, m_pipOn, m_pop, m_pip, &UnitControl::pop, &RVX3220UI::btnPOPStyle);
}

void RVX3220UI::switchInset(bool &on, bool &otherOn, QWidget *pane, QWidget *otherPane,
                            bool (UnitControl::*send)(bool), void (RVX3220UI::*lamp)(bool))
{
    btnPIPStyle(false);
    btnPOPStyle(false);
    if (!on) {
        setRightUIshow();
        otherPane->close();
        pane->show();
        (m_link->*send)(true);
        (this->*lamp)(true);
        on = true;
    } else {
        setRightUIclos();
        (m_link->*send)(false);
        (this->*lamp)(false);
        on = false;
    }
    // The unit shows one inset kind at a time: switching one on replaces the other there too,
    // without a command to switch that one off.
    otherOn = false;
}

void RVX3220UI::setRightUIshow()
{
    m_titleBar->setGeometry(0, 0, WideWidth, 30);
    setKeySheet(m_divider, KeySheet::text(RVX3220Styles::DividerShown));
    resize(WideWidth, Height);
}

void RVX3220UI::setRightUIclos()
{
    m_titleBar->setGeometry(0, 0, NarrowWidth, 30);
    setKeySheet(m_divider, KeySheet::text(RVX3220Styles::DividerHidden));
    resize(NarrowWidth, Height);
    m_pip->close();
    m_pop->close();
}

void RVX3220UI::setBtnip()
{
    auto *dialog = new IPDialog(this, m_link);
    if (dialog->exec() == 0)
        delete dialog;
}

void RVX3220UI::setslider0(int v)
{
    btnAutoStyle(v > m_tbar->minimum() && v < m_tbar->maximum());
    if (v == TbarMax) {
        if (!m_reachedMax) {
            setPGM_PVWCH();
            m_reachedMax = true;
            m_reachedMin = false;
        }
        m_strokeBack = true;
    }
    if (!m_strokeBack && v != TbarMax)
        m_link->fader(0, v);
    if (m_strokeBack)
        setslider1(v);
}

void RVX3220UI::setslider1(int v)
{
    m_link->fader(1, TbarMax - v);
    // The return stroke ends one step short of the bottom (at 1, not 0); the unit counts
    // its travel that way, so the swap and the new forward stroke start there.
    if (TbarMax - v == 125 && !m_reachedMin) {
        setPGM_PVWCH();
        m_reachedMax = false;
        m_reachedMin = true;
        m_strokeBack = false;
    }
}
