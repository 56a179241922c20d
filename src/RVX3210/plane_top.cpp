#include "plane_top.h"

#include "common/panelclose.h"
#include "common/titlebarstyles.h"
#include "common/windowdrag.h"
#include "rvx3210log.h"
#include "rvx3210styles.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace S = Rvx3210Styles;

Plane_Top::Plane_Top(QWidget *parent, UnitControl *link) : QWidget(parent), m_link(link)
{
    initPlan1();
}

void Plane_Top::initPlan1()
{
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(QString::fromLatin1(S::TopStrip));

    m_logo = new QLabel(this);
    m_logo->setFixedSize(120, 28);
    m_logo->setStyleSheet(QString::fromLatin1(TitleBarStyles::Logo));

    m_name = new QLabel(QString::fromLatin1(S::ModelRVX3210), this);
    m_name->setStyleSheet(QString::fromLatin1(TitleBarStyles::ModelName));

    auto makeKey = [this](const char *style) {
        auto *key = new QPushButton(this);
        key->setFixedSize(30, 28);
        key->setFocusPolicy(Qt::NoFocus);
        key->setStyleSheet(QString::fromLatin1(style));
        return key;
    };
    m_btnMin = makeKey(TitleBarStyles::MinKey);
    m_btnMax = makeKey(TitleBarStyles::MaxKey);
    m_btnClose = makeKey(TitleBarStyles::CloseKey);

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(4, 0, 0, 0);
    row->setSpacing(6);
    row->addWidget(m_logo);
    row->addWidget(m_name);
    row->addStretch(1);
    row->addWidget(m_btnMin);
    row->addWidget(m_btnMax);
    row->addWidget(m_btnClose);

    // Closing the panel ends the program, even though the search window still exists.
    connect(m_btnClose, &QPushButton::clicked, this, [this] { PanelClose::closeKeyClicked(m_btnClose); });
    connect(m_btnMin, &QPushButton::clicked, this, &Plane_Top::on_btnclicked_min);
    connect(m_btnMax, &QPushButton::clicked, this, &Plane_Top::on_btnclicked_max);
    // The 8000-series strip's handlers hang on the same keys; for this panel they do nothing.
    connect(m_btnMin, &QPushButton::clicked, this, &Plane_Top::on_btnclicked_min_for5310);
    connect(m_btnMax, &QPushButton::clicked, this, &Plane_Top::on_btnclicked_max_for5310);

    // Dragging the strip moves the panel.
    WindowDrag::install(this, WindowDrag::Target::Parent);
}

void Plane_Top::setDev_Child_Type(int code)
{
    qCDebug(lcRvx3210, "Plane_Top:子设备类型:%02x", code);
    switch (code) {
    case 0x21:
        m_name->setText(QString::fromLatin1(S::ModelRVX3210));
        break;
    case 0x22:
        m_name->setText(QString::fromLatin1(S::ModelRVX3220));
        break;
    case 0x26:
        m_name->setText(QString::fromLatin1(S::ModelRVX3210P));
        break;
    default:
        break;
    }
}

void Plane_Top::on_btnclicked_max()
{
    emit on_signals_setWinmax(m_max);
    m_max = !m_max;
}

void Plane_Top::on_btnclicked_min()
{
    emit on_signals_setWinmin();
}
