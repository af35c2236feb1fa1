#include "nodes/model/links/CutLinks.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/links/LinkWalk.h"

namespace Nodes {

void CutLinks::Cut(const NodesArray &nodes)
{
    IdSet ids;
    for (const NodeLink &link : nodes) {
        if (const ConfigNode *node = link.GetNode())
            ids.merge(IdsOf(*node));
    }
    if (ids.empty())
        return;
    const auto edit = [&ids](const NodeLink &to) {
        return ids.count(to.GetNodeId()) ? std::nullopt : std::optional<NodeLink>(to);
    };
    for (const NodeLink &link : WholeProject(*nodes.begin()->GetNode())) {
        ConfigNode *node = link.GetNode();
        if (!node || !node->GetKind() || ids.count(node->GetId()))
            continue;
        const PropertyDescriptor *last = nullptr;
        VisitLinks(*node, *node->GetKind(), [&](const PropertyDescriptor &d, const NodeLink &to) {
            if (&d == last || !ids.count(to.GetNodeId()))
                return;
            last = &d;
            m_kept.push_back({link, d.valueId, d.binding.get(*node)});
        });
        if (last)
            EditLinks(*node, edit);
    }
}

Result CutLinks::Restore()
{
    Result first;
    for (const Kept &kept : m_kept) {
        ConfigNode *node = kept.node.GetNode();
        const Result restored =
            node ? node->SetProperty(kept.valueId, kept.value)
                 : Result(Result::NotFound, "node " + std::to_string(kept.node.GetNodeId()));
        if (first)
            first = restored;
    }
    m_kept.clear();
    return first;
}

} // namespace Nodes
