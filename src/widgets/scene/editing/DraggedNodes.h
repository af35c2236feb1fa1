#pragma once

#include "nodes/model/NodesArray.h"

class QMimeData;

namespace Nodes {
class NodesCollection;
}

namespace Widgets {

/// What is dragged out of the tree of a project.
class DraggedNodes
{
public:
    /// By path, or else by id; those the project has not are left out.
    static Nodes::NodesArray read(const Nodes::NodesCollection &project, const QMimeData &mime);
    /// Whether it comes from there at all.
    static bool isIn(const QMimeData &mime);
};

} // namespace Widgets
