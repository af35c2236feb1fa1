#include "widgets/actions/kinds/qactionAlarm.h"

#include "widgets/events/AlarmWindow.h"
#include "widgets/windows/DesktopContext.h"

#include <utility>

namespace Widgets {

qactionAlarm::qactionAlarm(Nodes::BasicEvent event)
    : qBasicAction(nullptr), m_event(std::move(event))
{
}

void qactionAlarm::Execute()
{
    if (DesktopContext::current())
        DesktopContext::current()->GetWindowAlarms()->ReceiveAlarm(m_event);
}

} // namespace Widgets
