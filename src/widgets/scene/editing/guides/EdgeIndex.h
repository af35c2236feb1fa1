#pragma once

#include "widgets/WidgetsExport.h"

#include <QRectF>
#include <QVector>

#include <functional>
#include <optional>

namespace Widgets {

/// Edges and centres of many rectangles along one axis, found by where they lie.
class WIDGETS_EXPORT EdgeIndex
{
public:
    /// Horizontal: x of left edges, centres and right edges; vertical: y of top, centre, bottom.
    EdgeIndex(const QVector<QRectF> &rects, Qt::Orientation axis);

    using Admits = std::function<bool(const QRectF &)>;
    /// Place of the nearest that belongs to an admitted rectangle, no further than `distance`.
    std::optional<double> nearest(double at, double distance, const Admits &admits) const;
    /// Union of the admitted rectangles that have an edge or centre there; null when none has.
    QRectF unitedAt(double at, const Admits &admits) const;

private:
    struct Line
    {
        double at;
        QRectF rect;
    };
    using Lines = QVector<Line>;

    Lines::const_iterator firstFrom(double at) const;

    Lines m_lines; ///< by place
};

} // namespace Widgets
