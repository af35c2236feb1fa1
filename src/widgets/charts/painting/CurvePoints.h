#pragma once

#include "nodes/values/Quality.h"

#include <QPointF>

#include <cmath>
#include <cstddef>

namespace Widgets {

/// A look at the points of a curve and their qualities, sorted by x; belongs to who gave it.
struct CurvePoints
{
    const QPointF *points = nullptr;
    const Nodes::Quality *qualities = nullptr;
    std::size_t size = 0;

    [[nodiscard]] bool isDrawn(std::size_t i) const { return isDrawn(points[i], qualities[i]); }
    [[nodiscard]] static bool isDrawn(const QPointF &point, Nodes::Quality quality)
    {
        return quality != Nodes::Quality::Bad && std::isfinite(point.y());
    }
};

} // namespace Widgets
