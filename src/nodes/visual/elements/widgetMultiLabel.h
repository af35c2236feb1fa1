#pragma once

#include "nodes/model/properties/PropertyId.h"
#include "nodes/visual/elements/widgetLabel.h"

namespace Nodes {

class widgetState;

/// A label whose text, colours and visibility follow the first of its states that the value
/// matches.
class NODES_EXPORT widgetMultiLabel : public widgetLabel
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x15008);
    struct Prop : widgetLabel::Prop
    {
        static constexpr PropertyId<bool> StateColors{12240, "stateColors"};
        static constexpr PropertyId<int> Visibility{12241, "visibility"};
    };

    enum enVisibilityMode { VisibleAlways = 0, VisibleWhileMatching = 1 };

    static KindInfo Kind();

    /// Whether states' own colours are used at all.
    bool GetUsePersonalColor() const { return m_usesPersonalColor; }
    /// Fill the colour and return true when the value's state defines its own. A bad value has the
    /// label's configured colours, so that no state of the past shines through.
    virtual bool GetStateTextColor(const SignalValue &value, NColor &color) const;
    virtual bool GetStateBackgroundColor(const SignalValue &value, NColor &color) const;
    bool GetStateTextColor(NColor &color) const { return GetStateTextColor(GetValue(), color); }
    bool GetStateBackgroundColor(NColor &color) const
    {
        return GetStateBackgroundColor(GetValue(), color);
    }
    int GetVisibilityMode() const { return m_visibilityMode; }
    /// The value matches one of the states, or nobody knows whether it does: a bad value, or none
    /// received yet, of a linked signal. An alarm's text must not go away with its device.
    bool FindMatches(const SignalValue &value) const;
    bool FindMatches() const { return FindMatches(GetValue()); }
    /// Null without a match and for a bad value.
    const widgetState *GetState(const SignalValue &value) const;

    /// The current state's text; without a match, and for a state that has colours only, what a
    /// plain label would show.
    using BasicWidget::GetDisplayText;
    std::string GetDisplayText(const SignalValue &value) const override;

private:
    bool isBad(const SignalValue &value) const;

    bool m_usesPersonalColor = true;
    int m_visibilityMode = VisibleAlways;
};

} // namespace Nodes
