#include "widgets/actions/running/WindowManagerWorkerThread.h"

#include "widgets/actions/running/ActionQueue.h"

#include "nodes/system/systemCore.h"

#include <QEventLoop>
#include <QTimer>

namespace Widgets {

WindowManagerWorkerThread::WindowManagerWorkerThread(ActionQueue &queue,
                                                     const Nodes::systemCore *core, QObject *parent)
    : QThread(parent), m_queue(queue), m_core(core)
{
    qRegisterMetaType<Widgets::qBasicAction *>("qBasicAction*");
    qRegisterMetaType<Widgets::qBasicAction *>();
}

WindowManagerWorkerThread::~WindowManagerWorkerThread()
{
    stop();
    wait();
}

void WindowManagerWorkerThread::stop()
{
    m_isStopped = true;
}

bool WindowManagerWorkerThread::isCoreFinished() const
{
    return m_core && m_core->GetState() == Nodes::NodeState::Finished &&
           m_core->GetWorkMode() == Nodes::WorkModeRuntime;
}

void WindowManagerWorkerThread::run()
{
    QEventLoop pause;
    QTimer timer;
    timer.setSingleShot(true);
    timer.setInterval(Interval);
    connect(&timer, &QTimer::timeout, &pause, &QEventLoop::quit);
    while (!m_isStopped) {
        const auto emitAction = [this](qBasicAction *action) { emit ActionExecuted(action); };
        if (!m_queue.isEmpty() && m_queue.walk(emitAction))
            emit actionsDeleted();
        if (isCoreFinished())
            emit coreFinished();
        timer.start();
        pause.exec();
    }
}

} // namespace Widgets
