#include "set.h"

#include "ui_set.h"

#include <QDateTime>
#include <QTimer>

Set::Set(QWidget *parent, UnitControl *model)
    : KeyStrip(parent), ui(std::make_unique<Ui::Set>()), m_keys(this, model),
      m_clock(std::make_unique<QTimer>())
{
    ui->setupUi(this);
    connect(m_clock.get(), &QTimer::timeout, this, &Set::show_current_time);

    initStrip({ui->btn_disk, ui->btn_leuel, ui->btn_rate_add, ui->btn_rate_sub, ui->btn_addr_add,
               ui->btn_addr_sub, ui->label_IP});
    connect(ui->btn_fan, &QPushButton::clicked, this, &Set::on_btn_fan_clicked);
    connect(ui->btn_pip_sz, &QPushButton::clicked, this, &Set::on_btn_pip_sz_clicked);
    connect(ui->btn_reset, &QPushButton::clicked, this, &Set::on_btn_reset_clicked);

    SettingKeys::unlight({ui->btn_pip_sz, ui->btn_fan, ui->btn_reset});
}

Set::~Set() = default;

void Set::on_btn_pip_sz_clicked()
{
    m_keys.pressPipSize(ui->btn_pip_sz, [this](int index) { emit setPIPSZ_Style(index); });
}

void Set::on_btn_reset_clicked()
{
    m_keys.pressReset(ui->btn_reset);
}

void Set::on_btn_fan_clicked()
{
    m_keys.flash(ui->btn_fan, SettingKeys::FanWaitMs);
}

void Set::on_Style_btnPip_s(bool lit)
{
    SettingKeys::lamp(ui->btn_pip_sz, lit);
}

void Set::on_Style_btnFan(bool lit)
{
    SettingKeys::lamp(ui->btn_fan, lit);
}

void Set::on_Style_Reset(bool lit)
{
    SettingKeys::lamp(ui->btn_reset, lit);
}

void Set::on_toRead_5370SMDtat(const QByteArray &sn)
{
    SettingKeys::showSerial(ui->label_SM, sn);
}

void Set::setPIP_S_V(int index)
{
    m_keys.setPipSize(index);
}

void Set::setPIP_size_unlock_falg_slots(bool unlocked)
{
    m_keys.setPipSizeUnlocked(unlocked);
}

void Set::setenablefalgSlots(bool enabled)
{
    if (enabled)
        m_clock->start(ClockTickMs);
    else
        m_clock->stop();
}

bool Set::clockRunning() const
{
    return m_clock->isActive();
}

void Set::show_current_time()
{
    // Date with dots; the time is cut before its milliseconds.
    const QStringList parts = QDateTime::currentDateTime()
                                  .toString(QStringLiteral("yyyy.MM.dd hh:mm:ss.zzz ddd"))
                                  .split(QLatin1Char(' '));
    if (parts.size() < 2)
        return;
    ui->label_data->setText(parts.at(0));
    const QStringList pieces = parts.at(1).split(QLatin1Char('.'));
    if (pieces.size() >= 2)
        ui->label_time->setText(pieces.at(0));
}
