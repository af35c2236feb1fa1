#include "editor/project/DiskWork.h"

#include <mutex>
#include <thread>

namespace Editor {

struct DiskWork::Shared
{
    std::mutex mutex;
    DiskWork *owner; // guarded; null once nobody wants to know
};

DiskWork::~DiskWork()
{
    if (!m_shared)
        return;
    const std::lock_guard guard(m_shared->mutex);
    m_shared->owner = nullptr;
}

void DiskWork::start(std::function<Nodes::Result()> job)
{
    m_shared.reset(new Shared{{}, this});
    std::thread([shared = m_shared, job = std::move(job)]() mutable {
        const Nodes::Result result = job();
        job = nullptr; // what it owns goes before anybody is told
        const std::lock_guard guard(shared->mutex);
        DiskWork *const owner = shared->owner;
        if (owner)
            QMetaObject::invokeMethod(
                owner, [owner, result] { owner->finish(result); }, Qt::QueuedConnection);
    }).detach();
}

void DiskWork::finish(const Nodes::Result &result)
{
    m_result = result;
    m_isDone = true;
    emit finished();
}

} // namespace Editor
