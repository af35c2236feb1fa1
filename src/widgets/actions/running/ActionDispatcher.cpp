#include "widgets/actions/running/ActionDispatcher.h"

#include "widgets/actions/qBasicAction.h"
#include "widgets/actions/running/ActionKinds.h"
#include "widgets/actions/running/ActionRunner.h"
#include "widgets/actions/running/Refusals.h"
#include "widgets/actions/running/WindowManagerWorkerThread.h"

#include "nodes/actions/BasicAction.h"
#include "nodes/auth/systemAuthentication.h"
#include "nodes/system/systemCore.h"
#include "nodes/timers/operationTimer.h"

#include <QLoggingCategory>
#include <QThread>

#include <algorithm>

namespace Widgets {

using Nodes::Result;

namespace {

Q_LOGGING_CATEGORY(actionLog, "station.actions")

} // namespace

ActionDispatcher::ActionDispatcher(const ActionKinds &kinds, Nodes::systemCore *core,
                                   QObject *owner)
    : m_kinds(kinds),
      m_core(core),
      m_runner(new ActionRunner(this)),
      m_worker(std::make_unique<WindowManagerWorkerThread>(m_queue, core, owner))
{
    connect(m_worker.get(), &WindowManagerWorkerThread::actionsDeleted, this,
            &ActionDispatcher::freeCopies);
}

ActionDispatcher::~ActionDispatcher()
{
    stopWorker();
}

void ActionDispatcher::stopWorker()
{
    m_worker.reset();
}

void ActionDispatcher::freeCopies()
{
    m_queue.freeRetiredCopies();
    emit copiesFreed();
}

qBasicAction *ActionDispatcher::create(Nodes::BasicAction *action)
{
    if (!action || !m_kinds.knows(action->GetNodeType()))
        return nullptr;
    Nodes::BasicAction *copy = m_queue.copyNode(*action);
    return copy ? m_kinds.create(copy) : nullptr;
}

qBasicAction *ActionDispatcher::make(Nodes::BasicAction *node, const ActionTrigger &trigger)
{
    qBasicAction *action = create(node);
    if (!action) {
        qCDebug(actionLog, "dropped: %s",
                node ? node->GetPath().c_str() : "the action node does not exist");
        return nullptr;
    }
    action->setTrigger(trigger);
    if (trigger.display && action->getNode())
        action->getNode()->setCurrentDisplay(*trigger.display);
    return action;
}

std::shared_ptr<Nodes::ActingUser> ActionDispatcher::actingUser() const
{
    const Nodes::systemAuthentication *users = m_core ? m_core->GetSystemAuthentication() : nullptr;
    return users ? std::make_shared<Nodes::ActingUser>(users->GetActingUser()) : nullptr;
}

ActionTrigger ActionDispatcher::triggerOfNobody() const
{
    ActionTrigger trigger;
    trigger.origin = trigger.root = ActionOrigin::Request;
    trigger.user = actingUser();
    return trigger;
}

QVector<qBasicAction *> ActionDispatcher::makeActions(const std::vector<Nodes::NodeLink> &actions,
                                                      const ActionTrigger &trigger)
{
    QVector<qBasicAction *> made;
    for (const Nodes::NodeLink &link : actions) {
        auto *node = dynamic_cast<Nodes::BasicAction *>(link.GetNode());
        if (qBasicAction *action = make(node, trigger))
            made.append(action);
    }
    return made;
}

// Windows open at the start without anybody's hand; they close by one, unless the station ends.
ActionTrigger ActionDispatcher::triggerNow(ActionOrigin origin) const
{
    ActionTrigger trigger;
    trigger.origin = trigger.root = origin;
    const qBasicAction *cause = m_runner->cause();
    const bool isConsequence =
        cause && origin != ActionOrigin::Timer && origin != ActionOrigin::Request;
    if (isConsequence) {
        trigger.root = cause->trigger().root;
        trigger.generation = cause->trigger().generation + 1;
        trigger.user = cause->trigger().user;
        return trigger;
    }
    trigger.user = actingUser();
    if (origin == ActionOrigin::OnClose && !isEnding())
        trigger.root = ActionOrigin::Gesture;
    return trigger;
}

Result ActionDispatcher::checkLimits(const Nodes::BasicAction &node, int count,
                                     const ActionTrigger &trigger)
{
    if (trigger.generation > MaximumChain) {
        node.StoreMessage(Nodes::LevelWarning,
                          "Действие отклонено: действия бесконечно вызывают друг друга",
                          node.GetNodeLink());
        return Result(&node, Result::LimitExceeded, "actions push each other without end");
    }
    if (m_queue.hasRoom(trigger, count + m_posted)) {
        m_isOverflowTold = false;
        return {};
    }
    if (!m_isOverflowTold.exchange(true) || trigger.isOperators())
        node.StoreMessage(Nodes::LevelWarning, "Действия отклоняются: очередь переполнена",
                          node.GetNodeLink());
    return Result(&node, Result::LimitExceeded, "the queue of actions is full");
}

Result ActionDispatcher::pushNodes(const std::vector<Nodes::BasicAction *> &nodes,
                                   const ActionTrigger &trigger)
{
    if (isEnding() && !trigger.outlivesStation())
        return Result(Result::Cancelled, "the station ends");
    const auto first = std::find_if(nodes.begin(), nodes.end(), [](auto *node) { return node; });
    if (first != nodes.end()) {
        const Result within = checkLimits(**first, int(nodes.size()), trigger);
        if (!within) {
            ShowActionError(QStringLiteral("Действия не выполнены: станция перегружена"), trigger);
            return within;
        }
    }
    ActionTrigger ofList = trigger;
    ofList.isHeldBack = nodes.size() > 1 ? std::make_shared<bool>(false) : nullptr;
    QVector<qBasicAction *> actions;
    for (Nodes::BasicAction *node : nodes) {
        if (qBasicAction *action = make(node, ofList))
            actions.append(action);
    }
    m_queue.append(actions);
    return {};
}

Result ActionDispatcher::push(Nodes::BasicAction *action)
{
    return QThread::currentThread() == thread()
               ? pushNodes({action}, triggerNow(ActionOrigin::Gesture))
               : pushElsewhere(action);
}

// The node is copied at once, for it may be gone in a moment, but queued by way of the GUI thread:
// the lists that this thread has pushed before are on that way too.
Result ActionDispatcher::pushElsewhere(Nodes::BasicAction *action)
{
    if (!action)
        return {};
    const ActionTrigger trigger = triggerOfNobody();
    if (const Result within = checkLimits(*action, 1, trigger); !within)
        return within;
    ++m_posted;
    const auto made = std::make_shared<std::unique_ptr<qBasicAction>>(make(action, trigger));
    QMetaObject::invokeMethod(
        this,
        [this, made] {
            --m_posted;
            if (*made)
                m_queue.append({made->release()});
        },
        Qt::QueuedConnection);
    return {};
}

Result ActionDispatcher::push(std::vector<Nodes::NodeLink> actions)
{
    if (QThread::currentThread() == thread())
        return push(actions, triggerNow(ActionOrigin::Gesture));
    const ActionTrigger trigger = triggerOfNobody();
    const int count = int(actions.size());
    if (!m_queue.hasRoom(trigger, count + m_posted))
        return Result(Result::LimitExceeded, "the queue of actions is full");
    m_posted += count;
    QMetaObject::invokeMethod(
        this,
        [this, count, trigger, links = std::move(actions)] {
            m_posted -= count;
            (void)push(links, trigger);
        },
        Qt::QueuedConnection);
    return {};
}

Result ActionDispatcher::push(const std::vector<Nodes::NodeLink> &actions,
                              const ActionTrigger &trigger)
{
    std::vector<Nodes::BasicAction *> nodes;
    nodes.reserve(actions.size());
    for (const Nodes::NodeLink &link : actions)
        nodes.push_back(dynamic_cast<Nodes::BasicAction *>(link.GetNode()));
    return pushNodes(nodes, trigger);
}

void ActionDispatcher::pushTimer(const Nodes::operationTimer &timer)
{
    if (timer.GetActions().empty())
        return;
    ActionTrigger trigger = triggerNow(ActionOrigin::Timer);
    trigger.waiting = m_timerLists.begin(timer);
    if (trigger.waiting)
        (void)push(timer.GetActions(), trigger);
}

bool ActionDispatcher::pushRequest(std::unique_ptr<qBasicAction> &action)
{
    ActionTrigger trigger;
    trigger.origin = trigger.root = ActionOrigin::Request;
    if (!m_queue.hasRoom(trigger, 1))
        return false;
    action->setTrigger(trigger);
    m_queue.append({action.release()});
    return true;
}

void ActionDispatcher::execute(qBasicAction &action)
{
    const enActionState state = action.GetState();
    if (state == ActionHandedOver)
        m_runner->take(action);
    else if (state == ActionExecuting)
        qCDebug(actionLog, "Action in process!");
    else if (state != ActionFinished)
        qCDebug(actionLog, "Some error with action!");
}

void ActionDispatcher::noteInput()
{
    m_runner->noteInput();
}

void ActionDispatcher::letEventsRun()
{
    m_runner->letEventsRun();
}

bool ActionDispatcher::isEnding() const
{
    return m_runner->isEnding();
}

} // namespace Widgets
