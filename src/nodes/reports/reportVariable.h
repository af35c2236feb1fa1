#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/properties/PropertyId.h"

namespace Nodes {

/// A text that a report's template shows by the node's name.
class NODES_EXPORT reportVariable : public ConfigNode
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0xD003);
    struct Prop
    {
        static constexpr PropertyId<std::string> Value{13201, "value"};
    };

    static KindInfo Kind();

    const std::string &GetValue() const { return m_value; }

private:
    std::string m_value;
};

} // namespace Nodes
