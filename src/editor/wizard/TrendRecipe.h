#pragma once

#include "nodes/model/links/NodeLink.h"

namespace Nodes {
class NodesCollection;
}

class QUndoCommand;

namespace Editor {

/// Fills an empty chart with a time axis and the measurements that are archived. GUI thread.
class TrendRecipe
{
public:
    /// Signals in one chart, and axes: more cannot be told apart.
    static constexpr int SeriesAtMost = 8;
    static constexpr int AxesAtMost = 4;

    /// Adds the commands to `group`. Signals of one unit share an axis of their common range;
    /// what goes beyond the limits is left out, the first of the project stay.
    static void fill(Nodes::NodesCollection &project, const Nodes::NodeLink &chart,
                     QUndoCommand *group);
};

} // namespace Editor
