#pragma once

#include "nodes/model/ConfigNode.h"

namespace Nodes {

/// Root of a project's tree.
class NODES_EXPORT BasicProject : public ConfigNode
{
public:
    static KindInfo Kind();

    const std::string &GetTitle() const { return m_title; }

private:
    std::string m_title;
};

} // namespace Nodes
