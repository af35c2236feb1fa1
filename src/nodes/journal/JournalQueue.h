#pragma once

#include "nodes/journal/JournalRow.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <vector>

namespace Nodes {

/// Bounded queue between those who append and the one writer. Rows leave in the order they came
/// and count as settled only when the writer says so.
class JournalQueue
{
public:
    explicit JournalQueue(std::size_t capacity) : m_capacity(capacity) {}

    /// Waits for space while the writer makes progress; false when there is none to be had.
    /// Rows that the writer itself causes (`isWriter`) are taken above the limit: it cannot wait.
    [[nodiscard]] bool Push(JournalRow row, bool isWriter);
    /// True when everything pushed before was settled; false when the writer failed or is absent.
    [[nodiscard]] bool WaitSettled();

    // The writer's side.
    /// From now on a writer takes rows; `false` makes waiters give up.
    void SetWriter(bool isPresent);
    /// Moves up to `count` rows into `rows`. Without rows waits until there are some, `pause` has
    /// passed (0: for ever), a flush is asked for or the queue is shut. False once it is shut.
    bool Take(std::vector<JournalRow> &rows, std::size_t count, std::chrono::milliseconds pause);
    /// The rows taken last were written or spilled.
    void Settle(std::size_t count);
    /// They were not: puts them back in front.
    void Return(std::vector<JournalRow> rows);
    /// True once after somebody asked for a flush.
    bool TakeFlushRequest();
    /// Rows refused for lack of space since the last call.
    std::size_t TakeRejected();
    void Shut();
    bool IsShut() const;
    std::size_t Size() const;

private:
    bool waitForSpace(std::unique_lock<std::mutex> &lock);

    const std::size_t m_capacity;
    mutable std::mutex m_mutex;
    std::condition_variable m_arrived;
    std::condition_variable m_progressed;
    std::deque<JournalRow> m_rows;
    std::uint64_t m_pushed = 0;
    std::uint64_t m_settled = 0;
    std::uint64_t m_failures = 0;
    std::size_t m_rejected = 0;
    bool m_hasWriter = false;
    bool m_isStuck = false;
    bool m_isFlushAsked = false;
    bool m_isShut = false;
};

} // namespace Nodes
