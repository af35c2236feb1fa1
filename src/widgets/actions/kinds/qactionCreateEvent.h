#pragma once

#include "nodes/actions/kinds/actionCreateEvent.h"
#include "widgets/actions/qBasicAction.h"

namespace Widgets {

/// Has its node put an entry into the event journal.
class qactionCreateEvent : public qBasicAction
{
public:
    using Node = Nodes::actionCreateEvent;

    using qBasicAction::qBasicAction;
    void Execute() override;
};

} // namespace Widgets
