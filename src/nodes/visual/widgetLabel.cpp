#include "nodes/visual/widgetLabel.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/values/NumberText.h"

namespace Nodes {

namespace {

// What stands where a number would: long enough to be seen, never to be read as a value.
constexpr const char *noValueText = "----";

} // namespace

void widgetLabel::Describe(KindBuilder &builder)
{
    builder.Inherit<BasicWidget>()
        .Property<&widgetLabel::m_text>(12200, "text", "Text", "Текст")
        .Hint("multiline")
        .Property<&widgetLabel::m_decimals>(12201, "decimals", "Decimals", "Знаков после запятой")
        .Range(-1, 9)
        .Property<&widgetLabel::m_showsUnit>(12202, "showUnit", "Show unit", "Единица измерения")
        .Property<&widgetLabel::m_onText>(12203, "onText", "Text of true", "Текст для 1")
        .Property<&widgetLabel::m_offText>(12204, "offText", "Text of false", "Текст для 0")
        .Property<&widgetLabel::m_family>(12210, "fontFamily", "Font family", "Шрифт")
        .Property<&widgetLabel::m_pointSize>(12211, "fontSize", "Font size, pt",
                                             "Размер шрифта, пт")
        .Range(1, 400)
        .Property<&widgetLabel::m_isBold>(12212, "bold", "Bold", "Полужирный")
        .Property<&widgetLabel::m_isItalic>(12213, "italic", "Italic", "Курсив")
        .Property<&widgetLabel::m_isUnderlined>(12214, "underline", "Underline", "Подчёркнутый")
        .Property<&widgetLabel::m_isStruckOut>(12215, "strikeOut", "Strike-out", "Зачёркнутый")
        .Property<&widgetLabel::m_horizontal>(12220, "align", "Horizontal alignment",
                                              "Выравнивание по горизонтали")
        .Choice(AlignmentLeft, "left", "Слева")
        .Choice(AlignmentHCenter, "center", "По центру")
        .Choice(AlignmentRight, "right", "Справа")
        .Property<&widgetLabel::m_vertical>(12221, "valign", "Vertical alignment",
                                            "Выравнивание по вертикали")
        .Choice(AlignmentTop, "top", "Сверху")
        .Choice(AlignmentVCenter, "center", "По центру")
        .Choice(AlignmentBottom, "bottom", "Снизу")
        .Property<&widgetLabel::m_textColor>(12230, "color", "Text colour", "Цвет текста")
        .Property<&widgetLabel::m_backgroundColor>(12231, "background", "Background", "Цвет фона")
        .Property<&widgetLabel::m_borderColor>(12232, "borderColor", "Border colour", "Цвет рамки")
        .Property<&widgetLabel::m_borderWidth>(12233, "borderWidth", "Border width",
                                               "Толщина рамки")
        .Range(0, 64)
        .Property<&widgetLabel::m_isWrapped>(12234, "wrap", "Word wrap", "Перенос по словам")
        .Property<&widgetLabel::m_angle>(12235, "angle", "Angle, degrees", "Угол поворота, °")
        .Range(-360, 360)
        .Hint("angle");
}

KindInfo widgetLabel::Kind()
{
    return KindBuilder::For<widgetLabel>(NodeType::enNodeSubtype(0x15001), "label", "Label",
                                         "Надпись")
        .Inherit<widgetLabel>();
}

NFont widgetLabel::GetFont() const
{
    return {m_family, m_pointSize, m_isBold, m_isItalic, m_isUnderlined, m_isStruckOut};
}

std::string widgetLabel::formatValue(const SignalValue &value) const
{
    // Errors and nothing received are bad too. The last good number is not for operating by.
    if (value.GetQuality() == Quality::Bad)
        return noValueText;
    if (value.GetType() == enSignalValueType::Bool) {
        const std::string &text = value.ToBool() ? m_onText : m_offText;
        return text.empty() ? (value.ToBool() ? "1" : "0") : text;
    }
    const BasicSignal *signal = GetSignal();
    const int decimals = m_decimals >= 0 || !signal ? m_decimals : signal->GetDecimals();
    std::string text = value.GetType() == enSignalValueType::Double
                           ? FormatFixed(value.ToDouble(), decimals < 0 ? 1 : decimals)
                           : value.ToString();
    if (m_showsUnit && signal && !signal->GetUnit().empty())
        text += " " + signal->GetUnit();
    return text;
}

std::string widgetLabel::GetDisplayText() const
{
    if (GetSignalLink().isEmpty())
        return m_text;
    return m_text + formatValue(GetValue());
}

} // namespace Nodes
