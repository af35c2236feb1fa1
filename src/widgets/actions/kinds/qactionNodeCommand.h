#pragma once

#include "nodes/actions/kinds/actionNodeCommand.h"
#include "widgets/actions/qBasicAction.h"

namespace Widgets {

/// Has its node give its command; a failure is told.
class qactionNodeCommand : public qBasicAction
{
public:
    using Node = Nodes::actionNodeCommand;

    using qBasicAction::qBasicAction;
    void Execute() override;
};

} // namespace Widgets
