#include "widgets/actions/kinds/qactionRestoreCursor.h"

#include "widgets/actions/kinds/CursorOverrides.h"

#include "nodes/actions/kinds/actionRestoreCursor.h"

namespace Widgets {

void qactionRestoreCursor::Execute()
{
    if (nodeAs<Nodes::actionRestoreCursor>())
        CursorOverrides::restore();
}

} // namespace Widgets
