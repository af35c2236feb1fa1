#pragma once

#include <atomic>

namespace Host {

/// Lets a tool end in order at SIGINT and SIGTERM: work under way looks at the flag. A second
/// signal ends the process at once.
class StopRequest
{
public:
    /// From now on. Before any thread is started.
    static void watch();
    static bool isMade() { return flag(); }
    static const std::atomic<bool> &flag();
};

} // namespace Host
