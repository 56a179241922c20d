#include "tbarsequencer.h"

#include "delay.h"

#include <QLoggingCategory>
#include <QPointer>
#include <QSlider>

namespace {
constexpr uint8_t TowardsB = 1;
constexpr uint8_t TowardsA = 0;
constexpr uint8_t EndMark = 128;
constexpr int AutoStepMs = 20;
// Where the AUTO run stops: one short of the top, so the lever's own end step is not taken.
constexpr int AutoTop = 126;

Q_LOGGING_CATEGORY(lcTbar, "kova.panel.tbar", QtInfoMsg)
} // namespace

TbarSequencer::TbarSequencer(QObject *parent, QSlider *tbar, Hooks hooks)
    : QObject(parent), m_tbar(tbar), m_hooks(std::move(hooks))
{
    if (!m_hooks.log)
        m_hooks.log = &lcTbar;
}

void TbarSequencer::setslider0(int v, bool &falg)
{
    const int max = m_tbar->maximum();
    const int min = m_tbar->minimum();
    if (falg) {
        m_hooks.autoLamp(true);
        falg = false;
    }
    if (v == max || v == min) {
        m_hooks.autoLamp(false);
        falg = true;
    }
    if (v == max) {
        if (!slider_top_done) {
            m_hooks.swapBuses();
            slider_top_done = true;
            slider_bottom_done = false;
        }
        slider_returning = true;
        m_hooks.send(TowardsB, EndMark);
        qCDebug(m_hooks.log) << "value_up:" << v;
    }
    if (!slider_returning && v != max) {
        m_hooks.send(TowardsB, uint8_t(v));
        qCDebug(m_hooks.log) << "value_up:" << v;
    }
    // Reached at the top end too, which adds the (0, 0) frame after (1, 128).
    if (slider_returning)
        setslider1(v);
}

void TbarSequencer::setslider1(int v)
{
    const int max = m_tbar->maximum();
    if (max - v != 127) {
        m_hooks.send(TowardsA, uint8_t(max - v));
        qCDebug(m_hooks.log) << "向下推 value:" << v;
        qCDebug(m_hooks.log) << "value_down:" << max - v;
        return;
    }
    if (!slider_bottom_done) {
        m_hooks.swapBuses();
        slider_top_done = false;
        slider_bottom_done = true;
    }
    slider_returning = false;
    m_hooks.send(TowardsA, EndMark);
    m_hooks.send(TowardsB, 0);
}

void TbarSequencer::btnAuto_and_slider()
{
    // Each step waits in the event loop, where the panel may be freed.
    const QPointer<TbarSequencer> alive(this);
    int v = m_tbar->value();
    if (!slider_returning) {
        while (v < AutoTop) {
            m_tbar->setValue(++v);
            Delay_MSec(AutoStepMs);
            if (!alive)
                return;
        }
        return;
    }
    while (v > 1) {
        m_tbar->setValue(--v);
        Delay_MSec(AutoStepMs);
        if (!alive)
            return;
    }
    m_tbar->setValue(0);
}
