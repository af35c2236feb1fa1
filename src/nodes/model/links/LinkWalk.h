#pragma once

#include "nodes/NodesExport.h"
#include "nodes/model/KindInfo.h"
#include "nodes/model/links/NodeLink.h"

#include <functional>
#include <optional>
#include <unordered_map>
#include <unordered_set>

namespace Nodes {

inline bool IsLinkProperty(const PropertyDescriptor &descriptor)
{
    return descriptor.binding.type == PropertyType::Link ||
           descriptor.binding.type == PropertyType::Links;
}

/// Calls `visit(descriptor, link)` for every link that the node's properties hold.
template <class Visitor> void VisitLinks(const BasicNode &node, const KindInfo &kind, Visitor visit)
{
    for (const PropertyDescriptor &d : kind.properties) {
        if (d.binding.type == PropertyType::Link) {
            const auto &link = *static_cast<const NodeLink *>(d.binding.data(node));
            if (!link.isEmpty())
                visit(d, link);
        } else if (d.binding.type == PropertyType::Links) {
            for (const NodeLink &link : *static_cast<const NodeLinks *>(d.binding.data(node)))
                visit(d, link);
        }
    }
}

/// New value of a link; nothing removes it.
using LinkEdit = std::function<std::optional<NodeLink>(const NodeLink &)>;

/// Rewrites the links of one node, announcing each property that changes; count of properties.
NODES_EXPORT int EditLinks(ConfigNode &node, const LinkEdit &edit);

using IdSet = std::unordered_set<unsigned long>;

/// Ids of a node and all its descendants.
IdSet IdsOf(const ConfigNode &subtree);

/// Old id to new id of nodes that were copied or read under fresh ids.
using IdMap = std::unordered_map<unsigned long, unsigned long>;

/// Makes links of `subtree` that name an old id refer to the new one. For trees nobody sees yet:
/// nothing is announced.
NODES_EXPORT void RemapLinks(ConfigNode &subtree, const IdMap &ids);

} // namespace Nodes
