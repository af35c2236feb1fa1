#include "widgets/actions/kinds/qactionExecuteScript.h"

#include "widgets/actions/kinds/RunningScripts.h"
#include "widgets/windows/WindowManager.h"

#include "nodes/actions/kinds/actionExecuteScript.h"

namespace Widgets {

void qactionExecuteScript::Execute()
{
    const auto *node = nodeAs<Nodes::actionExecuteScript>();
    if (node && g_pWindowManager)
        RunningScripts::of(*g_pWindowManager).run(*node, trigger());
}

} // namespace Widgets
