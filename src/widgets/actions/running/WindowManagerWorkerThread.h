#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/actions/qBasicAction.h"

#include <QThread>

#include <atomic>

namespace Nodes {
class systemCore;
}

namespace Widgets {

class ActionQueue;

/// Paces the actions: every 20 ms hands waiting ones to the GUI thread, deletes finished ones, and
/// ends the application once a core that ran as operator station has stopped.
class WIDGETS_EXPORT WindowManagerWorkerThread : public QThread
{
    Q_OBJECT

public:
    /// Queue and core (may be null) outlive the thread.
    WindowManagerWorkerThread(ActionQueue &queue, const Nodes::systemCore *core, QObject *parent);
    /// Stops and waits without a time limit.
    ~WindowManagerWorkerThread() override;

    static constexpr int Interval = 20; ///< milliseconds between walks of the queue

public slots:
    void stop();

signals:
    /// Emitted on the worker thread while the queue is locked: connect queued only.
    void ActionExecuted(Widgets::qBasicAction *qAction);
    /// Finished actions were deleted; their node copies wait to be freed on the GUI thread.
    void actionsDeleted();
    void coreFinished();

protected:
    void run() override;

private:
    bool isCoreFinished() const;

    ActionQueue &m_queue;
    const Nodes::systemCore *m_core;
    std::atomic<bool> m_isStopped{false};
};

} // namespace Widgets
