#include "apps/common/process/StopWatchdog.h"

#include "apps/common/process/ProgramName.h"

#include <cstdio>
#include <thread>

#include <unistd.h>

namespace Host {

StopWatchdog::StopWatchdog(std::chrono::seconds patience, int exitCode)
    : m_state(std::make_shared<State>())
{
    std::thread([state = m_state, name = ProgramName(), patience, exitCode] {
        std::unique_lock lock(state->mutex);
        if (state->ended.wait_for(lock, patience, [&] { return state->hasEnded; }))
            return;
        std::fprintf(stderr,
                     "%s: something hangs and keeps it from ending; it ends now, after %lld "
                     "s, and what was not written yet is lost\n",
                     name.c_str(), static_cast<long long>(patience.count()));
        ::_exit(exitCode);
    }).detach();
}

StopWatchdog::~StopWatchdog()
{
    const std::lock_guard lock(m_state->mutex);
    m_state->hasEnded = true;
    m_state->ended.notify_all();
}

} // namespace Host
