#include "set.h"

#include "SwitcherData/rvx5all_workdata.h"
#include "common/keyflash.h"
#include "common/keysheet.h"
#include "setdialog.h"
#include "ui_set.h"

#include <QDateTime>
#include <QTimer>

namespace {

constexpr int KeyWaitMs = 200;
constexpr int FanWaitMs = 600;

} // namespace

Set::Set(QWidget *parent, RVX5ALL_workdata *model)
    : QWidget(parent), ui(std::make_unique<Ui::Set>()), m_model(model), m_clock(std::make_unique<QTimer>())
{
    ui->setupUi(this);
    connect(m_clock.get(), &QTimer::timeout, this, &Set::show_current_time);

    connectKey(ui->btn_disk, &Set::on_btn_disk_clicked);
    connectKey(ui->btn_leuel, &Set::on_btn_leuel_clicked);
    connectKey(ui->btn_rate_add, &Set::on_btn_rate_add_clicked);
    connectKey(ui->btn_rate_sub, &Set::on_btn_rate_sub_clicked);
    connectKey(ui->btn_addr_add, &Set::on_btn_addr_add_clicked);
    connectKey(ui->btn_addr_sub, &Set::on_btn_addr_sub_clicked);
    connectKey(ui->btn_fan, &Set::on_btn_fan_clicked);
    connectKey(ui->btn_pip_sz, &Set::on_btn_pip_sz_clicked);
    connectKey(ui->btn_reset, &Set::on_btn_reset_clicked);

    my_Style_btnDisk(false);
    my_Style_btnLeuel(false);
    my_Style_btnRateADD(false);
    my_Style_btnRateSUB(false);
    my_Style_btnAddrADD(false);
    my_Style_btnAddrSUB(false);
    on_Style_btnPip_s(false);
    on_Style_btnFan(false);
    on_Style_Reset(false);
}

Set::~Set() = default;

void Set::connectKey(QPushButton *key, void (Set::*press)())
{
    connect(key, &QPushButton::clicked, this, press);
}

void Set::lamp(QPushButton *key, bool lit)
{
    setLamp(key, lit, KeySheet::GradientGreen, KeySheet::GradientOff);
}

void Set::flash(int waitMs, void (Set::*lampOf)(bool))
{
    lightWaitActUnlight(
        this, waitMs, [this, lampOf](bool lit) { (this->*lampOf)(lit); }, nullptr);
}

void Set::on_btn_pip_sz_clicked()
{
    // Locked, the key is dead: it does not even flash.
    if (!m_pipSizeUnlocked)
        return;
    lightWaitActUnlight(
        this, KeyWaitMs, [this](bool lit) { on_Style_btnPip_s(lit); },
        [this] {
            m_pipSize = (m_pipSize + 1) % PipSizeCount;
            emit setPIPSZ_Style(m_pipSize);
            if (m_model)
                m_model->SendCMDPIP_Border_Size(uint8_t(m_pipSize));
        });
}

void Set::on_btn_reset_clicked()
{
    lightWaitActUnlight(
        this, KeyWaitMs, [this](bool lit) { on_Style_Reset(lit); },
        [this] {
            if (m_model)
                m_model->SendCMDRESET();
        });
}

void Set::on_btn_fan_clicked()
{
    flash(FanWaitMs, &Set::on_Style_btnFan);
}

void Set::on_btn_disk_clicked()
{
    flash(KeyWaitMs, &Set::my_Style_btnDisk);
}

void Set::on_btn_leuel_clicked()
{
    flash(KeyWaitMs, &Set::my_Style_btnLeuel);
}

void Set::on_btn_rate_add_clicked()
{
    flash(KeyWaitMs, &Set::my_Style_btnRateADD);
}

void Set::on_btn_rate_sub_clicked()
{
    flash(KeyWaitMs, &Set::my_Style_btnRateSUB);
}

void Set::on_btn_addr_add_clicked()
{
    flash(KeyWaitMs, &Set::my_Style_btnAddrADD);
}

void Set::on_btn_addr_sub_clicked()
{
    flash(KeyWaitMs, &Set::my_Style_btnAddrSUB);
}

void Set::my_Style_btnDisk(bool lit)
{
    lamp(ui->btn_disk, lit);
}

void Set::my_Style_btnLeuel(bool lit)
{
    lamp(ui->btn_leuel, lit);
}

void Set::my_Style_btnRateADD(bool lit)
{
    lamp(ui->btn_rate_add, lit);
}

void Set::my_Style_btnRateSUB(bool lit)
{
    lamp(ui->btn_rate_sub, lit);
}

void Set::my_Style_btnAddrADD(bool lit)
{
    lamp(ui->btn_addr_add, lit);
}

void Set::my_Style_btnAddrSUB(bool lit)
{
    lamp(ui->btn_addr_sub, lit);
}

void Set::on_Style_btnPip_s(bool lit)
{
    lamp(ui->btn_pip_sz, lit);
}

void Set::on_Style_btnFan(bool lit)
{
    lamp(ui->btn_fan, lit);
}

void Set::on_Style_Reset(bool lit)
{
    lamp(ui->btn_reset, lit);
}

void Set::on_toRead_5370SMDtat(const QByteArray &sn)
{
    ui->label_SM->setText(SetDialog::serialText(sn));
}

void Set::getDevIP(QString ip)
{
    ui->label_IP->setText(QStringLiteral("IP:") + ip);
}

void Set::setPIP_S_V(int index)
{
    if (index >= 0 && index < PipSizeCount)
        m_pipSize = index;
}

void Set::setPIP_size_unlock_falg_slots(bool unlocked)
{
    m_pipSizeUnlocked = unlocked;
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
