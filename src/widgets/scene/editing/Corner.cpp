#include "widgets/scene/editing/Corner.h"

namespace Widgets {

namespace {

struct CornerRow
{
    Qt::Edges edges;
    Qt::CursorShape cursor;
};

const CornerRow rows[CornerCount] = {
    {Qt::TopEdge | Qt::LeftEdge, Qt::SizeFDiagCursor},
    {Qt::TopEdge | Qt::RightEdge, Qt::SizeBDiagCursor},
    {Qt::BottomEdge | Qt::RightEdge, Qt::SizeFDiagCursor},
    {Qt::BottomEdge | Qt::LeftEdge, Qt::SizeBDiagCursor},
    {Qt::TopEdge, Qt::SizeVerCursor},
    {Qt::RightEdge, Qt::SizeHorCursor},
    {Qt::BottomEdge, Qt::SizeVerCursor},
    {Qt::LeftEdge, Qt::SizeHorCursor},
};

} // namespace

Qt::Edges cornerEdges(Corner corner)
{
    return corner == NoCorner ? Qt::Edges() : rows[corner].edges;
}

Qt::CursorShape cornerCursor(Corner corner)
{
    return corner == NoCorner ? Qt::ArrowCursor : rows[corner].cursor;
}

QRectF movedEdges(const QRectF &rect, Qt::Edges edges, QPointF delta)
{
    QRectF moved = rect;
    if (edges & Qt::LeftEdge)
        moved.setLeft(qMin(rect.left() + delta.x(), rect.right()));
    if (edges & Qt::RightEdge)
        moved.setRight(qMax(rect.right() + delta.x(), rect.left()));
    if (edges & Qt::TopEdge)
        moved.setTop(qMin(rect.top() + delta.y(), rect.bottom()));
    if (edges & Qt::BottomEdge)
        moved.setBottom(qMax(rect.bottom() + delta.y(), rect.top()));
    return moved;
}

} // namespace Widgets
