#include "widgets/actions/running/CopiedActions.h"

#include "widgets/actions/qBasicAction.h"
#include "widgets/windows/WindowManager.h"

#include <utility>

namespace Widgets {

CopiedActions::CopiedActions(QVector<qBasicAction *> actions) : m_actions(std::move(actions)) {}

CopiedActions::~CopiedActions()
{
    if (g_pWindowManager)
        g_pWindowManager->queue(m_actions);
    else
        qDeleteAll(m_actions);
}

} // namespace Widgets
