#include "widgets/actions/kinds/qactionRestoreCursor.h"

#include "widgets/actions/kinds/CursorOverrides.h"

namespace Widgets {

void qactionRestoreCursor::Execute()
{
    if (nodeAs<Node>())
        CursorOverrides::restore();
}

} // namespace Widgets
