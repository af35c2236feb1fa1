#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Timestamp.h"

namespace Nodes {

class SignalValue;

/// Takes every sample that one signal publishes, what is collapsed before a screen included: the
/// entrance of a history. See ValueCell::AddTap.
class NODES_EXPORT SampleTap
{
public:
    virtual ~SampleTap() = default;

    /// `time` is that of the sample: of the value at its source, or of the change where only the
    /// quality changed. Every call has a later one than the call before, see SampleOrder. Runs on
    /// the publishing thread inside the cell: one call at a time, never waits, calls no cell, keeps
    /// a bounded amount and counts what it has to refuse.
    virtual void Offer(Timestamp time, const SignalValue &value) = 0;
};

} // namespace Nodes
