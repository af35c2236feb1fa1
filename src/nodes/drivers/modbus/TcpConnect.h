#pragma once

#include "nodes/values/Result.h"

#include <atomic>
#include <string>

namespace Nodes {

/// Opens a TCP connection within `timeout` ms, name look-up included; IPv4 and IPv6. The socket
/// does not block and is the caller's to close. NotConnected or Timeout say host, port and cause;
/// Cancelled comes within a twentieth of a second after `cancel` is set.
[[nodiscard]] Result ConnectTcp(const std::string &host, const std::string &port, int timeout,
                                const std::atomic<bool> &cancel, int &socket);

} // namespace Nodes
