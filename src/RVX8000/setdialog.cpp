#include "setdialog.h"

#include "SwitcherData/protocol.h"
#include "SwitcherData/unitcontrol.h"
#include "ui_setdialog.h"

SetDialog::SetDialog(QWidget *parent, UnitControl *model)
    : QDialog(parent), ui(std::make_unique<Ui::SetDialog>()), m_keys(this, model)
{
    ui->setupUi(this);
    setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint);
    setWindowTitle(QStringLiteral("Set"));

    connect(ui->btn_reso, &QPushButton::clicked, this, &SetDialog::on_btn_reso_clicked);
    connect(ui->btn_micvol, &QPushButton::clicked, this, &SetDialog::on_btn_micvol_clicked);
    connect(ui->btn_fan, &QPushButton::clicked, this, &SetDialog::on_btn_fan_clicked);
    connect(ui->btn_rate, &QPushButton::clicked, this, &SetDialog::on_btn_rate_clicked);
    connect(ui->btn_key, &QPushButton::clicked, this, &SetDialog::on_btn_key_clicked);
    connect(ui->btn_pip_s, &QPushButton::clicked, this, &SetDialog::on_btn_pip_s_clicked);
    connect(ui->btn_l_1, &QPushButton::clicked, this, &SetDialog::on_btn_l_1_clicked);
    connect(ui->btn_l_2, &QPushButton::clicked, this, &SetDialog::on_btn_l_2_clicked);
    connect(ui->btn_reset, &QPushButton::clicked, this, &SetDialog::on_btn_reset_clicked);

    SettingKeys::unlight({ui->btn_reso, ui->btn_micvol, ui->btn_fan, ui->btn_rate, ui->btn_pip_s, ui->btn_key,
                          ui->btn_l_1, ui->btn_l_2, ui->btn_reset});
}

SetDialog::~SetDialog() = default;

void SetDialog::on_btn_reso_clicked()
{
    m_keys.step(ui->btn_reso, m_reso, ResoCount, [this](int index) {
        // The panel relabels from this signal; it carries the format's code, not its position.
        emit setRATE_Style(Protocol::outputFormatCode(index));
        if (m_keys.link())
            m_keys.link()->format(index);
    });
}

void SetDialog::on_btn_rate_clicked()
{
    m_keys.step(ui->btn_rate, m_rate, RateCount, [this](int index) {
        emit setRATE_Style(index);
        if (m_keys.link())
            m_keys.link()->rate(index + 1); // the rate keys of UnitControl count from 1
    });
}

void SetDialog::on_btn_pip_s_clicked()
{
    m_keys.pressPipSize(ui->btn_pip_s, [this](int index) { emit setPIPSZ_Style(index); });
}

void SetDialog::on_btn_reset_clicked()
{
    m_keys.pressReset(ui->btn_reset);
}

void SetDialog::on_btn_fan_clicked()
{
    m_keys.flash(ui->btn_fan, SettingKeys::FanWaitMs);
}

void SetDialog::on_btn_micvol_clicked()
{
    m_keys.flash(ui->btn_micvol);
}

void SetDialog::on_btn_key_clicked()
{
    m_keys.flash(ui->btn_key);
}

void SetDialog::on_btn_l_1_clicked()
{
    m_keys.flash(ui->btn_l_1);
}

void SetDialog::on_btn_l_2_clicked()
{
    m_keys.flash(ui->btn_l_2);
}

void SetDialog::on_Style_btnReso(bool lit)
{
    SettingKeys::lamp(ui->btn_reso, lit);
}

void SetDialog::on_Style_btnMicVol(bool lit)
{
    SettingKeys::lamp(ui->btn_micvol, lit);
}

void SetDialog::on_Style_btnFan(bool lit)
{
    SettingKeys::lamp(ui->btn_fan, lit);
}

void SetDialog::on_Style_btnRate(bool lit)
{
    SettingKeys::lamp(ui->btn_rate, lit);
}

void SetDialog::on_Style_btnPip_s(bool lit)
{
    SettingKeys::lamp(ui->btn_pip_s, lit);
}

void SetDialog::on_Style_btnKey(bool lit)
{
    SettingKeys::lamp(ui->btn_key, lit);
}

void SetDialog::on_Style_btnL_1(bool lit)
{
    SettingKeys::lamp(ui->btn_l_1, lit);
}

void SetDialog::on_Style_btnL_2(bool lit)
{
    SettingKeys::lamp(ui->btn_l_2, lit);
}

void SetDialog::on_Style_Reset(bool lit)
{
    SettingKeys::lamp(ui->btn_reset, lit);
}

void SetDialog::on_toRead_5370SMDtat(const QByteArray &sn)
{
    SettingKeys::showSerial(ui->label_SM, sn);
}

void SetDialog::getDevIP(QString ip)
{
    SettingKeys::showAddress(ui->label_IP, ip);
}

void SetDialog::setRESO_V(int index)
{
    SettingKeys::take(m_reso, ResoCount, index);
}

void SetDialog::setRARE_V(int index)
{
    SettingKeys::take(m_rate, RateCount, index);
}

void SetDialog::setPIP_S_V(int index)
{
    m_keys.setPipSize(index);
}

void SetDialog::setPIP_size_unlock_falg_slots(bool unlocked)
{
    m_keys.setPipSizeUnlocked(unlocked);
}
