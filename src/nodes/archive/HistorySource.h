#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Result.h"

#include <atomic>

namespace Nodes {

class HistoryColumnBuilder;

/// Where the history of one signal is kept. Any thread, several at a time.
class NODES_EXPORT HistorySource
{
public:
    virtual ~HistorySource() = default;

    /// Adds the samples of the builder's span, the one before it and the one behind it, oldest
    /// first. Gives up with Cancelled soon after `isCancelled` is set.
    [[nodiscard]] virtual Result Read(HistoryColumnBuilder &into,
                                      const std::atomic<bool> &isCancelled) const = 0;
};

} // namespace Nodes
