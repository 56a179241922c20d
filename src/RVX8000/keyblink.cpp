#include "keyblink.h"

#include "common/delay.h"
#include "common/lampkey.h"

#include <QPointer>
#include <QTimer>

KeyBlink::KeyBlink(LampKey *key) : QObject(key), m_key(key), m_timer(new QTimer(this))
{
    m_timer->setInterval(PeriodMs);
    connect(m_timer, &QTimer::timeout, this, &KeyBlink::tick);
}

bool KeyBlink::toggle()
{
    const bool on = m_key->toggle();
    if (on)
        start();
    else
        stop();
    return on;
}

void KeyBlink::showReported(bool reported)
{
    if (!reported) {
        m_key->setLit(false);
        return;
    }
    m_key->setLitUnshown(true);
    start();
}

void KeyBlink::start()
{
    m_timer->start();
}

void KeyBlink::stop()
{
    m_timer->stop();
}

bool KeyBlink::isActive() const
{
    return m_timer->isActive();
}

void KeyBlink::tick()
{
    const QPointer<KeyBlink> alive(this);
    m_key->showLamp(true);
    m_key->resize(56, 33);
    Delay_MSec(LitMs);
    if (!alive)
        return;
    m_key->showLamp(false);
    m_key->resize(55, 32);
}
