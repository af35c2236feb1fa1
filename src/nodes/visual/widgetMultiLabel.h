#pragma once

#include "nodes/visual/widgetLabel.h"

namespace Nodes {

class widgetState;

/// A label whose text, colours and visibility follow the first of its states that the value
/// matches.
class NODES_EXPORT widgetMultiLabel : public widgetLabel
{
public:
    enum enVisibilityMode { VisibleAlways = 0, VisibleWhileMatching = 1 };

    static KindInfo Kind();

    /// Whether states' own colours are used at all.
    bool GetUsePersonalColor() const { return m_usesPersonalColor; }
    /// Fill the colour and return true when the current state defines its own. A bad value has the
    /// label's configured colours, so that no state of the past shines through.
    virtual bool GetStateTextColor(NColor &color) const;
    virtual bool GetStateBackgroundColor(NColor &color) const;
    int GetVisibilityMode() const { return m_visibilityMode; }
    /// The last value matches one of the states, whatever its quality: what was visible when the
    /// device got lost stays so.
    bool FindMatches() const;
    /// Null without a match and for a bad value.
    const widgetState *GetCurrentState() const;

    /// The current state's text; without a match what a plain label would show.
    std::string GetDisplayText() const override;

private:
    const widgetState *findState(const SignalValue &value) const;
    bool isBad() const;

    bool m_usesPersonalColor = true;
    int m_visibilityMode = VisibleAlways;
};

} // namespace Nodes
