#include "f1qwidget.h"

#include "ui_f1qwidget.h"

namespace {
constexpr char White[] = "color:white";
} // namespace

F1QWidget::F1QWidget(QWidget *parent, UnitControl *model)
    : KeyStrip(parent), ui(std::make_unique<Ui::F1QWidget>()), m_link(model)
{
    ui->setupUi(this);
    ui->label_IP->setStyleSheet(QString::fromLatin1(White));
    initStrip({ui->btn_disk, ui->btn_leuel, ui->btn_rate_add, ui->btn_rate_sub, ui->btn_addr_add,
               ui->btn_addr_sub, ui->label_IP});
}

F1QWidget::~F1QWidget() = default;
