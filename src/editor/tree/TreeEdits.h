#pragma once

#include "nodes/model/links/NodeLink.h"

class QString;

namespace Editor {

/// What the rows of a project tree hand edits to. GUI thread.
class TreeEdits
{
public:
    virtual ~TreeEdits() = default;

    /// Whether the project may be changed.
    virtual bool isAllowed() const = 0;
    virtual bool rename(const Nodes::NodeLink &node, const QString &name) = 0;
    virtual bool describe(const Nodes::NodeLink &node, const QString &text) = 0;
    /// Whether the nodes could stand below `parent`, by their kinds and places; as copies they may
    /// even stand below themselves. Names are another matter: the edit tells of those.
    virtual bool takes(const Nodes::NodeLink &parent, const Nodes::NodeLinks &nodes,
                       bool isCopy) const = 0;
    /// Before the child `before`; last without one.
    virtual bool move(const Nodes::NodeLinks &nodes, const Nodes::NodeLink &parent,
                      const Nodes::NodeLink &before) = 0;
    /// Copies under names of their own; links among the nodes follow. The copies.
    virtual Nodes::NodeLinks copyTo(const Nodes::NodeLinks &nodes, const Nodes::NodeLink &parent,
                                    const Nodes::NodeLink &before) = 0;
};

} // namespace Editor
