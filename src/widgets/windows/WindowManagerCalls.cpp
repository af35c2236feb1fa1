// What the window manager has done by those who do the work.
#include "widgets/actions/running/ActionDispatcher.h"
#include "widgets/windows/OpenWindows.h"
#include "widgets/windows/WindowBuilder.h"
#include "widgets/windows/WindowManager.h"
#include "widgets/windows/frames/FrameDisplays.h"
#include "widgets/windows/frames/StationFrames.h"

#include "nodes/system/systemCore.h"

#include <utility>

namespace Widgets {

using Nodes::Result;

void WindowManager::Start()
{
    if (m_core && m_core->GetNodesCollection())
        m_frames->start(*m_core->GetNodesCollection());
}

QWidget *WindowManager::createFrame(Nodes::ConfigNode *node)
{
    return m_frames->create(node);
}

QWidget *WindowManager::getFrame(int screen) const
{
    return m_frames->displays().frameOn(screen);
}

FrameMapping WindowManager::mappingOn(int screen) const
{
    return m_frames->displays().mappingOn(screen);
}

WidgetLink WindowManager::createWindow(Nodes::ConfigNode *node)
{
    return createWindow(node, m_frames->current());
}

WidgetLink WindowManager::createWindow(Nodes::ConfigNode *node, QWidget *parent)
{
    return WindowBuilder::open(*m_windows, node, parent);
}

const QVector<WidgetLink> &WindowManager::windows() const
{
    return m_windows->links();
}

QWidget *WindowManager::GetWindow(unsigned long id) const
{
    return m_windows->find(id);
}

QWidget *WindowManager::GetWindow(unsigned long id, int screen) const
{
    return m_windows->find(id, screen);
}

QVector<QWidget *> WindowManager::getWindows(unsigned long id, int screen) const
{
    return m_windows->findAll(id, screen);
}

QVector<WidgetLink> WindowManager::windowsOf(unsigned long id, int display) const
{
    return m_windows->of(id, display);
}

bool WindowManager::closeWindow(unsigned long id, QWidget *widget)
{
    return m_windows->close(id, widget);
}

void WindowManager::closeAllWindow(unsigned long id, int display)
{
    m_windows->closeAll(id, display);
}

void WindowManager::judgeAccess()
{
    WindowBuilder::judgeAccess(*m_windows);
}

Result WindowManager::PushAction(Nodes::BasicAction *action)
{
    return m_actions->push(action);
}

Result WindowManager::PushActions(std::vector<Nodes::NodeLink> *actions)
{
    return actions ? m_actions->push(*actions) : Result();
}

Result WindowManager::PushActions(std::vector<Nodes::NodeLink> actions)
{
    return m_actions->push(std::move(actions));
}

Result WindowManager::PushActions(const std::vector<Nodes::NodeLink> &actions,
                                  const ActionTrigger &trigger)
{
    return m_actions->push(actions, trigger);
}

ActionTrigger WindowManager::triggerNow(ActionOrigin origin) const
{
    return m_actions->triggerNow(origin);
}

QVector<qBasicAction *> WindowManager::makeActions(const std::vector<Nodes::NodeLink> &actions,
                                                   const ActionTrigger &trigger)
{
    return m_actions->makeActions(actions, trigger);
}

void WindowManager::queue(const QVector<qBasicAction *> &actions)
{
    m_actions->queue(actions);
}

qBasicAction *WindowManager::CreateQAction(Nodes::BasicAction *action)
{
    return m_actions->create(action);
}

Result WindowManager::OnActionExecuted(qBasicAction *pAction)
{
    m_actions->execute(*pAction);
    return {};
}

void WindowManager::letEventsRun()
{
    m_actions->letEventsRun();
}

void WindowManager::finishActions(int patience)
{
    m_actions->finish(patience, &WindowManager::hideAll);
}

bool WindowManager::isEnding() const
{
    return m_actions->isEnding();
}

int WindowManager::queuedActions() const
{
    return m_actions->queued();
}

bool WindowManager::hasActionBelow(const Nodes::ConfigNode &node)
{
    return m_actions->hasActionBelow(node);
}

} // namespace Widgets
