#pragma once

class QWidget;

// The close key of a panel's title bar. A panel that is the only one ends KOVA with it; a
// panel opened in a window of its own beside others (closesAlone) closes that window alone and
// leaves the rest of the production running.
namespace PanelClose {

void setClosesAlone(QWidget *panel, bool alone);
bool closesAlone(const QWidget *panel);
// What the close key inside `panel` (any widget of it) does.
void closeKeyClicked(QWidget *key);

} // namespace PanelClose
