#include "devlog.h"

#include "rvx3220styles.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>

Devlog::Devlog(QWidget *parent, RVX3220_workdata *model)
    : QWidget(parent), m_model(model), m_logo(new QLabel(this)), m_close(new QPushButton(this))
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
    connect(m_close, &QPushButton::clicked, qApp, [] { QCoreApplication::exit(0); });
}

void Devlog::mousePressEvent(QMouseEvent *event)
{
    m_dragging = true;
    m_lastGlobal = event->globalPos();
}

void Devlog::mouseMoveEvent(QMouseEvent *event)
{
    if (m_dragging && parentWidget()) {
        QWidget *window = parentWidget();
        window->move(window->pos() + event->globalPos() - m_lastGlobal);
        m_lastGlobal = event->globalPos();
    }
}

void Devlog::mouseReleaseEvent(QMouseEvent *)
{
    m_dragging = false;
}
