#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/model/NodesArray.h"
#include "nodes/model/links/NodeLink.h"
#include "nodes/values/Result.h"

#include <string>
#include <vector>

namespace Nodes {
class NodesCollection;
class NodesContainer;
} // namespace Nodes

namespace Widgets {

struct PasteReport;

/// Elements on the desktop's clipboard: hexadecimal text of their bytes, and beside it, as a format
/// of its own, where their links lead (LinkPaths), so that other windows, processes and projects
/// can take them. GUI thread.
class WIDGETS_EXPORT ElementClipboard
{
public:
    /// Puts them there; none leave it as it is. `entered` is the group that they were chosen in,
    /// and that they do not take along.
    static void put(const Nodes::NodesCollection &project, const Nodes::NodeLinks &elements,
                    const std::string &entered = {});
    /// That group of those that are there.
    static std::string enteredGroup();
    /// Layer that each of them stood in, by its id; empty when the clipboard does not say.
    static std::vector<unsigned long> sourceLayers();
    static bool hasElements(Nodes::NodesCollection &project);
    /// New nodes of the project, outside of its tree, their links led to what they mean in it;
    /// empty when the clipboard holds none. The report says why, and what needs a look.
    static Nodes::NodesArray take(Nodes::NodesCollection &project, PasteReport &report);
    static Nodes::NodesArray take(Nodes::NodesCollection &project);
    /// Lets go of nodes that the project holds for nobody.
    static void discard(Nodes::NodesCollection &project, const Nodes::NodeLinks &nodes);

private:
    static Nodes::Result read(Nodes::NodesCollection &project, Nodes::NodesContainer &nodes);
};

} // namespace Widgets
