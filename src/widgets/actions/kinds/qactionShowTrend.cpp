#include "widgets/actions/kinds/qactionShowTrend.h"

#include "widgets/charts/own/OwnTrend.h"

#include "nodes/signals/BasicSignal.h"
#include "nodes/visual/BasicWidget.h"

namespace Widgets {

void qactionShowTrend::Execute()
{
    const auto *node = nodeAs<Node>();
    if (!node)
        return;
    Nodes::NodeLinks shown = node->GetSignals();
    const auto *element = dynamic_cast<const Nodes::BasicWidget *>(trigger().element.GetNode());
    if (shown.empty() && element && element->GetSignal())
        shown.push_back(element->GetSignal()->GetNodeLink());
    if (shown.empty())
        return report(Nodes::Result(node, Nodes::Result::NotFound, "no signal to show a trend of"));
    OwnTrend::show(shown, targetDisplay(0));
}

} // namespace Widgets
