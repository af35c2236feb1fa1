#include "widgets/charts/axes/DiscretStack.h"

#include "widgets/charts/axes/AxisPlaces.h"
#include "widgets/charts/axes/DiscretScaleEngine.h"

#include "nodes/charts/widgetChartAxis.h"
#include "nodes/charts/widgetChartDiscretSerie.h"
#include "nodes/charts/widgetChartGroup.h"

#include <algorithm>
#include <vector>

namespace Widgets::DiscretStack {

namespace {

using Serie = Nodes::widgetChartBasicSerie;

bool isDiscret(const Serie &serie)
{
    return serie.GetNodeType().GetSubtype() == Nodes::widgetChartDiscretSerie::Code;
}

/// Series of the group that stand on the axis with that id, in the order of the tree.
std::vector<const Serie *> seriesOn(const Nodes::widgetChartGroup &group, QwtAxisId axis)
{
    std::vector<const Serie *> found;
    for (const Nodes::NodeLink &link : group.GetSeries()) {
        const auto *serie = dynamic_cast<const Serie *>(link.GetNode());
        if (serie && AxisPlaces::idOf(&group, serie->GetAxisY(), false) == axis)
            found.push_back(serie);
    }
    return found;
}

} // namespace

float offsetOf(const Nodes::widgetChartGroup &group, const Serie &serie)
{
    auto stacked = seriesOn(group, AxisPlaces::idOf(&group, serie.GetAxisY(), false));
    stacked.erase(std::remove_if(stacked.begin(), stacked.end(),
                                 [&serie](const Serie *other) {
                                     return !isDiscret(*other) ||
                                            other->GetPlotAreaNo() != serie.GetPlotAreaNo();
                                 }),
                  stacked.end());
    const bool areGiven = std::any_of(stacked.begin(), stacked.end(),
                                      [](const Serie *other) { return other->GetOffsetY() != 0; });
    const auto own = std::find(stacked.begin(), stacked.end(), &serie);
    if (areGiven || own == stacked.end())
        return serie.GetOffsetY();
    return float(DiscretScaleEngine::Band) * float(stacked.end() - own - 1);
}

bool isOn(const Nodes::widgetChartAxis &axis)
{
    const auto *group = dynamic_cast<const Nodes::widgetChartGroup *>(axis.GetParent());
    if (!group || axis.IsX())
        return false;
    const auto series = seriesOn(*group, AxisPlaces::idOf(group, &axis, false));
    return !series.empty() && std::all_of(series.begin(), series.end(),
                                          [](const Serie *serie) { return isDiscret(*serie); });
}

} // namespace Widgets::DiscretStack
