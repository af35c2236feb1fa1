#pragma once

namespace Nodes {

/// Run state of a node.
struct NodeState
{
    enum StateType {
        Finished = -2, ///< an executed action; a stopped core
        Failed = -1,
        Stopped = 0,
        Starting = 1,
        Running = 2
    };

    StateType type = Stopped;

    bool operator==(StateType other) const { return type == other; }
    bool operator!=(StateType other) const { return type != other; }
};

} // namespace Nodes
