#pragma once

#include "widgets/WidgetsExport.h"

namespace Nodes {
class widgetChartAxis;
class widgetChartBasicSerie;
class widgetChartGroup;
} // namespace Nodes

namespace Widgets {

/// Bands of the discrete series of a group, by their nodes alone.
namespace DiscretStack {

/// Where the band of a series begins: the offset of its node or, where no discrete series on its
/// axis is given one, its place among them, the first one on top.
WIDGETS_EXPORT float offsetOf(const Nodes::widgetChartGroup &group,
                              const Nodes::widgetChartBasicSerie &serie);
/// Whether discrete series stand on that axis, and nothing else does.
WIDGETS_EXPORT bool isOn(const Nodes::widgetChartAxis &axis);

} // namespace DiscretStack

} // namespace Widgets
