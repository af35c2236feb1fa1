#include "nodes/charts/widgetChartTimeAxis.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo widgetChartTimeAxis::Kind()
{
    return KindBuilder::For<widgetChartTimeAxis>("chartTimeAxis", "Time axis", "Ось времени")
        .Inherit<widgetChartAxis>();
}

} // namespace Nodes
