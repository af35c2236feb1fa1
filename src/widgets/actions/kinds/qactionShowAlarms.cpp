#include "widgets/actions/kinds/qactionShowAlarms.h"

#include "widgets/events/AlarmWindow.h"
#include "widgets/windows/DesktopContext.h"

namespace Widgets {

void qactionShowAlarms::Execute()
{
    if (nodeAs<Node>() && DesktopContext::current())
        DesktopContext::current()->GetWindowAlarms()->open();
}

} // namespace Widgets
