#pragma once

#include "nodes/alarms/engine/AlarmFeed.h"

#include <mutex>
#include <vector>

namespace Nodes {

/// The engine's side of a feed: which alarms, by their places in the engine, have changed since the
/// reader took them. Guarded by the engine's lock, but for Wake and Close, which are called
/// without.
class AlarmFeedQueue
{
public:
    explicit AlarmFeedQueue(AlarmFeed::Wake wake) : m_wake(std::move(wake)) {}

    /// What was taken and what waits no longer counts; there are so many alarms now.
    void Reset(std::size_t alarms);
    void Add(std::size_t alarm);
    /// The reader has to be woken: once, until it takes.
    bool ClaimWake();
    /// Places of at most `limit` alarms, the first changed first.
    std::vector<std::size_t> Take(std::size_t limit, AlarmFeed::Batch &batch);

    void Wake();
    /// Waits for a wake that is under way; none follows.
    void Close();

private:
    std::vector<std::size_t> m_changed;
    std::vector<bool> m_isChanged; // by place
    std::uint64_t m_events = 0;
    bool m_isAnew = true;
    bool m_isWoken = false;

    std::recursive_mutex m_wakeMutex; // a reader may close from within its wake
    AlarmFeed::Wake m_wake;
};

} // namespace Nodes
