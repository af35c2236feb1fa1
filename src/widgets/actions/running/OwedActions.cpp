#include "widgets/actions/running/OwedActions.h"

#include "widgets/actions/qBasicAction.h"
#include "widgets/windows/WindowManager.h"

namespace Widgets {

OwedActions::OwedActions(const Nodes::NodeLinks &actions, ActionTrigger trigger)
{
    trigger.isRelease = true;
    if (g_pWindowManager)
        m_actions = g_pWindowManager->makeActions(actions, trigger);
}

OwedActions &OwedActions::operator=(OwedActions &&other) noexcept
{
    queue();
    m_actions = std::exchange(other.m_actions, {});
    return *this;
}

void OwedActions::queue()
{
    const QVector<qBasicAction *> actions = std::exchange(m_actions, {});
    if (g_pWindowManager)
        g_pWindowManager->queue(actions);
    else
        qDeleteAll(actions);
}

} // namespace Widgets
