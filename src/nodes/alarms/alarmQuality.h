#pragma once

#include "nodes/alarms/BasicAlarm.h"

namespace Nodes {

/// Alarm on a signal that is bad or stale for longer than the on delay, 5 s unless set. A signal
/// that neither had a value nor was given up by its driver yet is neither.
class NODES_EXPORT alarmQuality : public BasicAlarm
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x8003);

    alarmQuality() { SetOnDelay(5000); }
    static KindInfo Kind();

    std::unique_ptr<AlarmCondition> MakeCondition() const override;
};

} // namespace Nodes
