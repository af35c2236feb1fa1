#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/properties/PropertyId.h"
#include "nodes/visual/events/ColumnInfo.h"

namespace Nodes {

/// How one column of the event list above it looks; its name is the title.
class NODES_EXPORT eventColumn : public ConfigNode
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x9013);
    struct Prop
    {
        static constexpr PropertyId<int> Column{12420, "column"};
        static constexpr PropertyId<bool> Visible{12421, "visible"};
        static constexpr PropertyId<int> Position{12422, "position"};
        static constexpr PropertyId<int> Width{12423, "width"};
    };

    static KindInfo Kind();

    ColumnInfo GetInfo() const;

private:
    int m_column = ColumnInfo::ColumnText;
    bool m_isVisible = true;
    int m_position = 1;
    int m_width = 0;
};

} // namespace Nodes
