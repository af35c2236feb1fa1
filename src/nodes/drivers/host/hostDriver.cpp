#include "nodes/drivers/host/hostDriver.h"

#include "nodes/alarms/systemAlarming.h"
#include "nodes/archive/systemArchiver.h"
#include "nodes/drivers/SignalSink.h"
#include "nodes/drivers/host/DiskProbe.h"
#include "nodes/drivers/host/HostProbe.h"
#include "nodes/drivers/host/hostSignal.h"
#include "nodes/journal/EventJournal.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/system/systemCore.h"
#include "nodes/values/Clock.h"

#include <optional>

namespace Nodes {

namespace {

struct Measurement
{
    SignalSink sink;
    HostMetric metric;
    std::string target;
    double scale;
};

SignalValue scaled(const SignalValue &value, double scale)
{
    const bool isScaled = scale != 1 && value.IsNumber();
    return isScaled ? SignalValue(value.ToDouble() * scale) : value;
}

/// What the thread works on.
class Sampler
{
public:
    Sampler(std::vector<Measurement> measurements, const systemCore *core)
        : m_measurements(std::move(measurements)),
          m_journal(core ? &core->GetJournal() : nullptr),
          m_alarming(core ? core->GetSystemAlarming() : nullptr),
          m_archiver(core ? core->GetSystemArchiver() : nullptr)
    {
    }

    void Sample()
    {
        HostSnapshot now = HostProbe::Take();
        const Timestamp time = Clock::Current().Now();
        if (m_journal)
            now.journal = m_journal->GetHealth();
        if (m_alarming)
            now.alarmsUnkept = m_alarming->GetHealth().unkept;
        if (m_archiver)
            now.archive = m_archiver->GetHealth();
        for (const Measurement &one : m_measurements) {
            const SignalValue value = measure(one, now);
            if (!value.IsEmpty())
                one.sink.Publish(scaled(value, one.scale), time);
        }
        m_before = std::move(now);
    }

private:
    SignalValue measure(const Measurement &one, const HostSnapshot &now) const
    {
        if (one.metric == HostMetric::DiskUsed)
            return DiskProbe::Shared().Used(one.target.empty() ? "/" : one.target);
        return HostMetrics::Measure(one.metric, one.target, now, m_before ? &*m_before : nullptr);
    }

    std::vector<Measurement> m_measurements;
    const EventJournal *m_journal; // all three outlive the driver's run
    const systemAlarming *m_alarming;
    const systemArchiver *m_archiver;
    std::optional<HostSnapshot> m_before;
};

} // namespace

KindInfo hostDriver::Kind()
{
    return KindBuilder::For<hostDriver>("hostDriver", "This computer", "Этот компьютер")
        .Inherit<BasicDriver>()
        .Property<&hostDriver::m_period>(Prop::Period, "Period, ms", "Период опроса, мс")
        .Range(100, 3600000);
}

Result hostDriver::StartWork()
{
    std::vector<Measurement> measurements;
    for (const BasicSignal *signal : GetSignals()) {
        if (const auto *own = dynamic_cast<const hostSignal *>(signal))
            measurements.push_back(
                {SignalSink(*own), own->GetMetric(), own->GetTarget(), own->GetScale()});
    }
    const auto sampler = std::make_shared<Sampler>(std::move(measurements), GetCore());
    m_worker.Start(Timestamp(m_period) * 1000, [sampler] { sampler->Sample(); });
    PublishStatus(GetStatusCells(), true);
    return Result();
}

void hostDriver::StopWork()
{
    m_worker.Stop();
}

} // namespace Nodes
