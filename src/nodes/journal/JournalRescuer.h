#pragma once

#include "nodes/journal/PatientThread.h"

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>

namespace Nodes {

class JournalOverflow;
class JournalQueue;

/// Thread that carries rows from the queue to other disks while the writer hangs on its own.
class JournalRescuer
{
public:
    JournalRescuer(JournalQueue &queue, JournalOverflow &overflow,
                   std::chrono::milliseconds patience);

    /// `owner` is kept alive by the thread.
    void Start(std::shared_ptr<void> owner);
    void Stop(std::chrono::milliseconds patience);
    /// Gives the writer up and carries everything that is left, the rows it holds included: should
    /// it store them after all, they are known by their keys. After Stop.
    void Empty(std::shared_ptr<void> owner, std::chrono::milliseconds patience);

private:
    bool pause();
    void rescue();
    void empty();

    JournalQueue &m_queue;
    JournalOverflow &m_overflow;
    const std::chrono::milliseconds m_patience; // with the writer
    std::mutex m_mutex;
    std::condition_variable m_stopped;
    bool m_isStopping = false;
    PatientThread m_thread;
};

} // namespace Nodes
