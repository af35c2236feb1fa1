#include "nodes/model/links/CutLinks.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/links/LinkWalk.h"

namespace Nodes {

namespace {

NodeLinks referrersOutside(const IdSet &ids, const NodesCollection &project)
{
    NodeLinks referrers;
    for (const ConfigNode *node : project.FindReferrers(ids)) {
        if (ids.count(node->GetId()) == 0)
            referrers.emplace_back(node);
    }
    return referrers;
}

std::string textOf(const ConfigNode &node, unsigned valueId)
{
    const PropertyDescriptor *d = node.GetKind()->FindProperty(valueId);
    return d ? d->binding.format(*d, node) : std::string();
}

// What was set meanwhile, by another document, is newer and stays.
Result restore(ConfigNode &node, unsigned valueId, const boost::any &value, const std::string &left)
{
    const std::string now = textOf(node, valueId);
    if (now == left)
        return node.SetProperty(valueId, value);
    return Result(&node, Result::Refused,
                  "property " + std::to_string(valueId) + " is " + now + " since, instead of " +
                      left);
}

} // namespace

void CutLinks::Cut(const NodesArray &nodes)
{
    IdSet ids;
    const NodesCollection *project = nullptr;
    for (const NodeLink &link : nodes) {
        const ConfigNode *node = link.GetNode();
        if (!node)
            continue;
        ids.merge(IdsOf(*node));
        project = node->GetNodesCollection();
    }
    if (!project)
        return;
    const auto edit = [&ids](const NodeLink &to) {
        return ids.count(to.GetNodeId()) ? std::nullopt : std::optional<NodeLink>(to);
    };
    for (const NodeLink &link : referrersOutside(ids, *project)) {
        ConfigNode *node = link.GetNode();
        if (!node)
            continue;
        const std::size_t first = m_kept.size();
        const PropertyDescriptor *last = nullptr;
        VisitLinks(*node, *node->GetKind(), [&](const PropertyDescriptor &d, const NodeLink &to) {
            if (&d == last || !ids.count(to.GetNodeId()))
                return;
            last = &d;
            m_kept.push_back({link, d.valueId, d.binding.get(*node), {}});
        });
        EditLinks(*node, edit);
        for (std::size_t i = first; i < m_kept.size(); ++i)
            m_kept[i].left = textOf(*node, m_kept[i].valueId);
    }
}

Result CutLinks::Restore()
{
    Result first;
    for (const Kept &kept : m_kept) {
        ConfigNode *node = kept.node.GetNode();
        const Result restored =
            node ? restore(*node, kept.valueId, kept.value, kept.left)
                 : Result(Result::NotFound, "node " + std::to_string(kept.node.GetNodeId()));
        if (first)
            first = restored;
    }
    m_kept.clear();
    return first;
}

} // namespace Nodes
