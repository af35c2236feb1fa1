#include "utils/undo/DropNodesCommand.h"

#include "utils/undo/StepTexts.h"

#include "nodes/model/KindInfo.h"
#include "nodes/model/properties/BasicProperty.h"

#include <map>
#include <utility>

namespace Utils {

namespace {

struct Value
{
    boost::any value;
    std::string text;
};

using Values = std::map<std::pair<Nodes::NodeLink, unsigned>, Value>;

void addValues(const Nodes::ConfigNode &node, Values &values)
{
    for (const Nodes::PropertyDescriptor &d : node.GetKind()->properties) {
        if (const Nodes::BasicProperty *property = node.GetPropertyByValueId(d.valueId))
            values[{node.GetNodeLink(), d.valueId}] = {property->GetPropertyValue(),
                                                       property->ToString()};
    }
}

/// Of the node and its children: arguments of an instance stand below it.
Values valuesOf(const Nodes::ConfigNode &node)
{
    Values values;
    addValues(node, values);
    for (const auto &child : node.Children())
        addValues(*child, values);
    return values;
}

} // namespace

DropNodesCommand::DropNodesCommand(const Nodes::NodeLink &target, const Nodes::NodesArray &nodes,
                                   Nodes::ConfigNode::enDropFlags flags, QUndoCommand *parent)
    : NodeCommand(parent), m_target(target), m_nodes(nodes), m_flags(flags)
{
    setText(QStringLiteral("Привязка к %1 %2")
                .arg(StepTexts::toNode(target), QString::fromStdString(target.GetLinkName())));
}

DropNodesCommand::~DropNodesCommand() = default;

Nodes::Result DropNodesCommand::apply()
{
    Nodes::ConfigNode *target = m_target.GetNode();
    if (!target)
        return Nodes::Result(Nodes::Result::NotFound,
                             "node " + std::to_string(m_target.GetNodeId()));
    if (!m_isDropped)
        return drop(*target);
    const Nodes::Result inserted = m_copies.insert();
    return inserted ? setLinks(false) : inserted;
}

Nodes::Result DropNodesCommand::drop(Nodes::ConfigNode &target)
{
    const Nodes::Result allowed = target.CanDropNodes(m_nodes, m_flags);
    if (!allowed)
        return allowed;
    const Values before = valuesOf(target);
    const int childCount = target.GetNodeCount();
    if (target.DropNodes(m_nodes, m_flags) == 0)
        return Nodes::Result(&target, Nodes::Result::InvalidArgument, "it takes none of the nodes");
    m_isDropped = true;
    for (const auto &[place, now] : valuesOf(target)) {
        const auto former = before.find(place);
        if (former != before.end() && former->second.text != now.text)
            m_changes.push_back({place.first, place.second, former->second.value, now.value});
    }
    for (int i = childCount; i < target.GetNodeCount(); ++i)
        m_copies.add(Nodes::NodeLink(target.GetNodeAt(i)), m_target);
    return {};
}

Nodes::Result DropNodesCommand::setLinks(bool isBefore) const
{
    for (const Change &change : m_changes) {
        Nodes::ConfigNode *node = change.node.GetNode();
        if (!node)
            return Nodes::Result(Nodes::Result::NotFound,
                                 "node " + std::to_string(change.node.GetNodeId()));
        const Nodes::Result set =
            node->SetProperty(change.valueId, isBefore ? change.before : change.after);
        if (!set)
            return set;
    }
    return {};
}

Nodes::Result DropNodesCommand::revert()
{
    if (!m_target.isValid())
        return Nodes::Result(Nodes::Result::NotFound,
                             "node " + std::to_string(m_target.GetNodeId()));
    const Nodes::Result removed = m_copies.remove();
    return removed ? setLinks(true) : removed;
}

} // namespace Utils
