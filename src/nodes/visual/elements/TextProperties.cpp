#include "nodes/visual/elements/TextProperties.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

template <class Base> void TextProperties<Base>::DescribeText(KindBuilder &builder)
{
    using Text = TextProperties<Base>;
    builder.Property<&Text::m_family>(12210, "fontFamily", "Font family", "Шрифт")
        .template Property<&Text::m_pointSize>(12211, "fontSize", "Font size, pt",
                                               "Размер шрифта, пт")
        .Range(1, 400)
        .template Property<&Text::m_isBold>(12212, "bold", "Bold", "Полужирный")
        .template Property<&Text::m_isItalic>(12213, "italic", "Italic", "Курсив")
        .template Property<&Text::m_isUnderlined>(12214, "underline", "Underline", "Подчёркнутый")
        .template Property<&Text::m_isStruckOut>(12215, "strikeOut", "Strike-out", "Зачёркнутый")
        .template Property<&Text::m_horizontal>(12220, "align", "Horizontal alignment",
                                                "Выравнивание по горизонтали")
        .Choice(AlignmentLeft, "left", "Слева")
        .Choice(AlignmentHCenter, "center", "По центру")
        .Choice(AlignmentRight, "right", "Справа")
        .template Property<&Text::m_vertical>(12221, "valign", "Vertical alignment",
                                              "Выравнивание по вертикали")
        .Choice(AlignmentTop, "top", "Сверху")
        .Choice(AlignmentVCenter, "center", "По центру")
        .Choice(AlignmentBottom, "bottom", "Снизу")
        .template Property<&Text::m_textColor>(12230, "color", "Text colour", "Цвет текста");
}

template class TextProperties<BasicWidget>;
template class TextProperties<BasicFramedWidget>;

} // namespace Nodes
