#pragma once

#include "widgets/WidgetsExport.h"

#include <memory>
#include <unordered_map>

namespace Nodes {
class operationTimer;
}

namespace Widgets {

/// Which timers' lists still wait in the queue: a list is not queued again behind itself, or a
/// timer faster than its actions would pile them up without end. GUI thread.
class WIDGETS_EXPORT TimerLists
{
public:
    /// To be held by every action of the timer's list until it starts; null while actions of the
    /// list before have not started, which is journalled once for each timer.
    std::shared_ptr<const void> begin(const Nodes::operationTimer &timer);

private:
    struct List
    {
        std::weak_ptr<const void> waiting;
        bool isTold = false;
    };
    std::unordered_map<unsigned long, List> m_lists; // by the timer
};

} // namespace Widgets
