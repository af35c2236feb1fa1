#include "widgets/actions/qactionRestoreCursor.h"

#include "widgets/actions/CursorOverrides.h"

#include "nodes/actions/actionRestoreCursor.h"

namespace Widgets {

void qactionRestoreCursor::Execute()
{
    if (nodeAs<Nodes::actionRestoreCursor>())
        CursorOverrides::restore();
}

} // namespace Widgets
