#pragma once

#include "nodes/journal/JournalOverflow.h"
#include "nodes/journal/JournalQueue.h"
#include "nodes/journal/JournalSpill.h"
#include "nodes/journal/JournalStore.h"
#include "nodes/journal/PatientThread.h"
#include "nodes/storage/StoreHealth.h"

#include <atomic>
#include <chrono>
#include <functional>

namespace Nodes {

/// Thread that carries rows from the queue into the store, by way of the spill file beside it, or
/// those elsewhere, while the store fails. Order is kept: nothing enters the store before what was
/// spilled earlier. A file that is deleted or replaced meanwhile is noticed and restored.
class JournalWriter
{
public:
    using Stored = std::function<void(const BasicEvent &)>;

    JournalWriter(JournalQueue &queue, JournalOverflow &overflow, Stored stored);

    /// Tries to open the store at once and starts the thread, which keeps `owner` alive, in any
    /// case. Refused while the thread of an earlier run still hangs.
    [[nodiscard]] Result Start(const std::string &file, std::shared_ptr<void> owner,
                               const std::vector<std::string> &findings);
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
    void lookAfterFiles();
    bool isStoreReady();
    [[nodiscard]] Result openStore();
    [[nodiscard]] Result restore();
    [[nodiscard]] Result openSpill();
    [[nodiscard]] Result replay();
    bool replayOverflow();
    [[nodiscard]] Result store(std::vector<JournalRow> &rows);
    [[nodiscard]] Result spill(const JournalQueue::Batch &batch);
    void postpone(const Result &cause);
    void noteWell();
    void noteStored(std::size_t count);
    void report(const std::string &text);
    void reportRejected();

    JournalQueue &m_queue;
    JournalOverflow &m_overflow;
    Stored m_stored;
    JournalStore m_store;
    JournalSpill m_spill;
    std::string m_file;
    std::vector<JournalRow> m_reports; // about the journal itself, stored before anything else
    Time m_nextTry{};
    std::atomic<bool> m_isStoreOpen{false};
    mutable std::mutex m_healthMutex; // never held while the disk is asked
    StoreHealth m_health;
    Timestamp m_troubledAt = 0; // steady time; while not well
    PatientThread m_thread;
};

} // namespace Nodes
