#include "widgets/actions/kinds/qactionWriteValue.h"

namespace Widgets {

void qactionWriteValue::Execute()
{
    const auto *node = nodeAs<Node>();
    if (!node)
        return;
    const auto write = [this, node] {
        const Nodes::ActingScope acting = act();
        return node->Write();
    };
    report(write());
}

} // namespace Widgets
