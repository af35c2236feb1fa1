#include "nodes/visual/widgetMultiLabel.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/visual/widgetState.h"

namespace Nodes {

KindInfo widgetMultiLabel::Kind()
{
    return KindBuilder::For<widgetMultiLabel>(NodeType::enNodeSubtype(0x15008), "multiLabel",
                                              "Multi-state label", "Надпись состояний")
        .Inherit<widgetLabel>()
        .Property<&widgetMultiLabel::m_usesPersonalColor>(12240, "stateColors", "State colours",
                                                          "Цвета состояний")
        .Property<&widgetMultiLabel::m_visibilityMode>(12241, "visibility", "Visibility",
                                                       "Видимость")
        .Choice(VisibleAlways, "always", "Всегда")
        .Choice(VisibleWhileMatching, "matching", "При совпадении состояния")
        .Children({NodeType::TypeState});
}

const widgetState *widgetMultiLabel::findState(const SignalValue &value) const
{
    for (const auto &child : Children()) {
        const auto *state = dynamic_cast<const widgetState *>(child.get());
        if (state && state->Matches(value))
            return state;
    }
    return nullptr;
}

bool widgetMultiLabel::FindMatches() const
{
    return findState(GetValue()) != nullptr;
}

const widgetState *widgetMultiLabel::GetCurrentState() const
{
    const SignalValue value = GetValue();
    return value.GetQuality() == Quality::Bad ? nullptr : findState(value);
}

bool widgetMultiLabel::GetStateTextColor(NColor &color) const
{
    const widgetState *state = GetCurrentState();
    if (!state || !state->HasTextColor())
        return false;
    color = state->GetTextColor();
    return true;
}

bool widgetMultiLabel::GetStateBackgroundColor(NColor &color) const
{
    const widgetState *state = GetCurrentState();
    if (!state || !state->HasBackgroundColor())
        return false;
    color = state->GetBackgroundColor();
    return true;
}

std::string widgetMultiLabel::GetDisplayText() const
{
    const widgetState *state = GetCurrentState();
    return state ? state->GetText() : widgetLabel::GetDisplayText();
}

} // namespace Nodes
