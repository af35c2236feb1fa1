#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/charts/multiaxis/QwtAxisId.h"

#include <functional>

namespace Nodes {
class NodesContainer;
class widgetChartAxis;
class widgetChartGroup;
} // namespace Nodes

namespace Widgets {

/// Where the axes of a group stand: an axis has its place among those of its side, in the order of
/// the group, the first one nearest to the canvas. Axes of time stand at the bottom; beside an X
/// axis of values they are not drawn and only tell how much of the past is. GUI thread.
namespace AxisPlaces {

WIDGETS_EXPORT bool isTime(const Nodes::widgetChartAxis &axis);

/// Called with each axis that is drawn and its place.
using Use = std::function<void(Nodes::widgetChartAxis &, QwtAxisId)>;
WIDGETS_EXPORT void forEach(const Nodes::NodesContainer &axes, const Use &use);

/// Null, and an axis of another group: the first of that direction.
WIDGETS_EXPORT QwtAxisId idOf(const Nodes::widgetChartGroup *group,
                              const Nodes::widgetChartAxis *axis, bool isX);
/// Null when none stands there.
WIDGETS_EXPORT Nodes::widgetChartAxis *nodeOf(const Nodes::widgetChartGroup *group, QwtAxisId axis);

} // namespace AxisPlaces

} // namespace Widgets
