#include "insetkeys.h"

#include "SwitcherData/rvx5all_workdata.h"
#include "common/keysheet.h"

#include <QPushButton>

InsetKeys::InsetKeys(QPushButton *pip, QPushButton *key, QPushButton *pop, RVX5ALL_workdata *link,
                     QObject *parent)
    : QObject(parent), m_pip(pip), m_key(key), m_pop(pop), m_link(link)
{
    connect(m_pip, &QPushButton::clicked, this, [this] { press(Inset::Pip); });
    connect(m_pop, &QPushButton::clicked, this, [this] { press(Inset::Pop); });
    if (m_key)
        connect(m_key, &QPushButton::clicked, this, [this] { press(Inset::Key); });
    show(Inset::None);
}

void InsetKeys::show(Inset inset)
{
    m_inset = inset;
    setLamp(m_pip, inset == Inset::Pip, KeySheet::GradientGreen, KeySheet::GradientOff);
    setLamp(m_pop, inset == Inset::Pop, KeySheet::GradientGreen, KeySheet::GradientOff);
    if (m_key)
        setLamp(m_key, inset == Inset::Key, KeySheet::GradientGreen, KeySheet::GradientOff);
    emit insetChanged(inset);
}

void InsetKeys::press(Inset inset)
{
    const bool on = m_inset != inset;
    show(on ? inset : Inset::None);
    if (inset == Inset::Pip)
        m_link->SendCMDPIP(on ? 1 : 0);
    else if (inset == Inset::Pop)
        m_link->SendCMDPOP(on ? 1 : 0);
}

void InsetKeys::showPip(bool on)
{
    if (on)
        show(Inset::Pip);
    else if (m_inset == Inset::Pip)
        show(Inset::None);
}
