#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/windows/WidgetLink.h"

class QWidget;

namespace Nodes {
class ConfigNode;
}

namespace Widgets {

class OpenWindows;

/// Makes the widgets that nodes of windows, compositions and layers ask for. GUI thread.
class WIDGETS_EXPORT WindowBuilder
{
public:
    /// The window of `node` (may be null), not shown, among `windows`; inside what `parent` hosts
    /// when that is a decorated window. The empty link for other nodes, with a line in the log.
    static WidgetLink open(OpenWindows &windows, Nodes::ConfigNode *node, QWidget *parent);

    /// Judges all that is open by the rights of the current user, see ProxyWidget::judgeAccess.
    static void judgeAccess(const OpenWindows &windows);
};

} // namespace Widgets
