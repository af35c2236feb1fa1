#include "nodes/actions/kinds/actionShowMenu.h"

#include "nodes/menus/BasicMenu.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/model/validation/ValidationResults.h"

namespace Nodes {

KindInfo actionShowMenu::Kind()
{
    return KindBuilder::For<actionShowMenu>("actionShowMenu", "Show menu", "Показать меню")
        .Property<&actionShowMenu::m_menus>(Prop::Menus, "Menus", "Меню")
        .Refers({NodeType::TypeMenu})
        .Property<&actionShowMenu::m_x>(Prop::X, "X", "X")
        .Range(-32768, 32767)
        .Property<&actionShowMenu::m_y>(Prop::Y, "Y", "Y")
        .Range(-32768, 32767)
        .Property<&actionShowMenu::m_isAtTrigger>(Prop::AtTrigger, "Open at the trigger",
                                                  "Открывать у элемента")
        .Property<&actionShowMenu::m_menuBackground>(Prop::MenuBackground, "Menu background",
                                                     "Цвет фона меню")
        .Property<&actionShowMenu::m_background>(Prop::Background, "Entry background",
                                                 "Цвет фона пункта")
        .Property<&actionShowMenu::m_hoverBackground>(
            Prop::HoverBackground, "Chosen entry's background", "Цвет фона выбранного пункта")
        .Property<&actionShowMenu::m_borderColor>(Prop::BorderColor, "Border colour", "Цвет рамки")
        .Property<&actionShowMenu::m_textColor>(Prop::Color, "Text colour", "Цвет текста")
        .Property<&actionShowMenu::m_borderWidth>(Prop::BorderWidth, "Border width",
                                                  "Толщина рамки")
        .Range(0, 64)
        .Property<&actionShowMenu::m_family>(Prop::FontFamily, "Font family", "Шрифт")
        .Property<&actionShowMenu::m_pointSize>(Prop::FontSize, "Font size, pt",
                                                "Размер шрифта, пт")
        .Range(1, 400)
        .Property<&actionShowMenu::m_isBold>(Prop::Bold, "Bold", "Полужирный")
        .Property<&actionShowMenu::m_horizontal>(Prop::Align, "Horizontal alignment",
                                                 "Выравнивание по горизонтали")
        .Choice(AlignmentLeft, "left", "Слева")
        .Choice(AlignmentHCenter, "center", "По центру")
        .Choice(AlignmentRight, "right", "Справа")
        .Property<&actionShowMenu::m_vertical>(Prop::Valign, "Vertical alignment",
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
