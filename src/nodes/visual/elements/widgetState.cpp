#include "nodes/visual/elements/widgetState.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo widgetState::Kind()
{
    return KindBuilder::For<widgetState>("state", "State", "Состояние")
        .Property<&widgetState::m_minimum>(Prop::From, "From", "От")
        .Property<&widgetState::m_maximum>(Prop::To, "To", "До")
        .Property<&widgetState::m_matchText>(Prop::Match, "Matching text", "Совпадающий текст")
        .Property<&widgetState::m_text>(Prop::Text, "Text", "Текст")
        .Property<&widgetState::m_hasTextColor>(Prop::OwnColor, "Own text colour",
                                                "Свой цвет текста")
        .Property<&widgetState::m_textColor>(Prop::Color, "Text colour", "Цвет текста")
        .Property<&widgetState::m_hasBackgroundColor>(Prop::OwnBackground, "Own background",
                                                      "Свой цвет фона")
        .Property<&widgetState::m_backgroundColor>(Prop::Background, "Background", "Цвет фона")
        .Property<&widgetState::m_image>(Prop::Image, "Picture", "Рисунок");
}

bool widgetState::Matches(const SignalValue &value) const
{
    if (value.IsError() || value.GetQuality() == Quality::Bad)
        return false;
    if (!m_matchText.empty())
        return value.ToString() == m_matchText;
    const double number = value.ToDouble();
    return number >= m_minimum && number <= m_maximum;
}

} // namespace Nodes
