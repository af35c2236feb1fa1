#pragma once

#include "nodes/charts/widgetChartAxis.h"

namespace Nodes {

/// Axis of time, at the bottom unless told otherwise.
class NODES_EXPORT widgetChartTimeAxis : public widgetChartAxis
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x18002);

    widgetChartTimeAxis() : widgetChartAxis(PositionBottom) {}
    static KindInfo Kind();
};

} // namespace Nodes
