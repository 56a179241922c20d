// The flush is exported by QtGui on both majors but declared only for Qt's own tests.
#define Q_TEST_QPIXMAPCACHE
#include "pixmapcachesweep.h"

#include <QCoreApplication>
#include <QPixmapCache>
#include <QTimer>

void PixmapCacheSweep::install()
{
    static QTimer *sweep = nullptr;
    if (sweep || !QCoreApplication::instance())
        return;
    // Owned by the application: it ends with it, and a new application gets a new one.
    sweep = new QTimer(QCoreApplication::instance());
    QObject::connect(sweep, &QObject::destroyed, [] { sweep = nullptr; });
    // Besides the dead names, each sweep drops a quarter of what is cached (drawings the style
    // makes again in microseconds when a widget needs them).
    QObject::connect(sweep, &QTimer::timeout, [] { QPixmapCache::flushDetachedPixmaps(); });
    sweep->start(IntervalMs);
}
