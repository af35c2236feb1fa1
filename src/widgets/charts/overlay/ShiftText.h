#pragma once

#include "widgets/WidgetsExport.h"

#include <QString>

namespace Nodes {
class widgetChartBasicSerie;
}

namespace Widgets {

/// How much earlier a line is than it stands, for legends: "−1 сут", "−2 ч 30 мин".
WIDGETS_EXPORT QString ShiftText(double milliseconds);
/// Milliseconds by which that series shows the past; 0 for all that show their own time.
WIDGETS_EXPORT double ShiftOf(const Nodes::widgetChartBasicSerie *node);

} // namespace Widgets
