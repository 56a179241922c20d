// Launcher of the RVX3220 panel.
#include "searchstyles.h"
#include "showsearch.h"

#include <QIcon>

void showsearch::set3220UI(QString ip, uint8_t a, uint8_t b)
{
    Q_UNUSED(ip)
    Q_UNUSED(a)
    Q_UNUSED(b)
}
