#pragma once

#include "nodes/NodesExport.h"
#include "nodes/model/BasicCollection.h"
#include "nodes/model/NodesArray.h"
#include "nodes/model/links/NodeLink.h"
#include "nodes/model/services/ModelServices.h"
#include "nodes/values/Connection.h"

#include <algorithm>
#include <atomic>
#include <functional>
#include <memory>
#include <unordered_map>
#include <unordered_set>

namespace Nodes {

class LinkIndex;
class ResourceLink;
struct KindInfo;
struct NodeChange;
struct ProjectPlace;
template <class Argument> class SlotList;

/// A property that refers to something.
struct LinkUse
{
    NodeLink node;
    unsigned valueId = 0;

    bool operator==(const LinkUse &o) const { return node == o.node && valueId == o.valueId; }
};

/// A project: owns the tree from its root and indexes every node of it by id. Built on one thread
/// (a loading thread may do it) and used on the GUI thread from the moment a core adopts it.
class NODES_EXPORT NodesCollection : public BasicCollection
{
public:
    NodesCollection();
    ~NodesCollection() override;

    ConfigNode *GetRoot() const { return m_root.get(); }
    /// Null when no node has that id.
    ConfigNode *FindNode(unsigned long id) const;
    /// Appends every node of that type (family or exact kind) in tree order; count appended.
    int FindNodes(NodeType type, NodeLinks *found) const;
    /// Nodes whose path (names separated by '/') is `path`, in tree order.
    std::vector<ConfigNode *> GetNodesByPath(const std::string &path) const;
    std::size_t GetNodeCount() const { return m_index.size(); }

    /// Makes a node of a registered kind with a fresh id and, unless `parent` is null, adds it
    /// there with a name unique among its siblings. Null when the kind is unknown or not allowed.
    ConfigNode *CreateNode(NodeType type, ConfigNode *parent);
    /// Makes a node that is in no tree yet; `id` 0 takes a fresh one.
    std::unique_ptr<ConfigNode> CreateDetached(const KindInfo &kind, unsigned long id = 0);
    /// Detached deep copies with fresh ids, links among the copied nodes following the copies.
    /// The clones stay owned by this collection until AddNode takes them through TakeClone.
    /// With `adopt` their names are made unique where AddNode inserts them. NotFound when a node
    /// does not exist; nothing is cloned then.
    [[nodiscard]] Result CloneNodes(const NodesArray &nodes, NodesArray &clones, bool adopt);
    /// Null when the link names no clone held here.
    std::unique_ptr<ConfigNode> TakeClone(const NodeLink &clone);
    /// Holds and indexes a detached node until TakeClone. On Duplicate the node is untouched.
    [[nodiscard]] Result HoldClone(std::unique_ptr<ConfigNode> &node, bool renameOnInsert);
    /// Copy of `source` with fresh ids, held until TakeClone. It hangs below `below` for paths and
    /// rights without being one of its children: it is neither shown in the tree nor saved. Links
    /// within it follow; links to an id of `replaced` lead to the node given there instead.
    /// Null when an id is taken.
    ConfigNode *Instantiate(const ConfigNode &source, ConfigNode &below, std::string name,
                            std::unordered_map<unsigned long, unsigned long> replaced);
    /// Roots of the instances.
    std::vector<const ConfigNode *> GetInstances() const;
    /// Id of the node that a node of an instance was copied from; 0 for all other nodes.
    unsigned long GetOriginal(unsigned long id) const;
    /// Changes whenever an instance comes or goes.
    unsigned long GetInstanceRevision() const { return m_instanceRevision; }
    /// True once for a clone whose name is to be made unique by whoever inserts it.
    bool takeRenameMark(unsigned long id) { return m_renameOnInsert.erase(id) != 0; }

    /// Installs the root of a freshly built tree and indexes it. Duplicate names the first id that
    /// occurs twice; the tree is then not installed.
    [[nodiscard]] Result SetRoot(std::unique_ptr<ConfigNode> root);

    systemCore *GetCore() const { return m_services.core; }
    /// What the running system does for this project's nodes; by default nothing. Set before the
    /// project is shown to other threads; what it refers to outlives the project.
    const ModelServices &GetServices() const { return m_services; }
    void SetServices(const ModelServices &services) { m_services = services; }
    /// Directory of the project file; resources are relative to it.
    const std::string &GetDirectory() const { return m_directory; }
    void SetDirectory(std::string directory) { m_directory = std::move(directory); }
    /// Tells this project from all others, also when it is renamed or moved: records name their
    /// source by it. Given when the project is made, kept in its file.
    const std::string &GetUuid() const { return m_uuid; }
    void SetUuid(std::string uuid) { m_uuid = std::move(uuid); }
    /// An id that no node of this project ever had, in this run or before.
    unsigned long NewId() { return ++m_lastId; }
    /// Highest id ever given; kept in the file.
    unsigned long GetLastId() const { return m_lastId; }
    /// Fresh ids are taken above `id` from now on. Ids beyond the limit do not count: a file that
    /// uses the largest one must not push fresh ones out of what files may hold.
    void ReserveIds(unsigned long id)
    {
        if (id < FreshIdLimit)
            m_lastId = std::max(m_lastId, id);
    }
    static constexpr unsigned long FreshIdLimit = 1ul << 52;
    unsigned long GetToken() const { return m_token; }
    const ProjectPlace *GetPlace() const { return m_place; }
    /// Changes whenever a node enters or leaves the tree or takes another place in it: tells
    /// whether what was gathered from the tree is still true. Clones and instances are not in the
    /// tree. Any thread.
    unsigned long GetRevision() const { return m_revision.load(std::memory_order_acquire); }
    /// Whether the node stands in the tree, not just in the index of ids as clones and instances.
    bool IsInTree(const BasicNode &node) const;

    // Who refers to what in the tree, by node id and then by place of the property. Answered from
    // an index that the first question builds, in a walk over the tree, and that follows every
    // change from then on. GUI thread.
    std::vector<LinkUse> FindUses(const NodeLink &target) const;
    /// The file named as it is configured.
    std::vector<LinkUse> FindUses(const ResourceLink &resource) const;
    /// Nodes that refer to any of the ids.
    std::vector<ConfigNode *> FindReferrers(const std::unordered_set<unsigned long> &ids) const;

    /// Hears of every change in the tree, for those who show all of it. GUI thread.
    Connection ConnectChanged(std::function<void(const NodeChange &)> slot);

    // Called by nodes about themselves. Ids of nodes that come and go:
    [[nodiscard]] Result remember(ConfigNode &subtree);
    void forget(ConfigNode &subtree);
    // Nodes that enter or leave the tree, with their links:
    void enter(const ConfigNode &subtree);
    void leave(const ConfigNode &subtree);
    // Another order of nodes of the tree:
    void touch() { ++m_revision; }
    // One node of the tree's links, before and after they change:
    bool hasLinkIndex() const { return m_links != nullptr; }
    void leaveLinks(const BasicNode &node);
    void enterLinks(const BasicNode &node);
    void announce(const BasicNode &node, NodeChange change) const;

    /// Project that bare ids refer into: the last one a core adopted; null without one.
    static NodesCollection *Current();
    static void SetCurrent(NodesCollection *collection);
    /// Null when the project with that token is gone. Any thread.
    static NodesCollection *FromToken(unsigned long token);

private:
    NodesCollection &project() override { return *this; }
    void setUp(ConfigNode &node, const KindInfo &kind, unsigned long id);
    void forgetOne(ConfigNode &node);
    LinkIndex &links() const;
    /// Gives the subtree fresh ids and notes old and new.
    void renumber(ConfigNode &subtree, std::unordered_map<unsigned long, unsigned long> &ids);

    unsigned long m_token;
    ProjectPlace *m_place;
    unsigned long m_lastId = 0;
    unsigned long m_instanceRevision = 0;
    std::string m_uuid;
    std::atomic<unsigned long> m_revision{0};
    ModelServices m_services;
    std::string m_directory;
    std::unordered_map<unsigned long, ConfigNode *> m_index;
    std::unordered_map<unsigned long, std::unique_ptr<ConfigNode>> m_clones;
    std::unordered_set<unsigned long> m_renameOnInsert;
    std::unordered_map<unsigned long, unsigned long> m_originals; ///< by id in the instance
    std::unique_ptr<SlotList<const NodeChange &>> m_changed;      ///< made for the first subscriber
    mutable std::unique_ptr<LinkIndex> m_links;                   ///< made for the first question
    std::unique_ptr<ConfigNode> m_root;
};

} // namespace Nodes
