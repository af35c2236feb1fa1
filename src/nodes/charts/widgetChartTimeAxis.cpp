#include "nodes/charts/widgetChartTimeAxis.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo widgetChartTimeAxis::Kind()
{
    KindInfo kind =
        KindBuilder::For<widgetChartTimeAxis>("chartTimeAxis", "Time axis", "Ось времени")
            .Inherit<widgetChartAxis>();
    for (PropertyDescriptor &d : kind.properties) {
        if (d.key == Prop::Format.key)
            d.editorHint = "timeFormat";
    }
    return kind;
}

} // namespace Nodes
