#pragma once

#include <memory>
#include <mutex>
#include <utility>

namespace Widgets {

/// Lets callbacks of other threads through to an object until it is destroyed: once close returns,
/// no callback made by it runs any more. Callbacks run one at a time.
class NotificationGate
{
public:
    ~NotificationGate() { close(); }

    void close()
    {
        const std::lock_guard<std::recursive_mutex> lock(m_state->mutex);
        m_state->isOpen = false;
    }

    /// `callback`, skipped (with a default-made result) once the gate is closed.
    template <class Callback> auto guard(Callback callback) const
    {
        return [state = m_state, callback = std::move(callback)](auto &&...arguments) {
            using Answer = decltype(callback(std::forward<decltype(arguments)>(arguments)...));
            const std::lock_guard<std::recursive_mutex> lock(state->mutex);
            return state->isOpen ? callback(std::forward<decltype(arguments)>(arguments)...)
                                 : Answer();
        };
    }

private:
    struct State
    {
        std::recursive_mutex mutex; // a callback may close the gate
        bool isOpen = true;
    };
    std::shared_ptr<State> m_state = std::make_shared<State>();
};

} // namespace Widgets
