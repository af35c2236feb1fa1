#pragma once

#include "nodes/model/links/NodeLink.h"
#include "nodes/values/SlotList.h"

namespace Nodes {

class BasicProperty;
class SignalValue;

/// Notifications of one node, made when somebody subscribes. Slots run on the emitting thread:
/// they copy the payload and hand over, nothing else.
struct NodeNotifications
{
    SlotList<BasicProperty *> propertyChanged;
    SlotList<const SignalValue &> valueChanged;
    SlotList<bool> activityChanged;
    SlotList<NodeLink> childAdded;
    SlotList<NodeLink> childRemoved;
};

} // namespace Nodes
