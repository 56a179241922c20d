#pragma once

#include "SwitcherData/protocol.h"
#include "SwitcherData/unitaddress.h"
#include "common/unitbinding.h"

#include <QPoint>
#include <QSize>
#include <QString>
#include <QToolButton>
#include <array>

class UnitLink;
class QMouseEvent;

// The PIP window of the output, drawn as a box inside a preview area that stands for the whole
// picture. The operator drags the box; every move tells the unit the new position in its own
// coordinates. The RVX5370 and RVX5350 panels differ only in the preview's geometry, which a
// table of one row per PIP size carries.
class PIPGro : public QToolButton, public UnitBinding<PIPGro>
{
    Q_OBJECT
public:
    // One PIP size. A preview coordinate p becomes the unit coordinate p * factor / divisor,
    // truncated toward zero; a unit coordinate u comes back as u * divisor / factor. The largest
    // corner may be fractional: it is truncated where it is compared.
    struct SizeRow
    {
        QSize box;
        double maxX;
        double maxY;
        double hFactor;
        double hDivisor;
        double vFactor;
        double vDivisor;
    };
    static constexpr int SizeCount = Protocol::PipSizeCount;
    using Table = std::array<SizeRow, SizeCount>;

    struct Geometry
    {
        Table sizes;
        // Style sheet while the box is held; empty leaves the box's own style alone.
        const char *heldStyle;
    };

    static const Geometry Geometry5370;
    static const Geometry Geometry5350;

    // The RVX5370's preview box.
    explicit PIPGro(UnitLink *model, QWidget *parent = nullptr);
    PIPGro(const Geometry &geometry, UnitLink *model, QWidget *parent = nullptr);

    // Passes the unit's and its HIS board's addresses to the link the box sends through (the
    // panel's own, bound already where the panel made it).
    void bindUnit(const UnitAddress &unit, const UnitAddress &his);

    int sizeIndex() const { return m_size; }
    bool isDragging() const { return m_dragging; }

public slots:
    // A new PIP size (0 small, 1 medium, 2 large): the box takes that size's dimensions and, if it
    // now lies beyond the size's limits, is pulled back inside. Other values change nothing.
    void setRARE_V(int size);
    // The position the unit reports, in its coordinates: places the box, sends nothing.
    void set_H_Vposition_Style(int h, int v);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    const SizeRow &row() const { return m_geometry.sizes[size_t(m_size)]; }
    QPoint clamped(QPoint p) const;

    const Geometry m_geometry;
    UnitLink *m_link;
    int m_size = 0;
    bool m_dragging = false;
    QPoint m_lastGlobal;
    QString m_restStyle;
};

// The RVX5350's preview box: the same box over the larger preview of that panel.
class PIPGro5350 : public PIPGro
{
    Q_OBJECT
public:
    explicit PIPGro5350(UnitLink *model, QWidget *parent = nullptr);

public slots:
    void getPIP_SIZ(int size) { setRARE_V(size); }
};
