#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/links/LinkWalk.h"

#include <algorithm>

namespace Nodes {

namespace {

/// First link property that may refer to a node of that type; null when there is none.
const PropertyDescriptor *findInput(const ConfigNode &node, NodeType type)
{
    for (const PropertyDescriptor &d : node.GetKind()->properties) {
        const auto &families = d.linkFamilies;
        const bool accepts =
            std::find(families.begin(), families.end(), type.GetFamily()) != families.end();
        if (IsLinkProperty(d) && accepts)
            return &d;
    }
    return nullptr;
}

bool setInput(ConfigNode &node, const NodeLink &link)
{
    const PropertyDescriptor *d = findInput(node, link.GetNodeType());
    if (!d)
        return false;
    if (d->binding.type == PropertyType::Link)
        return node.SetProperty(d->valueId, link).IsSuccess();
    NodeLinks links = *static_cast<const NodeLinks *>(d->binding.data(node));
    if (std::find(links.begin(), links.end(), link) != links.end())
        return false;
    links.push_back(link);
    return node.SetProperty(d->valueId, links).IsSuccess();
}

} // namespace

Result ConfigNode::CanDropNode(const NodeLink &link, enDropFlags flags) const
{
    const ConfigNode *node = link.GetNode();
    if (!node || !m_kind)
        return Result(this, Result::NotFound, "node " + std::to_string(link.GetNodeId()));
    if (flags & DropLink) {
        const bool accepts = node != this && findInput(*this, node->GetNodeType());
        return accepts ? Result() : Result(this, Result::InvalidArgument, "no input for it");
    }
    const std::vector<ConfigNode *> path = GetPathNodes();
    if (std::find(path.begin(), path.end(), node) != path.end())
        return Result(this, Result::Cycle, "a node cannot be copied into itself");
    return m_kind->AllowsChild(node->GetNodeType())
               ? Result()
               : Result(this, Result::InvalidArgument, "kind not allowed here");
}

Result ConfigNode::CanDropNodes(const NodesArray &nodes, enDropFlags flags) const
{
    if (nodes.empty())
        return Result(this, Result::InvalidArgument, "nothing to drop");
    for (const NodeLink &link : nodes) {
        const Result allowed = CanDropNode(link, flags);
        if (!allowed)
            return allowed;
    }
    return Result();
}

int ConfigNode::DropNodes(const NodesArray &nodes, enDropFlags flags)
{
    if (!CanDropNodes(nodes, flags))
        return 0;
    int count = 0;
    if (flags & DropLink) {
        for (const NodeLink &link : nodes)
            count += setInput(*this, link) ? 1 : 0;
        return count;
    }
    NodesArray clones;
    NodesCollection *project = GetNodesCollection();
    if (!project || !project->CloneNodes(nodes, clones, true))
        return 0;
    for (const NodeLink &clone : clones) {
        std::unique_ptr<ConfigNode> node = project->TakeClone(clone);
        count += AddNode(node) ? 1 : 0;
    }
    return count;
}

int ConfigNode::DropNode(const NodeLink &node, enDropFlags flags)
{
    return DropNodes(NodesArray({node}), flags);
}

} // namespace Nodes
