#pragma once

#include "utils/UtilsExport.h"

#include "nodes/model/FreeNames.h"
#include "nodes/model/links/CutLinks.h"
#include "nodes/model/links/NodeLink.h"
#include "nodes/values/Result.h"

#include <map>
#include <memory>
#include <vector>

namespace Nodes {
class ConfigNode;
}

namespace Utils {

/// Nodes that a command moves between the tree and its own hands as a whole. They come back under
/// their ids, in their order among their siblings and with the links to them. GUI thread.
class UTILS_EXPORT HeldNodes
{
public:
    HeldNodes();
    ~HeldNodes();

    /// Node that insert() puts below `parent`, as the last child the first time.
    void add(const Nodes::NodeLink &node, const Nodes::NodeLink &parent);
    bool isEmpty() const { return m_places.empty(); }
    bool isHolding() const;

    /// Takes the nodes out of the tree. When one is not in it, none is taken.
    [[nodiscard]] Nodes::Result remove();
    /// Puts the nodes into the tree: those held, or clones of their project. One that stands below
    /// its parent already stays there. When one is refused, none is inserted and each is again
    /// where it was.
    [[nodiscard]] Nodes::Result insert();

private:
    struct Place
    {
        Nodes::NodeLink node;
        Nodes::NodeLink parent;
        int index = -1;
        bool isClone = false; ///< belongs to the project's clones until it is in the tree
        std::unique_ptr<Nodes::ConfigNode> held;
    };

    static Nodes::Result locate(Place &place);
    Nodes::Result insertOne(Place &place, bool &isInserted);
    void takeClone(Place &place, const Nodes::ConfigNode &parent);
    static void giveBack(Place &place);
    Nodes::Result insertAll();

    std::vector<Place> m_places;
    Nodes::CutLinks m_links;
    std::map<const Nodes::ConfigNode *, Nodes::FreeNames> m_names; // while clones are inserted
};

} // namespace Utils
