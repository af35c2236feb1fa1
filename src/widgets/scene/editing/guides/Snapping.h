#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/scene/editing/guides/EdgeIndex.h"
#include "widgets/scene/editing/guides/NeighbourIndex.h"

#include <QLineF>
#include <QPointF>
#include <QRectF>
#include <QVector>

namespace Widgets {

/// What a dragged rectangle is drawn to. Scene pixels.
struct SnapOptions
{
    static constexpr int LeastStep = 1;
    static constexpr int GreatestStep = 64;

    bool toGrid = true;
    int gridStep = 8; ///< LeastStep..GreatestStep
    bool toElements = true;
    double distance = 6; ///< within which edges, centres and gaps of elements draw
    QRectF visible;      ///< elements out of it draw nothing; empty: all do
};

/// Where a dragged rectangle comes to, and why.
struct SnapResult
{
    QPointF shift;          ///< to be added to its moving edges
    QVector<QLineF> guides; ///< edges and centres in line; empty for the grid
    QVector<QLineF> gaps;   ///< distances that are equal, each from edge to edge
};

/// Finds what the edges and the centre of a dragged rectangle, and the gaps beside it, come close
/// to. Made once a drag, of the rectangles that do not move. A move costs a logarithm of their
/// number and what lies close. Elements go before the grid, edges and centres before gaps.
class WIDGETS_EXPORT Snapping
{
public:
    explicit Snapping(const QVector<QRectF> &standing);

    /// `edges` are those that move: all four of a rectangle that is moved, fewer of one that is
    /// resized, which knows no centre and no gaps. The shift leads to whole pixels.
    SnapResult snap(const QRectF &moved, Qt::Edges edges, const SnapOptions &options) const;

private:
    struct Pull
    {
        double shift = 0;
        bool isFound = false;
    };

    Pull pullOfEdges(const QRectF &moved, Qt::Edges edges, Qt::Orientation axis,
                     const SnapOptions &options) const;
    Pull pullOfGaps(const QRectF &moved, Qt::Orientation axis, const SnapOptions &options) const;
    void addGuides(const QRectF &moved, Qt::Edges edges, Qt::Orientation axis,
                   const SnapOptions &options, SnapResult &result) const;

    EdgeIndex m_across; ///< left edges, centres and right edges
    EdgeIndex m_down;
    NeighbourIndex m_neighbours;
};

} // namespace Widgets
