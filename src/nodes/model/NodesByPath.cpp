#include "nodes/model/NodesByPath.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesArray.h"

namespace Nodes {

NodesByPath::NodesByPath(const ConfigNode &root)
{
    m_links.emplace(root.GetPath(), root.GetNodeLink());
    for (const NodeLink &link : root.GetNodes(true))
        m_links.emplace(link.GetLinkName(LinkNamePath), link);
}

NodeLink NodesByPath::Find(const std::string &path) const
{
    const auto found = m_links.find(path);
    return found == m_links.end() ? NodeLink() : found->second;
}

} // namespace Nodes
