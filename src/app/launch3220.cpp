// Launcher of the RVX3220 panel.
#include "RVX3220/rvx3220ui.h"
#include "SwitcherData/rvx3220_workdata.h"
#include "globaldev.h"
#include "searchstyles.h"
#include "showsearch.h"

#include <QIcon>

void showsearch::set3220UI(QString ip, uint8_t a, uint8_t b)
{
    open3220(UnitAddress::fromText(ip, a, b));
}

void showsearch::open3220(const UnitAddress &unit)
{
    auto *panel = new RVX3220UI(nullptr);
    panel->setWindowIcon(QIcon(QString::fromLatin1(SearchStyles::WindowIcon)));
    panel->bindUnit(unit);
    if (presentBeside(panel, panel->link(), PanelKind::Rvx3220, unit)) {
        // Not modal beside the others: freed when left, by its return key or its close key.
        connect(panel, &QDialog::finished, panel, &QObject::deleteLater);
        return;
    }
    hide();
    // Modal: the search comes back when the panel is left, and the panel (with its hold on
    // port 7000) goes with it.
    if (panel->exec() == 0)
        delete panel;
    showSearchPage();
}
