#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Connection.h"
#include "nodes/values/ValueCell.h"

#include <functional>
#include <memory>

namespace Nodes {

/// Subscription to a value cell that can be ended safely while other threads publish: once
/// Disconnect returns, the slot neither runs nor will run again (a slot that ends its own
/// subscription is fine). Connect and Disconnect belong to one thread.
class NODES_EXPORT ValueSubscription
{
public:
    ValueSubscription();
    ~ValueSubscription();
    ValueSubscription(const ValueSubscription &) = delete;
    ValueSubscription &operator=(const ValueSubscription &) = delete;

    /// Ends the previous subscription. The slot is not called with the cell's present value.
    void Connect(std::shared_ptr<ValueCell> cell, ValueCell::Slot slot,
                 ValueFeed feed = ValueFeed::Published);
    void Disconnect();
    bool IsConnected() const { return m_gate != nullptr; }
    const std::shared_ptr<ValueCell> &GetCell() const { return m_cell; }

private:
    struct Gate;

    std::shared_ptr<ValueCell> m_cell;
    std::shared_ptr<Gate> m_gate;
    ScopedConnection m_connection;
};

} // namespace Nodes
