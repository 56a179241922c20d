#include "setdialog.h"

#include "SwitcherData/protocol.h"
#include "SwitcherData/rvx5all_workdata.h"
#include "common/keyflash.h"
#include "common/keysheet.h"
#include "ui_setdialog.h"

namespace {

constexpr int KeyWaitMs = 200;
constexpr int FanWaitMs = 600;

} // namespace

SetDialog::SetDialog(QWidget *parent, RVX5ALL_workdata *model)
    : QDialog(parent), ui(std::make_unique<Ui::SetDialog>()), m_model(model)
{
    ui->setupUi(this);
    setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint);
    setWindowTitle(QStringLiteral("Set"));

    connectKey(ui->btn_reso, &SetDialog::on_btn_reso_clicked);
    connectKey(ui->btn_micvol, &SetDialog::on_btn_micvol_clicked);
    connectKey(ui->btn_fan, &SetDialog::on_btn_fan_clicked);
    connectKey(ui->btn_rate, &SetDialog::on_btn_rate_clicked);
    connectKey(ui->btn_key, &SetDialog::on_btn_key_clicked);
    connectKey(ui->btn_pip_s, &SetDialog::on_btn_pip_s_clicked);
    connectKey(ui->btn_l_1, &SetDialog::on_btn_l_1_clicked);
    connectKey(ui->btn_l_2, &SetDialog::on_btn_l_2_clicked);
    connectKey(ui->btn_reset, &SetDialog::on_btn_reset_clicked);

    on_Style_btnReso(false);
    on_Style_btnMicVol(false);
    on_Style_btnFan(false);
    on_Style_btnRate(false);
    on_Style_btnPip_s(false);
    on_Style_btnKey(false);
    on_Style_btnL_1(false);
    on_Style_btnL_2(false);
    on_Style_Reset(false);
}

SetDialog::~SetDialog() = default;

QString SetDialog::serialText(const QByteArray &sn)
{
    QString text = QStringLiteral("SN:");
    for (char c : sn) {
        const auto b = uint8_t(c);
        if (b != 0)
            text += QString::number(b, 16) + QLatin1Char(' ');
    }
    return text;
}

void SetDialog::connectKey(QPushButton *key, void (SetDialog::*press)())
{
    connect(key, &QPushButton::clicked, this, press);
}

void SetDialog::lamp(QPushButton *key, bool lit)
{
    setLamp(key, lit, KeySheet::GradientGreen, KeySheet::GradientOff);
}

void SetDialog::flash(int waitMs, void (SetDialog::*lampOf)(bool))
{
    lightWaitActUnlight(
        this, waitMs, [this, lampOf](bool lit) { (this->*lampOf)(lit); }, nullptr);
}

void SetDialog::on_btn_reso_clicked()
{
    lightWaitActUnlight(
        this, KeyWaitMs, [this](bool lit) { on_Style_btnReso(lit); },
        [this] {
            m_reso = (m_reso + 1) % ResoCount;
            // The panel relabels from this signal; it carries the format's code, not its position.
            emit setRATE_Style(Protocol::outputFormatCode(m_reso));
            if (m_model)
                m_model->SendCMDF1(m_reso);
        });
}

void SetDialog::on_btn_rate_clicked()
{
    lightWaitActUnlight(
        this, KeyWaitMs, [this](bool lit) { on_Style_btnRate(lit); },
        [this] {
            m_rate = (m_rate + 1) % RateCount;
            emit setRATE_Style(m_rate);
            if (m_model)
                m_model->SendCMDRATE(uint8_t(m_rate));
        });
}

void SetDialog::on_btn_pip_s_clicked()
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

void SetDialog::on_btn_reset_clicked()
{
    lightWaitActUnlight(
        this, KeyWaitMs, [this](bool lit) { on_Style_Reset(lit); },
        [this] {
            if (m_model)
                m_model->SendCMDRESET();
        });
}

void SetDialog::on_btn_fan_clicked()
{
    flash(FanWaitMs, &SetDialog::on_Style_btnFan);
}

void SetDialog::on_btn_micvol_clicked()
{
    flash(KeyWaitMs, &SetDialog::on_Style_btnMicVol);
}

void SetDialog::on_btn_key_clicked()
{
    flash(KeyWaitMs, &SetDialog::on_Style_btnKey);
}

void SetDialog::on_btn_l_1_clicked()
{
    flash(KeyWaitMs, &SetDialog::on_Style_btnL_1);
}

void SetDialog::on_btn_l_2_clicked()
{
    flash(KeyWaitMs, &SetDialog::on_Style_btnL_2);
}

void SetDialog::on_Style_btnReso(bool lit)
{
    lamp(ui->btn_reso, lit);
}

void SetDialog::on_Style_btnMicVol(bool lit)
{
    lamp(ui->btn_micvol, lit);
}

void SetDialog::on_Style_btnFan(bool lit)
{
    lamp(ui->btn_fan, lit);
}

void SetDialog::on_Style_btnRate(bool lit)
{
    lamp(ui->btn_rate, lit);
}

void SetDialog::on_Style_btnPip_s(bool lit)
{
    lamp(ui->btn_pip_s, lit);
}

void SetDialog::on_Style_btnKey(bool lit)
{
    lamp(ui->btn_key, lit);
}

void SetDialog::on_Style_btnL_1(bool lit)
{
    lamp(ui->btn_l_1, lit);
}

void SetDialog::on_Style_btnL_2(bool lit)
{
    lamp(ui->btn_l_2, lit);
}

void SetDialog::on_Style_Reset(bool lit)
{
    lamp(ui->btn_reset, lit);
}

void SetDialog::on_toRead_5370SMDtat(const QByteArray &sn)
{
    ui->label_SM->setText(serialText(sn));
}

void SetDialog::getDevIP(QString ip)
{
    ui->label_IP->setText(QStringLiteral("IP:") + ip);
}

void SetDialog::setRESO_V(int index)
{
    if (index >= 0 && index < ResoCount)
        m_reso = index;
}

void SetDialog::setRARE_V(int index)
{
    if (index >= 0 && index < RateCount)
        m_rate = index;
}

void SetDialog::setPIP_S_V(int index)
{
    if (index >= 0 && index < PipSizeCount)
        m_pipSize = index;
}

void SetDialog::setPIP_size_unlock_falg_slots(bool unlocked)
{
    m_pipSizeUnlocked = unlocked;
}
