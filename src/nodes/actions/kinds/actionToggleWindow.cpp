#include "nodes/actions/kinds/actionToggleWindow.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo actionToggleWindow::Kind()
{
    return KindBuilder::For<actionToggleWindow>("actionToggleWindow", "Toggle window",
                                                "Показ или скрытие окна")
        .Inherit<BasicPlacingAction>();
}

void actionToggleWindow::CollectDemands(AccessDemands &demands) const
{
    demands.push_back({PrivilegeOpen, GetWindowLink()});
}

} // namespace Nodes
