#include "nodes/menus/BasicMenuItem.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo BasicMenuItem::Kind()
{
    return KindBuilder::For<BasicMenuItem>(NodeType::enNodeSubtype(0xB002), "menuItem", "Menu item",
                                           "Пункт меню")
        .Property<&BasicMenuItem::m_actions>(21010, "actions", "Actions", "Действия")
        .Refers({NodeType::TypeAction, NodeType::TypeArchiverAction})
        .Property<&BasicMenuItem::m_picture>(21011, "picture", "Picture", "Рисунок");
}

} // namespace Nodes
