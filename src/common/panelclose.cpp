#include "panelclose.h"

#include <QCoreApplication>
#include <QVariant>
#include <QWidget>

namespace {
// Kept on the panel's window itself, so the keys deep inside it need no pointer to the launcher.
const char *const ClosesAloneProperty = "kovaClosesAlone";
} // namespace

void PanelClose::setClosesAlone(QWidget *panel, bool alone)
{
    panel->setProperty(ClosesAloneProperty, alone);
}

bool PanelClose::closesAlone(const QWidget *panel)
{
    return panel && panel->window()->property(ClosesAloneProperty).toBool();
}

void PanelClose::closeKeyClicked(QWidget *key)
{
    if (closesAlone(key))
        key->window()->close();
    else
        QCoreApplication::exit(0);
}
