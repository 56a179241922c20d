#include "panewidgets.h"

#include "rvx3220styles.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QSpinBox>

namespace PaneWidgets {

int controlX()
{
    return 128;
}

int rowY(int row)
{
    return 40 + row * RowHeight;
}

QGroupBox *frame(const char *title, QWidget *parent)
{
    auto *box = new QGroupBox(QString::fromLatin1(title), parent);
    box->setStyleSheet(QString::fromLatin1(RVX3220Styles::GroupBox));
    box->setGeometry(0, 0, 250, 350);
    return box;
}

QLabel *caption(const QString &text, QWidget *parent, int row)
{
    auto *label = new QLabel(text, parent);
    label->setStyleSheet(QString::fromLatin1(RVX3220Styles::Caption));
    label->setGeometry(12, rowY(row), 114, 28);
    return label;
}

void place(QWidget *control, QWidget *parent, int row)
{
    control->setParent(parent);
    const char *style = qobject_cast<QSpinBox *>(control) ? RVX3220Styles::SpinBox : RVX3220Styles::ComboBox;
    control->setStyleSheet(QString::fromLatin1(style));
    control->setGeometry(controlX(), rowY(row), 108, 28);
}

QSpinBox *spinBox(QWidget *parent, int row, int min, int max, int step)
{
    auto *box = new QSpinBox;
    box->setRange(min, max);
    box->setSingleStep(step);
    place(box, parent, row);
    return box;
}

QComboBox *list(QWidget *parent, int row, const char *const *items, int count)
{
    auto *box = new QComboBox;
    for (int i = 0; i < count; ++i)
        box->addItem(QString::fromLatin1(items[i]));
    box->setCurrentIndex(-1);
    place(box, parent, row);
    return box;
}

} // namespace PaneWidgets
