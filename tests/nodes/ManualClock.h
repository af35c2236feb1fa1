#pragma once

#include "nodes/timers/DeadlineThread.h"
#include "nodes/values/Clock.h"

#include <atomic>

/// Clock that stands still until a test moves it; sleeping timers hear of every move. Installed
/// from first use to the end of the process, because timer threads read it that long.
class ManualClock : public Nodes::Clock
{
public:
    static constexpr Nodes::Timestamp second = 1000000;

    static ManualClock &Use()
    {
        static ManualClock clock;
        Install(&clock);
        return clock;
    }
    Nodes::Timestamp Now() const override { return m_wall; }
    Nodes::Timestamp Steady() const override { return m_steady; }
    void Advance(Nodes::Timestamp microseconds)
    {
        m_wall += microseconds;
        m_steady += microseconds;
        Nodes::DeadlineThread::WakeAll();
    }
    /// Somebody sets the clock of the computer.
    void SetBack(Nodes::Timestamp microseconds) { m_wall -= microseconds; }

private:
    ManualClock() = default;

    std::atomic<Nodes::Timestamp> m_wall{1700000000 * second};
    std::atomic<Nodes::Timestamp> m_steady{1000 * second};
};
