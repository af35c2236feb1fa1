#include "widgets/elements/health/WorkerJob.h"

#include <QRunnable>

namespace Widgets {

/// What the thread and the job share.
struct WorkerJob::Run
{
    Work work;
    std::atomic<bool> isCancelled{false};
};

class WorkerJob::Task : public QRunnable
{
public:
    Task(WorkerJob &job, std::shared_ptr<Run> run) : m_job(job), m_run(std::move(run)) {}

    // The job waits for its tasks before it goes.
    void run() override
    {
        if (m_run->isCancelled)
            return;
        const Answer answer =
            m_run->work(m_run->isCancelled, [this](double share) { tell(int(share * 100)); });
        QMetaObject::invokeMethod(
            &m_job, [job = &m_job, run = m_run, answer] { job->end(run, answer); },
            Qt::QueuedConnection);
    }

private:
    void tell(int percent)
    {
        if (percent == m_told)
            return;
        m_told = percent;
        QMetaObject::invokeMethod(
            &m_job, [job = &m_job, run = m_run, percent] { job->tell(run, percent); },
            Qt::QueuedConnection);
    }

    WorkerJob &m_job;
    const std::shared_ptr<Run> m_run;
    int m_told = -1;
};

WorkerJob::WorkerJob(QObject *parent) : QObject(parent)
{
    m_threads.setMaxThreadCount(1);
}

WorkerJob::~WorkerJob()
{
    cancel();
    m_threads.waitForDone();
}

void WorkerJob::start(Work work)
{
    cancel();
    m_run = std::make_shared<Run>();
    m_run->work = std::move(work);
    m_threads.start(new Task(*this, m_run));
}

void WorkerJob::cancel()
{
    if (m_run)
        m_run->isCancelled = true;
    m_run.reset();
}

void WorkerJob::end(const std::shared_ptr<Run> &run, const Answer &answer)
{
    if (run != m_run)
        return;
    m_run.reset();
    answer();
}

void WorkerJob::tell(const std::shared_ptr<Run> &run, int percent)
{
    if (run == m_run)
        emit progressed(percent);
}

} // namespace Widgets
