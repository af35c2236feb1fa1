#include "widgets/actions/running/ActionRunner.h"

#include "widgets/actions/qBasicAction.h"

#include "nodes/actions/BasicAction.h"
#include "nodes/events/EventLevel.h"

#include <QCoreApplication>
#include <QPointer>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <functional>
#include <utility>

namespace Widgets {

namespace {

constexpr int retryInterval = 20; // ms
constexpr int turnLimit = 8;      // ms

} // namespace

ActionRunner::ActionRunner(QObject *parent) : QObject(parent), m_retry(new QTimer(this))
{
    m_retry->setInterval(retryInterval);
    connect(m_retry, &QTimer::timeout, this, &ActionRunner::takeHeldBack);
    connect(m_retry, &QTimer::timeout, this, &ActionRunner::postNext);
}

ActionRunner::~ActionRunner() = default;

int ActionRunner::laneOf(const qBasicAction &action)
{
    return action.trigger().isUrgent() ? 0 : 1;
}

bool ActionRunner::isTurnOf(int lane)
{
    return !isLettingEventsRun() && m_ready[0].empty() && (lane == 0 || m_ready[1].empty()) &&
           !isTurnSpent();
}

void ActionRunner::take(qBasicAction &action)
{
    takeHeldBack();
    const int lane = laneOf(action);
    if (isTurnOf(lane))
        return execute(action);
    m_ready[std::size_t(lane)].push_back(&action);
    m_retry->start();
    postNext();
}

// A turn begins with the first action and ends when the event loop comes round again.
bool ActionRunner::isTurnSpent()
{
    if (!std::exchange(m_isTurnOpen, true)) {
        m_turn.start();
        QMetaObject::invokeMethod(
            this, [this] { m_isTurnOpen = false; }, Qt::QueuedConnection);
    }
    return m_turn.hasExpired(turnLimit);
}

bool ActionRunner::isDropped(const qBasicAction &action) const
{
    const ActionTrigger &trigger = action.trigger();
    return m_isEnding && !trigger.isRelease &&
           (m_deadline.hasExpired() || !trigger.outlivesStation());
}

bool ActionRunner::isHeldBack(const qBasicAction &action) const
{
    const ActionTrigger &trigger = action.trigger();
    return trigger.isHeldBack && *trigger.isHeldBack && !m_isEnding;
}

// They are the next then: whatever came meanwhile is younger. Looked at before anything else is
// executed, or the rest of a list that has just been let go would overtake its beginning, and a
// load that never lets the timer run out would keep it back for good.
void ActionRunner::takeHeldBack()
{
    const auto free =
        std::stable_partition(m_heldBack.begin(), m_heldBack.end(),
                              [this](const qBasicAction *action) { return isHeldBack(*action); });
    for (auto action = m_heldBack.end(); action != free;) {
        --action;
        m_ready[std::size_t(laneOf(**action))].push_front(*action);
    }
    m_heldBack.erase(free, m_heldBack.end());
}

// Nothing of a press is to start after its release. All of its list has come before the release.
void ActionRunner::abandonPress(const ActionTrigger &release)
{
    const auto isOfPress = [&release](const qBasicAction *action) {
        const ActionTrigger &press = action->trigger();
        return release.user && press.user == release.user && press.origin == release.origin &&
               press.generation == release.generation;
    };
    const auto left =
        std::stable_partition(m_heldBack.begin(), m_heldBack.end(), std::not_fn(isOfPress));
    std::for_each(left, m_heldBack.end(), [](qBasicAction *action) {
        if (const Nodes::BasicAction *node = action->getNode())
            (void)node->StoreMessage(Nodes::LevelWarning,
                                     "Действие не выполнено: кнопка отпущена раньше входа",
                                     node->GetNodeLink());
        action->setState(ActionFinished);
    });
    m_heldBack.erase(left, m_heldBack.end());
}

void ActionRunner::execute(qBasicAction &action)
{
    if (action.trigger().isRelease)
        abandonPress(action.trigger());
    if (isHeldBack(action)) {
        action.setWaiting();
        m_heldBack.push_back(&action);
        m_retry->start();
        return;
    }
    action.setState(ActionExecuting);
    action.noteStart();
    if (isDropped(action)) {
        ++m_dropped;
        action.setState(ActionFinished);
        return;
    }
    // That one runs a loop of events of its own, or this one would not run.
    if (m_executing)
        m_executing->setWaiting();
    qBasicAction *outer = std::exchange(m_executing, &action);
    const bool hadInput = std::exchange(m_hasInput, false);
    action.Execute();
    m_executing = outer;
    m_hasInput = m_hasInput || hadInput;
    if (action.getNode())
        action.getNode()->SetState(Nodes::NodeState::Finished);
    action.setState(ActionFinished);
}

// A modal window opened meanwhile has a loop of its own: until the operator answers it, actions go
// on as ever.
bool ActionRunner::isLettingEventsRun() const
{
    return m_lettingLevel == QThread::currentThread()->loopLevel();
}

void ActionRunner::letEventsRun()
{
    const QPointer<ActionRunner> self = this;
    const int outer = std::exchange(m_lettingLevel, QThread::currentThread()->loopLevel());
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    if (!self)
        return;
    m_lettingLevel = outer;
    postNext();
}

void ActionRunner::postNext()
{
    if (isIdle() && m_heldBack.empty())
        m_retry->stop();
    else if (!isIdle() && !isLettingEventsRun() && !std::exchange(m_isNextPosted, true))
        QMetaObject::invokeMethod(this, &ActionRunner::runReady, Qt::QueuedConnection);
}

qBasicAction *ActionRunner::takeNext()
{
    for (Lane &lane : m_ready) {
        if (lane.empty())
            continue;
        qBasicAction *action = lane.front();
        lane.pop_front();
        return action;
    }
    return nullptr;
}

// The next turn is asked for before each action: it may open a modal window.
void ActionRunner::runReady()
{
    m_isNextPosted = false;
    const QPointer<ActionRunner> self = this;
    bool isFirst = true;
    while (self && !isLettingEventsRun() && !isIdle() && (!isTurnSpent() || isFirst)) {
        takeHeldBack();
        qBasicAction *action = takeNext();
        postNext();
        execute(*action);
        isFirst = false;
    }
}

void ActionRunner::end(const QDeadlineTimer &deadline)
{
    m_isEnding = true;
    m_deadline = deadline;
}

} // namespace Widgets
