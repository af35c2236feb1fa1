#include "widgets/actions/kinds/qactionLaunchProcess.h"

#include "widgets/actions/kinds/LaunchedProcesses.h"
#include "widgets/actions/running/ActionDispatcher.h"
#include "widgets/actions/running/Refusals.h"
#include "widgets/windows/DesktopContext.h"

#include "nodes/values/OperatorText.h"

namespace Widgets {

Nodes::Result qactionLaunchProcess::prepare(const Nodes::actionLaunchProcess &node,
                                            Nodes::actionLaunchProcess::Command &command) const
{
    const Nodes::ActingScope acting = act();
    return node.Prepare(command);
}

void qactionLaunchProcess::Execute()
{
    const auto *node = nodeAs<Node>();
    if (!node || !DesktopContext::current())
        return;
    const ActionJournal journal(*node, trigger());
    Nodes::actionLaunchProcess::Command command;
    Nodes::Result result = prepare(*node, command);
    if (result)
        result = LaunchedProcesses::of(DesktopContext::current()->dispatcher())
                     .launch(command, journal, trigger());
    if (!result && result != Nodes::Result::AccessDenied) // that one the model has journalled
        journal.write(Nodes::LevelWarning, "Программа не запущена: " + Nodes::OperatorText(result));
    ShowActionResult(result, node->GetName(), trigger());
}

} // namespace Widgets
