#pragma once

#include "widgets/WidgetsExport.h"

namespace Widgets {

/// Actions that were copied beforehand and are queued when this is destroyed, whatever has become
/// of their nodes, the user and the room in the queue by then: what ends a press. GUI thread.
class WIDGETS_EXPORT OwedActions
{
public:
    virtual ~OwedActions();
};

} // namespace Widgets
