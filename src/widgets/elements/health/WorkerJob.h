#pragma once

#include "widgets/WidgetsExport.h"

#include <QObject>
#include <QThreadPool>

#include <atomic>
#include <functional>
#include <memory>

namespace Widgets {

/// One computation at a time on a thread of its own: starting another replaces it, and what was
/// replaced or cancelled is never heard of again. A member of who starts it. GUI thread.
class WIDGETS_EXPORT WorkerJob : public QObject
{
    Q_OBJECT

public:
    using Progress = std::function<void(double)>;
    using Answer = std::function<void()>;
    /// Runs on the thread, ends soon after `isCancelled` is set, tells how far it is, 0 to 1, and
    /// returns what is to be done on the GUI thread then. Uses copies only.
    using Work = std::function<Answer(const std::atomic<bool> &isCancelled, const Progress &tell)>;

    explicit WorkerJob(QObject *parent = nullptr);
    ~WorkerJob() override;

    void start(Work work);
    void cancel();
    bool isBusy() const { return m_run != nullptr; }

signals:
    /// 0 to 100.
    void progressed(int percent);

private:
    struct Run;
    class Task;

    void end(const std::shared_ptr<Run> &run, const Answer &answer);
    void tell(const std::shared_ptr<Run> &run, int percent);

    std::shared_ptr<Run> m_run; // that still counts
    QThreadPool m_threads;
};

} // namespace Widgets
