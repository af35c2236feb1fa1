#pragma once

#include "nodes/model/links/ResourceLink.h"
#include "nodes/model/properties/PropertyId.h"
#include "nodes/visual/elements/BasicTextWidget.h"
#include "nodes/visual/elements/SymbolLook.h"

#include <limits>

namespace Nodes {

class widgetState;

/// Equipment as a symbol: a vector picture whose parts follow the state of the signal, its level
/// and the quality of both. The state is that of the first `state` child that the value matches.
class NODES_EXPORT widgetSymbol : public BasicTextWidget
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x15014);
    struct Prop : BasicTextWidget::Prop, AngleProp
    {
        static constexpr PropertyId<ResourceLink> Source{27000, "source"};
        static constexpr PropertyId<NColor> Body{27001, "body"};
        static constexpr PropertyId<NColor> Line{27002, "line"};
        static constexpr PropertyId<double> Minimum{27003, "minimum"};
        static constexpr PropertyId<double> Maximum{27004, "maximum"};
        static constexpr PropertyId<NColor> LevelColor{27005, "levelColor"};
        static constexpr PropertyId<bool> Mirrored{27006, "mirrored"};
        static constexpr PropertyId<bool> KeepAspect{27007, "keepAspect"};
        static constexpr PropertyId<bool> ShowValue{27008, "showValue"};
    };

    widgetSymbol();
    static KindInfo Kind();

    /// File of the project or built-in picture (":/symbols/pump.svg"); that of the value's state
    /// when the state has one.
    const ResourceLink &GetSource(const SignalValue &value) const;
    const ResourceLink &GetSource() const { return m_source; }
    /// Colours of surface and outline; an alpha of 0 leaves them as drawn.
    NColor GetBodyColor() const { return m_body; }
    NColor GetLineColor() const { return m_line; }
    NColor GetLevelColor() const { return m_levelColor; }
    /// What it stands on: its own background, else that of the window, which an instance shows
    /// through. Elements below it are not asked.
    NColor GetSurface() const;
    /// Degrees, clockwise, about the centre.
    double GetAngle() const { return m_angle; }
    bool isMirrored() const { return m_isMirrored; }
    bool keepsAspect() const { return m_keepsAspect; }

    /// State that the value matches; null without one and for a bad value.
    const widgetState *GetState(const SignalValue &value) const;
    /// Of the state; without states a yes/no signal is Off or On. Unknown for a bad value and for
    /// one that no state stands for; Plain without a signal.
    SymbolLook GetLook(const SignalValue &value) const;
    /// How full the symbol is, 0 to 1, between its own ends or, when these are no range, those of
    /// the signal. NaN without a signal, for a bad value and for one that is no number.
    double GetLevel(const SignalValue &value) const;

    /// Text of the state, else the value with its unit where it is asked for, else "".
    using BasicWidget::GetDisplayText;
    std::string GetDisplayText(const SignalValue &value) const override;

    /// Reports one that shows nothing.
    void Validate(ValidationResults &results) const override;

private:
    bool hasStates() const;

    ResourceLink m_source;
    NColor m_body{0, 0, 0, 0};
    NColor m_line{0, 0, 0, 0};
    double m_minimum = 0;
    double m_maximum = 0;
    NColor m_levelColor{126, 147, 164};
    double m_angle = 0;
    bool m_isMirrored = false;
    bool m_keepsAspect = true;
    bool m_showsValue = false;
};

} // namespace Nodes
