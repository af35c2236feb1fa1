#include "apps/station/StopWatchdog.h"

#include <cstdio>
#include <thread>

#include <unistd.h>

namespace Station {

StopWatchdog::StopWatchdog(std::chrono::seconds patience, int exitCode)
    : m_state(std::make_shared<State>())
{
    std::thread([state = m_state, patience, exitCode] {
        std::unique_lock lock(state->mutex);
        if (state->ended.wait_for(lock, patience, [&] { return state->hasEnded; }))
            return;
        std::fprintf(stderr,
                     "station: something hangs and keeps it from ending; it ends now, after %lld "
                     "s, and what was not written yet is lost\n",
                     static_cast<long long>(patience.count()));
        ::_exit(exitCode);
    }).detach();
}

StopWatchdog::~StopWatchdog()
{
    const std::lock_guard lock(m_state->mutex);
    m_state->hasEnded = true;
    m_state->ended.notify_all();
}

} // namespace Station
