#pragma once

#include "nodes/alarms/BasicAlarm.h"
#include "nodes/model/properties/PropertyId.h"

namespace Nodes {

/// Alarm on a number that is too far from another: from that of a signal, or from a constant.
class NODES_EXPORT alarmDeviation : public BasicAlarm
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x8005);
    struct Prop : BasicAlarm::Prop
    {
        static constexpr PropertyId<double> Limit{8421, "limit"};
        static constexpr PropertyId<double> Deadband{8422, "deadband"};
        static constexpr PropertyId<int> Direction{8423, "direction"};
        static constexpr PropertyId<NodeLink> Reference{8424, "reference"};
        static constexpr PropertyId<double> SetPoint{8425, "setPoint"};
    };

    enum enDirection { Both = 0, High = 1, Low = 2 };

    static KindInfo Kind();

    /// Without one the constant counts. A reference that is gone is no constant: nothing is judged.
    BasicSignal *GetReference() const override;
    std::unique_ptr<AlarmCondition> MakeCondition() const override;
    void Validate(ValidationResults &results) const override;

private:
    double m_limit = 1;
    double m_deadband = 0;
    int m_direction = Both;
    NodeLink m_reference;
    double m_setPoint = 0;
};

} // namespace Nodes
