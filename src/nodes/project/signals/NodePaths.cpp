#include "nodes/project/signals/NodePaths.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"

namespace Nodes {

ConfigNode *NodePaths::Find(const std::string &path) const
{
    if (!m_isRead && m_project && m_project->GetRoot()) {
        for (const NodeLink &link : m_project->GetRoot()->GetNodes(true)) {
            const auto [place, isNew] = m_nodes.emplace(link->GetPath(), link.GetNode());
            if (!isNew)
                place->second = nullptr;
        }
    }
    m_isRead = true;
    const auto found = m_nodes.find(path);
    return found == m_nodes.end() ? nullptr : found->second;
}

} // namespace Nodes
