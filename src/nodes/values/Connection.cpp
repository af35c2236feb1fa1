#include "nodes/values/Connection.h"

#include <utility>

namespace Nodes {

BasicSlot::~BasicSlot() = default;

void BasicSlot::Close()
{
    if (m_isOpen.exchange(false, std::memory_order_acq_rel))
        leave();
}

bool Connection::IsConnected() const
{
    const std::shared_ptr<BasicSlot> slot = m_slot.lock();
    return slot && slot->IsOpen();
}

// The slot goes last: it may hold the owner of this very handle.
void Connection::Disconnect()
{
    if (const std::shared_ptr<BasicSlot> slot = std::exchange(m_slot, {}).lock())
        slot->Close();
}

ScopedConnection::ScopedConnection(ScopedConnection &&other) noexcept
    : m_connection(std::exchange(other.m_connection, {}))
{
}

ScopedConnection &ScopedConnection::operator=(ScopedConnection &&other) noexcept
{
    std::exchange(m_connection, std::exchange(other.m_connection, {})).Disconnect();
    return *this;
}

} // namespace Nodes
