#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Timestamp.h"

namespace Nodes {

/// Gives the samples of one signal times that are unique and ascending, as a history needs them,
/// whatever clocks do. A sample keeps the time its source gives unless
/// - that lies more than 10 s ahead of this station's clock or more than 1 s before the sample
///   placed last: the clock of the source is wrong or was set, and the time of arrival counts;
/// - it is not after the sample placed last: it is placed 1 us after that.
/// So samples of one instant stay in the order they came in; while this station's own clock is
/// behind, having been set back, they lie 1 us apart until it has caught up. Plain value.
class NODES_EXPORT SampleOrder
{
public:
    /// Time for the sample that its source stamped `source` and that came at `arrival`, both wall
    /// time.
    Timestamp Place(Timestamp source, Timestamp arrival);

private:
    Timestamp m_last = 0;
};

} // namespace Nodes
