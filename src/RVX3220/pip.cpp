#include "pip.h"

#include "panewidgets.h"
#include "rvx3220styles.h"

#include <QComboBox>
#include <QGroupBox>
#include <QSpinBox>

PIP::PIP(QWidget *parent, UnitControl *link) : PipSettingsPane(parent, link, Echo::Send, Position::Free)
{
    using namespace PaneWidgets;
    QGroupBox *box = frame(RVX3220Styles::PipTitle, this);
    // Until a size is chosen the ranges are those of the large inset.
    vPosition()->setRange(0, 540);
    const std::pair<const char *, QWidget *> rows[] = {
        {"H Position", hPosition()},       {"V Position", vPosition()},     {"Size", sizeList()},
        {"Border Enable", borderEnable()}, {"Border Width", borderWidth()}, {"Border Color", borderColor()},
    };
    int row = 0;
    for (const auto &[text, control] : rows) {
        caption(QString::fromLatin1(text), box, row);
        place(control, box, row);
        ++row;
    }
}
