#pragma once

#include <QObject>
#include <QPoint>

class QWidget;

// Lets the operator move a frameless window by dragging one of its parts, the handle. It
// watches the handle's mouse events as an event filter, so the handle's own handlers still
// run, and presses on children that leave them unhandled reach it as well.
class WindowDrag : public QObject
{
    Q_OBJECT
public:
    // What a drag moves, looked up at every move: the handle itself, the handle's parent
    // widget (nothing while it has none), or the top-level window the handle sits in.
    enum class Target
    {
        Handle,
        Parent,
        Window
    };

    // Watches `handle` until it is destroyed. With `band` above 0 only pointer positions
    // less than `band` pixels below the handle's top move anything (a title band); a press
    // anywhere still starts the drag.
    static WindowDrag *install(QWidget *handle, Target target, int band = 0);

    bool dragging() const { return m_dragging; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    WindowDrag(QWidget *handle, Target target, int band);
    QWidget *target() const;

    QWidget *m_handle;
    Target m_target;
    int m_band;
    bool m_dragging = false;
    QPoint m_lastGlobal;
};
