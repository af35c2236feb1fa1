#pragma once

#include "nodes/actions/kinds/actionShowWindowTemplate.h"
#include "widgets/actions/qBasicAction.h"

namespace Widgets {

/// Opens an instance of a template window, or brings forward one with the same arguments.
class qactionShowWindowTemplate : public qBasicAction
{
public:
    using Node = Nodes::actionShowWindowTemplate;

    using qBasicAction::qBasicAction;
    void Execute() override;
};

} // namespace Widgets
