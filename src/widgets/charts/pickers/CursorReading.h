#pragma once

#include "nodes/values/Quality.h"

#include <QPointF>
#include <QPointer>

#include <optional>
#include <utility>

class QwtPlotItem;

namespace Widgets {

class ISerie;

/// What a series has where a cursor stands.
struct CursorReading
{
    QPointer<ISerie> serie;
    QPointF point; ///< on the plot: the Y offset of the series is in it
    Nodes::Quality quality = Nodes::Quality::Good;
    /// Lowest and highest of what an aggregated sample stands for, also with the offset.
    std::optional<std::pair<double, double>> range;
};

} // namespace Widgets
