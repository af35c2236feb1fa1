#pragma once

#include "nodes/storage/records/Record.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>

namespace Nodes {

/// Bounded queue between those who append, who never wait, and the one writer. Records leave in the
/// order they came, and only when the writer says that they are safe. From a writer that hangs a
/// rescuer may take what it has not taken yet; what is in the rescuer's file is then newer than
/// the records the writer held, which are marked as ahead of it.
class RecordQueue
{
public:
    /// Whichever is reached first.
    struct Bounds
    {
        std::size_t records = 0;
        std::size_t bytes = 0;
    };
    struct Batch
    {
        std::shared_ptr<const Records> records; ///< never null
        bool isAhead = true;                    ///< older than everything that was rescued
    };

    /// Records get that version of their format.
    RecordQueue(Bounds capacity, std::uint32_t version);

    /// Key that the record gets. 0, and the record counts as lost, when there is no room or no
    /// spill file could take it. Records that the writer itself causes (`isWriter`) are taken above
    /// the limit.
    [[nodiscard]] std::uint64_t Push(std::string bytes, bool isWriter);
    /// A record that goes its own way, with a key as of those here.
    Record Make(std::string bytes);
    /// True when everything pushed before was settled; false when the writer failed, is absent or
    /// took longer than `patience`.
    [[nodiscard]] bool WaitSettled(std::chrono::milliseconds patience);

    // The writer's side.
    /// From now on a writer takes records; `false` makes waiters give up.
    void SetWriter(bool isPresent);
    /// Waits until there are records to take, `pause` has passed, a flush is asked for or the queue
    /// is shut. False once it is shut.
    bool Wait(std::chrono::milliseconds pause);
    /// As many as fit into `most`, but one at least if there is any; they count as here until
    /// settled or returned. While rescued records wait and the store could take them, only records
    /// that are ahead of them.
    Batch Take(const Bounds &most, bool isStoreReady);
    /// The records taken last are safe.
    void Settle();
    /// They are not.
    void Return();
    /// The writer is at work and not hanging, though it settles nothing.
    void Touch();
    /// True once after somebody asked for a flush.
    bool TakeFlushRequest();
    /// Records lost since the last call.
    std::size_t TakeRejected();
    void Shut();

    // The rescuer's side.
    /// Records lie in the rescuer's file.
    void SetRescued(bool areThere);
    /// Copies of records that the writer has not taken, nothing while it is well: it has to be busy
    /// for longer than `patience`.
    Records TakeBehind(const Bounds &most, std::chrono::milliseconds patience);
    /// Whether those are safe now.
    void SettleBehind(bool areSafe);
    /// The writer is given up: whatever it does from now on changes nothing here.
    void Abandon();
    /// Copies of the first ones then.
    Records TakeAbandoned(const Bounds &most) const;
    /// So many of those are safe.
    void SettleAbandoned(std::size_t count);

    std::size_t Size() const;
    std::uint64_t Lost() const;
    /// How long the writer has been busy with one step; 0 while it waits.
    std::chrono::milliseconds BusyFor() const;

private:
    using Time = std::chrono::steady_clock::time_point;

    std::size_t held() const { return m_held ? m_held->size() : 0; }
    bool isSettled(std::uint64_t upTo) const;
    std::size_t takeable(bool isStoreReady) const;
    std::size_t fitting(std::size_t from, std::size_t count, const Bounds &most) const;
    std::chrono::milliseconds busyFor() const;
    Records copy(std::size_t from, std::size_t count) const;
    void erase(std::size_t from, std::size_t count);
    void takeBack();

    const Bounds m_capacity;
    const std::uint32_t m_version;
    mutable std::mutex m_mutex;
    std::condition_variable m_arrived;
    std::condition_variable m_progressed;
    std::shared_ptr<Records> m_held; // by the writer, older than those waiting; or null
    std::deque<Record> m_waiting;
    std::size_t m_bytes = 0;  // of all of them
    std::size_t m_behind = 0; // of those waiting: taken by the rescuer, behind what is ahead
    std::size_t m_ahead = 0;  // in front, those held among them: older than what was rescued
    std::uint64_t m_lastKey;
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
