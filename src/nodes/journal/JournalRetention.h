#pragma once

#include "nodes/values/Timestamp.h"

#include <cstdint>

namespace Nodes {

/// How long a journal keeps its entries. The newest thousand are kept in any case.
struct JournalRetention
{
    Timestamp maximumAge = 0;       ///< microseconds; 0: whatever their age
    std::uint64_t maximumBytes = 0; ///< of what is in use of the file; 0: whatever its size

    bool isNeeded() const { return maximumAge > 0 || maximumBytes > 0; }
};

} // namespace Nodes
