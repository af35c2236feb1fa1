#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/model/links/NodeLink.h"
#include "nodes/values/Result.h"

namespace Widgets {

/// Where a node (signal, alarm, device) is shown, and the way there. GUI thread.
class WIDGETS_EXPORT SourceJump
{
public:
    /// Whether any window or page of the project shows it; of an alarm its signal, of a device
    /// something below it.
    static bool canJump(const Nodes::NodeLink &source);
    /// Opens the best window or page by the same way and with the same rights as an operator's
    /// action, brings it to front and marks the element for some seconds. `display` (0-based):
    /// where the gesture was. NotFound when nothing shows the source; refusals of rights are told
    /// to the operator by themselves.
    [[nodiscard]] static Nodes::Result jump(const Nodes::NodeLink &source, int display);
};

} // namespace Widgets
