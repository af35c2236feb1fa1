#pragma once

#include "nodes/values/Timestamp.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace Nodes {

/// How one store of records is, for whoever watches the station. A copy.
struct StoreHealth
{
    std::size_t waiting = 0;  ///< records in memory only: a crash would lose them
    std::size_t aside = 0;    ///< records in spill files
    std::uint64_t stored = 0; ///< since the start of the process
    std::uint64_t lost = 0;   ///< since the start of the process: refused, there was no room
    Timestamp lastStored = 0; ///< wall time, UTC; 0 never
    /// Wall time since when records do not get into the store; 0: well.
    Timestamp troubledSince = 0;
    Timestamp troubledFor = 0; ///< microseconds since then, whatever the clock was set to
    std::string trouble;       ///< why, in English; "" when well

    bool isWell() const { return troubledSince == 0; }
};

} // namespace Nodes
