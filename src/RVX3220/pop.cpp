#include "pop.h"

#include "SwitcherData/unitcontrol.h"
#include "common/pipsettingspane.h"
#include "panewidgets.h"
#include "rvx3220styles.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>

namespace {

QPushButton *rowButton(QWidget *parent, int row, const char *text)
{
    auto *button = new QPushButton(QString::fromLatin1(text), parent);
    button->setStyleSheet(QString::fromLatin1(RVX3220Styles::TextButton));
    button->setGeometry(PaneWidgets::controlX(), PaneWidgets::rowY(row), 108, 28);
    return button;
}

} // namespace

POP::POP(QWidget *parent, UnitControl *link) : QWidget(parent), m_link(link)
{
    using namespace PaneWidgets;
    QGroupBox *box = frame(RVX3220Styles::PopTitle, this);
    caption(QStringLiteral("Window"), box, 0);
    m_window = rowButton(box, 0, RVX3220Styles::Placeholder);
    caption(QStringLiteral("H Position"), box, 1);
    m_h = spinBox(box, 1, 0, 960, 10);
    caption(QStringLiteral("V Position"), box, 2);
    m_v = spinBox(box, 2, 0, 540, 10);
    caption(QStringLiteral("Size"), box, 3);
    QLabel *size = caption(QString::fromLatin1(RVX3220Styles::PopSize), box, 3);
    size->move(controlX() + 6, rowY(3));
    caption(QStringLiteral("Border"), box, 4);
    // Reads "On" although the border starts off, so the first press turns it on.
    m_border = rowButton(box, 4, RVX3220Styles::BorderOn);
    caption(QStringLiteral("Border Width"), box, 5);
    m_borderWidth = spinBox(box, 5, 2, 7);
    caption(QStringLiteral("Border Color"), box, 6);
    m_borderColor = list(box, 6, PipTexts::BorderColorItems, 4);

    connect(m_window, &QPushButton::clicked, this, &POP::setlwindowindex);
    connect(m_h, qOverload<int>(&QSpinBox::valueChanged), this, &POP::setSpboxHPosition);
    connect(m_v, qOverload<int>(&QSpinBox::valueChanged), this, &POP::setSpboxVPosition);
    connect(m_border, &QPushButton::clicked, this, &POP::setbtnBorder_Enable);
    connect(m_borderWidth, qOverload<int>(&QSpinBox::valueChanged), this, &POP::setSpboxBorder_Width);
    connect(m_borderColor, qOverload<int>(&QComboBox::currentIndexChanged), this, &POP::setCoboxBorder_Color);
}

void POP::setlwindowindex()
{
    if (!m_windowTwo) {
        m_link->popWindow(1);
        m_window->setText(QStringLiteral("1"));
        m_windowTwo = true;
    } else {
        m_link->popWindow(2);
        m_window->setText(QStringLiteral("2"));
        m_windowTwo = false;
    }
    m_windowSelected = true;
}

bool POP::windowChosen()
{
    if (m_windowSelected)
        return true;
    QMessageBox::warning(this, QString::fromLatin1(RVX3220Styles::WarningTitle),
                         QString::fromLatin1(RVX3220Styles::ChooseWindowSource),
                         QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes);
    return false;
}

void POP::setSpboxHPosition(int v)
{
    if (windowChosen())
        m_link->popPosition(true, v);
}

void POP::setSpboxVPosition(int v)
{
    if (windowChosen())
        m_link->popPosition(false, v);
}

void POP::setbtnBorder_Enable()
{
    if (m_borderOn) {
        m_link->popBorder(false);
        m_border->setText(QString::fromLatin1(RVX3220Styles::BorderOff));
        m_borderOn = false;
    } else {
        m_link->popBorder(true);
        m_border->setText(QString::fromLatin1(RVX3220Styles::BorderOn));
        m_borderOn = true;
    }
}

void POP::setSpboxBorder_Width(int v)
{
    m_link->popBorderWidth(v);
}

void POP::setCoboxBorder_Color(int i)
{
    m_link->popBorderColor(i);
}
