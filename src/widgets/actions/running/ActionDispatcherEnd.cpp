// The end of the station: what actions, and what they began, still have to do.
#include "widgets/actions/qBasicAction.h"
#include "widgets/actions/running/ActionDispatcher.h"
#include "widgets/actions/running/ActionRunner.h"
#include "widgets/actions/running/LastingWork.h"

#include "nodes/system/systemCore.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QTimer>
#include <QWidget>

#include <algorithm>

namespace Widgets {

namespace {

constexpr int dismissalInterval = 20; // ms
constexpr int releasePatience = 500;  // ms, for what ends a press

} // namespace

void ActionDispatcher::finish(int patience, const std::function<void()> &closeWindows)
{
    QTimer dismissal;
    connect(&dismissal, &QTimer::timeout, &dismissal, [] {
        if (QWidget *modal = QApplication::activeModalWidget())
            modal->close();
    });
    dismissal.start(dismissalInterval);
    const QDeadlineTimer deadline(patience);
    m_runner->end(deadline);
    const int stale = m_queue.drop(
        [](const qBasicAction &action) { return !action.trigger().outlivesStation(); });
    closeWindows();
    runUntil(deadline);
    const bool isInTime = isDone();
    abandonLasting();
    const int late =
        m_queue.drop([](const qBasicAction &action) { return !action.trigger().isRelease; });
    runUntil(QDeadlineTimer(releasePatience));
    journalEnd(stale + late, isInTime);
}

bool ActionDispatcher::isDone() const
{
    return m_queue.isEmpty() && m_runner->isIdle() &&
           std::all_of(m_lasting.begin(), m_lasting.end(),
                       [](const LastingWork *work) { return work->isIdle(); });
}

void ActionDispatcher::runUntil(const QDeadlineTimer &end) const
{
    while (!isDone() && !end.hasExpired())
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents |
                                        QEventLoop::WaitForMoreEvents);
}

void ActionDispatcher::abandonLasting()
{
    for (LastingWork *work : m_lasting)
        work->abandon();
}

void ActionDispatcher::journalEnd(int dropped, bool isInTime) const
{
    const auto journal = [this](const std::string &text) {
        if (m_core)
            m_core->StoreMessage(Nodes::LevelWarning, text, Nodes::NodeLink());
    };
    dropped += m_runner->dropped();
    if (dropped > 0)
        journal("Станция завершается: не выполнены ожидавшие действия, " + std::to_string(dropped));
    if (!isInTime)
        journal("Станция завершена раньше, чем выполнены все действия");
}

} // namespace Widgets
