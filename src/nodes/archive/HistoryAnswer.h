#pragma once

#include "nodes/archive/HistoryColumn.h"

#include <memory>
#include <vector>

namespace Nodes {

/// Answer to a request for history. Never changed, handed around as a pointer; any thread.
struct HistoryAnswer
{
    Result result; ///< Cancelled where the history was closed before all was read
    /// One for each signal, in the order asked for; never null. What went wrong with one signal
    /// stands in its column.
    std::vector<std::shared_ptr<const HistoryColumn>> columns;
};

} // namespace Nodes
