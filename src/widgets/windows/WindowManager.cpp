#include "widgets/windows/WindowManager.h"

#include "widgets/actions/ActionManager.h"
#include "widgets/actions/kinds/qactionAlarm.h"
#include "widgets/actions/qBasicAction.h"
#include "widgets/actions/running/ActionRunner.h"
#include "widgets/actions/running/ActionTeller.h"
#include "widgets/context/ProcessContext.h"
#include "widgets/elements/binding/AlarmWatch.h"
#include "widgets/events/AlarmRelay.h"
#include "widgets/events/AlarmWindow.h"
#include "widgets/windows/WindowManagerWorkerThread.h"
#include "widgets/windows/desktop/DesktopOrder.h"
#include "widgets/windows/desktop/IdleLogout.h"
#include "widgets/windows/frames/FrameDisplays.h"

#include "nodes/actions/BasicAction.h"
#include "nodes/alarms/systemAlarming.h"
#include "nodes/auth/systemAuthentication.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/system/systemCore.h"
#include "nodes/system/systemVisualization.h"
#include "nodes/timers/operationTimer.h"

#include <QApplication>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QTimer>
#include <QWidget>

#include <utility>

namespace Widgets {

namespace {
constexpr int keyYa = 0x042F; // on the key of Z in the Russian layout
} // namespace

WindowManager *g_pWindowManager = nullptr;

WindowManager::WindowManager(Nodes::systemCore *core, QObject *parent)
    : QObject(parent),
      m_frames(new FrameDisplays(this)),
      m_runner(new ActionRunner(this)),
      m_core(core)
{
    qRegisterMetaType<Nodes::BasicEvent>("BasicEvent");
    qRegisterMetaType<Nodes::BasicEvent>();
    qRegisterMetaType<Nodes::operationTimer *>();
    if (QCoreApplication::instance())
        QCoreApplication::instance()->installEventFilter(this);
    g_pWindowManager = this;
    enter();
    ActionManager &actions = ActionManager::getInstance();
    m_context = std::make_unique<ProcessContext>(m_core, actions, actions);
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
    ActionTeller::instance().dismiss();
    m_alarms.reset();
    delete m_worker; // from here on nobody else touches the queue
    m_alarmWindow.reset();
    closeEverything();
    leave();
    m_context.reset();
    if (g_pWindowManager == this)
        g_pWindowManager = nullptr;
}

void WindowManager::subscribeAlarms()
{
    Nodes::systemAlarming *alarming = getSystemAlarming();
    if (!alarming)
        return;
    connect(this, &WindowManager::alarmFired, this, &WindowManager::ReceiveAlarm);
    m_alarms = std::make_unique<AlarmRelay>(*alarming);
    connect(m_alarms.get(), &AlarmRelay::arrived, this, &WindowManager::takeAlarms);
    connect(m_alarms.get(), &AlarmRelay::forgotten, this, [this](const QSet<unsigned long> &ids) {
        if (m_alarmWindow)
            m_alarmWindow->forget(ids);
    });
}

void WindowManager::takeAlarms(const std::vector<Nodes::BasicEvent> &alarms)
{
    GetWindowAlarms()->ReceiveAlarms(alarms);
    AlarmWatch::tell(alarms);
    const QScopedValueRollback<bool> telling(m_isTellingAlarms, true);
    for (const Nodes::BasicEvent &alarm : alarms)
        emit alarmFired(alarm);
}

void WindowManager::ReceiveAlarm(Nodes::BasicEvent event)
{
    if (m_isTellingAlarms)
        return;
    ActionTrigger trigger;
    trigger.origin = trigger.root = ActionOrigin::Request;
    if (!m_queue.hasRoom(trigger, 1)) {
        takeAlarms({event});
        return;
    }
    auto *alarm = new qactionAlarm(std::move(event));
    alarm->setTrigger(trigger);
    m_queue.append({alarm});
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

bool WindowManager::eventFilter(QObject *watched, QEvent *event)
{
    const QEvent::Type type = event->type();
    if (type == QEvent::MouseButtonPress || type == QEvent::KeyPress || type == QEvent::TouchBegin)
        m_runner->noteInput();
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

// Elements embedded in scenes are top-level for Qt, but nobody would restore them.
void WindowManager::minimizeAll() const
{
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && !window->graphicsProxyWidget())
            window->showMinimized();
    }
}

} // namespace Widgets
