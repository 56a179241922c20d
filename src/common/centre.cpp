#include "centre.h"

#include <QApplication>
#include <QDesktopWidget>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

QPoint centredTopLeft(QSize window, QSize reference)
{
    // C++ division truncates toward zero, also for a window larger than the reference.
    return {(reference.width() - window.width()) / 2, (reference.height() - window.height()) / 2};
}

QSize centreReference(CentreOn on, const QWidget *widget)
{
    switch (on) {
    case CentreOn::AvailableGeometry:
        return QApplication::desktop()->availableGeometry(widget).size();
    case CentreOn::WholeDesktop:
        return QApplication::desktop()->size();
    case CentreOn::PrimaryScreen:
        return QGuiApplication::primaryScreen() ? QGuiApplication::primaryScreen()->geometry().size()
                                                : QSize(0, 0);
    }
    return QSize(0, 0);
}

QRect centreWindow(QWidget *widget, QSize size, CentreOn on)
{
    const QRect geometry(centredTopLeft(size, centreReference(on, widget)), size);
    widget->setGeometry(geometry);
    return geometry;
}
