#include "widgets/actions/kinds/qactionWriteValue.h"

#include "nodes/actions/kinds/actionWriteValue.h"

namespace Widgets {

void qactionWriteValue::Execute()
{
    const auto *node = nodeAs<Nodes::actionWriteValue>();
    if (!node)
        return;
    const auto write = [this, node] {
        const Nodes::ActingScope acting = act();
        return node->Write();
    };
    report(write());
}

} // namespace Widgets
