// Launchers of the 8000-series and RVX5120 panels.
#include "RVX5120/rvx5120.h"
#include "RVX5310/rvx5310dialog.h"
#include "RVX5350/rvx5350.h"
#include "RVX5370/rvx5370.h"
#include "SwitcherData/rvx5all_workdata.h"
#include "common/panelclose.h"
#include "globaldev.h"
#include "searchstyles.h"
#include "showsearch.h"

#include <QIcon>

void showsearch::set5310UI(QString ip, uint8_t a, uint8_t b, QString ip2, uint8_t c, uint8_t d)
{
    open5310(UnitAddress::fromText(ip, a, b), UnitAddress::fromText(ip2, c, d));
}

void showsearch::open5310(const UnitAddress &unit, const UnitAddress &his)
{
    // No way back to the search is wired for this panel: it ends with the application (side by
    // side, its close key closes it alone).
    auto *panel = new RVX5310Dialog(nullptr);
    panel->setWindowIcon(QIcon(QString::fromLatin1(SearchStyles::WindowIcon)));
    panel->bindUnit(unit, his);
    if (presentBeside(panel, panel->link(), PanelKind::Rvx5310, unit))
        return;
    hide();
    panel->show();
}

void showsearch::set5370UI(QString ip, uint8_t a, uint8_t b, QString ip2, uint8_t c, uint8_t d)
{
    open5370(UnitAddress::fromText(ip, a, b), UnitAddress::fromText(ip2, c, d));
}

void showsearch::open5370(const UnitAddress &unit, const UnitAddress &his)
{
    // No way back to the search is wired for this panel: it ends with the application (side by
    // side, its close key closes it alone).
    auto *panel = new RVX5370(nullptr);
    panel->setWindowIcon(QIcon(QString::fromLatin1(SearchStyles::WindowIcon)));
    panel->bindUnit(unit, his);
    if (presentBeside(panel, panel->link(), PanelKind::Rvx5370, unit))
        return;
    hide();
    panel->show();
}

void showsearch::set5350UI(QString ip, uint8_t a, uint8_t b, QString ip2, uint8_t c, uint8_t d)
{
    open5350(UnitAddress::fromText(ip, a, b), UnitAddress::fromText(ip2, c, d));
}

void showsearch::open5350(const UnitAddress &unit, const UnitAddress &his)
{
    // No way back to the search is wired for this panel: it ends with the application (side by
    // side, its close key closes it alone).
    auto *panel = new RVX5350(nullptr);
    panel->setWindowIcon(QIcon(QString::fromLatin1(SearchStyles::WindowIcon)));
    panel->bindUnit(unit, his);
    if (presentBeside(panel, panel->link(), PanelKind::Rvx5350, unit))
        return;
    hide();
    panel->show();
}

void showsearch::set5120UI()
{
    // No unit is chosen for this panel, and it has no way back: it ends with the application.
    auto *panel = new RVX5120(nullptr);
    panel->setWindowIcon(QIcon(QString::fromLatin1(SearchStyles::WindowIcon)));
    if (sideBySide()) {
        panel->setAttribute(Qt::WA_DeleteOnClose);
        PanelClose::setClosesAlone(panel, true);
        panel->show();
        return;
    }
    hide();
    panel->show();
}
