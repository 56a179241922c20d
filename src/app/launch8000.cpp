// Launchers of the 8000-series and RVX5120 panels. These panels are not part of this build
// yet: their units are listed, but a double-click opens nothing.
#include "searchstyles.h"
#include "showsearch.h"

#include <QIcon>

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
