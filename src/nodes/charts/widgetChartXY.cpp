#include "nodes/charts/widgetChartXY.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo widgetChartXY::Kind()
{
    return KindBuilder::For<widgetChartXY>("chartXY", "XY chart", "График XY")
        .Inherit<widgetChartHistory>();
}

} // namespace Nodes
