#pragma once

#include "nodes/NodesExport.h"
#include "nodes/model/links/NodeLink.h"

#include <string>
#include <unordered_map>

namespace Nodes {

class ConfigNode;

/// Links to a node and those below it, as they are now, by their paths: for threads that must not
/// touch the nodes and tell the journal who an entry is about. Read on any thread.
class NODES_EXPORT NodesByPath
{
public:
    explicit NodesByPath(const ConfigNode &root);

    /// Empty for a path that none of them has.
    NodeLink Find(const std::string &path) const;

private:
    std::unordered_map<std::string, NodeLink> m_links;
};

} // namespace Nodes
