#include "nodes/actions/kinds/actionShowMenu.h"

#include "nodes/menus/BasicMenu.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/model/validation/ValidationResults.h"

namespace Nodes {

KindInfo actionShowMenu::Kind()
{
    return KindBuilder::For<actionShowMenu>(NodeType::enNodeSubtype(0x1000c), "actionShowMenu",
                                            "Show menu", "Показать меню")
        .Property<&actionShowMenu::m_menus>(16120, "menus", "Menus", "Меню")
        .Refers({NodeType::TypeMenu})
        .Property<&actionShowMenu::m_x>(16121, "x", "X", "X")
        .Property<&actionShowMenu::m_y>(16122, "y", "Y", "Y")
        .Property<&actionShowMenu::m_isAtTrigger>(16134, "atTrigger", "Open at the trigger",
                                                  "Открывать у элемента")
        .Property<&actionShowMenu::m_menuBackground>(16123, "menuBackground", "Menu background",
                                                     "Цвет фона меню")
        .Property<&actionShowMenu::m_background>(16124, "background", "Entry background",
                                                 "Цвет фона пункта")
        .Property<&actionShowMenu::m_hoverBackground>(
            16125, "hoverBackground", "Chosen entry's background", "Цвет фона выбранного пункта")
        .Property<&actionShowMenu::m_borderColor>(16126, "borderColor", "Border colour",
                                                  "Цвет рамки")
        .Property<&actionShowMenu::m_textColor>(16127, "color", "Text colour", "Цвет текста")
        .Property<&actionShowMenu::m_borderWidth>(16128, "borderWidth", "Border width",
                                                  "Толщина рамки")
        .Range(0, 64)
        .Property<&actionShowMenu::m_family>(16129, "fontFamily", "Font family", "Шрифт")
        .Property<&actionShowMenu::m_pointSize>(16130, "fontSize", "Font size, pt",
                                                "Размер шрифта, пт")
        .Range(1, 400)
        .Property<&actionShowMenu::m_isBold>(16131, "bold", "Bold", "Полужирный")
        .Property<&actionShowMenu::m_horizontal>(16132, "align", "Horizontal alignment",
                                                 "Выравнивание по горизонтали")
        .Choice(AlignmentLeft, "left", "Слева")
        .Choice(AlignmentHCenter, "center", "По центру")
        .Choice(AlignmentRight, "right", "Справа")
        .Property<&actionShowMenu::m_vertical>(16133, "valign", "Vertical alignment",
                                               "Выравнивание по вертикали")
        .Choice(AlignmentTop, "top", "Сверху")
        .Choice(AlignmentVCenter, "center", "По центру")
        .Choice(AlignmentBottom, "bottom", "Снизу");
}

void actionShowMenu::Validate(ValidationResults &results) const
{
    BasicAction::Validate(results);
    if (m_menus.empty() || !dynamic_cast<const BasicMenu *>(m_menus.front().GetNode()))
        results.Add(GetNodeLink(), Result(this, Result::InvalidArgument, "menus"),
                    GetPath() + ": выберите меню, иначе действие ничего не покажет");
}

} // namespace Nodes
