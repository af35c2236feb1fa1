#pragma once

#include "editor/properties/PropertyEdits.h"

namespace Nodes {
struct KindInfo;
}

namespace Editor {

/// Steps that change which children a node has and in which order. Each is whole or not at all and
/// answers "" or why not, in Russian. GUI thread.
class ChildrenSteps
{
public:
    ChildrenSteps(PropertyEdits &edits, const Nodes::NodeLink &parent)
        : m_edits(edits), m_parent(parent)
    {
    }

    QString add(const Nodes::KindInfo &kind);
    /// Copies, in the order of the nodes, right behind the last of them.
    QString duplicate(const Nodes::NodeLinks &nodes);
    QString remove(const Nodes::NodeLinks &nodes);
    /// Moves `nodes`, which follow the order of `all`, by one place among them: -1 up, 1 down.
    QString move(const Nodes::NodeLinks &all, const Nodes::NodeLinks &nodes, int by);

private:
    PropertyEdits &m_edits;
    Nodes::NodeLink m_parent;
};

} // namespace Editor
