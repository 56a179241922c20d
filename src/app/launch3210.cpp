// Launchers of the RVX3210-family panels.
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
