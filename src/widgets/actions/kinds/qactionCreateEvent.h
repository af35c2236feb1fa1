#pragma once

#include "widgets/actions/qBasicAction.h"

namespace Widgets {

/// Has its node put an entry into the event journal.
class qactionCreateEvent : public qBasicAction
{
public:
    using qBasicAction::qBasicAction;
    void Execute() override;
};

} // namespace Widgets
