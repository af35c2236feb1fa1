#pragma once

#include "nodes/drivers/host/HostMetrics.h"
#include "nodes/signals/BasicSignal.h"

namespace Nodes {

/// One figure of this machine; stands below a hostDriver. Read only.
class NODES_EXPORT hostSignal : public BasicSignal
{
public:
    static KindInfo Kind();

    HostMetric GetMetric() const { return HostMetric(m_metric); }
    /// Path, block device or network interface, as the metric wants it.
    const std::string &GetTarget() const { return m_target; }

    void Validate(ValidationResults &results) const override;

protected:
    Result DoWrite(const SignalValue &value) override;

private:
    int m_metric = int(HostMetric::None);
    std::string m_target;
};

} // namespace Nodes
