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

} // namespace Widgets::AxisLength
