#pragma once

#include "nodes/alarms/BasicAlarm.h"
#include "nodes/model/properties/PropertyId.h"

namespace Nodes {

/// Alarm on a number that changes too fast: by at least `limit` a second or minute, as the mean of
/// a window of time. Values that are bad or stale are a gap, across which no rate is known; nor is
/// one until the values after it fill the window.
class NODES_EXPORT alarmRate : public BasicAlarm
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x8004);
    struct Prop : BasicAlarm::Prop
    {
        static constexpr PropertyId<double> Limit{8411, "limit"};
        static constexpr PropertyId<double> Deadband{8412, "deadband"};
        static constexpr PropertyId<int> Direction{8413, "direction"};
        static constexpr PropertyId<int> Window{8414, "window"};
        static constexpr PropertyId<int> Per{8415, "per"};
    };

    enum enDirection { Both = 0, Rising = 1, Falling = 2 };
    enum enPer { Second = 1, Minute = 60 };

    static KindInfo Kind();

    std::unique_ptr<AlarmCondition> MakeCondition() const override;
    void Validate(ValidationResults &results) const override;

private:
    double m_limit = 1;
    double m_deadband = 0;
    int m_direction = Both;
    int m_window = 10; // s
    int m_per = Second;
};

} // namespace Nodes
