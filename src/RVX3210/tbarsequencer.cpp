#include "tbarsequencer.h"

#include "below_widget.h"
#include "common/delay.h"
#include "qslider_right.h"
#include "rvx3210_workdata.h"
#include "rvx3210log.h"

#include <QPointer>

namespace {
constexpr uint8_t TowardsB = 1;
constexpr uint8_t TowardsA = 0;
constexpr uint8_t EndMark = 128;
constexpr int AutoStepMs = 20;
} // namespace

TbarSequencer::TbarSequencer(QObject *parent, RVX3210_workdata *link, QSlider_Right *tbar,
                             Below_Widget *below)
    : QObject(parent), m_link(link), m_tbar(tbar), m_below(below)
{}

void TbarSequencer::setslider0(int v, bool &falg)
{
    const int max = m_tbar->maximum();
    const int min = m_tbar->minimum();
    if (falg) {
        m_below->on_Style_btnAuto(true);
        falg = false;
    }
    if (v == max || v == min) {
        m_below->on_Style_btnAuto(false);
        falg = true;
    }
    if (v == max) {
        if (!slider_top_done) {
            setPGM_PVWCH();
            slider_top_done = true;
            slider_bottom_done = false;
        }
        slider_returning = true;
        m_link->SwndCMDslider(TowardsB, EndMark);
        qCDebug(lcRvx3210) << "value_up:" << v;
    }
    if (!slider_returning && v != max) {
        m_link->SwndCMDslider(TowardsB, uint8_t(v));
        qCDebug(lcRvx3210) << "value_up:" << v;
    }
    // Reached at the top end too, which adds the (0, 0) frame after (1, 128).
    if (slider_returning)
        setslider1(v);
}

void TbarSequencer::setslider1(int v)
{
    const int max = m_tbar->maximum();
    if (max - v != 127) {
        m_link->SwndCMDslider(TowardsA, uint8_t(max - v));
        qCDebug(lcRvx3210) << "向下推 value:" << v;
        qCDebug(lcRvx3210) << "value_down:" << max - v;
        return;
    }
    if (!slider_bottom_done) {
        setPGM_PVWCH();
        slider_top_done = false;
        slider_bottom_done = true;
    }
    slider_returning = false;
    m_link->SwndCMDslider(TowardsA, EndMark);
    m_link->SwndCMDslider(TowardsB, 0);
}

void TbarSequencer::btnAuto_and_slider()
{
    // Each step waits in the event loop, where the panel may be freed.
    const QPointer<TbarSequencer> alive(this);
    int v = m_tbar->value();
    if (!slider_returning) {
        while (v < 126) {
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

void TbarSequencer::setPGM_PVWCH()
{
    const uint8_t pgm = m_below->BtnPGMstate();
    const uint8_t pvw = m_below->BtnPVWstate();
    m_below->set_PGMCH_Style(pvw);
    m_below->set_PVWCH_Style(pgm);
}
