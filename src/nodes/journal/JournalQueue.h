#pragma once

#include "nodes/journal/JournalRow.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <vector>

namespace Nodes {

/// Bounded queue between those who append, who never wait, and the one writer. Rows leave in the
/// order they came, and only when the writer says that they are safe. From a writer that hangs a
/// rescuer may take what it has not taken yet; what is in the rescuer's file is then newer than
/// the rows the writer held, which are marked as ahead of it.
class JournalQueue
{
public:
    struct Batch
    {
        std::vector<JournalRow> rows;
        bool isAhead = true; ///< older than everything that was rescued
    };

    explicit JournalQueue(std::size_t capacity) : m_capacity(capacity) {}

    /// False, and the row counts as lost, when there is no room. Rows that the writer itself causes
    /// (`isWriter`) are taken above the limit.
    [[nodiscard]] bool Push(JournalRow row, bool isWriter);
    /// True when everything pushed before was settled; false when the writer failed, is absent or
    /// took longer than `patience`.
    [[nodiscard]] bool WaitSettled(std::chrono::milliseconds patience);

    // The writer's side.
    /// From now on a writer takes rows; `false` makes waiters give up.
    void SetWriter(bool isPresent);
    /// Waits until there are rows to take, `pause` has passed, a flush is asked for or the queue is
    /// shut. False once it is shut.
    bool Wait(std::chrono::milliseconds pause);
    /// Copies of up to `count` rows, which stay here until settled. While rescued rows wait and the
    /// store could take them, only rows that are ahead of them.
    Batch Take(std::size_t count, bool isStoreReady);
    /// The rows taken last are safe.
    void Settle();
    /// They are not.
    void Return();
    /// The writer is at work and not hanging, though it settles nothing.
    void Touch();
    /// True once after somebody asked for a flush.
    bool TakeFlushRequest();
    /// Rows lost since the last call.
    std::size_t TakeRejected();
    void Shut();
    bool IsShut() const;

    // The rescuer's side.
    /// Rows lie in the rescuer's file.
    void SetRescued(bool areThere);
    /// Copies of rows that the writer has not taken, nothing while it is well: it has to be busy
    /// for longer than `patience`.
    std::vector<JournalRow> TakeBehind(std::size_t count, std::chrono::milliseconds patience);
    /// Whether those are safe now.
    void SettleBehind(bool areSafe);
    /// The writer is given up: whatever it does from now on changes nothing here. All rows.
    std::vector<JournalRow> Abandon();
    /// Those, or nothing, are safe.
    void SettleAbandoned(std::size_t count);

    std::size_t Size() const;
    std::uint64_t Lost() const;
    /// How long the writer has been busy with one step; 0 while it waits.
    std::chrono::milliseconds BusyFor() const;

private:
    using Time = std::chrono::steady_clock::time_point;
    struct Entry
    {
        JournalRow row;
        std::uint64_t number;
    };

    std::size_t takeable(bool isStoreReady) const;
    std::chrono::milliseconds busyFor() const;
    std::vector<JournalRow> copy(std::size_t from, std::size_t count) const;
    void erase(std::size_t from, std::size_t count);

    const std::size_t m_capacity;
    mutable std::mutex m_mutex;
    std::condition_variable m_arrived;
    std::condition_variable m_progressed;
    std::deque<Entry> m_entries;
    std::size_t m_taken = 0;  // by the writer, in front
    std::size_t m_behind = 0; // by the rescuer, behind those
    std::size_t m_ahead = 0;  // in front, older than what was rescued
    std::uint64_t m_pushed = 0;
    std::uint64_t m_failures = 0;
    std::uint64_t m_lost = 0;
    std::size_t m_rejected = 0;
    Time m_busySince{}; // none while it waits
    bool m_hasRescued = false;
    bool m_hasWriter = false;
    bool m_isStuck = false;
    bool m_isFlushAsked = false;
    bool m_isShut = false;
    bool m_isAbandoned = false;
};

} // namespace Nodes
