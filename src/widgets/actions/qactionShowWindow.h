#pragma once

#include "widgets/actions/qBasicAction.h"

namespace Nodes {
class actionShowWindow;
class BasicWindow;
} // namespace Nodes

namespace Widgets {

class WindowBasic;

/// Opens a window on its display, when the user may, or brings forward one that is open already.
class qactionShowWindow : public qBasicAction
{
public:
    using qBasicAction::qBasicAction;
    void Execute() override;

private:
    bool bringForward(const Nodes::actionShowWindow &node, const Nodes::BasicWindow &window) const;
    void open(const Nodes::actionShowWindow &node, Nodes::BasicWindow &window) const;
};

} // namespace Widgets
