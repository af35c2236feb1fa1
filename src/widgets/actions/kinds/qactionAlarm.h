#pragma once

#include "widgets/actions/qBasicAction.h"

#include "nodes/events/BasicEvent.h"

namespace Widgets {

/// Hands an alarm to the alarm window. It has no node.
class qactionAlarm : public qBasicAction
{
public:
    explicit qactionAlarm(Nodes::BasicEvent event);
    void Execute() override;

private:
    Nodes::BasicEvent m_event;
};

} // namespace Widgets
