#include "widgets/charts/elements/qwidgetChartCorridor.h"

#include "widgets/charts/plots/PlotCorridor.h"

#include "nodes/charts/widgetChartCorridor.h"

namespace Widgets {

namespace {

constexpr int onlyPlot = 1;

} // namespace

qwidgetChartCorridor::qwidgetChartCorridor(Nodes::widgetChartCorridor *node, QWidget *parent,
                                           const SceneContextPtr &context)
    : qwidgetChartBasic(node, new PlotCorridor(node, onlyPlot, nullptr), parent, context)
{
    initialize();
}

} // namespace Widgets
