#pragma once

#include "nodes/actions/kinds/actionWriteValue.h"
#include "widgets/actions/qBasicAction.h"

namespace Widgets {

/// Lets the node write its value; a refusal is told to the operator.
class qactionWriteValue : public qBasicAction
{
public:
    using Node = Nodes::actionWriteValue;

    using qBasicAction::qBasicAction;
    void Execute() override;
};

} // namespace Widgets
