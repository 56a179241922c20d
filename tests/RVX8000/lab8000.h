#pragma once

// What the 8000-series lab tests share: the search window opening the lab's only unit, and a
// drag of a widget by the mouse.
#include "app/showsearch.h"
#include "rig8000.h"

#include <QAbstractButton>
#include <QApplication>
#include <QListWidget>
#include <QMouseEvent>
#include <QPointer>
#include <QtTest>

namespace Lab8000 {

// Shows `window`, waits for the lab's only unit (LAB_UNITS) and opens it with a double click.
// Leaves `unit` its address and `panel` the panel it opened, which is shown.
template <class Panel> void openOnlyUnit(showsearch &window, QString &unit, QPointer<Panel> &panel)
{
    const QStringList units = qEnvironmentVariable("LAB_UNITS").split(QLatin1Char(' '), Qt::SkipEmptyParts);
    QCOMPARE(units.size(), 1);
    unit = units.first();

    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QListWidget *list = window.deviceList();
    QTRY_COMPARE_WITH_TIMEOUT(list->count(), 1, 10000);
    const QPoint at = list->visualItemRect(list->item(0)).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, at);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, at);

    for (QWidget *w : QApplication::topLevelWidgets())
        if (auto *p = qobject_cast<Panel *>(w))
            panel = p;
    QVERIFY(panel);
    QVERIFY(panel->isVisible());
}

// Presses the left button 10,10 into `widget`, moves by `by` and lets go, the way an operator
// drags it.
inline void drag(QWidget *widget, QPoint by)
{
    const QPoint from(10, 10);
    const QPoint grab = widget->mapToGlobal(from);
    QMouseEvent press(QEvent::MouseButtonPress, from, grab, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &press);
    QMouseEvent move(QEvent::MouseMove, from + by, grab + by, Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &move);
    QMouseEvent release(QEvent::MouseButtonRelease, from + by, grab + by, Qt::LeftButton, Qt::NoButton,
                        Qt::NoModifier);
    QApplication::sendEvent(widget, &release);
}

// Clicks DS and waits for the unit's state to reach the panel.
template <class Panel> void readBack(Panel *panel)
{
    QSignalSpy states(panel->link(), &RVX5ALL_workdata::on_signals_3210Data);
    panel->template findChild<QAbstractButton *>(QStringLiteral("btn_ds"))->click();
    QTRY_VERIFY_WITH_TIMEOUT(states.count() >= 1, 5000);
}

// Preview to unit and back truncates twice: a pixel off is the same place.
inline void checkSamePlace(QPoint at, QPoint dragged)
{
    QVERIFY2((at - dragged).manhattanLength() <= 2,
             qPrintable(QStringLiteral("box at %1,%2, dragged to %3,%4")
                            .arg(at.x())
                            .arg(at.y())
                            .arg(dragged.x())
                            .arg(dragged.y())));
}

} // namespace Lab8000
