#include "widgets/actions/running/CopiedActions.h"

#include "widgets/actions/qBasicAction.h"

namespace Widgets {

CopiedActions::CopiedActions(ActionDispatcher &dispatcher, const Nodes::NodeLinks &actions,
                             const ActionTrigger &trigger)
    : m_dispatcher(&dispatcher), m_actions(dispatcher.makeActions(actions, trigger))
{
}

CopiedActions::~CopiedActions()
{
    if (m_dispatcher)
        m_dispatcher->queue(m_actions);
    else
        qDeleteAll(m_actions);
}

} // namespace Widgets
