#include "pipgro.h"

#include "SwitcherData/protocol.h"
#include "SwitcherData/unitlink.h"

#include <QMouseEvent>
#include <cmath>

namespace {

// The RVX5350 preview's largest corners, one pair per PIP size. They are fractional in kind:
// the scales divide by them as they are, the clamps compare their integer parts.
constexpr double m_x1 = 462, m_y1 = 260;
constexpr double m_x2 = 410, m_y2 = 230;
constexpr double m_x3 = 307, m_y3 = 172;

int truncated(double v)
{
    return int(std::trunc(v));
}

} // namespace

// The RVX5370's factors are the unit range over the largest corner written out as decimals; the
// small and the large box share theirs.
const PIPGro::Geometry PIPGro::Geometry5370 = {
    {{
        {QSize(100, 56), 300, 168, 4.8, 1, 4.821428571428571, 1},
        {QSize(133, 74), 266, 149, 4.81203007518797, 1, 4.832214765100671, 1},
        {QSize(200, 112), 200, 112, 4.8, 1, 4.821428571428571, 1},
    }},
    ""};

// The RVX5350's large box is 308 x 173 but stops one short of that in both directions. Its
// scales are the unit's position range over the preview's.
using Protocol::PipHMax;
using Protocol::PipVMax;
const PIPGro::Geometry PIPGro::Geometry5350 = {
    {{
        {QSize(154, 86), m_x1, m_y1, double(PipHMax[0]), m_x1, double(PipVMax[0]), m_y1},
        {QSize(205, 115), m_x2, m_y2, double(PipHMax[1]), m_x2, double(PipVMax[1]), m_y2},
        {QSize(308, 173), m_x3, m_y3, double(PipHMax[2]), m_x3, double(PipVMax[2]), m_y3},
    }},
    "QToolButton{border:2px solid red;}"};

PIPGro::PIPGro(UnitLink *model, QWidget *parent) : PIPGro(Geometry5370, model, parent) {}

PIPGro::PIPGro(const Geometry &geometry, UnitLink *model, QWidget *parent)
    : QToolButton(parent), m_geometry(geometry), m_link(model)
{
    resize(row().box);
}

void PIPGro::bindUnit(const UnitAddress &unit, const UnitAddress &his)
{
    if (m_link)
        m_link->bindBoards(unit, his);
}

QPoint PIPGro::clamped(QPoint p) const
{
    return QPoint(qBound(0, p.x(), truncated(row().maxX)), qBound(0, p.y(), truncated(row().maxY)));
}

void PIPGro::setRARE_V(int size)
{
    if (size < 0 || size >= SizeCount)
        return;
    m_size = size;
    resize(row().box);
    // A larger box has less room: whatever coordinate now lies past its limit goes back to it.
    move(clamped(pos()));
}

void PIPGro::set_H_Vposition_Style(int h, int v)
{
    const SizeRow &r = row();
    // A report outside the unit's range still keeps the box inside the preview.
    move(clamped(QPoint(truncated(h * r.hDivisor / r.hFactor), truncated(v * r.vDivisor / r.vFactor))));
}

void PIPGro::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        QToolButton::mousePressEvent(event);
        return;
    }
    m_dragging = true;
    m_lastGlobal = event->globalPos();
    if (*m_geometry.heldStyle) {
        m_restStyle = styleSheet();
        setStyleSheet(QString::fromLatin1(m_geometry.heldStyle));
    }
}

void PIPGro::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_dragging) {
        QToolButton::mouseMoveEvent(event);
        return;
    }
    const QPoint at = clamped(pos() + event->globalPos() - m_lastGlobal);
    m_lastGlobal = event->globalPos();
    move(at);
    if (!m_link)
        return;
    // Every move sends both, even when the box stands at a limit and nothing changed.
    const SizeRow &r = row();
    m_link->pipPosition(true, truncated(at.x() * r.hFactor / r.hDivisor));
    m_link->pipPosition(false, truncated(at.y() * r.vFactor / r.vDivisor));
}

void PIPGro::mouseReleaseEvent(QMouseEvent *event)
{
    if (!m_dragging || event->button() != Qt::LeftButton) {
        QToolButton::mouseReleaseEvent(event);
        return;
    }
    m_dragging = false;
    if (*m_geometry.heldStyle)
        setStyleSheet(m_restStyle);
}

PIPGro5350::PIPGro5350(UnitLink *model, QWidget *parent) : PIPGro(Geometry5350, model, parent) {}
