#include "nodes/drivers/standin/StandIn.h"

#include "nodes/drivers/driverStatus.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/values/Clock.h"

namespace Nodes {

void StandIn::Start(const std::vector<BasicSignal *> &signals)
{
    Stop();
    m_points.clear();
    m_places.clear();
    for (const BasicSignal *signal : signals) {
        if (signal->GetOrigin() == SignalOrigin::Process ||
            dynamic_cast<const driverStatus *>(signal))
            continue;
        m_places[signal->GetId()] = m_points.size();
        m_points.push_back({SignalSink(*signal), StandInCurve(*signal), {}});
    }
    m_start = Clock::Current().Steady();
    m_worker.Start(Timestamp(Period) * 1000, [this] { step(); });
}

Result StandIn::Write(const BasicSignal &signal, const SignalValue &value)
{
    const auto found = m_places.find(signal.GetId());
    if (found == m_places.end())
        return Result(&signal, Result::NotConnected, signal.GetName() + " is not simulated");
    const std::lock_guard lock(m_mutex);
    m_points[found->second].written = value;
    return Result();
}

void StandIn::step()
{
    const double seconds = double(Clock::Current().Steady() - m_start) / 1e6;
    const Timestamp now = Clock::Current().Now();
    for (const Point &point : m_points) {
        SignalValue value;
        {
            const std::lock_guard lock(m_mutex);
            value = point.written;
        }
        point.sink.Publish(value.IsEmpty() ? point.curve.At(seconds) : value, now);
    }
}

} // namespace Nodes
