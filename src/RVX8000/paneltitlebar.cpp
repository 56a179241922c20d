#include "paneltitlebar.h"

#include "common/titlebarstyles.h"
#include "common/windowdrag.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

PanelTitleBar::PanelTitleBar(QWidget *parent) : QWidget(parent)
{
    m_logo = new QLabel(this);
    m_logo->setFixedSize(180, 22);
    m_logo->setStyleSheet(QString::fromLatin1(TitleBarStyles::Logo));
    m_title = new QLabel(this);
    m_title->setFixedWidth(110);
    m_title->setStyleSheet(QString::fromLatin1(TitleBarStyles::ModelName));
    m_min = new QPushButton(this);
    m_close = new QPushButton(this);
    for (QPushButton *key : {m_min, m_close}) {
        key->setFixedSize(30, 21);
        key->setFocusPolicy(Qt::NoFocus);
        key->setAutoDefault(false);
    }
    m_min->setStyleSheet(QString::fromLatin1(TitleBarStyles::MinKey));
    m_close->setStyleSheet(QString::fromLatin1(TitleBarStyles::CloseKey));

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(6, 4, 6, 4);
    row->addWidget(m_logo);
    row->addWidget(m_title);
    row->addStretch(1);
    row->addWidget(m_min);
    row->addWidget(m_close);

    connect(m_min, &QPushButton::clicked, this, &PanelTitleBar::on_btnclicked_min);
    connect(m_close, &QPushButton::clicked, this, [] { QCoreApplication::exit(0); });
    WindowDrag::install(this, WindowDrag::Target::Parent);
}

void PanelTitleBar::on_btnclicked_min()
{
    if (QWidget *panel = parentWidget())
        panel->showMinimized();
}
