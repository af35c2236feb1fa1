#include "nodes/model/links/LinkWalk.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"

#include <algorithm>

namespace Nodes {

namespace {

NodeLinks editList(const NodeLinks &links, const LinkEdit &edit)
{
    NodeLinks edited;
    for (const NodeLink &link : links) {
        if (const std::optional<NodeLink> kept = edit(link))
            edited.push_back(*kept);
    }
    return edited;
}

boost::any editValue(const PropertyDescriptor &d, const BasicNode &node, const LinkEdit &edit)
{
    if (d.binding.type == PropertyType::Links)
        return editList(*static_cast<const NodeLinks *>(d.binding.data(node)), edit);
    const auto &link = *static_cast<const NodeLink *>(d.binding.data(node));
    return link.isEmpty() ? link : edit(link).value_or(NodeLink());
}

bool wouldChange(const PropertyDescriptor &d, const BasicNode &node, const LinkEdit &edit)
{
    const auto changes = [&edit](const NodeLink &link) { return edit(link) != link; };
    if (d.binding.type == PropertyType::Links) {
        const auto &links = *static_cast<const NodeLinks *>(d.binding.data(node));
        return std::any_of(links.begin(), links.end(), changes);
    }
    const auto &link = *static_cast<const NodeLink *>(d.binding.data(node));
    return !link.isEmpty() && changes(link);
}

} // namespace

int EditLinks(ConfigNode &node, const LinkEdit &edit)
{
    int count = 0;
    if (!node.GetKind())
        return count;
    for (const PropertyDescriptor &d : node.GetKind()->properties) {
        if (!IsLinkProperty(d) || !wouldChange(d, node, edit))
            continue;
        count += node.SetProperty(d.valueId, editValue(d, node, edit)) ? 1 : 0;
    }
    return count;
}

IdSet IdsOf(const ConfigNode &subtree)
{
    IdSet ids{subtree.GetId()};
    for (const NodeLink &link : subtree.GetNodes(true))
        ids.insert(link.GetNodeId());
    return ids;
}

void RemapLinks(ConfigNode &subtree, const IdMap &ids)
{
    const auto edit = [&](const NodeLink &link) -> std::optional<NodeLink> {
        const auto found = ids.find(link.GetNodeId());
        return found == ids.end() ? link : NodeLink(found->second, subtree.GetNodesCollection());
    };
    for (const PropertyDescriptor &d : subtree.GetKind()->properties) {
        if (IsLinkProperty(d) && wouldChange(d, subtree, edit))
            d.binding.set(subtree, editValue(d, subtree, edit));
    }
    for (const auto &child : subtree.Children())
        RemapLinks(*child, ids);
}

} // namespace Nodes
