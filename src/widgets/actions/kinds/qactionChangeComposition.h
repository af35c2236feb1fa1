#pragma once

#include "nodes/actions/kinds/actionChangeComposition.h"
#include "widgets/actions/qBasicAction.h"

namespace Widgets {

/// Loads a composition into every composed window that the node names on its display.
class qactionChangeComposition : public qBasicAction
{
public:
    using Node = Nodes::actionChangeComposition;

    using qBasicAction::qBasicAction;
    void Execute() override;
};

} // namespace Widgets
