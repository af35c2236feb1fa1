#include "nodes/charts/widgetChartHistorySerie.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo widgetChartHistorySerie::Kind()
{
    return KindBuilder::For<widgetChartHistorySerie>("chartSerie", "Series", "Ряд")
        .Inherit<widgetChartBasicSerie>()
        .Property<&widgetChartHistorySerie::m_shift>(Prop::Shift, "Earlier by, s", "Раньше на, с")
        .Range(0, 1e9);
}

void widgetChartHistorySerie::CollectArchived(NodeLinks &archived) const
{
    if (!(m_shift > 0))
        widgetChartBasicSerie::CollectArchived(archived);
}

} // namespace Nodes
