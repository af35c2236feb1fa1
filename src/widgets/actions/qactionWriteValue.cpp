#include "widgets/actions/qactionWriteValue.h"

#include "widgets/windows/Access.h"

#include "nodes/actions/actionWriteValue.h"

namespace Widgets {

void qactionWriteValue::Execute()
{
    if (const auto *node = nodeAs<Nodes::actionWriteValue>())
        ShowActionResult(node->Write(), node->GetName());
}

} // namespace Widgets
