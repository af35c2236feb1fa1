#pragma once

#include "nodes/actions/kinds/actionReport.h"
#include "widgets/actions/qBasicAction.h"

namespace Widgets {

/// Shows a report, prints it or saves it as a file; the two latter go on after the run.
class qactionReport : public qBasicAction
{
public:
    using Node = Nodes::actionReport;

    using qBasicAction::qBasicAction;
    void Execute() override;

private:
    void show(const Nodes::actionReport &node) const;
};

} // namespace Widgets
