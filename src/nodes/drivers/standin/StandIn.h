#pragma once

#include "nodes/NodesExport.h"
#include "nodes/drivers/PeriodicWorker.h"
#include "nodes/drivers/SignalSink.h"
#include "nodes/drivers/standin/StandInCurve.h"

#include <map>
#include <mutex>
#include <vector>

namespace Nodes {

class BasicSignal;

/// Takes the place of a driver whose device must not be spoken to: publishes made-up values of all
/// its signals and takes writes as if the device had, so that they are read back. Touches nothing
/// outside this process. Start, Stop and Write on the GUI thread.
class NODES_EXPORT StandIn
{
public:
    static constexpr int Period = 500; ///< ms

    /// Values appear at once. The signals' nodes are not touched from then on.
    void Start(const std::vector<BasicSignal *> &signals);
    void Stop() { m_worker.Stop(); }
    /// NotConnected for a signal that was not there at the start.
    [[nodiscard]] Result Write(const BasicSignal &signal, const SignalValue &value);

private:
    struct Point
    {
        SignalSink sink;
        StandInCurve curve;
        SignalValue written; ///< guarded; empty until the first write
    };

    void step();

    std::vector<Point> m_points;
    std::map<unsigned long, std::size_t> m_places; // by node id
    Timestamp m_start = 0;
    std::mutex m_mutex;
    PeriodicWorker m_worker; // the last: its thread uses the others
};

} // namespace Nodes
