#pragma once

#include "nodes/storage/records/PatientThread.h"

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>

namespace Nodes {

class RecordOverflow;
class RecordQueue;

/// Thread that carries records from the queue to other disks while the writer hangs on its own.
class RecordRescuer
{
public:
    RecordRescuer(RecordQueue &queue, RecordOverflow &overflow, std::chrono::milliseconds patience);

    /// `owner` is kept alive by the thread.
    void Start(std::shared_ptr<void> owner);
    void Stop(std::chrono::milliseconds patience);
    /// Gives the writer up and carries everything that is left, those it holds included: should
    /// it store them after all, they are known by their keys. After Stop.
    void Empty(std::shared_ptr<void> owner, std::chrono::milliseconds patience);

private:
    bool pause();
    void rescue();
    void empty();

    RecordQueue &m_queue;
    RecordOverflow &m_overflow;
    const std::chrono::milliseconds m_patience; // with the writer
    std::mutex m_mutex;
    std::condition_variable m_stopped;
    bool m_isStopping = false;
    PatientThread m_thread;
};

} // namespace Nodes
