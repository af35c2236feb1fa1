#include "nodes/actions/kinds/actionShowWindow.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo actionShowWindow::Kind()
{
    return KindBuilder::For<actionShowWindow>("actionShowWindow", "Show window", "Открытие окна")
        .Inherit<BasicOpeningAction>();
}

void actionShowWindow::CollectDemands(AccessDemands &demands) const
{
    demands.push_back({PrivilegeOpen, GetWindowLink()});
}

} // namespace Nodes
