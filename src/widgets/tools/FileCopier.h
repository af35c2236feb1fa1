#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/storage/DatabaseCopy.h"
#include "nodes/values/Result.h"

#include <QObject>
#include <QTimer>

#include <memory>
#include <vector>

class QThread;

namespace Widgets {

/// Runs copies of database files one after the other beside the GUI. GUI thread.
class WIDGETS_EXPORT FileCopier : public QObject
{
    Q_OBJECT

public:
    using Copies = std::vector<std::unique_ptr<Nodes::DatabaseCopy>>;

    explicit FileCopier(QObject *parent = nullptr);
    /// Cancels what runs and waits for it.
    ~FileCopier() override;

    /// Only while none runs.
    void start(Copies copies);
    bool isRunning() const { return m_thread != nullptr; }
    /// What is left is not begun either.
    void cancel();
    /// Cancels and waits; every copy is then told of by `copied`.
    void end();

signals:
    /// What is being done, in Russian, and its share, 0 to 1; negative: nobody knows.
    void progressed(const QString &what, double share);
    /// Once for each copy, in order, also for those that were not begun: Cancelled.
    void copied(const Nodes::DatabaseCopy &copy, const Nodes::Result &result);
    /// After the last of them.
    void finished();

private:
    struct Task;

    void run();
    void onFinished();
    void tellProgress();

    std::vector<Task> m_tasks; // the thread's while it runs
    std::atomic<std::size_t> m_current{0};
    std::atomic<bool> m_isCancelled{false};
    QThread *m_thread = nullptr;
    QTimer m_timer;
};

} // namespace Widgets
