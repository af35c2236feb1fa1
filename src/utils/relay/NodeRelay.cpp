#include "utils/relay/NodeRelay.h"

#include "utils/relay/RelayDispatcher.h"
#include "utils/relay/RelayTarget.h"

#include "nodes/model/ConfigNode.h"

#include <atomic>
#include <mutex>

namespace Utils {

/// Shared with the slots of the node, which may outlive the relay by a moment.
class NodeRelay::State : public RelayTarget
{
public:
    State(const Nodes::ConfigNode *node, Handlers handlers)
        : m_handlers(std::move(handlers)), m_link(node), m_isIndexed(m_link.isValid())
    {
    }

    const Handlers &handlers() const { return m_handlers; }
    bool isOpen() const { return m_isOpen; }
    // GUI thread. The handlers stay until the state goes: one of them may be running right now.
    void close() { m_isOpen = false; }

    void valueCame()
    {
        m_hasValue.store(true, std::memory_order_release);
        request();
    }
    void propertyCame(Nodes::BasicProperty *property)
    {
        if (RelayDispatcher::instance().isOwnThread()) {
            if (m_isOpen)
                m_handlers.propertyChanged(property);
            return;
        }
        m_hasProperty.store(true, std::memory_order_release);
        request();
    }
    void activityCame(bool on)
    {
        if (RelayDispatcher::instance().isOwnThread()) {
            if (m_isOpen)
                m_handlers.activityChanged(on);
            return;
        }
        m_isActive.store(on, std::memory_order_relaxed);
        m_hasActivity.store(true, std::memory_order_release);
        request();
    }
    void textCame() { came(m_hasText, m_handlers.textChanged); }
    void orderCame() { came(m_hasOrder, m_handlers.childMoved); }
    void childCame(const Nodes::NodeLink &link, bool isAdded)
    {
        if (RelayDispatcher::instance().isOwnThread()) {
            if (m_isOpen)
                announce(link, isAdded);
            return;
        }
        {
            const std::lock_guard lock(m_mutex);
            m_children.emplace_back(link, isAdded);
        }
        request();
    }

protected:
    void deliver() override
    {
        const auto self = shared_from_this(); // a handler may destroy the receiver
        if (m_isIndexed && !m_link.isValid())
            return; // deleted since: what its handlers would read is gone
        std::vector<std::pair<Nodes::NodeLink, bool>> children;
        {
            const std::lock_guard lock(m_mutex);
            children.swap(m_children);
        }
        for (const auto &[link, isAdded] : children) {
            if (m_isOpen)
                announce(link, isAdded);
        }
        if (m_hasProperty.exchange(false, std::memory_order_acq_rel) && m_isOpen)
            m_handlers.propertyChanged(nullptr);
        if (m_hasText.exchange(false, std::memory_order_acq_rel) && m_isOpen)
            m_handlers.textChanged();
        if (m_hasOrder.exchange(false, std::memory_order_acq_rel) && m_isOpen)
            m_handlers.childMoved();
        if (m_hasActivity.exchange(false, std::memory_order_acq_rel) && m_isOpen)
            m_handlers.activityChanged(m_isActive.load(std::memory_order_relaxed));
        if (m_hasValue.exchange(false, std::memory_order_acq_rel) && m_isOpen)
            m_handlers.valueChanged();
    }

private:
    void came(std::atomic<bool> &mark, const std::function<void()> &handler)
    {
        if (RelayDispatcher::instance().isOwnThread()) {
            if (m_isOpen)
                handler();
            return;
        }
        mark.store(true, std::memory_order_release);
        request();
    }
    void announce(const Nodes::NodeLink &link, bool isAdded)
    {
        const auto &handler = isAdded ? m_handlers.childAdded : m_handlers.childRemoved;
        if (handler)
            handler(link);
    }

    const Handlers m_handlers;
    const Nodes::NodeLink m_link;
    const bool m_isIndexed; // nodes outside of any project are not found by their links
    bool m_isOpen = true;   // GUI thread
    std::atomic<bool> m_hasValue{false};
    std::atomic<bool> m_hasProperty{false};
    std::atomic<bool> m_hasText{false};
    std::atomic<bool> m_hasOrder{false};
    std::atomic<bool> m_hasActivity{false};
    std::atomic<bool> m_isActive{false};
    std::mutex m_mutex;
    std::vector<std::pair<Nodes::NodeLink, bool>> m_children; // guarded
};

NodeRelay::NodeRelay() = default;

NodeRelay::~NodeRelay()
{
    disconnect();
}

void NodeRelay::disconnect()
{
    m_connections.clear();
    if (m_state)
        m_state->close();
    m_state.reset();
}

void NodeRelay::connect(Nodes::ConfigNode *node, Handlers handlers)
{
    disconnect();
    if (!node)
        return;
    RelayDispatcher::instance();
    m_state = std::make_shared<State>(node, std::move(handlers));
    const auto state = m_state;
    m_connections.reserve(2); // most watch properties and values
    if (state->handlers().valueChanged)
        m_connections.emplace_back(
            node->ConnectValueChanged([state](const Nodes::SignalValue &) { state->valueCame(); }));
    if (state->handlers().propertyChanged)
        m_connections.emplace_back(node->ConnectPropertyChanged(
            [state](Nodes::BasicProperty *property) { state->propertyCame(property); }));
    if (state->handlers().activityChanged)
        m_connections.emplace_back(
            node->ConnectActivityChanged([state](bool on) { state->activityCame(on); }));
    if (state->handlers().textChanged)
        m_connections.emplace_back(
            node->ConnectTextChanged([state](const Nodes::NodeLink &) { state->textCame(); }));
    if (state->handlers().childMoved)
        m_connections.emplace_back(
            node->ConnectChildMoved([state](const Nodes::NodeLink &) { state->orderCame(); }));
    if (state->handlers().childAdded)
        m_connections.emplace_back(node->ConnectChildAdded(
            [state](const Nodes::NodeLink &link) { state->childCame(link, true); }));
    if (state->handlers().childRemoved)
        m_connections.emplace_back(node->ConnectChildRemoved(
            [state](const Nodes::NodeLink &link) { state->childCame(link, false); }));
}

} // namespace Utils
