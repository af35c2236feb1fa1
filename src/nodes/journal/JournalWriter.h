#pragma once

#include "nodes/journal/JournalQueue.h"
#include "nodes/journal/JournalSpill.h"
#include "nodes/journal/JournalStore.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <thread>

namespace Nodes {

/// Thread that carries rows from the queue into the store, by way of the spill file while the
/// store fails. Order is kept: nothing enters the store before the spill file is empty.
class JournalWriter
{
public:
    using Stored = std::function<void(const BasicEvent &)>;

    JournalWriter(JournalQueue &queue, Stored stored);
    ~JournalWriter();

    /// Tries to open the store at once and starts the thread in any case.
    [[nodiscard]] Result Start(const std::string &file);
    /// Writes or spills what is queued and joins. Not on the writer's own thread.
    void Stop();
    bool IsStoreOpen() const { return m_isStoreOpen; }
    bool IsOwnThread() const { return std::this_thread::get_id() == m_threadId; }

private:
    using Time = std::chrono::steady_clock::time_point;

    void run();
    /// False when the rows had to go back into the queue.
    bool carry(std::vector<JournalRow> &rows);
    bool isStoreReady();
    [[nodiscard]] Result openStore();
    [[nodiscard]] Result openSpill();
    [[nodiscard]] Result replay();
    [[nodiscard]] Result store(std::vector<JournalRow> &rows);
    void postpone();
    void report(const std::string &text);
    void reportRejected();

    JournalQueue &m_queue;
    Stored m_stored;
    JournalStore m_store;
    JournalSpill m_spill;
    std::string m_file;
    std::vector<JournalRow> m_reports; // about the journal itself, stored before anything else
    Time m_nextTry{};
    std::atomic<bool> m_isStoreOpen{false};
    std::atomic<std::thread::id> m_threadId{};
    std::thread m_thread;
};

} // namespace Nodes
