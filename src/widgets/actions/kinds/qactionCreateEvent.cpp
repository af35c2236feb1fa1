#include "widgets/actions/kinds/qactionCreateEvent.h"

namespace Widgets {

void qactionCreateEvent::Execute()
{
    // Where the journal cannot take the entry there is nowhere to tell it either.
    const Nodes::ActingScope acting = act();
    if (const auto *node = nodeAs<Node>())
        (void)node->CreateEvent();
}

} // namespace Widgets
