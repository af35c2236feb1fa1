#include "apps/common/history/ArchivedSignals.h"

#include "nodes/archive/ArchivedSignals.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/system/systemCore.h"

#include <algorithm>

namespace Host {

namespace {

using Nodes::BasicSignal;

std::vector<const BasicSignal *> ordered(std::vector<const BasicSignal *> signals)
{
    const auto id = [](const BasicSignal *signal) { return signal ? signal->GetId() : 0; };
    std::sort(signals.begin(), signals.end(),
              [&](const auto *left, const auto *right) { return id(left) < id(right); });
    signals.erase(std::unique(signals.begin(), signals.end()), signals.end());
    if (!signals.empty() && !signals.front())
        signals.erase(signals.begin());
    return signals;
}

Nodes::NodeLinks localNodes(const Nodes::systemCore &core, Nodes::NodeType type)
{
    Nodes::NodeLinks found;
    if (const Nodes::NodesCollection *project = core.GetNodesCollection())
        project->FindNodes(type, &found);
    found.erase(std::remove_if(found.begin(), found.end(),
                               [](const Nodes::NodeLink &node) { return !node->IsLocal(); }),
                found.end());
    return found;
}

} // namespace

std::vector<const BasicSignal *> archivedSignals(const Nodes::systemCore &core)
{
    std::vector<const BasicSignal *> signals;
    const Nodes::NodesCollection *project = core.GetNodesCollection();
    if (!project || !project->GetRoot())
        return signals;
    for (const auto &[signal, order] : Nodes::FindArchivedSignals(*project->GetRoot()))
        signals.push_back(signal);
    return ordered(std::move(signals));
}

std::vector<const BasicSignal *> stationSignals(const Nodes::systemCore &core)
{
    std::vector<const BasicSignal *> signals;
    for (const Nodes::NodeLink &node : localNodes(core, Nodes::NodeType::TypeSignal)) {
        if (node->GetNodeType().GetSubtype() != Nodes::NodeType::SubtypeTemplateParameter)
            signals.push_back(dynamic_cast<const BasicSignal *>(node.GetNode()));
    }
    return ordered(std::move(signals));
}

} // namespace Host
