#pragma once

#include "nodes/alarms/BasicAlarm.h"
#include "nodes/model/properties/PropertyId.h"

namespace Nodes {

/// Alarm on a number that reaches a limit.
class NODES_EXPORT alarmLimit : public BasicAlarm
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x8001);
    struct Prop : BasicAlarm::Prop
    {
        static constexpr PropertyId<int> Type{8101, "type"};
        static constexpr PropertyId<double> Limit{8102, "limit"};
        static constexpr PropertyId<double> Deadband{8103, "deadband"};
    };

    enum LimitType { HighHigh = 1, High = 2, Low = 3, LowLow = 4 };

    static KindInfo Kind();

    LimitType GetLimitType() const { return LimitType(m_type); }
    double GetLimit() const { return m_limit; }
    /// How far the value must come back from the limit before the alarm returns, in its own units.
    double GetDeadband() const { return m_deadband; }

    std::unique_ptr<AlarmCondition> MakeCondition() const override;
    void Validate(ValidationResults &results) const override;

private:
    int m_type = High;
    double m_limit = 0;
    double m_deadband = 0;
};

} // namespace Nodes
