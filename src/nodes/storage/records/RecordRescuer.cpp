#include "nodes/storage/records/RecordRescuer.h"

#include "nodes/storage/records/RecordOverflow.h"
#include "nodes/storage/records/RecordQueue.h"

namespace Nodes {

namespace {

constexpr RecordQueue::Bounds portion{1000, 8 * 1024 * 1024};

} // namespace

RecordRescuer::RecordRescuer(RecordQueue &queue, RecordOverflow &overflow,
                             std::chrono::milliseconds patience)
    : m_queue(queue), m_overflow(overflow), m_patience(patience)
{
}

void RecordRescuer::Start(std::shared_ptr<void> owner)
{
    if (m_thread.IsRunning())
        return;
    m_isStopping = false;
    m_thread.Start([this, owner = std::move(owner)] {
        while (pause())
            rescue();
    });
}

void RecordRescuer::Stop(std::chrono::milliseconds patience)
{
    {
        const std::lock_guard lock(m_mutex);
        m_isStopping = true;
    }
    m_stopped.notify_all();
    m_thread.Join(patience);
}

void RecordRescuer::Empty(std::shared_ptr<void> owner, std::chrono::milliseconds patience)
{
    if (m_thread.IsRunning()) { // its disk hangs as well
        m_queue.Abandon();
        return;
    }
    m_thread.Start([this, owner = std::move(owner)] { empty(); });
    m_thread.Join(patience);
}

bool RecordRescuer::pause()
{
    std::unique_lock lock(m_mutex);
    m_stopped.wait_for(lock, m_patience / 4, [this] { return m_isStopping; });
    return !m_isStopping;
}

void RecordRescuer::rescue()
{
    for (;;) {
        const Records records = m_queue.TakeBehind(portion, m_patience);
        if (records.empty())
            return;
        const bool areSafe = bool(m_overflow.Append(records));
        m_queue.SettleBehind(areSafe);
        if (!areSafe)
            return;
    }
}

void RecordRescuer::empty()
{
    m_queue.Abandon();
    for (;;) {
        const Records records = m_queue.TakeAbandoned(portion);
        if (records.empty() || !m_overflow.Append(records))
            return;
        m_queue.SettleAbandoned(records.size());
    }
}

} // namespace Nodes
