#pragma once

#include "nodes/actions/kinds/actionOverrideCursor.h"
#include "widgets/actions/qBasicAction.h"

namespace Widgets {

/// Gives the application the pointer of its node until it is restored.
class qactionOverrideCursor : public qBasicAction
{
public:
    using Node = Nodes::actionOverrideCursor;

    using qBasicAction::qBasicAction;
    void Execute() override;
};

} // namespace Widgets
