#include "widgets/actions/ActionManager.h"

#include "widgets/actions/running/ActionDispatcher.h"
#include "widgets/actions/running/ActionTeller.h"
#include "widgets/actions/running/CopiedActions.h"
#include "widgets/context/SceneContext.h"
#include "widgets/events/AlarmWindow.h"
#include "widgets/scene/ProxyWidget.h"
#include "widgets/windows/DesktopContext.h"
#include "widgets/windows/TemplateInstances.h"
#include "widgets/windows/WindowBasic.h"
#include "widgets/windows/desktop/Screens.h"
#include "widgets/windows/navigation/SourceJump.h"

#include "nodes/actions/IAction.h"
#include "nodes/visual/BasicWidget.h"

#include <QCursor>
#include <QGraphicsScene>
#include <QGraphicsSceneHoverEvent>
#include <QGraphicsSceneMouseEvent>
#include <QGraphicsView>
#include <QMouseEvent>

#include <memory>

namespace Widgets {

using Nodes::NodeLinks;

namespace {

const NodeLinks noActions;

/// The widget that stands on a screen: an embedded one stands on none.
const QWidget *onScreen(const QWidget &widget)
{
    const QWidget *window = widget.window();
    const QGraphicsProxyWidget *host = window->graphicsProxyWidget();
    if (!host || !host->scene() || host->scene()->views().isEmpty())
        return &widget;
    return host->scene()->views().first();
}

} // namespace

/// Owns the one action manager until the process exits.
class ActionManagerDestroyer
{
public:
    ~ActionManagerDestroyer() { delete m_manager; }
    ActionManager &manager()
    {
        if (!m_manager)
            m_manager = new ActionManager;
        return *m_manager;
    }

private:
    ActionManager *m_manager = nullptr;
};

ActionManager::ActionManager() = default;
ActionManager::~ActionManager() = default;

ActionManager &ActionManager::getInstance()
{
    static ActionManagerDestroyer owner;
    return owner.manager();
}

void ActionManager::appendActions(std::vector<Nodes::NodeLink> const &actions)
{
    if (!actions.empty())
        append({actions, std::nullopt});
}

void ActionManager::append(Pending pending)
{
    {
        const QMutexLocker lock(&m_mutex);
        m_pending.append(std::move(pending));
    }
    onPushActions();
}

// Taken out before they are handed on: what is appended meanwhile is passed on by itself, and none
// of it is lost or passed on twice.
void ActionManager::onPushActions()
{
    QVector<Pending> pushed;
    {
        const QMutexLocker lock(&m_mutex);
        pushed.swap(m_pending);
    }
    DesktopContext *desktop = DesktopContext::current();
    if (!desktop)
        return;
    for (const Pending &pending : qAsConst(pushed)) {
        if (pending.trigger)
            (void)desktop->dispatcher().push(pending.actions, *pending.trigger);
        else
            (void)desktop->dispatcher().push(pending.actions);
    }
}

bool ActionManager::eventFilter(QObject *watched, QEvent *event)
{
    if (auto *element = qobject_cast<ProxyWidget *>(watched))
        filterElement(*element, *event);
    else if (auto *window = qobject_cast<WindowBasic *>(watched))
        filterWindow(*window, false, *event);
    else if (auto *owner = qobject_cast<WindowBasic *>(watched->parent()))
        filterWindow(*owner, true, *event);
    return false;
}

void ActionManager::filterElement(ProxyWidget &element, QEvent &event)
{
    const Nodes::BasicWidget *node = element.getNode();
    if (!node)
        return;
    // Most moves of the pointer find no actions: only for others it is worth asking where.
    ActionSink &sink = element.context().actions();
    const auto run = [&](const NodeLinks &actions, const QPoint &point) {
        if (actions.empty())
            return;
        const QGraphicsScene *scene = element.scene();
        const QGraphicsView *view =
            scene && !scene->views().isEmpty() ? scene->views().first() : nullptr;
        const QPointF bottomLeft = element.mapToScene(element.rect().bottomLeft());
        ActionTrigger trigger = sink.triggerAt(
            static_cast<QGraphicsSceneEvent &>(event).widget(),
            view ? view->viewport()->mapToGlobal(view->mapFromScene(bottomLeft)) : point,
            ActionOrigin::Gesture);
        trigger.element = node->GetNodeLink();
        sink.push(actions, trigger);
    };
    switch (event.type()) {
    case QEvent::GraphicsSceneMousePress:
    case QEvent::GraphicsSceneMouseRelease: {
        const auto &mouse = static_cast<QGraphicsSceneMouseEvent &>(event);
        run(getMouseActions(*node, mouse), mouse.screenPos());
        break;
    }
    case QEvent::GraphicsSceneHoverEnter:
    case QEvent::GraphicsSceneHoverMove:
    case QEvent::GraphicsSceneHoverLeave: {
        const auto &hover = static_cast<QGraphicsSceneHoverEvent &>(event);
        run(getHoverActions(*node, hover), hover.screenPos());
        break;
    }
    default:
        break;
    }
}

void ActionManager::filterWindow(WindowBasic &window, bool isChild, QEvent &event)
{
    const Nodes::BasicWindow *node = window.getNode();
    if (!node)
        return;
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
        event.accept();
        if (!isPassedOn(isChild, static_cast<QMouseEvent &>(event)))
            trigger(getMouseActions(*node, static_cast<QMouseEvent &>(event)), &window,
                    static_cast<QMouseEvent &>(event).globalPos());
        break;
    case QEvent::MouseMove:
        if (!isPassedOn(isChild, static_cast<QMouseEvent &>(event)))
            trigger(getHoverActions(*node, event), &window,
                    static_cast<QMouseEvent &>(event).globalPos());
        break;
    case QEvent::Enter:
    case QEvent::Leave:
        if (!isChild)
            trigger(getHoverActions(*node, event), &window, QCursor::pos());
        break;
    default:
        break;
    }
}

// What a window's child leaves unhandled Qt delivers again to the window: the same gesture must not
// run its list twice.
bool ActionManager::isPassedOn(bool isChild, const QMouseEvent &event)
{
    const Gesture gesture{event.type(), event.timestamp(), event.globalPos()};
    const bool isRepeated = !isChild && m_seenOnChild == gesture;
    m_seenOnChild.reset();
    if (isChild)
        m_seenOnChild = gesture;
    return isRepeated;
}

const NodeLinks &ActionManager::getMouseActions(const Nodes::BasicWidget &node,
                                                const QGraphicsSceneMouseEvent &event)
{
    if (event.button() != Qt::LeftButton)
        return noActions;
    return event.type() == QEvent::GraphicsSceneMousePress ? node.GetActionLists().onPress
                                                           : node.GetActionLists().onRelease;
}

const NodeLinks &ActionManager::getMouseActions(const Nodes::BasicWindow &node,
                                                const QMouseEvent &event)
{
    if (event.button() != Qt::LeftButton || event.type() == QEvent::MouseButtonDblClick)
        return noActions;
    return event.type() == QEvent::MouseButtonPress ? node.GetActionLists().onPress
                                                    : node.GetActionLists().onRelease;
}

const NodeLinks &ActionManager::getHoverActions(const Nodes::BasicWidget &node,
                                                const QGraphicsSceneHoverEvent &event)
{
    switch (event.type()) {
    case QEvent::GraphicsSceneHoverEnter:
        return node.GetActionLists().onEnter;
    case QEvent::GraphicsSceneHoverMove:
        return node.GetActionLists().onMove;
    default:
        return node.GetActionLists().onLeave;
    }
}

const NodeLinks &ActionManager::getHoverActions(const Nodes::BasicWindow &node, const QEvent &event)
{
    switch (event.type()) {
    case QEvent::Enter:
        return node.GetActionLists().onEnter;
    case QEvent::MouseMove:
        return node.GetActionLists().onMove;
    default:
        return node.GetActionLists().onLeave;
    }
}

ActionTrigger ActionManager::triggerAt(const QWidget *where, const std::optional<QPoint> &point,
                                       ActionOrigin origin) const
{
    ActionTrigger trigger;
    if (DesktopContext *desktop = DesktopContext::current())
        trigger = desktop->dispatcher().triggerNow(origin);
    trigger.display = ScreenNumber(where ? onScreen(*where) : nullptr);
    trigger.point = point;
    return trigger;
}

void ActionManager::push(const NodeLinks &actions, const ActionTrigger &trigger)
{
    if (actions.empty())
        return;
    for (const Nodes::NodeLink &link : actions) {
        if (auto *action = dynamic_cast<Nodes::IAction *>(link.GetNode()))
            action->setCurrentDisplay(trigger.display.value_or(0));
    }
    append({actions, trigger});
}

bool ActionManager::canJump(const Nodes::NodeLink &source) const
{
    return SourceJump::canJump(source);
}

void ActionManager::jump(const Nodes::NodeLink &source, const QWidget *where)
{
    const Nodes::Result result =
        SourceJump::jump(source, ScreenNumber(where ? onScreen(*where) : nullptr));
    if (result == Nodes::Result::NotFound || result == Nodes::Result::NotAvailable)
        notify(QStringLiteral("Источник не показан ни в одном окне проекта"));
}

void ActionManager::retire(const Nodes::NodeLink &instance)
{
    if (DesktopContext *desktop = DesktopContext::current())
        TemplateInstances::of(desktop->dispatcher()).retire(instance);
    else
        ActionSink::retire(instance);
}

void ActionManager::showAlarms()
{
    if (DesktopContext *desktop = DesktopContext::current())
        desktop->GetWindowAlarms()->open();
}

std::unique_ptr<OwedActions> ActionManager::owe(const NodeLinks &actions,
                                                const ActionTrigger &trigger)
{
    DesktopContext *desktop = DesktopContext::current();
    if (actions.empty() || !desktop)
        return nullptr;
    ActionTrigger release = trigger;
    release.isRelease = true;
    return std::make_unique<CopiedActions>(desktop->dispatcher(), actions, release);
}

void ActionManager::warn(const QString &text)
{
    ActionTeller::instance().warn(text);
}

void ActionManager::notify(const QString &text)
{
    ActionTeller::instance().notify(QStringLiteral("Внимание"), text, std::nullopt);
}

void ActionManager::journalOnce(const Nodes::ConfigNode &node, const std::string &text)
{
    ActionTeller::instance().journalOnce(node, text);
}

} // namespace Widgets
