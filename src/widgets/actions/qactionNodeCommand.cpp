#include "widgets/actions/qactionNodeCommand.h"

#include "nodes/actions/actionNodeCommand.h"

namespace Widgets {

void qactionNodeCommand::Execute()
{
    if (const auto *node = nodeAs<Nodes::actionNodeCommand>())
        report(node->Send());
}

} // namespace Widgets
