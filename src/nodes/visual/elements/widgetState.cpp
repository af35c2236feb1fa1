#include "nodes/visual/elements/widgetState.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo widgetState::Kind()
{
    return KindBuilder::For<widgetState>(NodeType::enNodeSubtype(0x9001), "state", "State",
                                         "Состояние")
        .Property<&widgetState::m_minimum>(9001, "from", "From", "От")
        .Property<&widgetState::m_maximum>(9002, "to", "To", "До")
        .Property<&widgetState::m_matchText>(9003, "match", "Matching text", "Совпадающий текст")
        .Property<&widgetState::m_text>(9004, "text", "Text", "Текст")
        .Property<&widgetState::m_hasTextColor>(9005, "ownColor", "Own text colour",
                                                "Свой цвет текста")
        .Property<&widgetState::m_textColor>(9006, "color", "Text colour", "Цвет текста")
        .Property<&widgetState::m_hasBackgroundColor>(9007, "ownBackground", "Own background",
                                                      "Свой цвет фона")
        .Property<&widgetState::m_backgroundColor>(9008, "background", "Background", "Цвет фона")
        .Property<&widgetState::m_image>(9009, "image", "Picture", "Рисунок");
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
