// Launchers of the 8000-series and RVX5120 panels.
#include "RVX5120/rvx5120.h"
#include "RVX5310/rvx5310dialog.h"
#include "RVX5350/rvx5350.h"
#include "RVX5370/rvx5370.h"
#include "searchstyles.h"
#include "showsearch.h"

#include <QIcon>

void showsearch::set5310UI(QString ip, uint8_t a, uint8_t b, QString ip2, uint8_t c, uint8_t d)
{
    // No way back to the search is wired for this panel: it ends with the application.
    auto *panel = new RVX5310Dialog(nullptr);
    panel->setWindowIcon(QIcon(QString::fromLatin1(SearchStyles::WindowIcon)));
    panel->DevTypeID(ip, a, b, ip2, c, d);
    hide();
    panel->show();
}

void showsearch::set5370UI(QString ip, uint8_t a, uint8_t b, QString ip2, uint8_t c, uint8_t d)
{
    // No way back to the search is wired for this panel: it ends with the application.
    auto *panel = new RVX5370(nullptr);
    panel->setWindowIcon(QIcon(QString::fromLatin1(SearchStyles::WindowIcon)));
    panel->DevTypeID(ip, a, b, ip2, c, d);
    hide();
    panel->show();
}

void showsearch::set5350UI(QString ip, uint8_t a, uint8_t b, QString ip2, uint8_t c, uint8_t d)
{
    // No way back to the search is wired for this panel: it ends with the application.
    auto *panel = new RVX5350(nullptr);
    panel->setWindowIcon(QIcon(QString::fromLatin1(SearchStyles::WindowIcon)));
    panel->DevTypeID(ip, a, b, ip2, c, d);
    hide();
    panel->show();
}

void showsearch::set5120UI()
{
    // No unit is chosen for this panel, and it has no way back: it ends with the application.
    auto *panel = new RVX5120(nullptr);
    panel->setWindowIcon(QIcon(QString::fromLatin1(SearchStyles::WindowIcon)));
    hide();
    panel->show();
}
