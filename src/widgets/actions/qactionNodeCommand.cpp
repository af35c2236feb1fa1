#include "widgets/actions/qactionNodeCommand.h"

#include "widgets/windows/Access.h"

#include "nodes/actions/actionNodeCommand.h"

namespace Widgets {

void qactionNodeCommand::Execute()
{
    if (const auto *node = nodeAs<Nodes::actionNodeCommand>())
        ShowActionResult(node->Send(), node->GetName());
}

} // namespace Widgets
