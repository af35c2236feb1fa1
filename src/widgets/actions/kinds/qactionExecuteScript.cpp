#include "widgets/actions/kinds/qactionExecuteScript.h"

#include "widgets/actions/kinds/RunningScripts.h"
#include "widgets/windows/DesktopContext.h"

namespace Widgets {

void qactionExecuteScript::Execute()
{
    const auto *node = nodeAs<Node>();
    if (node && DesktopContext::current())
        RunningScripts::of(DesktopContext::current()->dispatcher()).run(*node, trigger());
}

} // namespace Widgets
