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
        .Property<&widgetState::m_image>(Prop::Image, "Picture", "Рисунок")
        .Property<&widgetState::m_look>(Prop::Look, "Look of a symbol", "Вид мнемосимвола")
        .Choice(int(SymbolLook::Plain), "plain", "Как нарисован")
        .Choice(int(SymbolLook::Off), "off", "Остановлен, закрыт")
        .Choice(int(SymbolLook::On), "on", "Работает, открыт")
        .Choice(int(SymbolLook::Moving), "moving", "В движении")
        .Choice(int(SymbolLook::Fault), "fault", "Авария");
}

const widgetState *widgetState::Find(const ConfigNode &owner, const SignalValue &value)
{
    for (const auto &child : owner.Children()) {
        const auto *state = dynamic_cast<const widgetState *>(child.get());
        if (state && state->Matches(value))
            return state;
    }
    return nullptr;
}

SignalValue widgetState::GetSample() const
{
    return m_matchText.empty() ? SignalValue(m_minimum) : SignalValue(m_matchText);
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
