#include "nodes/project/NodePairs.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"

#include <map>

namespace Nodes {

namespace {

const ConfigNode *findIn(const std::unordered_map<const ConfigNode *, const ConfigNode *> &pairs,
                         const ConfigNode &node)
{
    const auto found = pairs.find(&node);
    return found == pairs.end() ? nullptr : found->second;
}

} // namespace

NodePairs::NodePairs(const NodesCollection &before, const NodesCollection &after)
{
    if (!before.GetRoot() || !after.GetRoot())
        return;
    pairById(*before.GetRoot(), after);
    // The roots are the same whatever their ids: the projects are compared as wholes.
    if (!GetAfter(*before.GetRoot()) && !GetBefore(*after.GetRoot()))
        pair(*before.GetRoot(), *after.GetRoot());
    pairByName(*before.GetRoot(), *after.GetRoot());
}

const ConfigNode *NodePairs::GetAfter(const ConfigNode &before) const
{
    return findIn(m_after, before);
}

const ConfigNode *NodePairs::GetBefore(const ConfigNode &after) const
{
    return findIn(m_before, after);
}

void NodePairs::pair(const ConfigNode &before, const ConfigNode &after)
{
    m_after.emplace(&before, &after);
    m_before.emplace(&after, &before);
}

void NodePairs::pairById(const ConfigNode &before, const NodesCollection &after)
{
    const ConfigNode *same = after.FindNode(before.GetId());
    if (same && same->GetKind() == before.GetKind() && after.IsInTree(*same))
        pair(before, *same);
    for (const auto &child : before.Children())
        pairById(*child, after);
}

// Below nodes that are the same, the first of a name and a kind is the same.
void NodePairs::pairByName(const ConfigNode &before, const ConfigNode &after)
{
    std::map<std::pair<std::string, const KindInfo *>, const ConfigNode *> single;
    for (const auto &child : after.Children()) {
        if (!GetBefore(*child))
            single.emplace(std::make_pair(child->GetName(), child->GetKind()), child.get());
    }
    for (const auto &child : before.Children()) {
        const auto found = single.find({child->GetName(), child->GetKind()});
        if (!GetAfter(*child) && found != single.end()) {
            pair(*child, *found->second);
            single.erase(found);
        }
        if (const ConfigNode *same = GetAfter(*child))
            pairByName(*child, *same);
    }
}

} // namespace Nodes
