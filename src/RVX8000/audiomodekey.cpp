#include "audiomodekey.h"

#include "SwitcherData/unitcontrol.h"
#include "common/keysheet.h"

#include <QPushButton>

AudioModeKey::AudioModeKey(QPushButton *key, QPushButton *ch1, QPushButton *ch2, UnitControl *link,
                           QObject *parent)
    : QObject(parent), m_key(key), m_ch1(ch1), m_ch2(ch2), m_link(link)
{
    connect(m_key, &QPushButton::clicked, this, &AudioModeKey::press);
    show(Mix);
}

AudioModeKey::AudioModeKey(QPushButton *afv, QPushButton *mix, QPushButton *ch1, QPushButton *ch2,
                           UnitControl *link, QObject *parent)
    : QObject(parent), m_key(afv), m_mixKey(mix), m_ch1(ch1), m_ch2(ch2), m_link(link)
{
    connect(m_key, &QPushButton::clicked, this, [this] { choose(Afv); });
    connect(m_mixKey, &QPushButton::clicked, this, [this] { choose(Mix); });
    show(Mix);
}

void AudioModeKey::show(uint8_t mode)
{
    if (mode != Afv && mode != Mix)
        return;
    m_mix = mode == Mix;
    if (m_mixKey)
        setLamp(m_mixKey, m_mix, KeySheet::GradientGreen, KeySheet::GradientOff);
    else
        m_key->setText(QLatin1String(m_mix ? "MIX" : "AFV"));
    setLamp(m_key, !m_mix, KeySheet::GradientGreen, KeySheet::GradientOff);
    for (QPushButton *source : {m_ch1, m_ch2}) {
        source->setEnabled(m_mix);
        setLamp(source, !m_mix, KeySheet::GradientDisabled, KeySheet::GradientOff);
    }
}

void AudioModeKey::press()
{
    choose(m_mix ? Afv : Mix);
}

void AudioModeKey::choose(uint8_t mode)
{
    show(mode);
    m_link->audioMode(mode == Mix);
}
