#pragma once

#include "widgets/actions/qBasicAction.h"

namespace Widgets {

/// Has its node give its command; a failure is told.
class qactionNodeCommand : public qBasicAction
{
public:
    using qBasicAction::qBasicAction;
    void Execute() override;
};

} // namespace Widgets
