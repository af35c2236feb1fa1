#pragma once

#include "nodes/storage/StoreHealth.h"
#include "nodes/storage/records/PatientThread.h"
#include "nodes/storage/records/RecordFinding.h"
#include "nodes/storage/records/RecordOverflow.h"
#include "nodes/storage/records/RecordPortion.h"
#include "nodes/storage/records/RecordQueue.h"
#include "nodes/storage/records/RecordSpill.h"
#include "nodes/storage/records/RecordStore.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <mutex>

namespace Nodes {

/// Called on the writer's thread; each may be empty.
struct RecordHooks
{
    /// Records that are stored now, as told by RecordStore::Write.
    std::function<void(const Records &, const std::vector<std::uint64_t> &numbers)> onStored;
    /// What is to be recorded of a finding, before anything else: bytes of a record, "" for none.
    std::function<std::string(const RecordFinding &)> describe;
};

/// Thread that carries records from the queue into the store, by way of the spill file beside it,
/// or those elsewhere, while the store fails. Order is kept: nothing enters the store before what
/// was spilled earlier. A place that is removed or replaced meanwhile is noticed and restored.
class RecordWriter
{
public:
    RecordWriter(RecordQueue &queue, RecordOverflow &overflow, RecordFormat format,
                 const RecordPortion::Limits &transaction, RecordHooks hooks);

    /// Tries to open the store at once, unless it is distant, and starts the thread, which keeps
    /// `owner` alive, in any case. Refused while the thread of an earlier run still hangs.
    [[nodiscard]] Result Start(std::unique_ptr<RecordStore> store, const std::string &spillFile,
                               std::shared_ptr<void> owner, const RecordFindings &findings);
    /// Writes or spills what is queued. False when that hangs for longer than `patience`: the
    /// thread is left behind. Not on the writer's own thread.
    bool Stop(std::chrono::milliseconds patience);
    bool IsStoreOpen() const { return m_isStoreOpen; }
    bool IsOwnThread() const { return m_thread.IsOwn(); }
    /// Without what waits in memory and elsewhere. Any thread, waits for nothing.
    StoreHealth GetHealth() const;

private:
    using Time = std::chrono::steady_clock::time_point;

    void run();
    bool work();
    bool tend();
    void lookAfterFiles();
    bool isStoreReady();
    [[nodiscard]] Result openStore();
    [[nodiscard]] Result openSpill();
    [[nodiscard]] Result storeReports();
    [[nodiscard]] Result replay();
    bool replayOverflow();
    [[nodiscard]] Result store(const Records &records);
    [[nodiscard]] Result spill(const RecordQueue::Batch &batch);
    void noteFailure(const Result &cause);
    void postpone(const Result &cause);
    void noteWell();
    void noteStored(const Records &records, const std::vector<std::uint64_t> &numbers);
    void report(const RecordFinding &finding);
    void report(RecordFinding::Kind kind, const std::string &place, const std::string &detail = {});

    RecordQueue &m_queue;
    RecordOverflow &m_overflow;
    RecordPortion m_portion;
    const RecordHooks m_hooks;
    std::unique_ptr<RecordStore> m_store; // of the run; null before the first
    RecordSpill m_spill;
    std::string m_spillFile;
    Records m_reports; // about the records themselves, stored before anything else
    Time m_nextTry{};
    Time m_nextTend{};
    std::atomic<bool> m_isStoreOpen{false};
    mutable std::mutex m_healthMutex; // never held while the disk is asked
    StoreHealth m_health;
    Timestamp m_troubledAt = 0; // steady time; while not well
    PatientThread m_thread;
};

} // namespace Nodes
