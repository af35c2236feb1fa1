#pragma once

#include "nodes/actions/kinds/actionRestoreCursor.h"
#include "widgets/actions/qBasicAction.h"

namespace Widgets {

/// Takes back the pointer that the latest qactionOverrideCursor gave; without one nothing
/// happens, nor to pointers that others set.
class qactionRestoreCursor : public qBasicAction
{
public:
    using Node = Nodes::actionRestoreCursor;

    using qBasicAction::qBasicAction;
    void Execute() override;
};

} // namespace Widgets
