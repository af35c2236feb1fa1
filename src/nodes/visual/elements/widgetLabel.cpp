#include "nodes/visual/elements/widgetLabel.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/values/NumberText.h"

namespace Nodes {

void widgetLabel::Describe(KindBuilder &builder)
{
    builder.Inherit<BasicWidget>()
        .Property<&widgetLabel::m_text>(Prop::Text, "Text", "Текст")
        .Hint("multiline")
        .Property<&widgetLabel::m_decimals>(Prop::Decimals, "Decimals", "Знаков после запятой")
        .Range(-1, 9)
        .Property<&widgetLabel::m_showsUnit>(Prop::ShowUnit, "Show unit", "Единица измерения")
        .Property<&widgetLabel::m_onText>(Prop::OnText, "Text of true", "Текст для 1")
        .Property<&widgetLabel::m_offText>(Prop::OffText, "Text of false", "Текст для 0");
    DescribeFramedText(builder);
    builder.Property<&widgetLabel::m_isWrapped>(Prop::Wrap, "Word wrap", "Перенос по словам")
        .Property<&widgetLabel::m_angle>(Prop::Angle, "Angle, degrees", "Угол поворота, °")
        .Range(-360, 360)
        .Hint("angle");
}

KindInfo widgetLabel::Kind()
{
    return KindBuilder::For<widgetLabel>("label", "Label", "Надпись").Inherit<widgetLabel>();
}

std::string widgetLabel::formatValue(const SignalValue &value) const
{
    // Errors and nothing received are bad too. The last good number is not for operating by.
    if (value.GetQuality() == Quality::Bad)
        return NoValueText;
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

std::string widgetLabel::GetDisplayText(const SignalValue &value) const
{
    if (GetSignalLink().isEmpty())
        return m_text;
    return m_text + formatValue(value);
}

} // namespace Nodes
