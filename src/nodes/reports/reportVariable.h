#pragma once

#include "nodes/model/ConfigNode.h"

namespace Nodes {

/// A text that a report's template shows by the node's name.
class NODES_EXPORT reportVariable : public ConfigNode
{
public:
    static constexpr auto Subtype = NodeType::enNodeSubtype(0xD003);
    static KindInfo Kind();

    const std::string &GetValue() const { return m_value; }

private:
    std::string m_value;
};

} // namespace Nodes
