#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/properties/PropertyId.h"

namespace Nodes {

/// One column of the alarm window, below systemAlarming; the columns stand in the nodes' order.
class NODES_EXPORT alarmColumn : public ConfigNode
{
public:
    static constexpr auto Code = NodeType::SubtypeAlarmColumn;
    struct Prop
    {
        static constexpr PropertyId<int> Column{9301, "column"};
        static constexpr PropertyId<int> Width{9302, "width"};
    };

    enum ColumnKind { Number = 1, Group = 2, Time = 3, Level = 4, Text = 5 };

    static KindInfo Kind();

    ColumnKind GetColumnKind() const { return ColumnKind(m_kind); }
    /// Pixels; 0 makes it fit, the text's column taking what is left.
    int GetWidth() const { return m_width; }

private:
    int m_kind = Text;
    int m_width = 0;
};

} // namespace Nodes
