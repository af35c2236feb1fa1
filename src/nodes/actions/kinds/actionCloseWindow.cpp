#include "nodes/actions/kinds/actionCloseWindow.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo actionCloseWindow::Kind()
{
    return KindBuilder::For<actionCloseWindow>(NodeType::enNodeSubtype(0x10004),
                                               "actionCloseWindow", "Close window", "Закрытие окна")
        .Inherit<BasicWindowAction>()
        .Property<&actionCloseWindow::m_isCurrentWindow>(16011, "current", "Current window",
                                                         "Текущее окно");
}

void actionCloseWindow::CollectDemands(AccessDemands &demands) const
{
    if (!m_isCurrentWindow)
        demands.push_back({PrivilegeClose, GetWindowLink()});
}

} // namespace Nodes
