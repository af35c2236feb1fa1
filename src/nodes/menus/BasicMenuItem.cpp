#include "nodes/menus/BasicMenuItem.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo BasicMenuItem::Kind()
{
    return KindBuilder::For<BasicMenuItem>("menuItem", "Menu item", "Пункт меню")
        .Property<&BasicMenuItem::m_actions>(Prop::Actions, "Actions", "Действия")
        .Refers({NodeType::TypeAction, NodeType::TypeArchiverAction})
        .Property<&BasicMenuItem::m_picture>(Prop::Picture, "Picture", "Рисунок");
}

} // namespace Nodes
