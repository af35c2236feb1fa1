#pragma once

#include "nodes/alarms/BasicAlarm.h"
#include "nodes/model/properties/PropertyId.h"

namespace Nodes {

/// Alarm on a value that equals a given one.
class NODES_EXPORT alarmDiscrete : public BasicAlarm
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x8002);
    struct Prop : BasicAlarm::Prop
    {
        static constexpr PropertyId<std::string> Value{8201, "value"};
    };

    static KindInfo Kind();

    std::unique_ptr<AlarmCondition> MakeCondition() const override;

private:
    std::string m_alarmValue = "true";
};

} // namespace Nodes
