#pragma once

#include "nodes/actions/kinds/actionShowWindow.h"
#include "widgets/actions/qBasicAction.h"

namespace Nodes {
class BasicWindow;
} // namespace Nodes

class QWidget;

namespace Widgets {

class WindowBasic;

/// Opens a window on its display, when the user may, or brings forward one that is open already.
class qactionShowWindow : public qBasicAction
{
public:
    using Node = Nodes::actionShowWindow;

    using qBasicAction::qBasicAction;
    void Execute() override;

private:
    /// The open window that the action's open mode takes instead of a new one.
    static QWidget *findOpen(const Nodes::actionShowWindow &node, const Nodes::BasicWindow &window,
                             int display);
};

} // namespace Widgets
