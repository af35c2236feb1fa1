#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Result.h"

namespace Nodes {

struct BasicEvent;

/// Takes what nodes have to report. Any thread; never waits for a disk.
class NODES_EXPORT JournalSink
{
public:
    virtual ~JournalSink() = default;

    /// Success: the entry is taken and will be kept, in the order of the calls.
    virtual Result Append(BasicEvent event) = 0;
};

} // namespace Nodes
