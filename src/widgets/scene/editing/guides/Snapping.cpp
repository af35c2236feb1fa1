#include "widgets/scene/editing/guides/Snapping.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace Widgets {

namespace {

/// Places of a rectangle, along one axis, that move with it and are drawn to others.
QVector<double> movingPlaces(const QRectF &rect, Qt::Edges edges, Qt::Orientation axis)
{
    const bool isAcross = axis == Qt::Horizontal;
    const bool begins = edges.testFlag(isAcross ? Qt::LeftEdge : Qt::TopEdge);
    const bool ends = edges.testFlag(isAcross ? Qt::RightEdge : Qt::BottomEdge);
    const double begin = isAcross ? rect.left() : rect.top();
    const double end = isAcross ? rect.right() : rect.bottom();
    QVector<double> places;
    if (begins)
        places.append(begin);
    if (ends)
        places.append(end);
    if (begins && ends)
        places.append((begin + end) / 2);
    return places;
}

std::function<bool(const QRectF &)> visibleIn(const SnapOptions &options)
{
    return [area = options.visible](const QRectF &rect) {
        return area.isEmpty() || (rect.left() <= area.right() && rect.right() >= area.left() &&
                                  rect.top() <= area.bottom() && rect.bottom() >= area.top());
    };
}

double gridPull(double at, int step)
{
    return std::floor(at / step + 0.5) * step - at;
}

QLineF guideAt(double at, Qt::Orientation axis, const QRectF &reach)
{
    return axis == Qt::Horizontal ? QLineF(at, reach.top(), at, reach.bottom())
                                  : QLineF(reach.left(), at, reach.right(), at);
}

bool movesWhole(Qt::Edges edges, Qt::Orientation axis)
{
    const Qt::Edges both =
        axis == Qt::Horizontal ? Qt::LeftEdge | Qt::RightEdge : Qt::TopEdge | Qt::BottomEdge;
    return (edges & both) == both;
}

} // namespace

Snapping::Snapping(const QVector<QRectF> &standing)
    : m_across(standing, Qt::Horizontal), m_down(standing, Qt::Vertical), m_neighbours(standing)
{
}

Snapping::Pull Snapping::pullOfEdges(const QRectF &moved, Qt::Edges edges, Qt::Orientation axis,
                                     const SnapOptions &options) const
{
    Pull pull;
    double best = options.distance;
    const EdgeIndex &index = axis == Qt::Horizontal ? m_across : m_down;
    for (const double at : movingPlaces(moved, edges, axis)) {
        const std::optional<double> found = index.nearest(at, best, visibleIn(options));
        if (!found || (pull.isFound && std::abs(*found - at) >= best))
            continue;
        best = std::abs(*found - at);
        pull = {*found - at, true};
    }
    return pull;
}

Snapping::Pull Snapping::pullOfGaps(const QRectF &moved, Qt::Orientation axis,
                                    const SnapOptions &options) const
{
    const auto places = m_neighbours.placesOf(moved, axis, options.distance, visibleIn(options));
    return places.isEmpty() ? Pull() : Pull{places.first().shift, true};
}

void Snapping::addGuides(const QRectF &moved, Qt::Edges edges, Qt::Orientation axis,
                         const SnapOptions &options, SnapResult &result) const
{
    const EdgeIndex &index = axis == Qt::Horizontal ? m_across : m_down;
    int found = 0;
    for (const double at : movingPlaces(moved, edges, axis)) {
        const QRectF there = index.unitedAt(at, visibleIn(options));
        // Both edges in line say enough; the centre comes last.
        if (there.isNull() || ++found > 2)
            continue;
        const QRectF reach(
            QPointF(std::min(moved.left(), there.left()), std::min(moved.top(), there.top())),
            QPointF(std::max(moved.right(), there.right()),
                    std::max(moved.bottom(), there.bottom())));
        result.guides.append(guideAt(at, axis, reach));
    }
    if (!movesWhole(edges, axis))
        return;
    constexpr double inPlace = 0.51; // whole pixels: the middle of an odd room is half a pixel off
    for (const auto &place : m_neighbours.placesOf(moved, axis, inPlace, visibleIn(options)))
        result.gaps += place.gaps;
}

SnapResult Snapping::snap(const QRectF &moved, Qt::Edges edges, const SnapOptions &options) const
{
    SnapResult result;
    QRectF there = moved;
    for (const Qt::Orientation axis : {Qt::Horizontal, Qt::Vertical}) {
        const QVector<double> places = movingPlaces(moved, edges, axis);
        if (places.isEmpty())
            continue;
        Pull pull;
        if (options.toElements) {
            pull = pullOfEdges(moved, edges, axis, options);
            if (!pull.isFound && movesWhole(edges, axis))
                pull = pullOfGaps(moved, axis, options);
        }
        if (!pull.isFound && options.toGrid)
            pull.shift = gridPull(places.first(), options.gridStep);
        // Elements stand on whole pixels only.
        const double shift = std::round(places.first() + pull.shift) - places.first();
        (axis == Qt::Horizontal ? result.shift.rx() : result.shift.ry()) = shift;
    }
    if (!options.toElements)
        return result;
    there.adjust(edges & Qt::LeftEdge ? result.shift.x() : 0,
                 edges & Qt::TopEdge ? result.shift.y() : 0,
                 edges & Qt::RightEdge ? result.shift.x() : 0,
                 edges & Qt::BottomEdge ? result.shift.y() : 0);
    for (const Qt::Orientation axis : {Qt::Horizontal, Qt::Vertical})
        addGuides(there, edges, axis, options, result);
    return result;
}

} // namespace Widgets
