#pragma once

#include "SwitcherData/rvx3210_workdata.h"
#include "searchstyles.h"
#include "showsearch.h"

#include <QIcon>

// Shows a bound panel of the RVX3210 family (RVX3210UI, RVX3410UI) in the search window's
// place. On the panel's return signal the panel is hidden and freed, its link object and
// socket with it, so that the next panel can take local port 7000, and the search page
// comes back with a new search.
template <class Panel> void launchRvx3210Family(showsearch *search, Panel *panel, void (Panel::*returned)())
{
    search->hide();
    panel->show();
    QObject::connect(panel, returned, search, [search, panel] {
        panel->hide();
        panel->link()->releasePort();
        panel->deleteLater();
        search->showSearchPage();
    });
}

// The window icon every panel gets from the search window.
inline QIcon panelIcon()
{
    return QIcon(QString::fromLatin1(SearchStyles::WindowIcon));
}
