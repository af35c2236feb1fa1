#pragma once

#include "nodes/drivers/BasicDriver.h"
#include "nodes/drivers/PeriodicWorker.h"
#include "nodes/model/properties/PropertyId.h"

namespace Nodes {

class SignalValue;
class simulatorSignal;

/// Computes its signals from formulas once a period, for demonstrations and trials without a
/// plant. A formula that fails makes its own signal Bad and is journalled once; others go on.
class NODES_EXPORT simulatorDriver : public BasicDriver
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x3002);
    struct Prop : BasicDriver::Prop
    {
        static constexpr PropertyId<int> Period{3201, "period"};
    };

    simulatorDriver();
    ~simulatorDriver() override;

    static KindInfo Kind();
    bool ReachesOut() const override { return false; }

    /// Hands a written value to the next step; NotConnected while the driver does not run.
    Result Write(const BasicSignal &signal, const SignalValue &value) override;

protected:
    Result StartWork() override;
    void StopWork() override;

private:
    class Simulation;

    void addSignal(const simulatorSignal &signal);

    int m_period = 500; // ms
    std::unique_ptr<Simulation> m_simulation;
    PeriodicWorker m_worker;
};

} // namespace Nodes
