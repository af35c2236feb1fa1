#pragma once

#include "nodes/drivers/BasicDriver.h"
#include "nodes/drivers/PeriodicWorker.h"
#include "nodes/model/properties/PropertyId.h"

namespace Nodes {

/// Figures of the machine the station runs on, taken once a period from the kernel. A metric that
/// cannot be read makes its own signal Bad, with the reason, until it can be read again.
class NODES_EXPORT hostDriver : public BasicDriver
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x3001);
    struct Prop : BasicDriver::Prop
    {
        static constexpr PropertyId<int> Period{3101, "period"};
    };

    static KindInfo Kind();
    bool ReachesOut() const override { return false; }

protected:
    Result StartWork() override;
    void StopWork() override;

private:
    int m_period = 1000; // ms
    PeriodicWorker m_worker;
};

} // namespace Nodes
