#pragma once

#include "nodes/alarms/BasicAlarm.h"
#include "nodes/model/properties/PropertyId.h"

#include <cstdint>
#include <optional>

namespace Nodes {

/// Alarm on bits of a whole number: those of `mask` are as in `pattern`, or without a pattern any
/// of them is set. Both are written as decimal or hexadecimal numbers ("0x0C").
class NODES_EXPORT alarmBits : public BasicAlarm
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x8006);
    struct Prop : BasicAlarm::Prop
    {
        static constexpr PropertyId<std::string> Mask{8431, "mask"};
        static constexpr PropertyId<std::string> Pattern{8432, "pattern"};
    };

    static KindInfo Kind();

    std::unique_ptr<AlarmCondition> MakeCondition() const override;
    void Validate(ValidationResults &results) const override;

private:
    std::string m_mask;
    std::string m_pattern;
};

} // namespace Nodes
