#pragma once

#include <optional>

#include "widgets/dialogs/TimeDialog.h"

namespace Nodes {
class widgetChartAxis;
}

namespace Widgets::AxisLength {

/// Asks the operator for the length of an axis; nothing when he leaves it. Runs an event loop: who
/// calls it may be gone then, as may the axis.
std::optional<TimeDialog::Time> ask(const Nodes::widgetChartAxis &axis);

/// The next longer or shorter one of the lengths that an operator reads at a glance ("20 s", "1
/// h"), none beyond what the axis allows; nothing when that is reached.
WIDGETS_EXPORT std::optional<TimeDialog::Time> stepped(double milliseconds, bool isLonger,
                                                       const Nodes::widgetChartAxis &axis);

} // namespace Widgets::AxisLength
