#include "centre.h"

#include <QApplication>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <algorithm>

QPoint centredTopLeft(QSize window, QSize reference)
{
    // C++ division truncates toward zero, also for a window larger than the reference.
    return {(reference.width() - window.width()) / 2, (reference.height() - window.height()) / 2};
}

namespace {

// The screen a widget is on, or the primary one for a widget not yet shown.
QScreen *screenOf(const QWidget *widget)
{
    QScreen *screen = widget ? widget->screen() : nullptr;
    return screen ? screen : QGuiApplication::primaryScreen();
}

} // namespace

QSize centreReference(CentreOn on, const QWidget *widget)
{
    switch (on) {
    case CentreOn::AvailableGeometry:
        return screenOf(widget) ? screenOf(widget)->availableGeometry().size() : QSize(0, 0);
    case CentreOn::WholeDesktop:
        // All screens of the virtual desktop together.
        return QGuiApplication::primaryScreen() ? QGuiApplication::primaryScreen()->virtualGeometry().size()
                                                : QSize(0, 0);
    case CentreOn::PrimaryScreen:
        return QGuiApplication::primaryScreen() ? QGuiApplication::primaryScreen()->geometry().size()
                                                : QSize(0, 0);
    }
    return QSize(0, 0);
}

QRect keepTitleOnScreen(QRect geometry, const QRect &available)
{
    // Right before left and top before bottom: the close key and the band win when the
    // window does not fit.
    const int x = qMin(qMax(geometry.x(), available.left()), available.right() + 1 - geometry.width());
    const int y = qMax(qMin(geometry.y(), available.bottom() + 1 - geometry.height()), available.top());
    geometry.moveTo(x, y);
    return geometry;
}

namespace {

bool onSomeScreen(const QPoint &point)
{
    const QList<QScreen *> screens = QGuiApplication::screens();
    return std::any_of(screens.begin(), screens.end(),
                       [&](const QScreen *s) { return s->availableGeometry().contains(point); });
}

} // namespace

QRect centreWindow(QWidget *widget, QSize size, CentreOn on)
{
    QRect geometry(centredTopLeft(size, centreReference(on, widget)), size);
    // The centring stands wherever it leaves the band reachable, across screens too.
    if (!onSomeScreen(geometry.topLeft()) || !onSomeScreen(geometry.topRight())) {
        QScreen *screen = QGuiApplication::screenAt(geometry.center());
        if (!screen)
            screen = QGuiApplication::primaryScreen();
        if (screen)
            geometry = keepTitleOnScreen(geometry, screen->availableGeometry());
    }
    widget->setGeometry(geometry);
    return geometry;
}
