#pragma once

#include "nodes/charts/widgetChartAxis.h"

#include <QtGlobal>

namespace Widgets {

/// A window of time that a plot is to show: milliseconds since 1970-01-01 00:00 local time, and
/// the length as the operator reads it.
struct PlotXAxisRangeDetails
{
    quint64 from = 0;
    quint64 to = 0;
    qint32 length = 0;
    Nodes::widgetChartAxis::enRangeUnit unit = Nodes::widgetChartAxis::RangeMinutes;
};

} // namespace Widgets
