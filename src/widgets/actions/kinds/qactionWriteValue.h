#pragma once

#include "widgets/actions/qBasicAction.h"

namespace Widgets {

/// Lets the node write its value; a refusal is told to the operator.
class qactionWriteValue : public qBasicAction
{
public:
    using qBasicAction::qBasicAction;
    void Execute() override;
};

} // namespace Widgets
