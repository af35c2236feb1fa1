#pragma once

#include "nodes/actions/kinds/actionShowProblems.h"
#include "widgets/actions/qBasicAction.h"

namespace Widgets {

/// Opens the list of the project's problems beside whatever is open; nothing waits for it.
class qactionShowProblems : public qBasicAction
{
public:
    using Node = Nodes::actionShowProblems;

    using qBasicAction::qBasicAction;
    void Execute() override;
};

} // namespace Widgets
