#include "nodes/serial/NodeGraft.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindInfo.h"
#include "nodes/model/NodesCollection.h"

namespace Nodes {

namespace {

void takeValues(const ConfigNode &from, ConfigNode &to)
{
    to.SetName(from.GetName());
    to.SetDescription(from.GetDescription());
    for (const PropertyDescriptor &d : to.GetKind()->properties)
        (void)to.SetProperty(d.valueId, d.binding.get(from));
    const auto old = to.GetForeignAttributes();
    for (const auto &attribute : old)
        to.RemoveForeignAttribute(attribute.first);
    for (const auto &[key, value] : from.GetForeignAttributes())
        to.AddForeignAttribute(key, value);
}

} // namespace

Result Graft(ConfigNode &target, std::unique_ptr<ConfigNode> detached, const IdMap &ids)
{
    const int depth = static_cast<int>(target.GetPathNodes().size()) - 1;
    if (depth + detached->GetHeight() > ConfigNode::MaximumDepth)
        return Result(&target, Result::LimitExceeded, "tree too deep");
    IdMap all = ids;
    for (auto &[old, fresh] : all) {
        if (fresh == detached->GetId())
            fresh = target.GetId();
    }
    RemapLinks(*detached, all);
    takeValues(*detached, target);
    for (std::unique_ptr<ConfigNode> &child : detached->TakeChildren()) {
        const Result added = target.AdoptNode(child);
        if (!added)
            return added;
    }
    return Result();
}

} // namespace Nodes
