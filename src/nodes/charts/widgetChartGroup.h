#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesContainer.h"
#include "nodes/model/properties/PropertyId.h"
#include "nodes/values/NColor.h"
#include "nodes/values/NPen.h"
#include "nodes/visual/SharedProperties.h"

namespace Nodes {

/// Series that a chart shows together, with their axes, zones and grid.
class NODES_EXPORT widgetChartGroup : public ConfigNode
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0xC001);
    struct Prop : BackgroundProp
    {
        static constexpr PropertyId<bool> MajorX{12311, "majorX"};
        static constexpr PropertyId<bool> MajorY{12312, "majorY"};
        static constexpr PropertyId<bool> MinorX{12313, "minorX"};
        static constexpr PropertyId<bool> MinorY{12314, "minorY"};
        static constexpr PropertyId<NColor> MajorColor{12315, "majorColor"};
        static constexpr PropertyId<int> MajorWidth{12316, "majorWidth"};
        static constexpr PropertyId<int> MajorStyle{12317, "majorStyle"};
        static constexpr PropertyId<NColor> MinorColor{12318, "minorColor"};
        static constexpr PropertyId<int> MinorWidth{12319, "minorWidth"};
        static constexpr PropertyId<int> MinorStyle{12320, "minorStyle"};
    };

    static KindInfo Kind();

    /// Behind the curves.
    NColor GetBackgroundColor() const { return m_backgroundColor; }
    bool GetMajorX() const { return m_majorX; }
    bool GetMajorY() const { return m_majorY; }
    bool GetMinorX() const { return m_minorX; }
    bool GetMinorY() const { return m_minorY; }
    NPen GetMajorPen() const { return {m_majorColor, m_majorWidth, NPen::Style(m_majorStyle)}; }
    NPen GetMinorPen() const { return {m_minorColor, m_minorWidth, NPen::Style(m_minorStyle)}; }

    /// Axes of either direction, in the order of their ids.
    NodesContainer GetYAxes() const { return axes(false); }
    NodesContainer GetXAxes() const { return axes(true); }
    /// In the order of the tree.
    NodeLinks GetSeries() const;
    NodeLinks GetZones() const;

    void Validate(ValidationResults &results) const override;

private:
    NodesContainer axes(bool areX) const;

    NColor m_backgroundColor{250, 250, 250};
    bool m_majorX = true;
    bool m_majorY = true;
    bool m_minorX = false;
    bool m_minorY = false;
    NColor m_majorColor{214, 218, 222};
    int m_majorWidth = 1;
    int m_majorStyle = NPen::Solid;
    NColor m_minorColor{232, 235, 238};
    int m_minorWidth = 1;
    int m_minorStyle = NPen::Dot;
};

} // namespace Nodes
