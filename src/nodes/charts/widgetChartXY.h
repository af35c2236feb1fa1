#pragma once

#include "nodes/charts/widgetChartHistory.h"

namespace Nodes {

/// Values of one signal over those of another at the same time.
class NODES_EXPORT widgetChartXY : public widgetChartHistory
{
public:
    static constexpr auto Code = NodeType::SubtypeChartXY;

    static KindInfo Kind();
};

} // namespace Nodes
