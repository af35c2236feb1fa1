#include "nodes/actions/kinds/actionCloseWindow.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo actionCloseWindow::Kind()
{
    return KindBuilder::For<actionCloseWindow>("actionCloseWindow", "Close window", "Закрытие окна")
        .Inherit<BasicWindowAction>()
        .Property<&actionCloseWindow::m_isCurrentWindow>(Prop::Current, "Current window",
                                                         "Текущее окно");
}

void actionCloseWindow::CollectDemands(AccessDemands &demands) const
{
    if (!m_isCurrentWindow)
        demands.push_back({PrivilegeClose, GetWindowLink()});
}

} // namespace Nodes
