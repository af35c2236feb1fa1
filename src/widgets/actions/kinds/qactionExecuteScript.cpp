#include "widgets/actions/kinds/qactionExecuteScript.h"

#include "widgets/actions/kinds/RunningScripts.h"
#include "widgets/windows/WindowManager.h"

namespace Widgets {

void qactionExecuteScript::Execute()
{
    const auto *node = nodeAs<Node>();
    if (node && g_pWindowManager)
        RunningScripts::of(*g_pWindowManager).run(*node, trigger());
}

} // namespace Widgets
