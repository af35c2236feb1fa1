#include "editor/recovery/FileLook.h"

#include <mutex>
#include <thread>

namespace Editor {

namespace {

constexpr int patience = 10000; // ms

} // namespace

struct FileLook::Job
{
    using Stamp = Nodes::FileStamp;

    void run(const std::shared_ptr<Job> &self)
    {
        const std::string path = file.toStdString();
        state = known.Compare(path);
        now = state == Stamp::Same ? known : Stamp::Of(path);
        const std::lock_guard guard(mutex);
        if (owner)
            QMetaObject::invokeMethod(
                owner, [look = owner, self] { look->finish(self); }, Qt::QueuedConnection);
    }

    const QString file;
    const Stamp known;
    Stamp::enState state = Stamp::Same;
    Stamp now;
    std::mutex mutex;
    FileLook *owner; // guarded; null once nobody wants to know
};

FileLook::FileLook(QObject *parent) : QObject(parent)
{
    m_patience.setSingleShot(true);
    m_patience.setInterval(patience);
    connect(&m_patience, &QTimer::timeout, this, [this] {
        if (!m_isStuck)
            emit stuck();
        m_isStuck = true;
    });
}

FileLook::~FileLook()
{
    forget();
}

void FileLook::start(const QString &file, const Nodes::FileStamp &known)
{
    if (isRunning())
        return;
    m_job.reset(new Job{file, known, {}, {}, {}, this});
    m_patience.start();
    std::thread([job = m_job] { job->run(job); }).detach();
}

void FileLook::forget()
{
    m_patience.stop();
    m_isStuck = false; // of the next one's disk nothing is known
    if (!m_job)
        return;
    const std::shared_ptr<Job> job = std::move(m_job);
    const std::lock_guard guard(job->mutex);
    job->owner = nullptr;
}

void FileLook::finish(const std::shared_ptr<Job> &job)
{
    if (job != m_job)
        return;
    m_patience.stop();
    m_isStuck = false;
    m_job.reset();
    emit found(job->state, job->now);
}

} // namespace Editor
