#include "keystrip.h"

#include "common/keyflash.h"
#include "common/keysheet.h"

#include <QLabel>
#include <QPushButton>

void KeyStrip::lamp(QPushButton *key, bool lit)
{
    setLamp(key, lit, KeySheet::GradientGreen, KeySheet::GradientOff);
}

void KeyStrip::initStrip(const Keys &keys)
{
    m_keys = keys;
    const std::pair<QPushButton *, void (KeyStrip::*)()> presses[] = {
        {keys.disk, &KeyStrip::on_btn_disk_clicked},
        {keys.leuel, &KeyStrip::on_btn_leuel_clicked},
        {keys.rateAdd, &KeyStrip::on_btn_rate_add_clicked},
        {keys.rateSub, &KeyStrip::on_btn_rate_sub_clicked},
        {keys.addrAdd, &KeyStrip::on_btn_addr_add_clicked},
        {keys.addrSub, &KeyStrip::on_btn_addr_sub_clicked},
    };
    for (const auto &[key, press] : presses) {
        lamp(key, false);
        connect(key, &QPushButton::clicked, this, press);
    }
}

void KeyStrip::flash(QPushButton *key, int waitMs)
{
    lightWaitActUnlight(
        this, waitMs, [key](bool lit) { lamp(key, lit); }, nullptr);
}

void KeyStrip::getDevIP(QString ip)
{
    m_keys.address->setText(QStringLiteral("IP:") + ip);
}
