#include "nodes/values/Clock.h"

#include <atomic>
#include <chrono>

namespace Nodes {

namespace {

template <class Source> Timestamp microseconds()
{
    const auto sinceOrigin = Source::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::microseconds>(sinceOrigin).count();
}

class SystemClock : public Clock
{
public:
    Timestamp Now() const override { return microseconds<std::chrono::system_clock>(); }
    Timestamp Steady() const override { return microseconds<std::chrono::steady_clock>(); }
};

const SystemClock systemClock;
std::atomic<const Clock *> installed{nullptr};

} // namespace

const Clock &Clock::Current()
{
    const Clock *clock = installed.load(std::memory_order_acquire);
    return clock ? *clock : systemClock;
}

void Clock::Install(const Clock *clock)
{
    installed.store(clock, std::memory_order_release);
}

} // namespace Nodes
