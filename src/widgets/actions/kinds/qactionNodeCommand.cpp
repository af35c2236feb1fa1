#include "widgets/actions/kinds/qactionNodeCommand.h"

namespace Widgets {

void qactionNodeCommand::Execute()
{
    const auto *node = nodeAs<Node>();
    if (!node)
        return;
    const auto send = [this, node] {
        const Nodes::ActingScope acting = act();
        return node->Send();
    };
    report(send());
}

} // namespace Widgets
