// Launcher of the RVX3210 panel.
#include "RVX3210/plane_top.h"
#include "RVX3210/rvx3210ui.h"
#include "globaldev.h"
#include "launchrvx3210family.h"
#include "showsearch.h"

void showsearch::set3210UI(QString ip, uint8_t a, uint8_t b, QString ip2, uint8_t c, uint8_t d)
{
    open3210(UnitAddress::fromText(ip, a, b), UnitAddress::fromText(ip2, c, d));
}

void showsearch::open3210(const UnitAddress &unit, const UnitAddress &his)
{
    auto *panel = new RVX3210UI(nullptr);
    panel->setWindowIcon(panelIcon());
    panel->titleBar()->setDev_Child_Type(GLOBAL_DEV_CHILD_TYPE);
    panel->bindUnit(unit, his);
    if (presentBeside(panel, panel->link(), PanelKind::Rvx3210, unit)) {
        // Beside the others, its return key closes this panel alone.
        connect(panel, &RVX3210UI::m_on_Singnals_returnloginwin, panel, &QWidget::close);
        return;
    }
    launchRvx3210Family(this, panel, &RVX3210UI::m_on_Singnals_returnloginwin);
}
