#include "widgets/actions/kinds/qactionShowAlarms.h"

#include "widgets/events/AlarmWindow.h"
#include "widgets/windows/WindowManager.h"

#include "nodes/actions/kinds/actionShowAlarms.h"

namespace Widgets {

void qactionShowAlarms::Execute()
{
    if (nodeAs<Nodes::actionShowAlarms>() && g_pWindowManager)
        g_pWindowManager->GetWindowAlarms()->open();
}

} // namespace Widgets
