#pragma once

#include "nodes/actions/kinds/actionShowTrend.h"
#include "widgets/actions/qBasicAction.h"

namespace Widgets {

/// Opens a window with a trend of the action's signals, or of that of the element pressed.
class qactionShowTrend : public qBasicAction
{
public:
    using Node = Nodes::actionShowTrend;

    using qBasicAction::qBasicAction;
    void Execute() override;
};

} // namespace Widgets
