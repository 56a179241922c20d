#include "plane_right.h"

#include "rvx3210styles.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QSpinBox>

namespace S = Rvx3210Styles;

Plane_Right::Plane_Right(QWidget *parent, UnitControl *link)
    : PipSettingsPane(parent, link, Echo::Send, Position::NeedsSize)
{
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(QString::fromLatin1(S::PipPane));

    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(12, 12, 12, 12);
    grid->setVerticalSpacing(14);
    const std::pair<const char *, QWidget *> rows[] = {
        {PipTexts::Size, sizeList()},           {PipTexts::HPosition, hPosition()},
        {PipTexts::VPosition, vPosition()},     {PipTexts::BorderEnable, borderEnable()},
        {PipTexts::BorderColor, borderColor()}, {PipTexts::BorderWidth, borderWidth()},
    };
    int r = 0;
    for (const auto &[text, control] : rows) {
        auto *label = new QLabel(QString::fromLatin1(text), this);
        label->setMinimumSize(80, 24);
        label->setStyleSheet(QString::fromLatin1(S::Caption));
        control->setMinimumSize(80, 24);
        control->setStyleSheet(QString::fromLatin1(S::Inputs));
        grid->addWidget(label, r, 0);
        grid->addWidget(control, r, 1);
        ++r;
    }
    grid->setRowStretch(r, 1);
}
