#pragma once

#include "nodes/timers/DeadlineThread.h"
#include "nodes/timers/TimerSchedule.h"

#include <functional>
#include <map>
#include <memory>
#include <mutex>

namespace Nodes {

/// The thread that all operation timers of the process share; runs from the first use to the end of
/// the process.
class TimerService
{
public:
    /// A running timer; ends it when destroyed. From then on `fire` neither runs nor will run,
    /// unless it is `fire` itself that ends the timer.
    class Run
    {
    public:
        ~Run();
        Run(const Run &) = delete;
        Run &operator=(const Run &) = delete;

    private:
        friend class TimerService;
        struct Gate;
        explicit Run(std::shared_ptr<Gate> gate) : m_gate(std::move(gate)) {}

        std::shared_ptr<Gate> m_gate;
    };

    /// Any thread.
    [[nodiscard]] static std::unique_ptr<Run> Start(TimerSchedule schedule,
                                                    std::function<void()> fire);

private:
    using Gate = std::shared_ptr<Run::Gate>;

    TimerService();
    static TimerService &instance();
    void add(const Gate &gate);
    void remove(const Gate &gate);
    Timestamp work();
    Gate takeDue(Timestamp steady);

    std::mutex m_mutex;
    std::multimap<Timestamp, Gate> m_runs; // by the steady time of their next look
    DeadlineThread m_thread;
};

} // namespace Nodes
