#pragma once

#include "nodes/NodesExport.h"
#include "nodes/model/NodesArray.h"
#include "nodes/values/Result.h"

#include <boost/any.hpp>

#include <string>
#include <vector>

namespace Nodes {

/// Links into a part of the tree that goes, taken out of the rest of the project and remembered, so
/// that they can come back with it. GUI thread.
class NODES_EXPORT CutLinks
{
public:
    /// Removes the links to `nodes` and to what stands below them from all other nodes of their
    /// project, announcing each property that changes. The nodes must still be in the tree.
    void Cut(const NodesArray &nodes);
    /// Gives each of those properties the value it had and forgets them. Goes on after a failure
    /// and returns the first: NotFound when a node that referred is gone, Refused when the property
    /// was set since, which is left as it is.
    [[nodiscard]] Result Restore();

private:
    struct Kept
    {
        NodeLink node;
        unsigned valueId;
        boost::any value;
        std::string left; ///< text of what the cut left
    };

    std::vector<Kept> m_kept;
};

} // namespace Nodes
