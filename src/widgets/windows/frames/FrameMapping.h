#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/visual/windows/BasicFrame.h"

#include <QPointF>
#include <QRect>
#include <QTransform>

namespace Widgets {

/// How coordinates given in nodes become pixels of the screen: scaled and shifted, never turned.
/// What a frame shows, what opens over it and the points its actions name share one mapping. A
/// default one leaves coordinates as they are.
class WIDGETS_EXPORT FrameMapping
{
public:
    FrameMapping() = default;
    /// One unit is one pixel, counted from `origin` on the screen.
    static FrameMapping asDrawn(const QPoint &origin);
    /// `drawn`, in node coordinates, takes up `area` of the screen; with FitInside as much of it as
    /// one scale for both axes allows, in its middle. FitAsDrawn puts the origin into its corner.
    static FrameMapping fitted(const QRect &drawn, const QRect &area, Nodes::BasicFrame::enFit fit);

    /// Pixels a unit.
    double scaleX() const { return m_scaleX; }
    double scaleY() const { return m_scaleY; }
    bool isScaled() const { return m_scaleX != 1 || m_scaleY != 1; }
    /// The scale alone: for a view of a scene in node coordinates.
    QTransform viewTransform() const { return QTransform::fromScale(m_scaleX, m_scaleY); }

    QPointF toScreen(const QPointF &node) const;
    QPoint toScreen(const QPoint &node) const;
    /// Edges are rounded one by one, so that rectangles side by side stay so without a gap.
    QRect toScreen(const QRect &node) const;
    QPointF toNode(const QPointF &screen) const;

    bool operator==(const FrameMapping &other) const;
    bool operator!=(const FrameMapping &other) const { return !(*this == other); }

private:
    FrameMapping(const QPointF &origin, double scaleX, double scaleY);

    QPointF m_origin; // of node coordinates, on the screen
    double m_scaleX = 1;
    double m_scaleY = 1;
};

} // namespace Widgets
