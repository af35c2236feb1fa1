#include "widgets/charts/elements/qwidgetChartXY.h"

#include "widgets/charts/plots/PlotXY.h"

#include "nodes/charts/widgetChartXY.h"

namespace Widgets {

namespace {

constexpr int onlyPlot = 1;

} // namespace

qwidgetChartXY::qwidgetChartXY(Nodes::widgetChartXY *node, QWidget *parent,
                               const SceneContextPtr &context)
    : qwidgetChartBasic(node, new PlotXY(node, onlyPlot, nullptr), parent, context)
{
    initialize();
}

} // namespace Widgets
