#include "settingkeys.h"

#include "SwitcherData/unitcontrol.h"
#include "common/elidedlabel.h"
#include "common/keyflash.h"
#include "common/keysheet.h"

#include <QLabel>
#include <QPushButton>
#include <QWidget>

SettingKeys::SettingKeys(QWidget *owner, UnitControl *model) : m_owner(owner), m_link(model) {}

void SettingKeys::lamp(QPushButton *key, bool lit)
{
    setLamp(key, lit, KeySheet::GradientGreen, KeySheet::GradientOff);
}

void SettingKeys::unlight(std::initializer_list<QPushButton *> keys)
{
    for (QPushButton *key : keys)
        lamp(key, false);
}

void SettingKeys::flash(QPushButton *key, int waitMs) const
{
    lightWaitActUnlight(
        m_owner, waitMs, [key](bool lit) { lamp(key, lit); }, nullptr);
}

void SettingKeys::step(QPushButton *key, int &index, int count, const std::function<void(int)> &act) const
{
    lightWaitActUnlight(
        m_owner, KeyWaitMs, [key](bool lit) { lamp(key, lit); },
        [&index, count, act] {
            index = (index + 1) % count;
            act(index);
        });
}

void SettingKeys::pressPipSize(QPushButton *key, const std::function<void(int)> &announce)
{
    if (!m_pipSizeUnlocked)
        return;
    step(key, m_pipSize, PipSizeCount, [this, announce](int index) {
        announce(index);
        if (m_link)
            m_link->pipSize(index);
    });
}

void SettingKeys::pressReset(QPushButton *key) const
{
    lightWaitActUnlight(
        m_owner, KeyWaitMs, [key](bool lit) { lamp(key, lit); },
        [this] {
            if (m_link)
                m_link->reset();
        });
}

void SettingKeys::take(int &index, int count, int value)
{
    if (value >= 0 && value < count)
        index = value;
}

QString SettingKeys::serialText(const QByteArray &sn)
{
    QString text = QStringLiteral("SN:");
    for (char c : sn) {
        const auto b = uint8_t(c);
        if (b != 0)
            text += QString::number(b, 16) + QLatin1Char(' ');
    }
    return text;
}

void SettingKeys::showSerial(ElidedLabel *label, const QByteArray &sn)
{
    label->setFullText(serialText(sn));
}

void SettingKeys::showAddress(QLabel *label, const QString &ip)
{
    label->setText(QStringLiteral("IP:") + ip);
}
