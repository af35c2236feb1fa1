#pragma once

#include "nodes/actions/kinds/actionLaunchProcess.h"
#include "widgets/actions/qBasicAction.h"

#include "nodes/actions/kinds/actionLaunchProcess.h"

namespace Widgets {

/// Starts the program of its node, if the current user may; a failure is told.
class qactionLaunchProcess : public qBasicAction
{
public:
    using Node = Nodes::actionLaunchProcess;

    using qBasicAction::qBasicAction;
    void Execute() override;

private:
    Nodes::Result prepare(const Nodes::actionLaunchProcess &node,
                          Nodes::actionLaunchProcess::Command &command) const;
};

} // namespace Widgets
