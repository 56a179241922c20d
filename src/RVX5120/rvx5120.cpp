#include "rvx5120.h"

#include "SwitcherData/rvx5all_workdata.h"
#include "common/keysheet.h"
#include "rvx5120styles.h"
#include "ui_rvx5120.h"

RVX5120::RVX5120(QWidget *parent)
    : QWidget(parent), ui(std::make_unique<Ui::RVX5120>()),
      m_dark(QString::fromLatin1(KeySheet::GradientOff)), m_lit(QString::fromLatin1(KeySheet::GradientRed))
{
    ui->setupUi(this);
    setWindowTitle(QString::fromLatin1(Rvx5120Styles::WindowTitle));
    setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint);
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(QString::fromLatin1(Rvx5120Styles::Window));
    // Its own link, told of no unit: nothing this panel does reaches the network.
    m_link = new RVX5ALL_workdata(this);
    m_link->setFamily(Family::Rvx5120);
    ui->g_upper->setStyleSheet(QString::fromLatin1(Rvx5120Styles::UpperBox));
    ui->g_audio->setStyleSheet(QString::fromLatin1(Rvx5120Styles::AudioBox));
    ui->g_video->setStyleSheet(QString::fromLatin1(Rvx5120Styles::VideoBox));
    for (QWidget *label : {ui->label_title, ui->label_version, ui->label_reso, ui->label_ch1, ui->label_ch2})
        label->setStyleSheet(QString::fromLatin1(Rvx5120Styles::Label));
    initUpper();
    initBootom();
}

RVX5120::~RVX5120() = default;

void RVX5120::initUpper()
{
    for (QWidget *slider : {ui->slider_auto, ui->slider_ch1, ui->slider_ch2})
        slider->setStyleSheet(QString::fromLatin1(Rvx5120Styles::Slider));
}

void RVX5120::initBootom()
{
    on_Style_btnAfv(false);
    on_Style_btnMute(false);
    on_Style_btnCH1(false);
    on_Style_btnCH2(false);
    on_Style_btnMix(false);
    on_Style_btnFADE(false);
    on_Style_btnWipe(false);
    on_Style_btnPip(false);
    on_Style_btnPop(false);
    on_Style_btnStill(false);
    on_Style_btnRate(false);
    on_Style_btnReso(false);
    on_Style_btnReset(false);
}

void RVX5120::lamp(QPushButton *key, bool lit)
{
    setLamp(key, lit, m_lit, m_dark);
}

void RVX5120::on_Style_btnAfv(bool lit)
{
    lamp(ui->btn_afv, lit);
}

void RVX5120::on_Style_btnMute(bool lit)
{
    lamp(ui->btn_mute, lit);
}

void RVX5120::on_Style_btnCH1(bool lit)
{
    lamp(ui->btn_ch1, lit);
}

void RVX5120::on_Style_btnCH2(bool lit)
{
    lamp(ui->btn_ch2, lit);
}

void RVX5120::on_Style_btnMix(bool lit)
{
    lamp(ui->btn_mix, lit);
}

void RVX5120::on_Style_btnFADE(bool lit)
{
    lamp(ui->btn_fade, lit);
}

void RVX5120::on_Style_btnWipe(bool lit)
{
    lamp(ui->btn_wipe, lit);
}

void RVX5120::on_Style_btnPip(bool lit)
{
    lamp(ui->btn_pip, lit);
}

void RVX5120::on_Style_btnPop(bool lit)
{
    lamp(ui->btn_pop, lit);
}

void RVX5120::on_Style_btnStill(bool lit)
{
    lamp(ui->btn_still, lit);
}

void RVX5120::on_Style_btnRate(bool lit)
{
    lamp(ui->btn_rate1, lit);
}

void RVX5120::on_Style_btnReso(bool lit)
{
    lamp(ui->btn_reso, lit);
}

void RVX5120::on_Style_btnReset(bool lit)
{
    lamp(ui->btn_reset, lit);
}
