#include "nodes/charts/widgetChartDiscretSerie.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo widgetChartDiscretSerie::Kind()
{
    return KindBuilder::For<widgetChartDiscretSerie>("chartDiscretSerie", "Discrete series",
                                                     "Дискретный ряд")
        .Inherit<widgetChartBasicSerie>()
        .Property<&widgetChartDiscretSerie::m_onText>(Prop::OnText, "Text when on",
                                                      "Текст включённого")
        .Property<&widgetChartDiscretSerie::m_offText>(Prop::OffText, "Text when off",
                                                       "Текст отключённого");
}

} // namespace Nodes
