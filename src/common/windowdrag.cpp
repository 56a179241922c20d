#include "windowdrag.h"

#include <QMouseEvent>
#include <QWidget>

WindowDrag::WindowDrag(QWidget *handle, Target target, int band)
    : QObject(handle), m_handle(handle), m_target(target), m_band(band)
{
    handle->installEventFilter(this);
}

WindowDrag *WindowDrag::install(QWidget *handle, Target target, int band)
{
    return new WindowDrag(handle, target, band);
}

QWidget *WindowDrag::target() const
{
    switch (m_target) {
    case Target::Handle:
        return m_handle;
    case Target::Parent:
        return m_handle->parentWidget();
    case Target::Window:
        return m_handle->window();
    }
    return nullptr;
}

bool WindowDrag::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_handle)
        return false;
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        m_dragging = true;
        m_lastGlobal = static_cast<QMouseEvent *>(event)->globalPos();
        break;
    case QEvent::MouseMove: {
        const auto *move = static_cast<QMouseEvent *>(event);
        // Outside the band the point is not taken either: the next move inside it covers
        // the whole way from the last point that moved the window.
        if (!m_dragging || (m_band > 0 && move->pos().y() >= m_band))
            break;
        if (QWidget *moved = target()) {
            moved->move(moved->pos() + (move->globalPos() - m_lastGlobal));
            m_lastGlobal = move->globalPos();
        }
        break;
    }
    case QEvent::MouseButtonRelease:
        m_dragging = false;
        break;
    default:
        break;
    }
    // The handle's own handlers see every event as before.
    return false;
}
