#include "frontpanel8000.h"

#include "SwitcherData/unitcontrol.h"
#include "SwitcherData/unitstate.h"
#include "common/delay.h"
#include "common/keysheet.h"
#include "common/panelkeys.h"
#include "common/pixmapcachesweep.h"
#include "common/tbarsequencer.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QPointer>
#include <QPushButton>
#include <QSlider>
#include <QTimer>

namespace {

// The fader's far end for an AUTO run at rates 0, 1 and 2: a longer run, a slower picture.
constexpr int AutoTop[3] = {40, 72, 139};
constexpr int AutoStepMs = 1;
// The WIPE key steps L, U, R, D; each direction goes to the unit as this transition type.
constexpr const char *WipeTexts[FrontPanel8000::WipeSteps] = {"WIPE-L", "WIPE-U", "WIPE-R", "WIPE-D"};
constexpr uint8_t WipeTypes[FrontPanel8000::WipeSteps] = {5, 3, 6, 4};
constexpr char WipePlain[] = "WIPE";
constexpr int Mix = 1, Fade = 2, Wipe = 4;
// The keys of a bus row by their number from 1; the bars (BarId) are no input and get no digit.
QList<QAbstractButton *> numberedKeys(const QButtonGroup *row)
{
    QList<QAbstractButton *> keys;
    for (int id = 1; row && id < FrontPanel8000::BarId && row->button(id); ++id)
        keys << row->button(id);
    return keys;
}

} // namespace

FrontPanel8000::FrontPanel8000(QWidget *panel, UnitControl *link, Keys keys, Hooks hooks)
    : QObject(panel), m_panel(panel), m_link(link), m_keys(keys), m_hooks(std::move(hooks))
{
    if (!m_hooks.buses)
        m_hooks.buses = [this] { setPGM_PVWCH(); };
    m_cutTimer = new QTimer(this);
    m_cutTimer->setSingleShot(true);
    connect(m_cutTimer, &QTimer::timeout, this, [this] { cutLamp(false); });

    if (m_keys.pgm)
        connect(m_keys.pgm, &QButtonGroup::idClicked, this, [this](int id) {
            set_PGMCH_Style(uint8_t(id));
            m_link->programme(id);
        });
    if (m_keys.pvw)
        connect(m_keys.pvw, &QButtonGroup::idClicked, this, [this](int id) {
            set_PVWCH_Style(uint8_t(id));
            m_link->preview(id);
        });
    if (m_keys.cut)
        connect(m_keys.cut, &QPushButton::clicked, this, &FrontPanel8000::on_btn_cut_clicked);
    if (m_keys.autoKey)
        connect(m_keys.autoKey, &QPushButton::clicked, this, &FrontPanel8000::on_btn_auto_clicked);
    if (m_keys.transitions)
        connect(m_keys.transitions, &QButtonGroup::idClicked, this, &FrontPanel8000::btnGrp_clicked);
    if (m_keys.fader) {
        m_keys.fader->setRange(0, FaderTop);
        TbarSequencer::Hooks strokes;
        strokes.send = [this](uint8_t direction, uint8_t distance) { m_link->fader(direction, distance); };
        strokes.swapBuses = [this] { m_hooks.buses(); };
        strokes.autoLamp = [this](bool lit) { autoLamp(lit); };
        m_tbar = new TbarSequencer(this, m_keys.fader, strokes);
        connect(m_keys.fader, &QSlider::valueChanged, this, &FrontPanel8000::setslider0);
    }

    for (QButtonGroup *group : {m_keys.pgm, m_keys.pvw})
        if (group)
            lightGroup(group, 0, KeySheet::GradientOff);
    if (m_keys.transitions)
        lightGroup(m_keys.transitions, 0, KeySheet::GradientOff);
    cutLamp(false);
    autoLamp(false);

    PanelKeys::Keys shortcuts;
    shortcuts.cut = m_keys.cut;
    shortcuts.autoKey = m_keys.autoKey;
    shortcuts.preview = numberedKeys(m_hooks.digitRow);
    shortcuts.program = numberedKeys(m_hooks.shiftDigitRow);
    new PanelKeys(m_panel, std::move(shortcuts));
    PixmapCacheSweep::install();
}

void FrontPanel8000::lightGroup(QButtonGroup *group, int id, const char *litSheet)
{
    for (QAbstractButton *key : group->buttons())
        setLamp(key, group->id(key) == id, litSheet, KeySheet::GradientOff);
}

void FrontPanel8000::cutLamp(bool lit)
{
    if (m_keys.cut)
        setLamp(m_keys.cut, lit, KeySheet::GradientRed, KeySheet::GradientOff);
}

void FrontPanel8000::autoLamp(bool lit)
{
    if (m_keys.autoKey)
        setLamp(m_keys.autoKey, lit, KeySheet::GradientRed, KeySheet::GradientOff);
}

QButtonGroup *FrontPanel8000::inputRow(QObject *owner, std::initializer_list<QAbstractButton *> keys)
{
    auto *row = new QButtonGroup(owner);
    int id = 0;
    for (QAbstractButton *key : keys)
        row->addButton(key, ++id);
    return row;
}

QButtonGroup *FrontPanel8000::transitionRow(QObject *owner, QAbstractButton *mix, QAbstractButton *fade,
                                            QAbstractButton *wipe)
{
    auto *row = new QButtonGroup(owner);
    row->addButton(mix, 1);
    row->addButton(fade, 2);
    row->addButton(wipe, 4);
    return row;
}

void FrontPanel8000::showReport(const UnitState &s)
{
    if (m_keys.pgm && s.has(UnitState::Pgm))
        set_PGMCH_Style(uint8_t(s.pgm()));
    if (m_keys.pvw && s.has(UnitState::Pvw))
        set_PVWCH_Style(uint8_t(s.pvw()));
    if (s.has(UnitState::Transition))
        showTransition(uint8_t(s.transition()));
    if (s.has(UnitState::Wipe))
        showWipe(s.wipeType());
}

void FrontPanel8000::set_PGMCH_Style(uint8_t ch)
{
    if (m_keys.pgm)
        lightGroup(m_keys.pgm, ch, KeySheet::GradientRed);
    m_lastPgm = ch;
}

void FrontPanel8000::set_PVWCH_Style(uint8_t ch)
{
    if (m_keys.pvw)
        lightGroup(m_keys.pvw, ch, KeySheet::GradientGreen);
    m_lastPvw = ch;
}

void FrontPanel8000::setPGM_PVWCH()
{
    const uint8_t onAir = m_lastPgm;
    set_PGMCH_Style(m_lastPvw);
    set_PVWCH_Style(onAir);
}

void FrontPanel8000::setRate(uint8_t rate)
{
    if (rate < 3)
        m_rate = rate;
}

void FrontPanel8000::on_btn_cut_clicked()
{
    cutLamp(true);
    m_link->cut();
    if (!m_overlay)
        m_hooks.buses();
    m_cutTimer->start(CutLampMs);
}

void FrontPanel8000::on_btn_auto_clicked()
{
    QSlider *fader = m_keys.fader;
    // Halfway through a stroke the T-bar has the transition in hand.
    if (m_autoRunning || (fader && fader->value() > fader->minimum() && fader->value() < FaderTop))
        return;
    autoLamp(true);
    m_link->autoTransition();
    m_autoRunning = true;
    const QPointer<FrontPanel8000> alive(this);
    btnAuto_and_slider();
    if (!alive)
        return;
    if (fader) {
        fader->setRange(0, FaderTop);
        if (fader->value() != 0)
            fader->setValue(FaderTop);
    }
    m_faderAtEnd = true;
    m_autoRunning = false;
    // Unlike CUT, AUTO relights the buses with an inset on as well.
    m_hooks.buses();
    autoLamp(false);
}

void FrontPanel8000::btnAuto_and_slider()
{
    QSlider *fader = m_keys.fader;
    if (!fader || !m_tbar)
        return;
    const QPointer<FrontPanel8000> alive(this);
    const int top = AutoTop[m_rate];
    fader->setRange(0, top);
    if (fader->value() != 0)
        fader->setValue(top);
    const int step = m_tbar->slider_returning ? -1 : 1;
    const int end = m_tbar->slider_returning ? 0 : top;
    while (fader->value() != end) {
        fader->setValue(fader->value() + step);
        Delay_MSec(AutoStepMs);
        if (!alive)
            return;
    }
    // The run ends a stroke as the T-bar would: at the top it turns back, at the bottom forward.
    m_tbar->slider_returning = step > 0;
    if (step > 0 && !m_tbar->slider_top_done) {
        m_tbar->slider_top_done = true;
        m_tbar->slider_bottom_done = false;
    } else if (step < 0 && !m_tbar->slider_bottom_done) {
        m_tbar->slider_bottom_done = true;
        m_tbar->slider_top_done = false;
    }
}

void FrontPanel8000::setslider0(int v)
{
    // AUTO moves the fader itself and has told the unit already.
    if (m_autoRunning || !m_tbar)
        return;
    m_tbar->setslider0(v, m_faderAtEnd);
}

void FrontPanel8000::showWipeKey()
{
    if (!m_keys.transitions)
        return;
    if (QAbstractButton *wipe = m_keys.transitions->button(Wipe))
        wipe->setText(QString::fromLatin1(m_wipeShown ? WipeTexts[m_wipeIndex] : WipePlain));
}

void FrontPanel8000::btnGrp_clicked(int id)
{
    if (id != Mix && id != Fade && id != Wipe)
        return;
    // The first WIPE after MIX or FADE sends the direction shown last; each further one steps on.
    if (id == Wipe && m_wipeShown)
        m_wipeIndex = (m_wipeIndex + 1) % WipeSteps;
    showTransition(uint8_t(id));
    m_link->transition(UnitControl::Effect(id == Wipe ? WipeTypes[m_wipeIndex] : id));
}

void FrontPanel8000::showTransition(uint8_t type)
{
    if (type != Mix && type != Fade && type != Wipe)
        return;
    if (m_keys.transitions)
        lightGroup(m_keys.transitions, type, KeySheet::GradientGreen);
    m_wipeShown = type == Wipe;
    showWipeKey();
}

void FrontPanel8000::showWipe(int transitionType)
{
    for (int i = 0; i < WipeSteps; ++i) {
        if (WipeTypes[i] == transitionType) {
            m_wipeIndex = i;
            showWipeKey();
            return;
        }
    }
}
