#pragma once

#include "nodes/storage/StoreHealth.h"

#include <cstdint>

namespace Nodes {

/// How the archive is. Of `packets` a record is a group of samples. A copy.
struct ArchiveHealth
{
    bool isRecording = false;
    StoreHealth packets;
    std::uint64_t samples = 0; ///< taken since the start of the station
    std::uint64_t lost = 0;    ///< of those
};

} // namespace Nodes
