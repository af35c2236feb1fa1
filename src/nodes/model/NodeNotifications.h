#pragma once

#include "nodes/model/links/NodeLink.h"
#include "nodes/values/SlotList.h"

namespace Nodes {

class BasicProperty;
class SignalValue;

/// One change of the tree of a project, told after it was made.
struct NodeChange
{
    enum enWhat { Name, Description, Properties, ChildAdded, ChildRemoved, ChildMoved };

    enWhat what;
    NodeLink node;        ///< whose name, property or children changed
    NodeLink child;       ///< of the last three
    unsigned valueId = 0; ///< of a property; 0: several, re-read everything
};

/// Notifications of one node, made when somebody subscribes. Slots run on the emitting thread:
/// they copy the payload and hand over, nothing else.
struct NodeNotifications
{
    SlotList<BasicProperty *> propertyChanged;
    SlotList<const SignalValue &> valueChanged;
    SlotList<bool> activityChanged;
    SlotList<NodeLink> childAdded;
    SlotList<NodeLink> childRemoved;
    SlotList<NodeLink> childMoved;
    SlotList<NodeLink> textChanged;
};

} // namespace Nodes
