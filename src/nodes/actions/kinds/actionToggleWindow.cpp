#include "nodes/actions/kinds/actionToggleWindow.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo actionToggleWindow::Kind()
{
    return KindBuilder::For<actionToggleWindow>(NodeType::enNodeSubtype(0x1000a),
                                                "actionToggleWindow", "Toggle window",
                                                "Показ или скрытие окна")
        .Inherit<BasicPlacingAction>();
}

void actionToggleWindow::CollectDemands(AccessDemands &demands) const
{
    demands.push_back({PrivilegeOpen, GetWindowLink()});
}

} // namespace Nodes
