#pragma once

#include "nodes/NodesExport.h"
#include "nodes/events/EventLevel.h"
#include "nodes/model/BasicNode.h"
#include "nodes/model/NodeState.h"
#include "nodes/model/NodesArray.h"
#include "nodes/values/Connection.h"

#include <atomic>
#include <boost/property_tree/ptree_fwd.hpp>
#include <functional>

namespace Nodes {

class SignalValue;
class ValidationResults;
struct NodeNotifications;

/// A node of the configuration tree: children, life cycle, notifications, validation, journal
/// entries. Children are owned. Tree operations run on the GUI thread; subscribing and publishing
/// are safe on any thread.
class NODES_EXPORT ConfigNode : public BasicNode
{
public:
    ConfigNode();
    ~ConfigNode() override;

    /// Levels of the tree, the root being the first.
    static constexpr int MaximumDepth = 64;

    /// What a drop does with the dropped nodes.
    enum enDropFlags { DropLink = 1, DropCopy = 2 };

    // Children, in order. `recursive` appends all descendants, parents before children.
    NodeLinks GetNodes(bool recursive = false) const;
    ConfigNode *GetNodeAt(int index) const;
    int GetNodeCount() const { return static_cast<int>(m_children.size()); }
    int GetNodeCount(NodeType type) const;
    /// Direct children of a type (family or exact kind).
    std::vector<ConfigNode *> GetObjects(NodeType type) const;
    ConfigNode *GetSubObject(unsigned long id) const;
    ConfigNode *GetSubObject(std::string_view name) const;
    /// Children as the model's own list type.
    NodesArray GetArray() const { return NodesArray(GetNodes()); }
    /// Levels of the subtree: 1 without children.
    int GetHeight() const;
    int IndexOf(const ConfigNode *child) const;
    /// Types that may be created below this node.
    std::vector<NodeType> GetAvailableChildNodes() const;

    // Editing. A node belongs to one parent; adding takes ownership and announces the child.
    /// Duplicate when an id is taken, InvalidArgument when the kind may not stand here or comes
    /// from another project, LimitExceeded when the tree would get deeper than MaximumDepth.
    /// On failure `node` is left untouched in the caller's hands.
    [[nodiscard]] Result AddNode(std::unique_ptr<ConfigNode> &node, int index = -1);
    /// AddNode that takes kinds which may not stand here: for readers and undo, which lose nothing.
    [[nodiscard]] Result AdoptNode(std::unique_ptr<ConfigNode> &node, int index = -1);
    /// Appends a child without checks, index and notifications: for those who build a tree that
    /// nobody sees yet.
    void Append(std::unique_ptr<ConfigNode> child);
    /// Takes all children out of a tree that nobody sees yet.
    std::vector<std::unique_ptr<ConfigNode>> TakeChildren();
    /// Adds the nodes one after the other from `index` on; those taken become null, the others stay
    /// in the caller's hands. Count of nodes taken.
    int AddNodes(std::vector<std::unique_ptr<ConfigNode>> &nodes, int index = -1);
    /// Takes the child out of the tree and the index and hands it over; null when it is no child.
    /// Adding it again restores it with its ids, so links to it work again.
    std::unique_ptr<ConfigNode> RemoveNode(const NodeLink &child);
    /// Moves a child to another place among its siblings or to another parent, with its ids and the
    /// links to it; `index` counts without the child itself, -1 or too large: the last place.
    /// Announced as a child moved, or as one removed and added. Nothing changes on failure:
    /// NotFound when it is no child, Duplicate when the other parent has a child of its name, else
    /// as AddNode.
    [[nodiscard]] Result MoveNode(const NodeLink &child, ConfigNode &parent, int index = -1);
    /// MoveNode back to where a child has stood before, also where neither its kind nor its name
    /// would be taken now: for undo, which loses nothing.
    [[nodiscard]] Result ReturnNode(const NodeLink &child, ConfigNode &parent, int index);
    /// Gives the node a name that a user chose. InvalidArgument when it is empty or has a '/',
    /// Duplicate when a sibling has it: the node then keeps its name.
    [[nodiscard]] Result Rename(std::string name);
    /// RemoveNode of each that is a child, in the order given.
    std::vector<std::unique_ptr<ConfigNode>> RemoveNodes(const NodesArray &children);
    /// Destroys the child. With `references` also removes every link to it in the project; with
    /// `force` it goes even while others refer to it, else that is Refused.
    [[nodiscard]] Result DeleteNode(unsigned long id, bool references = true, bool force = false);
    /// Destroys those of the nodes that stand anywhere below this one, with every link to them;
    /// count of deletions.
    int DeleteNodes(const NodesArray &nodes);
    /// Removes `link` from all link properties of this node; count of properties changed.
    int RemoveLink(const NodeLink &link);
    /// Replaces `from` by `to` in all link properties of this node; count of properties changed.
    int ReplaceLink(const NodeLink &from, const NodeLink &to);
    /// The same, the new target named by its path; 0 when the path names no node.
    int ReplaceLink(const NodeLink &from, const std::string &path);
    /// Removes every link to this node in the whole project; count of properties changed.
    int RemoveReferences();

    /// Whether the nodes may be dropped here: as children (copy) or as input links.
    [[nodiscard]] virtual Result CanDropNodes(const NodesArray &nodes, enDropFlags flags) const;
    [[nodiscard]] Result CanDropNode(const NodeLink &node, enDropFlags flags) const;
    /// Performs the drop; count of nodes taken.
    virtual int DropNodes(const NodesArray &nodes, enDropFlags flags);
    int DropNode(const NodeLink &node, enDropFlags flags);

    // Text forms of the node with its descendants, for the clipboard and templates.
    std::string SerializeXML() const;
    /// Gives this node the name, description and properties of an element of its own kind and
    /// appends the element's children with fresh ids; links among them follow. ParseError or
    /// WrongType leave the node unchanged; what the text has and no kind takes is kept aside.
    [[nodiscard]] Result DeserializeXML(std::string_view xml);
    /// The same as a tree of values: kind, id, name, description, properties, children.
    boost::property_tree::ptree SerializePropTree() const;
    [[nodiscard]] Result DeserializePropTree(const boost::property_tree::ptree &tree);

    // Life. Start and Stop are counted by nobody: the second call is a no-op that succeeds.
    virtual Result Start();
    virtual Result Stop();
    NodeState GetState() const { return {m_state.load(std::memory_order_acquire)}; }
    /// Any thread; announces activity changes between running and not running.
    void SetState(NodeState::StateType state);

    /// Appends what is wrong with this node and, when `nodes` is given, with the nodes listed.
    ValidationResults isValid(const NodesArray *nodes = nullptr) const;
    /// Adds this node's own findings; kinds extend it.
    virtual void Validate(ValidationResults &results) const;

    /// Writes an entry into the system event journal; any thread. The source is a node or a text.
    /// The current user is noted with the levels of what users do: acknowledge, security, action.
    Result StoreMessage(EventLevel level, const std::string &text, const NodeLink &source) const;
    Result StoreMessage(EventLevel level, const std::string &text, const std::string &source) const;
    /// The same with the event type of alarms.
    Result StoreAlarm(EventLevel level, const std::string &text, const NodeLink &source) const;

    // Subscriptions, any thread. Keep the connection (best scoped) no longer than the receiver.
    using PropertySlot = std::function<void(BasicProperty *)>;
    using ValueSlot = std::function<void(const SignalValue &)>;
    using ActivitySlot = std::function<void(bool)>;
    using LinkSlot = std::function<void(NodeLink)>;
    Connection ConnectPropertyChanged(PropertySlot slot);
    Connection ConnectValueChanged(ValueSlot slot);
    Connection ConnectActivityChanged(ActivitySlot slot);
    Connection ConnectChildAdded(LinkSlot slot);
    Connection ConnectChildRemoved(LinkSlot slot);
    /// A child took another place among its siblings.
    Connection ConnectChildMoved(LinkSlot slot);
    /// The name or the description of this node changed; the link is its own.
    Connection ConnectTextChanged(LinkSlot slot);
    /// Hands a value to the subscribers of this node; any thread.
    void NotifyValueChanged(const SignalValue &value) const;
    /// Announces a property to subscribers; null means "re-read everything".
    void NotifyPropertyChanged(BasicProperty *property) override;
    void NotifyTextChanged(bool isName) override;

    const std::vector<std::unique_ptr<ConfigNode>> &Children() const { return m_children; }

protected:
    /// This node has left the tree, alone or with one above: links to it lead nowhere. GUI thread.
    virtual void OnLeftTree() const {}
    /// This node stands in a tree, for the first time or again, and links to it work. GUI thread.
    virtual void OnEnteredTree() const {}

private:
    friend class NodesCollection;
    friend class NodesArray;

    NodeNotifications &notifications();
    NodeNotifications *existingNotifications() const
    {
        return m_notifications.load(std::memory_order_acquire);
    }
    void collect(NodeLinks &links) const;
    void leaveTree() const;
    void enterTree() const;
    std::string freeName(const std::string &wanted, int first) const;
    Result checkAdd(const ConfigNode &node) const;
    Result checkKind(const ConfigNode &node) const;
    Result checkName(const std::string &name, const ConfigNode *except) const;
    bool isIndexed() const;
    // How children come and go, announced; what watches signals is not told.
    Result put(std::unique_ptr<ConfigNode> &node, int index);
    std::unique_ptr<ConfigNode> take(const NodeLink &child);
    void reorder(const NodeLink &child, int index);

    std::vector<std::unique_ptr<ConfigNode>> m_children;
    std::atomic<NodeNotifications *> m_notifications{nullptr};
    std::atomic<NodeState::StateType> m_state{NodeState::Stopped};
};

} // namespace Nodes
