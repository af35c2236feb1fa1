#pragma once

#include "nodes/charts/widgetChartHistory.h"

namespace Nodes {

/// A trend of tubes: each series is a band from a minimum to a maximum about a middle line.
class NODES_EXPORT widgetChartCorridor : public widgetChartHistory
{
public:
    static constexpr auto Code = NodeType::SubtypeChartCorridor;

    static KindInfo Kind();
};

} // namespace Nodes
