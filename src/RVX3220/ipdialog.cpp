#include "ipdialog.h"

#include "SwitcherData/unitlink.h"
#include "common/ipv4field.h"
#include "common/panelkeys.h"
#include "rvx3220styles.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

IPDialog::IPDialog(QWidget *parent, UnitLink *link)
    : QDialog(parent), m_link(link), m_edit(new QLineEdit(this)),
      m_close(new QPushButton(QString::fromLatin1(RVX3220Styles::IpClose), this)),
      m_ok(new QPushButton(QString::fromLatin1(RVX3220Styles::IpOk), this))
{
    setWindowTitle(QString::fromLatin1(RVX3220Styles::WindowTitle));
    setFixedSize(320, 110);
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(QString::fromLatin1(RVX3220Styles::Window));

    auto *label = new QLabel(QString::fromLatin1(RVX3220Styles::IpCaption), this);
    label->setStyleSheet(QString::fromLatin1(RVX3220Styles::Caption));
    label->setGeometry(20, 20, 70, 28);
    m_edit->setStyleSheet(QString::fromLatin1(RVX3220Styles::LineEdit));
    m_edit->setGeometry(95, 20, 205, 28);
    takeIpv4Only(m_edit);
    m_edit->setText(m_link->unit().text());

    m_close->setStyleSheet(QString::fromLatin1(RVX3220Styles::TextButton));
    m_close->setGeometry(95, 64, 95, 30);
    m_ok->setStyleSheet(QString::fromLatin1(RVX3220Styles::TextButton));
    m_ok->setGeometry(205, 64, 95, 30);

    // "close" comes first and would be the default key: Return after typing an address would
    // close the dialog unsent. Return is "ok" here (keyPressEvent), through no default key.
    PanelKeys::clearDefaultButtons(this);

    connect(m_close, &QPushButton::clicked, this, &QDialog::close);
    connect(m_ok, &QPushButton::clicked, this, &IPDialog::on_btnip_clicked);
}

void IPDialog::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (!event->isAutoRepeat())
            m_ok->click();
        return;
    }
    QDialog::keyPressEvent(event);
}

void IPDialog::on_btnip_clicked()
{
    const QString text = m_edit->text();
    if (text == QLatin1String(RVX3220Styles::IpNone) || text.isEmpty()) {
        QMessageBox::warning(this, QString::fromLatin1(RVX3220Styles::WarningTitle),
                             QString::fromLatin1(RVX3220Styles::TextEmpty), QMessageBox::Yes);
        return;
    }
    // Fewer than four numbers (the field lets such text through while it is typed) send nothing.
    m_link->setAddress(text);
}
