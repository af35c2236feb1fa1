#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/actions/running/ActionQueue.h"
#include "widgets/actions/running/TimerLists.h"
#include "widgets/context/ActionTrigger.h"

#include "nodes/model/links/NodeLink.h"
#include "nodes/values/Result.h"

#include <QObject>
#include <QVector>

#include <atomic>
#include <functional>
#include <memory>
#include <vector>

class QDeadlineTimer;

namespace Nodes {
class BasicAction;
class ConfigNode;
class operationTimer;
class systemCore;
} // namespace Nodes

namespace Widgets {

class ActionKinds;
class ActionRunner;
class LastingWork;
class WindowManagerWorkerThread;

/// Takes operator actions from whoever asks for them, has them executed on the GUI thread, paced by
/// a worker thread, and lets none pile up without end. Knows neither windows nor what the actions
/// do. GUI thread, except as noted.
class WIDGETS_EXPORT ActionDispatcher : public QObject
{
    Q_OBJECT

public:
    /// Kinds, core (may be null: there are no users then) and `owner` outlive it. The worker is a
    /// child of `owner`, who connects worker().ActionExecuted to what calls `execute`, and then
    /// starts it.
    ActionDispatcher(const ActionKinds &kinds, Nodes::systemCore *core, QObject *owner);
    ~ActionDispatcher() override;

    WindowManagerWorkerThread &worker() const { return *m_worker; }
    /// Waits for the worker: nobody else touches the queue from then on.
    void stopWorker();

    /// See WindowManager::MaximumChain and, for the next ones, its functions of that meaning.
    static constexpr int MaximumChain = 64;

    /// Any thread.
    Nodes::Result push(Nodes::BasicAction *action);
    Nodes::Result push(std::vector<Nodes::NodeLink> actions);
    Nodes::Result push(const std::vector<Nodes::NodeLink> &actions, const ActionTrigger &trigger);
    /// The timer's list, unless actions of its last one have not started yet.
    void pushTimer(const Nodes::operationTimer &timer);
    /// Takes over an object that is no node's, as the node model asks for it. False, and nothing
    /// taken, when the queue is full.
    bool pushRequest(std::unique_ptr<qBasicAction> &action);

    ActionTrigger triggerNow(ActionOrigin origin) const;
    QVector<qBasicAction *> makeActions(const std::vector<Nodes::NodeLink> &actions,
                                        const ActionTrigger &trigger);
    void queue(const QVector<qBasicAction *> &actions) { m_queue.append(actions); }
    /// Any thread.
    qBasicAction *create(Nodes::BasicAction *action);

    /// Executes an action that was handed over (state 2), now or in its turn; any other is left
    /// alone.
    void execute(qBasicAction &action);
    /// Input of an operator: what is pushed from now on is his doing.
    void noteInput();
    void letEventsRun();

    /// Work to be waited for at the end. Not owned; a child of this, or as long-lived.
    void track(LastingWork &work) { m_lasting.push_back(&work); }
    /// See WindowManager::finishActions; `closeWindows` is called once what is stale was dropped.
    void finish(int patience, const std::function<void()> &closeWindows);
    bool isEnding() const;

    /// Any thread.
    int queued() const { return m_queue.size(); }
    bool hasActionBelow(const Nodes::ConfigNode &node) { return m_queue.hasCopyBelow(node); }

signals:
    /// Node copies of finished actions are gone.
    void copiesFreed();

private:
    std::shared_ptr<Nodes::ActingUser> actingUser() const;
    ActionTrigger triggerOfNobody() const;
    Nodes::Result pushElsewhere(Nodes::BasicAction *action);
    Nodes::Result pushNodes(const std::vector<Nodes::BasicAction *> &nodes,
                            const ActionTrigger &trigger);
    Nodes::Result checkLimits(const Nodes::BasicAction &node, int count,
                              const ActionTrigger &trigger);
    qBasicAction *make(Nodes::BasicAction *node, const ActionTrigger &trigger);
    void freeCopies();
    bool isDone() const;
    void runUntil(const QDeadlineTimer &end) const;
    void abandonLasting();
    void journalEnd(int dropped, bool isInTime) const;

    const ActionKinds &m_kinds;
    Nodes::systemCore *m_core;
    ActionQueue m_queue;
    ActionRunner *m_runner;
    TimerLists m_timerLists;
    std::vector<LastingWork *> m_lasting;
    std::atomic<int> m_posted{0}; // by other threads, on their way into the queue
    std::atomic<bool> m_isOverflowTold{false};
    std::unique_ptr<WindowManagerWorkerThread> m_worker;
};

} // namespace Widgets
