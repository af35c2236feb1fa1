#include "widgets/actions/kinds/qactionShowAlarms.h"

#include "widgets/events/AlarmWindow.h"
#include "widgets/windows/WindowManager.h"

namespace Widgets {

void qactionShowAlarms::Execute()
{
    if (nodeAs<Node>() && g_pWindowManager)
        g_pWindowManager->GetWindowAlarms()->open();
}

} // namespace Widgets
