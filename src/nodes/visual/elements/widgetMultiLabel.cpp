#include "nodes/visual/elements/widgetMultiLabel.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/visual/elements/widgetState.h"

namespace Nodes {

KindInfo widgetMultiLabel::Kind()
{
    return KindBuilder::For<widgetMultiLabel>("multiLabel", "Multi-state label",
                                              "Надпись состояний")
        .Inherit<widgetLabel>()
        .Property<&widgetMultiLabel::m_usesPersonalColor>(Prop::StateColors, "State colours",
                                                          "Цвета состояний")
        .Property<&widgetMultiLabel::m_visibilityMode>(Prop::Visibility, "Visibility", "Видимость")
        .Choice(VisibleAlways, "always", "Всегда")
        .Choice(VisibleWhileMatching, "matching", "При совпадении состояния")
        .Children({NodeType::TypeState});
}

const widgetState *widgetMultiLabel::GetState(const SignalValue &value) const
{
    return widgetState::Find(*this, value); // a bad value matches none
}

bool widgetMultiLabel::FindMatches(const SignalValue &value) const
{
    return isBad(value) || GetState(value);
}

bool widgetMultiLabel::isBad(const SignalValue &value) const
{
    return !GetSignalLink().isEmpty() && value.GetQuality() == Quality::Bad;
}

bool widgetMultiLabel::GetStateTextColor(const SignalValue &value, NColor &color) const
{
    const widgetState *state = GetState(value);
    if (isBad(value))
        color = GetTextColor();
    else if (state && state->HasTextColor())
        color = state->GetTextColor();
    else
        return false;
    return true;
}

bool widgetMultiLabel::GetStateBackgroundColor(const SignalValue &value, NColor &color) const
{
    const widgetState *state = GetState(value);
    if (isBad(value))
        color = GetBackgroundColor();
    else if (state && state->HasBackgroundColor())
        color = state->GetBackgroundColor();
    else
        return false;
    return true;
}

std::string widgetMultiLabel::GetDisplayText(const SignalValue &value) const
{
    const widgetState *state = GetState(value);
    const bool hasText = state && !state->GetText().empty();
    return hasText ? state->GetText() : widgetLabel::GetDisplayText(value);
}

} // namespace Nodes
