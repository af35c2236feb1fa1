#pragma once

#include <QRectF>
#include <Qt>

namespace Widgets {

/// Where on an element a grabber sits. The numbers are fixed.
enum Corner : int {
    NoCorner = -1,
    TopLeft = 0,
    TopRight = 1,
    BottomRight = 2,
    BottomLeft = 3,
    TopMiddle = 4,
    RightMiddle = 5,
    BottomMiddle = 6,
    LeftMiddle = 7,
    CornerCount = 8
};

/// The edges that follow it; none without a corner.
Qt::Edges cornerEdges(Corner corner);
/// Pointer over it.
Qt::CursorShape cornerCursor(Corner corner);
/// The rectangle after those edges moved by `delta`. An edge stops at the one opposite to it, which
/// stands still.
QRectF movedEdges(const QRectF &rect, Qt::Edges edges, QPointF delta);

} // namespace Widgets
