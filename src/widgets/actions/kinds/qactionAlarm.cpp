#include "widgets/actions/kinds/qactionAlarm.h"

#include "widgets/events/AlarmWindow.h"
#include "widgets/windows/WindowManager.h"

#include <utility>

namespace Widgets {

qactionAlarm::qactionAlarm(Nodes::BasicEvent event)
    : qBasicAction(nullptr), m_event(std::move(event))
{
}

void qactionAlarm::Execute()
{
    if (g_pWindowManager)
        g_pWindowManager->GetWindowAlarms()->ReceiveAlarm(m_event);
}

} // namespace Widgets
