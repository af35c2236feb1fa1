#pragma once

#include "nodes/model/NodeLink.h"
#include "nodes/values/SlotList.h"

#include <boost/signals2/signal.hpp>

namespace Nodes {

class BasicProperty;
class SignalValue;

/// Notifications of one node, made when somebody subscribes. Slots run on the emitting thread:
/// they copy the payload and hand over, nothing else.
struct NodeNotifications
{
    boost::signals2::signal<void(BasicProperty *)> propertyChanged;
    SlotList<const SignalValue &> valueChanged;
    boost::signals2::signal<void(bool)> activityChanged;
    boost::signals2::signal<void(NodeLink)> childAdded;
    boost::signals2::signal<void(NodeLink)> childRemoved;
};

} // namespace Nodes
