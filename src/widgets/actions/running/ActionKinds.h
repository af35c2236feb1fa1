#pragma once

namespace Nodes {
class BasicAction;
class NodeType;
} // namespace Nodes

namespace Widgets {

class qBasicAction;

/// Which kinds of action nodes can be run, and by what. Asked on any thread.
class ActionKinds
{
public:
    virtual ~ActionKinds() = default;

    virtual bool knows(const Nodes::NodeType &type) const = 0;
    /// Action object on that node copy, which outlives it; null for kinds that it does not know.
    virtual qBasicAction *create(Nodes::BasicAction *copy) const = 0;
};

} // namespace Widgets
