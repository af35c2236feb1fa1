#pragma once

#include "nodes/actions/kinds/actionShowAlarms.h"
#include "widgets/actions/qBasicAction.h"

namespace Widgets {

/// Brings the alarm window up, unless the project switches that window off.
class qactionShowAlarms : public qBasicAction
{
public:
    using Node = Nodes::actionShowAlarms;

    using qBasicAction::qBasicAction;
    void Execute() override;
};

} // namespace Widgets
