#include "nodes/timers/TimerService.h"

#include "nodes/values/Clock.h"

namespace Nodes {

// Recursive, because a slot may end its own timer.
struct TimerService::Run::Gate
{
    Gate(TimerSchedule timerSchedule, std::function<void()> slot)
        : schedule(timerSchedule), fire(std::move(slot))
    {
    }

    std::recursive_mutex mutex;
    TimerSchedule schedule;
    std::function<void()> fire;
    bool isOpen = true;
};

TimerService::Run::~Run()
{
    {
        const std::lock_guard lock(m_gate->mutex);
        m_gate->isOpen = false;
    }
    instance().remove(m_gate);
}

TimerService::TimerService()
{
    m_thread.Start([this] { return work(); });
}

TimerService &TimerService::instance()
{
    static TimerService service;
    return service;
}

std::unique_ptr<TimerService::Run> TimerService::Start(TimerSchedule schedule,
                                                       std::function<void()> fire)
{
    const Clock &clock = Clock::Current();
    schedule.Begin(clock.Now(), clock.Steady());
    auto gate = std::make_shared<Run::Gate>(schedule, std::move(fire));
    instance().add(gate);
    return std::unique_ptr<Run>(new Run(std::move(gate)));
}

void TimerService::add(const Gate &gate)
{
    {
        const std::lock_guard lock(m_mutex);
        m_runs.emplace(gate->schedule.Deadline(), gate);
    }
    m_thread.Wake();
}

void TimerService::remove(const Gate &gate)
{
    const std::lock_guard lock(m_mutex);
    for (auto run = m_runs.begin(); run != m_runs.end(); ++run) {
        if (run->second == gate) {
            m_runs.erase(run);
            return;
        }
    }
}

TimerService::Gate TimerService::takeDue(Timestamp steady)
{
    const std::lock_guard lock(m_mutex);
    if (m_runs.empty() || m_runs.begin()->first > steady)
        return nullptr;
    Gate gate = m_runs.begin()->second;
    m_runs.erase(m_runs.begin());
    return gate;
}

Timestamp TimerService::work()
{
    const Timestamp wall = Clock::Current().Now();
    const Timestamp steady = Clock::Current().Steady();
    while (const Gate gate = takeDue(steady)) {
        const std::lock_guard lock(gate->mutex);
        if (gate->isOpen && gate->schedule.Poll(wall, steady))
            gate->fire();
        const Timestamp next = gate->schedule.Deadline();
        const std::lock_guard runsLock(m_mutex);
        if (gate->isOpen && next != DeadlineThread::Never)
            m_runs.emplace(next, gate);
    }
    const std::lock_guard lock(m_mutex);
    return m_runs.empty() ? DeadlineThread::Never : m_runs.begin()->first;
}

} // namespace Nodes
