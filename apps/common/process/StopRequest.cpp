#include "apps/common/process/StopRequest.h"

#include <csignal>

namespace Host {

namespace {

std::atomic<bool> requested{false};
static_assert(std::atomic<bool>::is_always_lock_free, "set from a signal handler");

void request(int signal)
{
    requested = true;
    std::signal(signal, SIG_DFL);
}

} // namespace

void StopRequest::watch()
{
    // Calls that wait are to come back: a read from a pipe would else wait for its writer.
    struct sigaction action = {};
    action.sa_handler = request;
    sigemptyset(&action.sa_mask);
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

const std::atomic<bool> &StopRequest::flag()
{
    return requested;
}

} // namespace Host
