#pragma once

#include "widgets/actions/qBasicAction.h"

namespace Widgets {

/// Starts the program of its node, if the current user may; a failure is told.
class qactionLaunchProcess : public qBasicAction
{
public:
    using qBasicAction::qBasicAction;
    void Execute() override;
};

} // namespace Widgets
