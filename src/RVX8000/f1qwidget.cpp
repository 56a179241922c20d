#include "f1qwidget.h"

#include "common/keyflash.h"
#include "common/keysheet.h"
#include "ui_f1qwidget.h"

namespace {

constexpr char White[] = "color:white";

void lamp(QPushButton *key, bool lit)
{
    setLamp(key, lit, KeySheet::GradientGreen, KeySheet::GradientOff);
}

} // namespace

F1QWidget::F1QWidget(QWidget *parent, UnitControl *model)
    : QWidget(parent), ui(std::make_unique<Ui::F1QWidget>()), m_link(model)
{
    ui->setupUi(this);
    ui->label_IP->setStyleSheet(QString::fromLatin1(White));
    const std::pair<QPushButton *, void (F1QWidget::*)()> keys[] = {
        {ui->btn_disk, &F1QWidget::on_btn_disk_clicked},
        {ui->btn_leuel, &F1QWidget::on_btn_leuel_clicked},
        {ui->btn_rate_add, &F1QWidget::on_btn_rate_add_clicked},
        {ui->btn_rate_sub, &F1QWidget::on_btn_rate_sub_clicked},
        {ui->btn_addr_add, &F1QWidget::on_btn_addr_add_clicked},
        {ui->btn_addr_sub, &F1QWidget::on_btn_addr_sub_clicked},
    };
    for (const auto &[key, press] : keys) {
        lamp(key, false);
        connect(key, &QPushButton::clicked, this, press);
    }
}

F1QWidget::~F1QWidget() = default;

void F1QWidget::getDevIP(QString ip)
{
    ui->label_IP->setText(QStringLiteral("IP:") + ip);
}

void F1QWidget::flash(void (F1QWidget::*setLampOf)(bool))
{
    lightWaitActUnlight(
        this, KeyWaitMs, [this, setLampOf](bool lit) { (this->*setLampOf)(lit); }, nullptr);
}

void F1QWidget::on_btn_disk_clicked()
{
    flash(&F1QWidget::my_Style_btnDisk);
}

void F1QWidget::on_btn_leuel_clicked()
{
    flash(&F1QWidget::my_Style_btnLeuel);
}

void F1QWidget::on_btn_rate_add_clicked()
{
    flash(&F1QWidget::my_Style_btnRateADD);
}

void F1QWidget::on_btn_rate_sub_clicked()
{
    flash(&F1QWidget::my_Style_btnRateSUB);
}

void F1QWidget::on_btn_addr_add_clicked()
{
    flash(&F1QWidget::my_Style_btnAddrADD);
}

void F1QWidget::on_btn_addr_sub_clicked()
{
    flash(&F1QWidget::my_Style_btnAddrSUB);
}

void F1QWidget::my_Style_btnDisk(bool lit)
{
    lamp(ui->btn_disk, lit);
}

void F1QWidget::my_Style_btnLeuel(bool lit)
{
    lamp(ui->btn_leuel, lit);
}

void F1QWidget::my_Style_btnRateADD(bool lit)
{
    lamp(ui->btn_rate_add, lit);
}

void F1QWidget::my_Style_btnRateSUB(bool lit)
{
    lamp(ui->btn_rate_sub, lit);
}

void F1QWidget::my_Style_btnAddrADD(bool lit)
{
    lamp(ui->btn_addr_add, lit);
}

void F1QWidget::my_Style_btnAddrSUB(bool lit)
{
    lamp(ui->btn_addr_sub, lit);
}
