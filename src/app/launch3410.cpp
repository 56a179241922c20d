// Launcher of the RVX3410 panel.
#include "RVX3410/rvx3410ui.h"
#include "globaldev.h"
#include "launchrvx3210family.h"
#include "showsearch.h"

void showsearch::set3410UI(QString ip, uint8_t a, uint8_t b, QString ip2, uint8_t c, uint8_t d)
{
    open3410(UnitAddress::fromText(ip, a, b), UnitAddress::fromText(ip2, c, d));
}

void showsearch::open3410(const UnitAddress &unit, const UnitAddress &his)
{
    auto *panel = new RVX3410UI(nullptr);
    panel->setWindowIcon(panelIcon());
    panel->bindUnit(unit, his);
    if (presentBeside(panel, panel->link(), PanelKind::Rvx3410, unit)) {
        // Beside the others, its return key closes this panel alone.
        connect(panel, &RVX3410UI::ExitSignals, panel, &QWidget::close);
        return;
    }
    launchRvx3210Family(this, panel, &RVX3410UI::ExitSignals);
}
