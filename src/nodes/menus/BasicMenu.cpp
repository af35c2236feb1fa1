#include "nodes/menus/BasicMenu.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo BasicMenu::Kind()
{
    return KindBuilder::For<BasicMenu>(NodeType::enNodeSubtype(0xB001), "menu", "Menu", "Меню")
        .Property<&BasicMenu::m_entryWidth>(21001, "entryWidth", "Entry width", "Ширина пункта")
        .Range(0, 4096)
        .Property<&BasicMenu::m_entryHeight>(21002, "entryHeight", "Entry height", "Высота пункта")
        .Range(0, 1024)
        .Property<&BasicMenu::m_showsPictures>(21003, "pictures", "Show pictures",
                                               "Показывать рисунки")
        .Property<&BasicMenu::m_picture>(21004, "picture", "Picture", "Рисунок")
        .Children({NodeType::TypeMenu});
}

} // namespace Nodes
