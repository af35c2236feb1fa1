#include "nodes/visual/elements/widgetLabel.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/signals/ValueText.h"

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
    const ValueText text(GetSignal(), m_decimals);
    const bool isBad = value.GetQuality() == Quality::Bad;
    if (!isBad && value.GetType() == enSignalValueType::Bool) {
        const std::string &own = GetTextOf(value.ToBool());
        return own.empty() ? (value.ToBool() ? "1" : "0") : own;
    }
    return m_showsUnit && !isBad ? text.WithUnit(text.Of(value)) : text.Of(value);
}

std::string widgetLabel::GetDisplayText(const SignalValue &value) const
{
    if (GetSignalLink().isEmpty())
        return m_text;
    return m_text + formatValue(value);
}

} // namespace Nodes
