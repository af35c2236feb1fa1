#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/SignalValue.h"

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace Nodes {

/// Asks file systems how full they are without being held by one that hangs, as those of a network
/// do when their server is gone. Each question runs on a thread of its own. While one hangs its
/// mount is asked nothing else, so that no more than one thread a mount is ever lost. Any thread.
class NODES_EXPORT DiskProbe
{
public:
    using Question = std::function<SignalValue(const std::string &path)>;

    /// `patience`: how long an answer is waited for.
    explicit DiskProbe(Question question, std::chrono::milliseconds patience);

    /// The probe of this process: drivers share it, so that starting one again asks no hanging
    /// mount again.
    static DiskProbe &Shared();

    /// HostProbe::DiskUsed, or the error Timeout while the mount hangs.
    SignalValue Used(const std::string &path);

private:
    struct Mount;

    std::shared_ptr<Mount> mountOf(const std::string &path);

    Question m_question;
    std::chrono::milliseconds m_patience;
    std::mutex m_mutex;
    std::map<std::string, std::shared_ptr<Mount>> m_mounts; // by mount point
};

namespace HostMetrics {

/// Mount point that holds an absolute path, by the names in `mounts` (/proc/self/mounts) alone:
/// nothing is asked that could hang, so symbolic links are not followed. "/" when none is listed.
NODES_EXPORT std::string FindMount(std::string_view mounts, const std::string &path);

} // namespace HostMetrics

} // namespace Nodes
