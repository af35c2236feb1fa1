#include "editor/properties/NewNode.h"

#include "nodes/alarms/alarmLimit.h"
#include "nodes/model/ConfigNode.h"
#include "nodes/model/FreeName.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/signals/BasicSignal.h"

namespace Editor {

namespace {

/// A limit of 0 would raise the alarm at the first value: a fresh one stands near the end of the
/// signal's range, where it waits for its own.
void fitToSignal(Nodes::ConfigNode &node, const Nodes::ConfigNode &parent)
{
    auto *alarm = dynamic_cast<Nodes::alarmLimit *>(&node);
    const auto *signal = dynamic_cast<const Nodes::BasicSignal *>(&parent);
    const double range = signal ? signal->GetMaximum() - signal->GetMinimum() : 0;
    if (!alarm || !(range > 0))
        return;
    constexpr double high = 0.9; // of the range
    constexpr double back = 0.02;
    (void)alarm->SetProperty(Nodes::alarmLimit::Prop::Limit, signal->GetMinimum() + high * range);
    (void)alarm->SetProperty(Nodes::alarmLimit::Prop::Deadband, back * range);
}

} // namespace

Nodes::NodeLink makeClone(Nodes::NodeType type, const Nodes::ConfigNode &parent)
{
    Nodes::NodesCollection *project = parent.GetNodesCollection();
    Nodes::ConfigNode *node = project ? project->CreateNode(type, nullptr) : nullptr;
    if (!node)
        return {};
    std::vector<std::string_view> taken;
    for (const auto &child : parent.Children())
        taken.push_back(child->GetName());
    node->SetName(Nodes::FreeName(taken, node->GetName(), 1));
    fitToSignal(*node, parent);
    return Nodes::NodeLink(node);
}

} // namespace Editor
