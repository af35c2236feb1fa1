#include "widgets/actions/kinds/qactionReport.h"

#include "widgets/actions/kinds/RunningReports.h"
#include "widgets/actions/running/Refusals.h"
#include "widgets/reports/display/ReportDialog.h"
#include "widgets/windows/DesktopContext.h"

#include "nodes/model/services/AccessCheck.h"

namespace Widgets {

void qactionReport::Execute()
{
    const auto *node = nodeAs<Node>();
    if (!node || !DesktopContext::current())
        return;
    const Nodes::BasicReport *wanted = node->GetReport();
    if (!wanted)
        return report(Nodes::Result(node, Nodes::Result::NotFound, "report"));
    bool isForbidden = false;
    {
        const Nodes::ActingScope acting = act();
        isForbidden = Nodes::IsForbiddenToView(*wanted);
    }
    if (isForbidden)
        return ShowAccessDenied(trigger());
    if (node->GetCommand() == Nodes::actionReport::CommandShow)
        show(*node);
    else
        RunningReports::of(DesktopContext::current()->dispatcher()).run(*node, trigger());
}

// Who presses again is shown the window that is up, with the data of now.
void qactionReport::show(const Nodes::actionReport &node) const
{
    DialogRequest request;
    request.display = targetDisplay(0);
    request.parent = DesktopContext::current()->getFrame(*request.display);
    ReportDialog::open(request, node.GetId(), node.GetReport()->GetNodeLink(),
                       {node.GetPeriod(), node.IsPrevious()}, node.GetVariables());
}

} // namespace Widgets
