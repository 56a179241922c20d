#include "insetkeys.h"

#include "SwitcherData/unitcontrol.h"
#include "common/keysheet.h"
#include "common/lampkey.h"

InsetKeys::InsetKeys(LampKey *pip, LampKey *key, LampKey *pop, Pop popRule, UnitControl *link,
                     QObject *parent)
    : QObject(parent), m_pip(pip), m_key(key), m_pop(pop), m_popRule(popRule), m_link(link)
{
    for (LampKey *k : {m_pip, m_key, m_pop}) {
        if (!k)
            continue;
        k->setSheets(KeySheet::GradientGreen, KeySheet::GradientOff);
        connect(k, &LampKey::clicked, this, [this, k] { press(k); });
    }
}

bool InsetKeys::pipOn() const
{
    return m_pip->isLit();
}

// The pressed key has its new state; the others' lamps go out, and where POP is exclusive
// with the pressed key the other goes off too, without a word to the unit.
void InsetKeys::settle(LampKey *pressed, bool on)
{
    for (LampKey *other : {m_pip, m_key, m_pop}) {
        if (!other || other == pressed)
            continue;
        const bool exclusive = m_popRule == Pop::Exclusive && (pressed == m_pop || other == m_pop);
        if (exclusive)
            other->setLit(false);
        else
            other->showLamp(false);
    }
    m_overlay = on;
    emit overlayChanged(on);
    emit pipChanged(m_pip->isLit());
}

void InsetKeys::press(LampKey *pressed)
{
    const bool on = pressed->toggle();
    settle(pressed, on);
    if (pressed == m_pip)
        m_link->pip(on);
    else if (pressed == m_pop)
        m_link->pop(on);
}

void InsetKeys::showPip(bool on)
{
    if (!on && !m_pip->isLit())
        return;
    m_pip->setLit(on);
    settle(m_pip, on);
}
