#include "top.h"

#include "common/panelclose.h"
#include "common/titlebarstyles.h"
#include "common/windowdrag.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace {

constexpr QSize LogoSize(180, 22);
constexpr int TitleWidth = 110;
constexpr QSize WindowKeySize(30, 21);

QLabel *makeLogo(QWidget *parent)
{
    auto *logo = new QLabel(parent);
    logo->setFixedSize(LogoSize);
    logo->setStyleSheet(QString::fromLatin1(TitleBarStyles::Logo));
    return logo;
}

} // namespace

Top::Top(QWidget *parent) : QWidget(parent)
{
    initPlan1();
    initPlan2();
}

void Top::initPlan1()
{
    m_row = new QHBoxLayout(this);
    m_row->setContentsMargins(6, 4, 6, 4);
    WindowDrag::install(this, WindowDrag::Target::Parent);
}

void Top::initPlan2()
{
    m_logo = makeLogo(this);
    m_title = new QLabel(this);
    m_title->setFixedWidth(TitleWidth);
    m_title->setStyleSheet(QString::fromLatin1(TitleBarStyles::ModelName));
    m_min = new QPushButton(this);
    m_close = new QPushButton(this);
    for (QPushButton *key : {m_min, m_close}) {
        key->setFixedSize(WindowKeySize);
        // The panel keeps the keyboard; Return never presses a window key.
        key->setFocusPolicy(Qt::NoFocus);
        key->setAutoDefault(false);
    }
    m_min->setStyleSheet(QString::fromLatin1(TitleBarStyles::MinKey));
    m_close->setStyleSheet(QString::fromLatin1(TitleBarStyles::CloseKey));

    m_row->addWidget(m_logo);
    m_row->addWidget(m_title);
    m_row->addStretch(1);
    m_row->addWidget(m_min);
    m_row->addWidget(m_close);

    connect(m_min, &QPushButton::clicked, this, &Top::on_btnclicked_min);
    connect(m_close, &QPushButton::clicked, this, [this] { PanelClose::closeKeyClicked(m_close); });
}

void Top::on_btnclicked_min()
{
    if (QWidget *panel = parentWidget())
        panel->showMinimized();
}

PIP_Title::PIP_Title(QWidget *parent) : QWidget(parent)
{
    init();
}

void PIP_Title::init()
{
    m_logo = makeLogo(this);
    setFixedSize(LogoSize);
}
