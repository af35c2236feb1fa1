#pragma once

#include "nodes/actions/kinds/actionShowMenu.h"
#include "widgets/actions/qBasicAction.h"

namespace Widgets {

/// Pops up the first of the node's menus on the display where it was triggered and waits until the
/// operator is done with it. Nothing happens when the node names no menu.
class qactionShowMenu : public qBasicAction
{
public:
    using Node = Nodes::actionShowMenu;

    using qBasicAction::qBasicAction;
    void Execute() override;

private:
    bool isTooMany() const;
};

} // namespace Widgets
