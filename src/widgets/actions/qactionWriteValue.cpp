#include "widgets/actions/qactionWriteValue.h"

#include "nodes/actions/actionWriteValue.h"

namespace Widgets {

void qactionWriteValue::Execute()
{
    if (const auto *node = nodeAs<Nodes::actionWriteValue>())
        report(node->Write());
}

} // namespace Widgets
