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

    enum ColumnKind {
        Number = 1,
        Group = 2,
        Time = 3, ///< when it was raised
        Level = 4,
        Text = 5,
        Priority = 6, ///< its badge
        Area = 7,
        Source = 8,
        Value = 9, ///< of the signal, at the last change of state
        Acknowledged = 10,
        Returned = 11,
        User = 12, ///< who acknowledged
        Comment = 13
    };

    static KindInfo Kind();

    ColumnKind GetColumnKind() const { return ColumnKind(m_kind); }
    /// Pixels; 0 makes it fit, the text's column taking what is left.
    int GetWidth() const { return m_width; }

private:
    int m_kind = Text;
    int m_width = 0;
};

} // namespace Nodes
