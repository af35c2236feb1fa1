#pragma once

#include "nodes/model/NodesArray.h"
#include "nodes/model/links/NodeLink.h"

namespace Nodes {
class NodesCollection;
class NodesContainer;
} // namespace Nodes

namespace Widgets {

/// Elements on the desktop's clipboard: hexadecimal text of their bytes. GUI thread.
class ElementClipboard
{
public:
    /// Puts them there; none leave it as it is.
    static void put(const Nodes::NodesCollection &project, const Nodes::NodeLinks &elements);
    static bool hasElements(Nodes::NodesCollection &project);
    /// New nodes of the project, outside of its tree; empty when the clipboard holds none.
    static Nodes::NodesArray take(Nodes::NodesCollection &project);
    /// Lets go of nodes that the project holds for nobody.
    static void discard(Nodes::NodesCollection &project, const Nodes::NodeLinks &nodes);

private:
    static bool read(Nodes::NodesCollection &project, Nodes::NodesContainer &nodes);
};

} // namespace Widgets
