#pragma once

#include "widgets/actions/qBasicAction.h"

namespace Nodes {
class actionCloseWindow;
class ConfigNode;
} // namespace Nodes

namespace Widgets {

class WidgetLink;

/// Closes the active window or a configured one, when the user may; silent otherwise.
class qactionCloseWindow : public qBasicAction
{
public:
    using qBasicAction::qBasicAction;
    void Execute() override;

private:
    bool isAllowed(const Nodes::ConfigNode *window) const;
    static void close(const WidgetLink &link);
    void closeCurrent() const;
    void closeConfigured(const Nodes::actionCloseWindow &node) const;
};

} // namespace Widgets
