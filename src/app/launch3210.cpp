// Launchers of the RVX3210-family panels.
#include "RVX3210/plane_top.h"
#include "RVX3210/rvx3210ui.h"
#include "SwitcherData/rvx3210_workdata.h"
#include "globaldev.h"
#include "searchstyles.h"
#include "showsearch.h"

#include <QIcon>

void showsearch::set3210UI(QString ip, uint8_t a, uint8_t b, QString ip2, uint8_t c, uint8_t d)
{
    auto *panel = new RVX3210UI(nullptr);
    panel->setWindowIcon(QIcon(QString::fromLatin1(SearchStyles::WindowIcon)));
    panel->titleBar()->setDev_Child_Type(GLOBAL_DEV_CHILD_TYPE);
    panel->DevTypeID(ip, a, b, ip2, c, d);
    hide();
    panel->show();
    // The returning panel is freed, and its link object and socket with it, so the next
    // panel can take local port 7000.
    connect(panel, &RVX3210UI::m_on_Singnals_returnloginwin, this, [this, panel] {
        panel->hide();
        panel->link()->releasePort();
        panel->deleteLater();
        showSearchPage();
    });
}

void showsearch::set3410UI(QString ip, uint8_t a, uint8_t b, QString ip2, uint8_t c, uint8_t d)
{
    Q_UNUSED(ip)
    Q_UNUSED(a)
    Q_UNUSED(b)
    Q_UNUSED(ip2)
    Q_UNUSED(c)
    Q_UNUSED(d)
}
