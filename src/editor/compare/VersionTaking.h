#pragma once

#include "nodes/model/links/NodeLink.h"
#include "nodes/project/NodeDifference.h"
#include "nodes/project/NodePairs.h"

#include <QStringList>

#include <memory>
#include <unordered_map>
#include <unordered_set>
#include <vector>

class QUndoCommand;

namespace Nodes {
struct PropertyDescriptor;
}

namespace Utils {
class CommandGroup;
}

namespace Editor {

/// Makes the open project what another version of it is, as far as asked: one step of the history,
/// which is made once. Links lead to the nodes that stand for those of the other version, also to
/// such as are taken in the same step. The projects outlive the object. GUI thread.
class VersionTaking
{
public:
    /// Differences are those from `other` to `open`.
    VersionTaking(const Nodes::NodesCollection &other, Nodes::NodesCollection &open);

    /// A node as a whole: it comes, goes, moves, takes over all properties that differ.
    void take(const Nodes::NodeDifference &difference);
    /// One property of a node that both have.
    void take(const Nodes::NodeDifference &difference, const Nodes::PropertyDifference &property);

    /// The caller's; null when nothing is left to do.
    QUndoCommand *make();
    /// Russian, a line for each thing that could not be taken or needs a look; complete after
    /// make().
    const QStringList &remarks() const { return m_remarks; }

private:
    struct Place
    {
        const Nodes::ConfigNode *theirs;
        int depth;
        int order; ///< among all nodes of the other version
    };

    void copyMissing();
    std::unique_ptr<Nodes::ConfigNode> copyOf(const Nodes::ConfigNode &theirs);
    void noteFile(const Nodes::PropertyDescriptor &d, const Nodes::ConfigNode &theirs);
    void relinkCopies();
    void placeNodes(Utils::CommandGroup &step);
    void placeNode(const Nodes::ConfigNode &theirs, Utils::CommandGroup &step);
    void setProperty(const Nodes::NodeDifference &difference,
                     const Nodes::PropertyDifference &property, Utils::CommandGroup &step);
    void removeSurplus(Utils::CommandGroup &step);
    /// What stands here for a node of the other version; empty for none.
    Nodes::NodeLink counterpart(const Nodes::ConfigNode *theirs) const;
    /// The value that a link property of the other version's node has here.
    Nodes::NodeLinks linksOf(const Nodes::NodeLinks &links, const Nodes::ConfigNode &theirs,
                             const std::string &property);
    /// The next sibling there that stands below that parent here, and stays there.
    Nodes::NodeLink nextOf(const Nodes::ConfigNode &theirs, const Nodes::NodeLink &parent) const;
    bool holdsOthers(const Nodes::ConfigNode &surplus) const;

    const Nodes::NodesCollection &m_other;
    Nodes::NodesCollection &m_open;
    Nodes::NodePairs m_pairs;                         // from the other version to the open one
    std::vector<const Nodes::ConfigNode *> m_missing; // roots of what is only there
    std::vector<Nodes::NodeLink> m_surplus;           // roots of what is only here
    std::unordered_set<const Nodes::ConfigNode *> m_placed; // of the other version
    std::vector<std::pair<Nodes::NodeDifference, Nodes::PropertyDifference>> m_properties;
    std::unordered_map<const Nodes::ConfigNode *, Nodes::NodeLink> m_copies;
    std::size_t m_count = 0;
    bool m_isSameProject; // a number means the same node in both
    QString m_name;       // of the first node
    QStringList m_remarks;
};

} // namespace Editor
