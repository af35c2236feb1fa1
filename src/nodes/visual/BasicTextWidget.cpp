#include "nodes/visual/BasicTextWidget.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

void BasicTextWidget::DescribeText(KindBuilder &builder)
{
    builder.Property<&BasicTextWidget::m_family>(12210, "fontFamily", "Font family", "Шрифт")
        .Property<&BasicTextWidget::m_pointSize>(12211, "fontSize", "Font size, pt",
                                                 "Размер шрифта, пт")
        .Range(1, 400)
        .Property<&BasicTextWidget::m_isBold>(12212, "bold", "Bold", "Полужирный")
        .Property<&BasicTextWidget::m_isItalic>(12213, "italic", "Italic", "Курсив")
        .Property<&BasicTextWidget::m_isUnderlined>(12214, "underline", "Underline", "Подчёркнутый")
        .Property<&BasicTextWidget::m_isStruckOut>(12215, "strikeOut", "Strike-out", "Зачёркнутый")
        .Property<&BasicTextWidget::m_horizontal>(12220, "align", "Horizontal alignment",
                                                  "Выравнивание по горизонтали")
        .Choice(AlignmentLeft, "left", "Слева")
        .Choice(AlignmentHCenter, "center", "По центру")
        .Choice(AlignmentRight, "right", "Справа")
        .Property<&BasicTextWidget::m_vertical>(12221, "valign", "Vertical alignment",
                                                "Выравнивание по вертикали")
        .Choice(AlignmentTop, "top", "Сверху")
        .Choice(AlignmentVCenter, "center", "По центру")
        .Choice(AlignmentBottom, "bottom", "Снизу")
        .Property<&BasicTextWidget::m_textColor>(12230, "color", "Text colour", "Цвет текста");
    DescribeFrame(builder);
}

void BasicTextWidget::Describe(KindBuilder &builder)
{
    builder.Inherit<BasicWidget>();
    DescribeText(builder);
}

NFont BasicTextWidget::GetFont() const
{
    return {m_family, m_pointSize, m_isBold, m_isItalic, m_isUnderlined, m_isStruckOut};
}

} // namespace Nodes
