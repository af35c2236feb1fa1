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

void Connection::Disconnect()
{
    if (const std::shared_ptr<BasicSlot> slot = m_slot.lock())
        slot->Close();
    m_slot.reset();
}

ScopedConnection::ScopedConnection(ScopedConnection &&other) noexcept
    : m_connection(std::exchange(other.m_connection, {}))
{
}

ScopedConnection &ScopedConnection::operator=(ScopedConnection &&other) noexcept
{
    if (this != &other) {
        Disconnect();
        m_connection = std::exchange(other.m_connection, {});
    }
    return *this;
}

} // namespace Nodes
