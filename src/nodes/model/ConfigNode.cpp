#include "nodes/model/ConfigNode.h"

#include "nodes/model/KindInfo.h"
#include "nodes/model/KindTable.h"
#include "nodes/model/NodeNotifications.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/properties/BasicProperty.h"
#include "nodes/values/SignalValue.h"

#include <algorithm>

namespace Nodes {

ConfigNode::ConfigNode() = default;

ConfigNode::~ConfigNode()
{
    if (isIndexed())
        GetNodesCollection()->forget(*this);
    delete m_notifications.load();
}

void ConfigNode::collect(NodeLinks &links) const
{
    for (const auto &child : m_children) {
        links.emplace_back(child.get());
        child->collect(links);
    }
}

NodeLinks ConfigNode::GetNodes(bool recursive) const
{
    NodeLinks links;
    if (recursive)
        collect(links);
    else
        for (const auto &child : m_children)
            links.emplace_back(child.get());
    return links;
}

ConfigNode *ConfigNode::GetNodeAt(int index) const
{
    const bool exists = index >= 0 && index < GetNodeCount();
    return exists ? m_children[static_cast<std::size_t>(index)].get() : nullptr;
}

int ConfigNode::GetNodeCount(NodeType type) const
{
    return static_cast<int>(GetObjects(type).size());
}

std::vector<ConfigNode *> ConfigNode::GetObjects(NodeType type) const
{
    std::vector<ConfigNode *> objects;
    for (const auto &child : m_children) {
        const NodeType own = child->GetNodeType();
        const bool isFamily = type.GetSubtype() == NodeType::SubtypeNone;
        if (isFamily ? own.GetFamily() == type.GetFamily() : own == type)
            objects.push_back(child.get());
    }
    return objects;
}

ConfigNode *ConfigNode::GetSubObject(unsigned long id) const
{
    for (const auto &child : m_children) {
        if (child->GetId() == id)
            return child.get();
    }
    return nullptr;
}

ConfigNode *ConfigNode::GetSubObject(std::string_view name) const
{
    for (const auto &child : m_children) {
        if (child->GetName() == name)
            return child.get();
    }
    return nullptr;
}

int ConfigNode::IndexOf(const ConfigNode *child) const
{
    for (std::size_t i = 0; i < m_children.size(); ++i) {
        if (m_children[i].get() == child)
            return static_cast<int>(i);
    }
    return -1;
}

std::vector<NodeType> ConfigNode::GetAvailableChildNodes() const
{
    std::vector<NodeType> types;
    if (!m_kind)
        return types;
    for (const KindInfo &kind : KindTable::Instance().GetKinds()) {
        if (m_kind->AllowsChild(kind.type) && kind.type.GetSubtype() != NodeType::SubtypeUnknown)
            types.push_back(kind.type);
    }
    return types;
}

Result ConfigNode::Start()
{
    SetState(NodeState::Running);
    return Result();
}

Result ConfigNode::Stop()
{
    SetState(NodeState::Stopped);
    return Result();
}

void ConfigNode::SetState(NodeState::StateType state)
{
    const NodeState::StateType old = m_state.exchange(state, std::memory_order_acq_rel);
    const bool wasRunning = old == NodeState::Running;
    const bool isRunning = state == NodeState::Running;
    NodeNotifications *subscribers = existingNotifications();
    if (wasRunning != isRunning && subscribers)
        subscribers->activityChanged(isRunning);
}

NodeNotifications &ConfigNode::notifications()
{
    NodeNotifications *existing = existingNotifications();
    if (existing)
        return *existing;
    auto fresh = std::make_unique<NodeNotifications>();
    if (m_notifications.compare_exchange_strong(existing, fresh.get(), std::memory_order_acq_rel))
        return *fresh.release();
    return *existing;
}

Connection ConfigNode::ConnectPropertyChanged(PropertySlot slot)
{
    return notifications().propertyChanged.Connect(std::move(slot));
}

Connection ConfigNode::ConnectValueChanged(ValueSlot slot)
{
    return notifications().valueChanged.Connect(std::move(slot));
}

Connection ConfigNode::ConnectActivityChanged(ActivitySlot slot)
{
    return notifications().activityChanged.Connect(std::move(slot));
}

Connection ConfigNode::ConnectChildAdded(LinkSlot slot)
{
    return notifications().childAdded.Connect(std::move(slot));
}

Connection ConfigNode::ConnectChildRemoved(LinkSlot slot)
{
    return notifications().childRemoved.Connect(std::move(slot));
}

void ConfigNode::NotifyValueChanged(const SignalValue &value) const
{
    if (NodeNotifications *subscribers = existingNotifications())
        subscribers->valueChanged(value);
}

Connection ConfigNode::ConnectChildMoved(LinkSlot slot)
{
    return notifications().childMoved.Connect(std::move(slot));
}

Connection ConfigNode::ConnectTextChanged(LinkSlot slot)
{
    return notifications().textChanged.Connect(std::move(slot));
}

void ConfigNode::NotifyPropertyChanged(BasicProperty *property)
{
    if (NodeNotifications *subscribers = existingNotifications())
        subscribers->propertyChanged(property);
    if (const NodesCollection *project = GetNodesCollection())
        project->announce(*this,
                          {NodeChange::Properties, {}, {}, property ? property->GetValueId() : 0});
}

void ConfigNode::NotifyTextChanged(bool isName)
{
    if (NodeNotifications *subscribers = existingNotifications())
        subscribers->textChanged(NodeLink(this));
    if (const NodesCollection *project = GetNodesCollection())
        project->announce(*this, {isName ? NodeChange::Name : NodeChange::Description, {}, {}, 0});
}

} // namespace Nodes
