#pragma once

#include "nodes/actions/kinds/actionExecuteScript.h"
#include "widgets/actions/qBasicAction.h"

namespace Widgets {

/// Runs the script of its node on a thread of its own; refused writes are told.
class qactionExecuteScript : public qBasicAction
{
public:
    using Node = Nodes::actionExecuteScript;

    using qBasicAction::qBasicAction;
    void Execute() override;
};

} // namespace Widgets
