#include "devlog.h"

#include "common/panelclose.h"
#include "common/windowdrag.h"
#include "rvx3220styles.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

Devlog::Devlog(QWidget *parent, UnitControl *link)
    : QWidget(parent), m_link(link), m_logo(new QLabel(this)), m_close(new QPushButton(this))
{
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(QString::fromLatin1(RVX3220Styles::TitleBar));
    m_logo->setFixedSize(180, 22);
    m_logo->setStyleSheet(QString::fromLatin1(RVX3220Styles::TitleLogo));
    m_close->setFixedSize(30, 21);
    m_close->setStyleSheet(QString::fromLatin1(RVX3220Styles::TitleClose));
    m_close->setCursor(Qt::PointingHandCursor);

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(8, 4, 8, 4);
    row->addWidget(m_logo);
    row->addStretch();
    row->addWidget(m_close);

    // Closing here ends the whole program, unlike the panel's return key.
    connect(m_close, &QPushButton::clicked, this, [this] { PanelClose::closeKeyClicked(m_close); });
    // Dragging the strip moves the panel it sits on.
    WindowDrag::install(this, WindowDrag::Target::Parent);
}
