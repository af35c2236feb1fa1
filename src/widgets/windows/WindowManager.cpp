#include "widgets/windows/WindowManager.h"

#include "widgets/actions/ActionFactoryTable.h"
#include "widgets/actions/qBasicAction.h"
#include "widgets/actions/qactionAlarm.h"
#include "widgets/events/AlarmWindow.h"
#include "widgets/windows/DesktopOrder.h"
#include "widgets/windows/FrameDisplays.h"
#include "widgets/windows/IdleLogout.h"
#include "widgets/windows/WindowManagerWorkerThread.h"

#include "nodes/actions/BasicAction.h"
#include "nodes/alarms/systemAlarming.h"
#include "nodes/auth/systemAuthentication.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/system/systemCore.h"
#include "nodes/system/systemVisualization.h"
#include "nodes/timers/operationTimer.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLoggingCategory>
#include <QThread>
#include <QTimer>
#include <QWidget>

#include <utility>

namespace Widgets {

namespace {
Q_LOGGING_CATEGORY(actionLog, "station.actions")

constexpr int retryInterval = 20;
constexpr int keyYa = 0x042F;           // on the key of Z in the Russian layout
constexpr int missedAlarmsDelay = 1000; // ms
} // namespace

WindowManager *g_pWindowManager = nullptr;

WindowManager::WindowManager(Nodes::systemCore *core, QObject *parent)
    : QObject(parent), m_frames(new FrameDisplays(this)), m_retry(new QTimer(this)), m_core(core)
{
    qRegisterMetaType<Nodes::BasicEvent>("BasicEvent");
    qRegisterMetaType<Nodes::BasicEvent>();
    qRegisterMetaType<Nodes::operationTimer *>();
    if (QCoreApplication::instance())
        QCoreApplication::instance()->installEventFilter(this);
    g_pWindowManager = this;
    m_retry->setInterval(retryInterval);
    connect(m_retry, &QTimer::timeout, this, &WindowManager::postNextDeferred);
    m_worker = new WindowManagerWorkerThread(m_queue, core, this);
    connect(m_worker, &WindowManagerWorkerThread::ActionExecuted, this,
            &WindowManager::OnActionExecuted);
    connect(m_worker, &WindowManagerWorkerThread::actionsDeleted, this, [this] {
        m_queue.freeRetiredCopies();
        emit actionsFreed();
    });
    connect(m_worker, &WindowManagerWorkerThread::coreFinished, qApp, &QCoreApplication::quit);
    new DesktopOrder(this);
    subscribeAlarms();
    subscribeTimers();
    watchUsers();
    subscribeActionRequests();
    m_worker->start();
}

WindowManager::~WindowManager()
{
    m_gate.close();
    m_connections.clear();
    delete m_worker; // from here on nobody else touches the queue
    m_alarmWindow.reset();
    closeEverything();
    if (g_pWindowManager == this)
        g_pWindowManager = nullptr;
}

void WindowManager::subscribeAlarms()
{
    Nodes::systemAlarming *alarming = getSystemAlarming();
    if (!alarming)
        return;
    connect(this, &WindowManager::alarmFired, this, &WindowManager::ReceiveAlarm);
    m_connections.emplace_back(alarming->ConnectAlarm(
        m_gate.guard([this](const Nodes::BasicEvent &event) { emit alarmFired(event); })));
}

// The core may run for a while before there is anybody to show its alarms.
void WindowManager::takeEarlierAlarms()
{
    if (const Nodes::systemAlarming *alarming = getSystemAlarming()) {
        for (const Nodes::BasicEvent &event : alarming->GetActiveAlarms())
            ReceiveAlarm(event);
    }
}

void WindowManager::ReceiveAlarm(Nodes::BasicEvent event)
{
    if (!m_queue.isFull()) {
        m_queue.append({new qactionAlarm(std::move(event))});
        return;
    }
    // How the alarms stand is asked for afterwards, once for all that found no room.
    if (!std::exchange(m_areAlarmsMissed, true))
        QTimer::singleShot(missedAlarmsDelay, this, [this] {
            m_areAlarmsMissed = false;
            GetWindowAlarms()->open();
        });
}

AlarmWindow *WindowManager::GetWindowAlarms()
{
    if (!m_alarmWindow)
        m_alarmWindow = std::make_unique<AlarmWindow>();
    return m_alarmWindow.get();
}

void WindowManager::watchUsers()
{
    Nodes::systemAuthentication *users = m_core ? m_core->GetSystemAuthentication() : nullptr;
    if (!users || m_core->GetWorkMode() != Nodes::WorkModeRuntime)
        return;
    new IdleLogout(*users, Nodes::NodeLink(getSystemVisualization()), this);
    // By and by: the change may be noticed while an element paints itself.
    m_connections.emplace_back(
        users->ConnectUserChanged(m_gate.guard([this](const Nodes::NodeLink &) {
            QMetaObject::invokeMethod(this, &WindowManager::judgeAccess, Qt::QueuedConnection);
        })));
}

void WindowManager::subscribeTimers()
{
    const Nodes::NodesCollection *project = m_core ? m_core->GetNodesCollection() : nullptr;
    if (!project)
        return;
    connect(this, &WindowManager::timerFinished, this, &WindowManager::onTimerFinished);
    Nodes::NodeLinks timers;
    project->FindNodes(Nodes::NodeType(Nodes::NodeType::SubtypeOperationTimer), &timers);
    for (const Nodes::NodeLink &link : timers) {
        auto *timer = dynamic_cast<Nodes::operationTimer *>(link.GetNode());
        if (timer)
            m_connections.emplace_back(timer->ConnectFired(
                m_gate.guard([this](Nodes::operationTimer *fired) { emit timerFinished(fired); })));
    }
}

void WindowManager::subscribeActionRequests()
{
    if (!m_core)
        return;
    m_connections.emplace_back(m_core->ConnectActionRequested(
        m_gate.guard([this](Nodes::BasicAction *action) { return PushAction(action); })));
}

Nodes::enWorkMode WindowManager::GetWorkMode()
{
    const Nodes::systemCore *core = g_pWindowManager ? g_pWindowManager->m_core : nullptr;
    return core ? core->GetWorkMode() : Nodes::WorkModeNone;
}

Nodes::systemAlarming *WindowManager::getSystemAlarming() const
{
    return m_core ? m_core->GetSystemAlarming() : nullptr;
}

Nodes::systemVisualization *WindowManager::getSystemVisualization() const
{
    return m_core ? m_core->GetSystemVisualization() : nullptr;
}

qBasicAction *WindowManager::CreateQAction(Nodes::BasicAction *action)
{
    const ActionFactoryTable &table = ActionFactoryTable::instance();
    if (!action || !table.knows(action->GetNodeType()))
        return nullptr;
    Nodes::BasicAction *copy = m_queue.copyNode(*action);
    return copy ? table.create(copy) : nullptr;
}

int WindowManager::pushedGeneration() const
{
    const bool isHere = QThread::currentThread() == thread();
    return isHere && m_executing && !m_hasInput ? m_executing->generation() + 1 : 0;
}

Nodes::Result WindowManager::checkLimits(const Nodes::BasicAction &node, int pushed)
{
    using Nodes::Result;
    if (pushedGeneration() > MaximumChain) {
        node.StoreMessage(Nodes::LevelWarning,
                          "Действие отклонено: действия бесконечно вызывают друг друга",
                          node.GetPath());
        return Result(&node, Result::LimitExceeded, "actions push each other without end");
    }
    if (!m_queue.isFull() && pushed < ActionQueue::MaximumQueued) {
        m_isOverflowTold = false;
        return {};
    }
    if (!m_isOverflowTold.exchange(true))
        node.StoreMessage(Nodes::LevelWarning, "Действия отклоняются: очередь переполнена",
                          node.GetPath());
    return Result(&node, Result::LimitExceeded, "the queue of actions is full");
}

Nodes::Result WindowManager::append(QVector<qBasicAction *> &actions, Nodes::BasicAction *node)
{
    if (node) {
        if (const Nodes::Result within = checkLimits(*node, actions.size()); !within)
            return within;
    }
    qBasicAction *action = CreateQAction(node);
    if (!action) {
        qCDebug(actionLog, "dropped: %s",
                node ? node->GetPath().c_str() : "the action node does not exist");
        return {};
    }
    action->setGeneration(pushedGeneration());
    actions.append(action);
    return {};
}

Nodes::Result WindowManager::PushAction(Nodes::BasicAction *action)
{
    QVector<qBasicAction *> actions;
    const Nodes::Result appended = append(actions, action);
    m_queue.append(actions);
    return appended;
}

Nodes::Result WindowManager::PushActions(std::vector<Nodes::NodeLink> *actions)
{
    return actions ? PushActions(*actions) : Nodes::Result();
}

Nodes::Result WindowManager::PushActions(std::vector<Nodes::NodeLink> actions)
{
    if (QThread::currentThread() != thread()) {
        const auto push = [this, links = std::move(actions)] { pushOfNobody(links); };
        QMetaObject::invokeMethod(this, push, Qt::QueuedConnection);
        return {};
    }
    QVector<qBasicAction *> created;
    Nodes::Result result;
    for (auto link = actions.cbegin(); link != actions.cend() && result; ++link)
        result = append(created, dynamic_cast<Nodes::BasicAction *>(link->GetNode()));
    m_queue.append(created);
    return result;
}

Nodes::Result WindowManager::OnActionExecuted(qBasicAction *pAction)
{
    const enActionState state = pAction->GetState();
    if (state == ActionHandedOver) {
        if (isLettingEventsRun() || !m_deferred.isEmpty()) {
            m_deferred.append(pAction);
            m_retry->start();
        } else {
            execute(*pAction);
        }
    } else if (state == ActionExecuting) {
        qCDebug(actionLog, "Action in process!");
    } else if (state != ActionFinished) {
        qCDebug(actionLog, "Some error with action!");
    }
    return {};
}

void WindowManager::execute(qBasicAction &action)
{
    action.setState(ActionExecuting);
    const qBasicAction *outer = std::exchange(m_executing, &action);
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
bool WindowManager::isLettingEventsRun() const
{
    return m_lettingLevel == QThread::currentThread()->loopLevel();
}

void WindowManager::letEventsRun()
{
    const QPointer<WindowManager> self = this;
    const int outer = std::exchange(m_lettingLevel, QThread::currentThread()->loopLevel());
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    if (!self)
        return;
    m_lettingLevel = outer;
    postNextDeferred();
}

void WindowManager::postNextDeferred()
{
    if (m_deferred.isEmpty())
        m_retry->stop();
    else if (!isLettingEventsRun() && !std::exchange(m_isNextPosted, true))
        QMetaObject::invokeMethod(this, &WindowManager::runNextDeferred, Qt::QueuedConnection);
}

// One a turn of the event loop, so that input comes between. The next turn is asked for first: the
// action may open a modal window.
void WindowManager::runNextDeferred()
{
    m_isNextPosted = false;
    if (isLettingEventsRun() || m_deferred.isEmpty())
        return;
    qBasicAction *action = m_deferred.takeFirst();
    postNextDeferred();
    execute(*action);
}

void WindowManager::onTimerFinished(Nodes::operationTimer *timer)
{
    pushOfNobody(timer->GetActions());
}

// Whatever action lets this in, it has not asked for it.
void WindowManager::pushOfNobody(const std::vector<Nodes::NodeLink> &actions)
{
    const qBasicAction *outer = std::exchange(m_executing, nullptr);
    (void)PushActions(actions);
    m_executing = outer;
}

bool WindowManager::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    if (type == QEvent::MouseButtonPress || type == QEvent::KeyPress || type == QEvent::TouchBegin)
        m_hasInput = true;
    if (type == QEvent::MouseButtonPress || type == QEvent::TouchBegin)
        activatePressed(watched);
    if (type != QEvent::KeyPress)
        return false;
    const auto *key = static_cast<QKeyEvent *>(event);
    const bool isZ = key->key() == Qt::Key_Z || key->key() == keyYa;
    if (key->modifiers() == Qt::AltModifier && isZ)
        minimizeAll();
    return false;
}

// Panels often run without a desktop's window manager, and then nobody else gives the keyboard to
// the window that was touched.
void WindowManager::activatePressed(QObject *watched)
{
    const auto *pressed = qobject_cast<QWidget *>(watched);
    QWidget *window = pressed ? pressed->window() : nullptr;
    if (!window || window->isActiveWindow() || window->windowType() == Qt::Popup)
        return;
    // At once for the element that is about to be pressed, and by and by for the display.
    QApplication::setActiveWindow(window);
    window->activateWindow();
}

void WindowManager::minimizeAll() const
{
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window->isVisible())
            window->showMinimized();
    }
}

} // namespace Widgets
