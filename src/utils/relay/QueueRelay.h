#pragma once

#include "utils/relay/RelayDispatcher.h"
#include "utils/relay/RelayTarget.h"

#include <functional>
#include <mutex>
#include <utility>
#include <vector>

namespace Utils {

/// Hand-over to the GUI thread that collapses nothing: for charts, lists and alarms, where every
/// item counts. Items arrive in batches in the order of pushing. A member of the receiver,
/// destroyed on the GUI thread; inlets outlive it and then lead nowhere.
template <class Item> class QueueRelay
{
    class State : public RelayTarget
    {
    public:
        std::function<void(std::vector<Item>)> handler; // GUI thread; empty when closed
        std::size_t limit = 0;

        void push(Item item)
        {
            {
                const std::lock_guard lock(m_mutex);
                if (m_items.size() >= limit) {
                    ++m_lost;
                    return;
                }
                m_items.push_back(std::move(item));
            }
            request();
        }
        std::size_t takeLost()
        {
            const std::lock_guard lock(m_mutex);
            return std::exchange(m_lost, 0);
        }

    protected:
        void deliver() override
        {
            std::vector<Item> items;
            {
                const std::lock_guard lock(m_mutex);
                items.swap(m_items);
            }
            const auto held = handler; // it may destroy the relay
            if (held && !items.empty())
                held(std::move(items));
        }

    private:
        std::mutex m_mutex;
        std::vector<Item> m_items; // guarded
        std::size_t m_lost = 0;    // guarded
    };

public:
    using Handler = std::function<void(std::vector<Item>)>;

    /// Copyable entrance for publishers, any thread.
    class Inlet
    {
    public:
        void operator()(Item item) const { m_state->push(std::move(item)); }

    private:
        friend class QueueRelay;
        explicit Inlet(std::shared_ptr<State> state) : m_state(std::move(state)) {}
        std::shared_ptr<State> m_state;
    };

    /// At most `limit` items wait; newer ones are refused and counted until the batch is taken.
    explicit QueueRelay(Handler handler, std::size_t limit = 1000000)
        : m_state(std::make_shared<State>())
    {
        RelayDispatcher::instance();
        m_state->handler = std::move(handler);
        m_state->limit = limit;
    }
    ~QueueRelay() { m_state->handler = nullptr; }
    QueueRelay(const QueueRelay &) = delete;
    QueueRelay &operator=(const QueueRelay &) = delete;

    Inlet inlet() const { return Inlet(m_state); }
    /// Items refused since the last call: the receiver then fetches what it missed.
    std::size_t takeLost() { return m_state->takeLost(); }

private:
    std::shared_ptr<State> m_state;
};

} // namespace Utils
