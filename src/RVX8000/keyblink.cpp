#include "keyblink.h"

#include "common/delay.h"
#include "common/keysheet.h"
#include "lampkeys.h"

#include <QPointer>
#include <QPushButton>
#include <QTimer>

KeyBlink::KeyBlink(QPushButton *key, const char *litSheet)
    : QObject(key), m_key(key), m_litSheet(litSheet), m_timer(new QTimer(this))
{
    m_timer->setInterval(PeriodMs);
    connect(m_timer, &QTimer::timeout, this, &KeyBlink::tick);
}

bool KeyBlink::toggle(bool &on)
{
    if (LampKeys::toggle(on, m_key, m_litSheet))
        start();
    else
        stop();
    return on;
}

void KeyBlink::showReported(bool &on, bool reported)
{
    on = reported;
    if (on)
        start();
    else
        setKeySheet(m_key, QString::fromLatin1(KeySheet::GradientOff));
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
    setKeySheet(m_key, QString::fromLatin1(m_litSheet));
    m_key->resize(56, 33);
    Delay_MSec(LitMs);
    if (!alive)
        return;
    setKeySheet(m_key, QString::fromLatin1(KeySheet::GradientOff));
    m_key->resize(55, 32);
}
