#pragma once

#include "nodes/NodesExport.h"

#include <atomic>
#include <memory>
#include <utility>

namespace Nodes {

/// What a connection knows of its place in a list of subscribers. Any thread.
class NODES_EXPORT BasicSlot
{
public:
    BasicSlot() = default;
    virtual ~BasicSlot();
    BasicSlot(const BasicSlot &) = delete;
    BasicSlot &operator=(const BasicSlot &) = delete;

    bool IsOpen() const { return m_isOpen.load(std::memory_order_acquire); }
    /// The slot is not called any more; it may be running at this moment. Again: nothing.
    void Close();

protected:
    /// Tells the list that keeps this slot, if there still is one.
    virtual void leave() = 0;

private:
    std::atomic<bool> m_isOpen{true};
};

/// Handle of a subscription. Copies speak of the same one; it outlives them all, see
/// ScopedConnection. A handle is used by one thread at a time, its copies by any.
class NODES_EXPORT Connection
{
public:
    Connection() = default;
    explicit Connection(const std::shared_ptr<BasicSlot> &slot) : m_slot(slot) {}

    bool IsConnected() const;
    /// Ends the subscription. The slot is not called any more, but one that another thread is
    /// running may not have returned yet. Nothing happens when it has ended already.
    void Disconnect();

private:
    std::weak_ptr<BasicSlot> m_slot;
};

/// Owns a subscription: ends it when it goes or is given another.
class NODES_EXPORT ScopedConnection
{
public:
    ScopedConnection() = default;
    ScopedConnection(Connection connection) : m_connection(std::move(connection)) {}
    ~ScopedConnection() { Disconnect(); }
    ScopedConnection(ScopedConnection &&other) noexcept;
    ScopedConnection &operator=(ScopedConnection &&other) noexcept;

    bool IsConnected() const { return m_connection.IsConnected(); }
    void Disconnect() { m_connection.Disconnect(); }

private:
    Connection m_connection;
};

} // namespace Nodes
