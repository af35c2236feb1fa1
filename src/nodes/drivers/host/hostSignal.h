#pragma once

#include "nodes/drivers/host/HostMetrics.h"
#include "nodes/model/properties/PropertyId.h"
#include "nodes/signals/BasicSignal.h"

namespace Nodes {

/// One figure of this machine; stands below a hostDriver. Read only.
class NODES_EXPORT hostSignal : public BasicSignal
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x5002);
    struct Prop : BasicSignal::Prop
    {
        static constexpr PropertyId<int> Metric{5201, "metric"};
        static constexpr PropertyId<std::string> Target{5202, "target"};
        static constexpr PropertyId<double> Scale{5203, "scale"};
    };

    static KindInfo Kind();

    HostMetric GetMetric() const { return HostMetric(m_metric); }
    /// Path, block device or network interface, as the metric wants it.
    const std::string &GetTarget() const { return m_target; }
    /// Factor from the metric's own unit (bytes, seconds, percent) to the signal's.
    double GetScale() const { return m_scale; }

    void Validate(ValidationResults &results) const override;

private:
    int m_metric = int(HostMetric::None);
    std::string m_target;
    double m_scale = 1;
};

} // namespace Nodes
