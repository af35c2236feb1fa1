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
    /// Fill the colour and return true when the current state defines its own.
    virtual bool GetStateTextColor(NColor &color) const;
    virtual bool GetStateBackgroundColor(NColor &color) const;
    int GetVisibilityMode() const { return m_visibilityMode; }
    /// The current value matches one of the states.
    bool FindMatches() const { return GetCurrentState() != nullptr; }
    const widgetState *GetCurrentState() const;

    /// The current state's text; without a match what a plain label would show.
    std::string GetDisplayText() const override;

private:
    bool m_usesPersonalColor = true;
    int m_visibilityMode = VisibleAlways;
};

} // namespace Nodes
