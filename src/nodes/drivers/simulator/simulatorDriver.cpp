#include "nodes/drivers/simulator/simulatorDriver.h"

#include "nodes/drivers/SignalSink.h"
#include "nodes/drivers/simulator/SimulatorEngine.h"
#include "nodes/drivers/simulator/simulatorSignal.h"
#include "nodes/model/ConfigNodeJournal.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/values/Clock.h"

#include <map>
#include <mutex>

namespace Nodes {

/// What the thread works on; filled before it starts.
class simulatorDriver::Simulation
{
public:
    explicit Simulation(SimulatorEngine::Report report) : m_engine(std::move(report)) {}

    void Add(const BasicSignal &signal, SimulatedSignal simulated)
    {
        m_indices[signal.GetId()] = m_engine.Add(std::move(simulated));
        m_sinks.emplace_back(signal);
    }

    /// Any thread. False when the signal was not there when the driver started.
    bool Write(unsigned long id, const SignalValue &value)
    {
        const auto found = m_indices.find(id);
        if (found == m_indices.end())
            return false;
        const std::lock_guard lock(m_mutex);
        m_written[found->second] = value;
        return true;
    }

    void Abort() { m_engine.Abort(); }

    void Step()
    {
        applyWrites();
        const Timestamp steady = Clock::Current().Steady();
        if (m_start == 0)
            m_start = m_last = steady;
        const bool isDone =
            m_engine.Step(double(steady - m_start) / 1e6, double(steady - m_last) / 1e6);
        m_last = steady;
        if (isDone)
            publish(Clock::Current().Now());
    }

private:
    void applyWrites()
    {
        std::map<std::size_t, SignalValue> written;
        {
            const std::lock_guard lock(m_mutex);
            written.swap(m_written);
        }
        for (const auto &[index, value] : written)
            m_engine.Write(index, value);
    }

    void publish(Timestamp time) const
    {
        for (std::size_t i = 0; i < m_sinks.size(); ++i)
            m_sinks[i].Publish(m_engine.GetOutcome(i), time);
    }

    SimulatorEngine m_engine;
    std::vector<SignalSink> m_sinks;
    std::map<unsigned long, std::size_t> m_indices; // by node id
    Timestamp m_start = 0;
    Timestamp m_last = 0;
    std::mutex m_mutex;
    std::map<std::size_t, SignalValue> m_written;
};

simulatorDriver::simulatorDriver() = default;

simulatorDriver::~simulatorDriver()
{
    if (m_simulation)
        StopWork();
}

KindInfo simulatorDriver::Kind()
{
    return KindBuilder::For<simulatorDriver>("simulatorDriver", "Simulator", "Имитатор")
        .Inherit<BasicDriver>()
        .Property<&simulatorDriver::m_period>(Prop::Period, "Period, ms", "Период расчёта, мс")
        .Range(10, 3600000);
}

void simulatorDriver::addSignal(const simulatorSignal &signal)
{
    SimulatedSignal simulated;
    simulated.node = signal.GetNodeLink();
    simulated.path = signal.GetPath();
    const std::string prefix = GetPath().empty() ? "" : GetPath() + "/";
    simulated.relativePath = simulated.path.substr(prefix.size());
    simulated.formula = signal.GetFormula();
    simulated.type = signal.GetValueType();
    simulated.initial = signal.GetInitialValue();
    m_simulation->Add(signal, std::move(simulated));
}

Result simulatorDriver::StartWork()
{
    m_simulation =
        std::make_unique<Simulation>([this](const SimulatedSignal &signal, const Result &error) {
            BasicEvent event =
                error ? EventAt(NodeLink(), LevelInformation, "Формула снова вычисляется")
                      : EventAt(NodeLink(), LevelWarning, "Ошибка формулы: " + error.GetDetail());
            event.source = signal.path;
            event.sourceNode = signal.node;
            (void)StoreEvent(*this, std::move(event));
        });
    for (const BasicSignal *signal : GetSignals()) {
        if (const auto *own = dynamic_cast<const simulatorSignal *>(signal))
            addSignal(*own);
    }
    Simulation *simulation = m_simulation.get();
    m_worker.Start(Timestamp(m_period) * 1000, [simulation] { simulation->Step(); });
    PublishStatus(GetStatusCells(), true);
    return Result();
}

void simulatorDriver::StopWork()
{
    m_simulation->Abort();
    m_worker.Stop();
    m_simulation.reset();
}

Result simulatorDriver::Write(const BasicSignal &signal, const SignalValue &value)
{
    if (!m_simulation || !m_simulation->Write(signal.GetId(), value))
        return Result(this, Result::NotConnected, GetName() + " does not run " + signal.GetName());
    return Result();
}

} // namespace Nodes
