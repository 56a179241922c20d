#pragma once

#include <QRect>
#include <QSize>

class QWidget;

// What a window is centred on when it opens. Each panel keeps the measure it has always had:
// the search window and the RVX3410 panel the whole desktop (every screen together), the
// RVX3210 panel the available part of its screen, the RVX3220 panel the primary screen.
enum class CentreOn
{
    AvailableGeometry,
    WholeDesktop,
    PrimaryScreen
};

// Top-left that centres `window` on a reference of `reference` size: half the difference
// each way, rounded toward zero. The reference's own origin is not added.
QPoint centredTopLeft(QSize window, QSize reference);

// The reference's size now; `widget` picks the screen for AvailableGeometry.
QSize centreReference(CentreOn on, const QWidget *widget);

// Gives `widget` the geometry of `size` centred on `on`; returns that geometry.
QRect centreWindow(QWidget *widget, QSize size, CentreOn on);
