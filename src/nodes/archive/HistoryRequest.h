#pragma once

#include "nodes/model/links/NodeLink.h"
#include "nodes/values/Timestamp.h"

#include <cstddef>

namespace Nodes {

/// Which of several requests that wait is worked on first, signal by signal.
enum class HistoryPriority {
    Shown,     ///< somebody looks at an empty plot
    Background ///< reports, exports
};

/// What is asked of a history. Plain value.
struct HistoryRequest
{
    Timestamp from = 0;        ///< first moment of interest
    Timestamp to = 0;          ///< last one; 0: the present
    NodeLinks nodes;           ///< signals
    std::size_t maxPoints = 0; ///< for each signal, see HistoryColumnBuilder; 0: every sample
    HistoryPriority priority = HistoryPriority::Shown;
};

} // namespace Nodes
