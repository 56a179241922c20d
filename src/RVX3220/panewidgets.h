#pragma once

#include <QString>

class QComboBox;
class QGroupBox;
class QLabel;
class QSpinBox;
class QWidget;

// Builders for the rows of the PIP and POP columns, so both look alike.
namespace PaneWidgets {

constexpr int RowHeight = 44;

QGroupBox *frame(const char *title, QWidget *parent);
QLabel *caption(const QString &text, QWidget *parent, int row);
QSpinBox *spinBox(QWidget *parent, int row, int min, int max, int step = 1);
QComboBox *list(QWidget *parent, int row, const char *const *items, int count);
// Moves a control made elsewhere into row `row` of `parent`, with the family's look.
void place(QWidget *control, QWidget *parent, int row);
// Where the control of a row goes.
int controlX();
int rowY(int row);

} // namespace PaneWidgets
