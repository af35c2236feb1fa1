#pragma once

#include "nodes/drivers/host/HostMetrics.h"

namespace Nodes {

/// Asks the kernel of this machine. Any thread.
namespace HostProbe {

/// Everything HostMetrics reads, now. A file that cannot be read is an empty text.
NODES_EXPORT HostSnapshot Take();
/// Used part of the file system holding `path`, %, as a user without privileges sees it; an error
/// value naming the path and the cause. Waits as long as the file system does: see DiskProbe.
NODES_EXPORT SignalValue DiskUsed(const std::string &path);

} // namespace HostProbe

} // namespace Nodes
