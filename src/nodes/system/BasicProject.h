#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/properties/PropertyId.h"

namespace Nodes {

/// Root of a project's tree.
class NODES_EXPORT BasicProject : public ConfigNode
{
public:
    static constexpr auto Code = NodeType::SubtypeProject;
    struct Prop
    {
        static constexpr PropertyId<std::string> Title{1001, "title"};
    };

    static KindInfo Kind();

    const std::string &GetTitle() const { return m_title; }

private:
    std::string m_title;
};

} // namespace Nodes
