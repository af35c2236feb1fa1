#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/context/ActionTrigger.h"
#include "widgets/windows/DesktopContext.h"
#include "widgets/windows/WidgetLink.h"
#include "widgets/windows/desktop/NotificationGate.h"
#include "widgets/windows/frames/FrameMapping.h"

#include "nodes/events/BasicEvent.h"
#include "nodes/model/links/NodeLink.h"
#include "nodes/system/enWorkMode.h"
#include "nodes/values/Connection.h"
#include "nodes/values/Result.h"
#include "utils/convert/MetaTypes.h"

#include <QObject>
#include <QVector>
#include <QWidget>

#include <memory>
#include <vector>

namespace Nodes {
class BasicAction;
class BasicComposition;
class ConfigNode;
class operationTimer;
class systemAlarming;
class systemCore;
class systemVisualization;
} // namespace Nodes

namespace Widgets {

class ActionDispatcher;
class AlarmView;
class AlarmWindow;
class OpenWindows;
class ProcessContext;
class StationFrames;
class qBasicAction;

/// Owner of what is on screen and entry point of the library: builds the frames, keeps the list of
/// open windows, executes operator actions on the GUI thread, paced by a worker thread. One per
/// process; the core outlives it. GUI thread, except PushAction, PushActions and CreateQAction,
/// which any thread may call. It brings together what does the work: OpenWindows, StationFrames,
/// ActionDispatcher and AlarmView.
class WIDGETS_EXPORT WindowManager : public QObject, public DesktopContext
{
    Q_OBJECT

public:
    /// `core` may be null: windows and actions then work without subsystems.
    explicit WindowManager(Nodes::systemCore *core, QObject *parent = nullptr);
    /// Deletes the frames and windows still open; waits for the worker thread.
    ~WindowManager() override;

    /// Builds every frame of this station, puts it on its display, and shows all in order.
    void Start();

    Nodes::systemCore *getCore() const { return m_core; }
    /// Work mode of the core; 0 without an instance or a core.
    static Nodes::enWorkMode GetWorkMode();
    Nodes::systemAlarming *getSystemAlarming() const;
    Nodes::systemVisualization *getSystemVisualization() const;

    /// Opens the window of a node, not shown, with the current frame as parent; the empty link for
    /// nodes that are neither window, composition nor layer.
    WidgetLink createWindow(Nodes::ConfigNode *node);
    WidgetLink createWindow(Nodes::ConfigNode *node, QWidget *parent);
    /// Builds a frame with its windows, not shown; null when the node is no frame. The caller
    /// owns it.
    QWidget *createFrame(Nodes::ConfigNode *node);

    /// First open window with that id; null when there is none. Screens count from 0.
    QWidget *GetWindow(unsigned long id) const;
    QWidget *GetWindow(unsigned long id, int screen) const;
    QVector<QWidget *> getWindows(unsigned long id, int screen) const;
    /// Of several frames that share a screen the one in front.
    QWidget *getFrame(int screen) const override;
    /// How node coordinates are mapped to that 0-based screen.
    FrameMapping mappingOn(int screen) const override;
    /// Open windows in creation order.
    const QVector<WidgetLink> &windows() const;

    /// True when the window was closed and forgotten; a window that refuses to close stays.
    bool closeWindow(unsigned long id, QWidget *widget);
    /// Closes the windows of that node, or the instances of that template. Displays count from 1;
    /// 0 means that of the active window, a negative one all.
    void closeAllWindow(unsigned long id, int display);
    /// The open windows of that node and instances of that template, displays as before.
    QVector<WidgetLink> windowsOf(unsigned long id, int display) const;

    /// The alarm window, made when first asked for and kept; it need not be visible.
    AlarmWindow *GetWindowAlarms() override;

    /// Actions that may lead to each other, each pushed while the last one ran: more is a list that
    /// pushes itself.
    static constexpr int MaximumChain = 64;

    /// Queue actions to be run once each, in order. Unknown kinds and dead links are dropped.
    /// LimitExceeded, journalled, when the queue is full or the chain too long: nothing of the list
    /// is run then. On the GUI thread they count as an operator's doing, or as that of the action
    /// that runs; on another one as nobody's: links are resolved on the GUI thread then, a moment
    /// later, and what one thread pushes keeps its order.
    Nodes::Result PushAction(Nodes::BasicAction *action);
    Nodes::Result PushActions(std::vector<Nodes::NodeLink> *actions);
    Nodes::Result PushActions(std::vector<Nodes::NodeLink> actions);
    /// The same for whoever knows more of where they come from. GUI thread.
    Nodes::Result PushActions(const std::vector<Nodes::NodeLink> &actions,
                              const ActionTrigger &trigger);
    /// Trigger of what is pushed now for that reason: part of what the action that runs began,
    /// if one does. GUI thread.
    ActionTrigger triggerNow(ActionOrigin origin) const;
    /// Objects of those actions, to be queued later or deleted. GUI thread.
    QVector<qBasicAction *> makeActions(const std::vector<Nodes::NodeLink> &actions,
                                        const ActionTrigger &trigger);
    /// Takes them over whatever the limits say. GUI thread.
    void queue(const QVector<qBasicAction *> &actions);
    /// Action object on a detached copy of the node; null for unknown kinds. The caller owns the
    /// object, the manager its node copy.
    qBasicAction *CreateQAction(Nodes::BasicAction *action);

    /// Judges everything that is open by the rights of the current user, see
    /// ProxyWidget::judgeAccess. Happens by itself when the user changes.
    void judgeAccess();

    /// Lets pending events run, but neither input nor further actions: for actions that have to
    /// show something before they go on. What was handed over meanwhile runs afterwards, in order.
    void letEventsRun();

    /// Hides every window, whoever may close it, then runs what operators and closing windows have
    /// queued, what that queues and the scripts, before the station ends: at most `patience` ms,
    /// with no input and no dialogs. What timers and others piled up is stale and dropped at once,
    /// and what is left after that time too; both are journalled.
    void finishActions(int patience);
    bool isEnding() const override;

    /// Actions queued or running. Any thread.
    int queuedActions() const;
    /// Whether an action is queued or running whose node stands below that one.
    bool hasActionBelow(const Nodes::ConfigNode &node);

    OpenWindows &openWindows() override { return *m_windows; }
    ActionDispatcher &dispatcher() override { return *m_actions; }

    bool eventFilter(QObject *watched, QEvent *event) override;

public slots:
    /// Executes an action that was handed over (state 2); any other is left alone.
    Nodes::Result OnActionExecuted(Widgets::qBasicAction *pAction);

signals:
    void onWidgetAdded(Widgets::WidgetLink link);
    void onWidgetDeleted(Widgets::WidgetLink link);
    /// How an alarm stands now, after the alarm window took it; what was overtaken on the way is
    /// left out. Emitted by others, on any thread, it brings an alarm in by ReceiveAlarm.
    void alarmFired(Nodes::BasicEvent Alarm);
    void timerFinished(Nodes::operationTimer *timer);
    void ChangeComposition(Nodes::BasicComposition *pComposition);
    /// Node copies of finished actions are gone.
    void actionsFreed();

private slots:
    /// Brings one alarm to the alarm window by an action. The station's own come past the
    /// queue.
    void ReceiveAlarm(Nodes::BasicEvent event);
    void onTimerFinished(Nodes::operationTimer *timer);

private:
    void subscribeAlarms();
    void tellAlarms(const std::vector<Nodes::BasicEvent> &alarms);
    void watchUsers();
    void subscribeTimers();
    void subscribeActionRequests();
    static void hideAll();
    static void minimizeAll();
    static void activatePressed(QObject *watched);

    NotificationGate m_gate;
    std::vector<Nodes::ScopedConnection> m_connections;
    Nodes::systemCore *m_core;
    std::unique_ptr<ProcessContext> m_context;
    std::unique_ptr<OpenWindows> m_windows;
    std::unique_ptr<StationFrames> m_frames;
    std::unique_ptr<ActionDispatcher> m_actions;
    std::unique_ptr<AlarmView> m_alarms;
    bool m_isTellingAlarms = false;
};

/// The one window manager; null before it is made and after it is destroyed.
extern WIDGETS_EXPORT WindowManager *g_pWindowManager;

} // namespace Widgets

Q_DECLARE_OPAQUE_POINTER(Nodes::operationTimer *)
Q_DECLARE_METATYPE(Nodes::operationTimer *)
