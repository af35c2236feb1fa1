#include "widgets/windows/WindowManager.h"

#include "widgets/Library.h"
#include "widgets/actions/qBasicAction.h"
#include "widgets/actions/running/ActionDispatcher.h"
#include "widgets/actions/running/ActionTeller.h"
#include "widgets/actions/running/WindowManagerWorkerThread.h"
#include "widgets/context/ProcessContext.h"
#include "widgets/windows/AlarmView.h"
#include "widgets/windows/OpenWindows.h"
#include "widgets/windows/WindowBuilder.h"
#include "widgets/windows/desktop/DesktopOrder.h"
#include "widgets/windows/desktop/IdleLogout.h"
#include "widgets/windows/frames/FrameDisplays.h"
#include "widgets/windows/frames/StationFrames.h"

#include "nodes/actions/BasicAction.h"
#include "nodes/alarms/systemAlarming.h"
#include "nodes/auth/systemAuthentication.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/system/systemCore.h"
#include "nodes/system/systemVisualization.h"
#include "nodes/timers/operationTimer.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QScopedValueRollback>

#include <utility>

namespace Widgets {

using Nodes::Result;

namespace {
constexpr int keyYa = 0x042F; // on the key of Z in the Russian layout
} // namespace

WindowManager *g_pWindowManager = nullptr;

WindowManager::WindowManager(Nodes::systemCore *core, QObject *parent)
    : QObject(parent),
      m_core(core),
      m_windows(std::make_unique<OpenWindows>()),
      m_frames(std::make_unique<StationFrames>(*m_windows, this))
{
    qRegisterMetaType<Nodes::BasicEvent>("BasicEvent");
    qRegisterMetaType<Nodes::BasicEvent>();
    qRegisterMetaType<Nodes::operationTimer *>();
    if (QCoreApplication::instance())
        QCoreApplication::instance()->installEventFilter(this);
    g_pWindowManager = this;
    enter();
    m_context = Library::makeContext(core);
    m_actions = std::make_unique<ActionDispatcher>(Library::actionKinds(), core, this);
    connect(m_actions.get(), &ActionDispatcher::copiesFreed, this, &WindowManager::actionsFreed);
    WindowManagerWorkerThread &worker = m_actions->worker();
    connect(&worker, &WindowManagerWorkerThread::ActionExecuted, this,
            &WindowManager::OnActionExecuted);
    connect(&worker, &WindowManagerWorkerThread::coreFinished, qApp, &QCoreApplication::quit);
    new DesktopOrder(this);
    subscribeAlarms();
    subscribeTimers();
    watchUsers();
    subscribeActionRequests();
    worker.start();
}

WindowManager::~WindowManager()
{
    m_gate.close();
    m_connections.clear();
    ActionTeller::instance().dismiss();
    m_actions->stopWorker();
    m_alarms.reset();
    m_windows->destroyAll();
    m_frames->destroyAll();
    leave();
    m_context.reset();
    if (g_pWindowManager == this)
        g_pWindowManager = nullptr;
}

void WindowManager::subscribeAlarms()
{
    Nodes::systemAlarming *alarming = getSystemAlarming();
    if (alarming)
        connect(this, &WindowManager::alarmFired, this, &WindowManager::ReceiveAlarm);
    m_alarms = Library::makeAlarmView(alarming);
    connect(m_alarms.get(), &AlarmView::taken, this, &WindowManager::tellAlarms);
}

void WindowManager::tellAlarms(const std::vector<Nodes::BasicEvent> &alarms)
{
    const QScopedValueRollback<bool> telling(m_isTellingAlarms, true);
    for (const Nodes::BasicEvent &alarm : alarms)
        emit alarmFired(alarm);
}

void WindowManager::ReceiveAlarm(Nodes::BasicEvent event)
{
    if (m_isTellingAlarms)
        return;
    std::unique_ptr<qBasicAction> action = m_alarms->makeAction(event);
    if (!m_actions->pushRequest(action))
        m_alarms->take({std::move(event)});
}

AlarmWindow *WindowManager::GetWindowAlarms()
{
    return m_alarms ? m_alarms->window() : nullptr;
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

void WindowManager::onTimerFinished(Nodes::operationTimer *timer)
{
    m_actions->pushTimer(*timer);
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
        m_actions->noteInput();
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
void WindowManager::minimizeAll()
{
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && !window->graphicsProxyWidget())
            window->showMinimized();
    }
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
