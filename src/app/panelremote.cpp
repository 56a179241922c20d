#include "panelremote.h"

#include "SwitcherData/unitlink.h"
#include "common/lampkey.h"
#include "common/panelkeys.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <cmath>

PanelRemote::PanelRemote(QWidget *panel, UnitLink *link, const QString &modelName)
    : m_panel(panel), m_link(link), m_model(modelName)
{}

PanelKeys *PanelRemote::keys() const
{
    return PanelKeys::of(m_panel);
}

QString PanelRemote::unitAddress() const
{
    return m_link ? m_link->unit().text() : QString();
}

int PanelRemote::inputCount() const
{
    const PanelKeys *k = keys();
    return k ? k->inputCount() : 0;
}

QStringList PanelRemote::keyNames() const
{
    const PanelKeys *k = keys();
    return k ? k->keyNames() : QStringList();
}

bool PanelRemote::hasKey(const QString &name) const
{
    const PanelKeys *k = keys();
    return k && k->key(name);
}

bool PanelRemote::pressKey(const QString &name)
{
    const PanelKeys *k = keys();
    QAbstractButton *key = k ? k->key(name) : nullptr;
    // A disabled key takes no click from the operator either.
    if (!key || !key->isEnabled())
        return false;
    key->click();
    return true;
}

std::optional<bool> PanelRemote::keyLit(const QString &name) const
{
    const PanelKeys *k = keys();
    if (auto *lamp = qobject_cast<const LampKey *>(k ? k->key(name) : nullptr))
        return lamp->isLit();
    return std::nullopt;
}

bool PanelRemote::setFader(double f)
{
    const PanelKeys *k = keys();
    QAbstractSlider *fader = k ? k->fader() : nullptr;
    if (!fader || !fader->isEnabled() || !std::isfinite(f) || f < 0.0 || f > 1.0)
        return false;
    // Moved as the operator's drag moves it, so the T-bar's own strokes and frames follow.
    fader->setSliderPosition(fader->minimum() + int(std::lround(f * (fader->maximum() - fader->minimum()))));
    return true;
}

bool PanelRemote::requestState()
{
    return m_link && m_link->readState();
}

QStringList PanelRemote::inputLabels() const
{
    QStringList labels;
    const PanelKeys *k = keys();
    for (int i = 1; k && i <= k->inputCount(); ++i) {
        const QAbstractButton *key = k->key(QStringLiteral("pgm%1").arg(i));
        labels << (key ? key->text().simplified() : QString::number(i));
    }
    return labels;
}

double PanelRemote::faderPosition() const
{
    const PanelKeys *k = keys();
    const QAbstractSlider *fader = k ? k->fader() : nullptr;
    if (!fader || fader->maximum() == fader->minimum())
        return -1.0;
    return double(fader->value() - fader->minimum()) / (fader->maximum() - fader->minimum());
}
