#pragma once

#include "widgets/WidgetsExport.h"

#include <QHash>
#include <QLineF>
#include <QRectF>
#include <QVector>

#include <functional>

namespace Widgets {

/// Finds what stands beside a rectangle in its row or column, and where it would stand at gaps
/// equal to those there.
class WIDGETS_EXPORT NeighbourIndex
{
public:
    explicit NeighbourIndex(const QVector<QRectF> &rects);

    using Admits = std::function<bool(const QRectF &)>;
    /// A place with equal gaps: how far the rectangle is from it and the gaps it would have there.
    struct Place
    {
        double shift = 0;
        QVector<QLineF> gaps;
    };
    /// Between two neighbours, or beyond one as far as that is from the next. Horizontal: in the
    /// row. Shifts no further than `distance`, the nearest first.
    QVector<Place> placesOf(const QRectF &moved, Qt::Orientation axis, double distance,
                            const Admits &admits) const;

private:
    QVector<QRectF> besides(const QRectF &rect, Qt::Orientation axis, const Admits &admits) const;

    QVector<QRectF> m_rects;
    QHash<int, QVector<int>> m_rows;    ///< indices by band of height
    QHash<int, QVector<int>> m_columns; ///< by band of width
};

} // namespace Widgets
