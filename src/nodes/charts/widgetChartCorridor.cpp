#include "nodes/charts/widgetChartCorridor.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo widgetChartCorridor::Kind()
{
    return KindBuilder::For<widgetChartCorridor>("chartCorridor", "Corridor chart",
                                                 "График-коридор")
        .Inherit<widgetChartHistory>();
}

} // namespace Nodes
