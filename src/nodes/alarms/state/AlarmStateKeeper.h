#pragma once

#include "nodes/alarms/state/AlarmHealth.h"
#include "nodes/alarms/state/AlarmStateStore.h"

#include <functional>
#include <memory>
#include <mutex>
#include <thread>

namespace Nodes {

/// Keeps the alarms' latest states in their store, on a thread of its own: whoever puts a state
/// never waits for a disk. Of each alarm only the latest state waits, so what waits is bounded by
/// the number of alarms. A write that failed is tried again every second. Start, Stop: one thread;
/// the rest: any.
class NODES_EXPORT AlarmStateKeeper
{
public:
    /// Both run on the keeper's thread.
    struct Hooks
    {
        /// Keeping has failed (with the reason) or works again ("").
        std::function<void(const std::string &trouble)> onTrouble;
        /// The store cannot be opened yet, is gone, or was opened late or anew: it lacks what was
        /// not put since, and may have states that are out of date. `setAside` names a damaged one.
        std::function<void(const std::string &setAside)> onLacking;
    };

    AlarmStateKeeper();
    ~AlarmStateKeeper();
    AlarmStateKeeper(const AlarmStateKeeper &) = delete;
    AlarmStateKeeper &operator=(const AlarmStateKeeper &) = delete;

    /// The store may have been opened; from now on it is the keeper's. Null: nothing is kept.
    void Start(std::shared_ptr<AlarmStateStore> store, Hooks hooks);
    /// Writes what waits and closes the store. True when all was kept. A store that does not answer
    /// within some seconds is left to its thread.
    bool Stop();

    void Put(unsigned long node, StoredAlarm state);
    /// Fills in what concerns the keeping.
    void Describe(AlarmHealth &health) const;
    /// True once when the store has not answered for long.
    bool IsFoundHanging();

private:
    struct State;

    std::shared_ptr<State> state() const;

    mutable std::mutex m_mutex;     // guards the pointer
    std::shared_ptr<State> m_state; // also its thread's, which may be left behind
    std::thread m_thread;
};

} // namespace Nodes
