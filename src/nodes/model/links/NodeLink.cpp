#include "nodes/model/links/NodeLink.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"

namespace Nodes {

NodeLink::NodeLink(unsigned long id) : m_id(id)
{
    if (const NodesCollection *current = NodesCollection::Current())
        m_collection = current->GetToken();
}

NodeLink::NodeLink(const BasicNode *node)
{
    if (!node)
        return;
    m_id = node->GetId();
    if (const NodesCollection *collection = node->GetNodesCollection())
        m_collection = collection->GetToken();
}

NodeLink::NodeLink(unsigned long id, const NodesCollection *collection)
    : m_id(id), m_collection(collection ? collection->GetToken() : 0)
{
}

ConfigNode *NodeLink::GetNode() const
{
    if (m_id == 0)
        return nullptr;
    const NodesCollection *collection = GetNodesCollection();
    return collection ? collection->FindNode(m_id) : nullptr;
}

NodeType NodeLink::GetNodeType() const
{
    const ConfigNode *node = GetNode();
    return node ? node->GetNodeType() : NodeType();
}

std::string NodeLink::GetLinkName(enLinkNameType type) const
{
    const ConfigNode *node = GetNode();
    return node ? node->GetLinkName(type) : std::string();
}

NodesCollection *NodeLink::GetNodesCollection() const
{
    return NodesCollection::FromToken(m_collection);
}

} // namespace Nodes
