#include "nodes/menus/BasicMenu.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo BasicMenu::Kind()
{
    return KindBuilder::For<BasicMenu>("menu", "Menu", "Меню")
        .Property<&BasicMenu::m_entryWidth>(Prop::EntryWidth, "Entry width", "Ширина пункта")
        .Range(0, 4096)
        .Property<&BasicMenu::m_entryHeight>(Prop::EntryHeight, "Entry height", "Высота пункта")
        .Range(0, 1024)
        .Property<&BasicMenu::m_showsPictures>(Prop::Pictures, "Show pictures",
                                               "Показывать рисунки")
        .Property<&BasicMenu::m_picture>(Prop::Picture, "Picture", "Рисунок")
        .Children({NodeType::TypeMenu});
}

} // namespace Nodes
