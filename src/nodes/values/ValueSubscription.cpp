#include "nodes/values/ValueSubscription.h"

#include <mutex>

namespace Nodes {

// A slot may still be running on another thread when its connection was ended; the gate closes
// that gap. It is recursive because a slot may end its own subscription.
struct ValueSubscription::Gate
{
    std::recursive_mutex mutex;
    ValueCell::Slot slot;
    bool isOpen = true;
};

ValueSubscription::ValueSubscription() = default;

ValueSubscription::~ValueSubscription()
{
    Disconnect();
}

void ValueSubscription::Connect(std::shared_ptr<ValueCell> cell, ValueCell::Slot slot,
                                ValueFeed feed)
{
    Disconnect();
    if (!cell)
        return;
    m_cell = std::move(cell);
    m_gate = std::make_shared<Gate>();
    m_gate->slot = std::move(slot);
    m_connection = m_cell->Subscribe(
        [gate = m_gate](const SignalValue &value) {
            const std::lock_guard lock(gate->mutex);
            if (gate->isOpen)
                gate->slot(value);
        },
        feed);
}

void ValueSubscription::Disconnect()
{
    if (!m_gate)
        return;
    m_connection.Disconnect();
    {
        const std::lock_guard lock(m_gate->mutex);
        m_gate->isOpen = false;
    }
    m_gate.reset();
    m_cell.reset();
}

} // namespace Nodes
