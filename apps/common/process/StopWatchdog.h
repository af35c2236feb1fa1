#pragma once

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>

namespace Host {

/// Ends the process with that exit code, saying so on stderr, when the scope it stands in lasts
/// longer: a disk or a device that hangs must not keep a program from ending.
class StopWatchdog
{
public:
    StopWatchdog(std::chrono::seconds patience, int exitCode);
    ~StopWatchdog();
    StopWatchdog(const StopWatchdog &) = delete;
    StopWatchdog &operator=(const StopWatchdog &) = delete;

private:
    struct State
    {
        std::mutex mutex;
        std::condition_variable ended;
        bool hasEnded = false;
    };

    std::shared_ptr<State> m_state; // shared with the thread that waits
};

} // namespace Host
