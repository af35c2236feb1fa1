// The end of the station: what windows, actions and scripts still have to do.
#include "widgets/actions/kinds/RunningScripts.h"
#include "widgets/actions/qBasicAction.h"
#include "widgets/actions/running/ActionRunner.h"
#include "widgets/windows/WindowManager.h"

#include "nodes/system/systemCore.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QPointer>
#include <QTimer>
#include <QWidget>

namespace Widgets {

namespace {

constexpr int dismissalInterval = 20; // ms
constexpr int releasePatience = 500;  // ms, for what ends a press

} // namespace

void WindowManager::finishActions(int patience)
{
    QTimer dismissal;
    connect(&dismissal, &QTimer::timeout, &dismissal, [] {
        if (QWidget *modal = QApplication::activeModalWidget())
            modal->close();
    });
    dismissal.start(dismissalInterval);
    const QDeadlineTimer deadline(patience);
    m_runner->end(deadline);
    const int stale = dropStale();
    hideAll();
    RunningScripts &scripts = RunningScripts::of(*this);
    const auto isDone = [&] { return m_queue.isEmpty() && m_runner->isIdle() && scripts.isIdle(); };
    const auto runUntil = [&isDone](const QDeadlineTimer &end) {
        while (!isDone() && !end.hasExpired())
            QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents |
                                            QEventLoop::WaitForMoreEvents);
    };
    runUntil(deadline);
    const bool isInTime = isDone();
    scripts.abandon();
    const int late =
        m_queue.drop([](const qBasicAction &action) { return !action.trigger().isRelease; });
    runUntil(QDeadlineTimer(releasePatience));
    journalEnd(stale + late, isInTime);
}

void WindowManager::journalEnd(int dropped, bool isInTime) const
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

// The right to close is asked of operators, not of the end of the station.
void WindowManager::hideAll()
{
    QApplication::closeAllWindows();
    QVector<QPointer<QWidget>> left;
    for (QWidget *widget : QApplication::topLevelWidgets())
        left.append(widget);
    for (const QPointer<QWidget> &widget : left) {
        if (widget)
            widget->hide();
    }
}

} // namespace Widgets
