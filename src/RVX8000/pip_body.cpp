#include "pip_body.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSpinBox>

namespace {

constexpr char Title[] = "PIP";
constexpr char Caption[] = "font-weight:600;color:#3b73a0;";
// Light fields on the dark panel.
constexpr char Fields[] = "QComboBox,QSpinBox{background-color:rgb(220,220,224);color:black;border:1px solid "
                          "rgb(137,137,137);border-radius:3px;padding:1px 4px;min-height:22px;}"
                          "QComboBox QAbstractItemView{background-color:rgb(220,220,224);color:black;}";

} // namespace

PIP_Body::PIP_Body(QWidget *parent, UnitControl *model)
    : PipSettingsPane(parent, model, Echo::Quiet, Position::NeedsSize)
{
    setWindowTitle(QString::fromLatin1(Title));
    setStyleSheet(QString::fromLatin1(Fields));
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(8, 6, 8, 6);
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(8);
    const std::pair<const char *, QWidget *> rows[] = {
        {PipTexts::HPosition, hPosition()},     {PipTexts::VPosition, vPosition()},
        {PipTexts::Size, sizeList()},           {PipTexts::BorderEnable, borderEnable()},
        {PipTexts::BorderWidth, borderWidth()}, {PipTexts::BorderColor, borderColor()},
    };
    // The lists open with a click and leave the keyboard to the panel; the spin boxes take it
    // while a number is typed.
    for (QWidget *list : {static_cast<QWidget *>(sizeList()), static_cast<QWidget *>(borderEnable()),
                          static_cast<QWidget *>(borderColor())})
        list->setFocusPolicy(Qt::NoFocus);
    int row = 0;
    for (const auto &[text, control] : rows) {
        auto *caption = new QLabel(QString::fromLatin1(text), this);
        caption->setStyleSheet(QString::fromLatin1(Caption));
        grid->addWidget(caption, row, 0);
        grid->addWidget(control, row, 1);
        ++row;
    }
}

void PIP_Body::set_BorderColor_Style(uint8_t v)
{
    const QSignalBlocker quiet(borderColor());
    borderColor()->setCurrentIndex(v);
}

void PIP_Body::set_BorderWidth_Style(uint8_t v)
{
    const QSignalBlocker quiet(borderWidth());
    borderWidth()->setValue(v);
}
