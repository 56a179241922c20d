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

// Moves `geometry` as little as needed to bring its top edge and its top-right corner (the
// title band and its close key) onto `available`; the size is kept. A window wider than
// `available` is aligned to its right edge, one taller to its top.
QRect keepTitleOnScreen(QRect geometry, const QRect &available);

// Gives `widget` the geometry of `size` centred on `on`, moved by keepTitleOnScreen onto the
// available part of the nearest screen when its title band's ends are not both on a screen;
// returns that geometry.
QRect centreWindow(QWidget *widget, QSize size, CentreOn on);
