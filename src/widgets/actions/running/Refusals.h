#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/context/ActionTrigger.h"

#include <string>

class QString;

namespace Nodes {
class Result;
}

namespace Widgets {

/// Tells the operator whose gesture it was that an action was refused for want of rights. As the
/// next ones: without waiting for an answer, and not where nobody asked for it or the station ends;
/// the journal has it then.
WIDGETS_EXPORT void ShowAccessDenied(const ActionTrigger &trigger = {});
/// Tells why `what` failed; nothing for success and silent refusals.
WIDGETS_EXPORT void ShowActionResult(const Nodes::Result &result, const std::string &what,
                                     const ActionTrigger &trigger = {});
/// Tells that an action failed.
WIDGETS_EXPORT void ShowActionError(const QString &text, const ActionTrigger &trigger = {});

} // namespace Widgets
