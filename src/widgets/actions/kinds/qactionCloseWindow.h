#pragma once

#include "nodes/actions/kinds/actionCloseWindow.h"
#include "widgets/actions/qBasicAction.h"

namespace Nodes {
class ConfigNode;
} // namespace Nodes

namespace Widgets {

class WidgetLink;

/// Closes the active window or a configured one, when the user may; silent otherwise.
class qactionCloseWindow : public qBasicAction
{
public:
    using Node = Nodes::actionCloseWindow;

    using qBasicAction::qBasicAction;
    void Execute() override;

private:
    bool isAllowed(const Nodes::ConfigNode *window) const;
    static void close(const WidgetLink &link);
    void closeCurrent() const;
    void closeConfigured(const Nodes::actionCloseWindow &node) const;
};

} // namespace Widgets
