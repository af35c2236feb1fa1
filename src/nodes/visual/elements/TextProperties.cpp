#include "nodes/visual/elements/TextProperties.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

template <class Base> void TextProperties<Base>::DescribeText(KindBuilder &builder)
{
    using Text = TextProperties<Base>;
    builder.Property<&Text::m_family>(Text::Prop::FontFamily, "Font family", "Шрифт")
        .template Property<&Text::m_pointSize>(Text::Prop::FontSize, "Font size, pt",
                                               "Размер шрифта, пт")
        .Range(1, 400)
        .template Property<&Text::m_isBold>(Text::Prop::Bold, "Bold", "Полужирный")
        .template Property<&Text::m_isItalic>(Text::Prop::Italic, "Italic", "Курсив")
        .template Property<&Text::m_isUnderlined>(Text::Prop::Underline, "Underline",
                                                  "Подчёркнутый")
        .template Property<&Text::m_isStruckOut>(Text::Prop::StrikeOut, "Strike-out", "Зачёркнутый")
        .template Property<&Text::m_horizontal>(Text::Prop::Align, "Horizontal alignment",
                                                "Выравнивание по горизонтали")
        .Choice(AlignmentLeft, "left", "Слева")
        .Choice(AlignmentHCenter, "center", "По центру")
        .Choice(AlignmentRight, "right", "Справа")
        .template Property<&Text::m_vertical>(Text::Prop::Valign, "Vertical alignment",
                                              "Выравнивание по вертикали")
        .Choice(AlignmentTop, "top", "Сверху")
        .Choice(AlignmentVCenter, "center", "По центру")
        .Choice(AlignmentBottom, "bottom", "Снизу")
        .template Property<&Text::m_textColor>(Text::Prop::Color, "Text colour", "Цвет текста");
}

template class TextProperties<BasicWidget>;
template class TextProperties<BasicFramedWidget>;

} // namespace Nodes
