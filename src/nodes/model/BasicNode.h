#pragma once

#include "nodes/NodesExport.h"
#include "nodes/model/NodeType.h"
#include "nodes/model/ProjectPlace.h"
#include "nodes/model/links/NodeLink.h"
#include "nodes/model/services/AuthPriv.h"
#include "nodes/values/Result.h"

#include <boost/any.hpp>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Nodes {

class BasicProperty;
class BasicStation;
class ConfigNode;
class ElementGroupProperty;
class EventColorProperties;
class NodesCollection;
class systemCore;
struct KindInfo;
struct ModelServices;
struct PropertyDescriptor;

/// Identity, place in the tree and typed properties of a node. Owned by the node model (by its
/// parent, or by whoever holds a detached copy). Used on the GUI thread, except where a derived
/// class says otherwise.
class NODES_EXPORT BasicNode
{
public:
    virtual ~BasicNode();
    BasicNode(const BasicNode &) = delete;
    BasicNode &operator=(const BasicNode &) = delete;

    /// Unique in the project and stable while it is loaded; 0 never names a node.
    unsigned long GetId() const { return m_id; }
    virtual NodeType GetNodeType() const;
    /// Row of the kinds table this node was made from; never null for nodes made by the model.
    const KindInfo *GetKind() const { return m_kind; }

    /// UTF-8 texts for titles, tooltips and lists.
    const std::string &GetName() const { return m_name; }
    std::string GetShortName() const { return m_name; }
    const std::string &GetDescription() const { return m_description; }
    /// Names from the project's root, separated by '/', without the root's own.
    std::string GetPath() const;
    std::string GetLinkName(enLinkNameType type) const;
    /// Take any text and announce the change; see ConfigNode::Rename for names that users give.
    void SetName(std::string name);
    void SetDescription(std::string description);

    /// Null at the root. A detached copy stands where its original stood, as long as that exists.
    ConfigNode *GetParent() const { return m_parent ? m_parent : originalsParent(); }
    /// Chain from the root to this node, both included.
    std::vector<ConfigNode *> GetPathNodes() const;
    NodeLink GetNodeLink() const { return NodeLink(this); }

    /// Project this node belongs to; null for a node that was never part of one and for one that
    /// outlived its project.
    NodesCollection *GetNodesCollection() const { return m_place ? m_place->project : nullptr; }
    NodesCollection *GetCollection() const { return GetNodesCollection(); }
    /// What the running system does for this node's project; of a node without a project and of a
    /// project that nothing runs all members are null. Any thread.
    const ModelServices &GetServices() const;
    /// Core the project is loaded in; null while it is being built.
    systemCore *GetCore() const;
    /// Station the node belongs to: the nearest one above, else the local one; may be null.
    BasicStation *GetStation() const;
    BasicStation *GetLocalStation() const;
    /// True when the node's station is the one this process runs as.
    bool IsLocal() const;
    /// This node, if it is a station; else null.
    virtual const BasicStation *AsStation() const { return nullptr; }

    /// All properties in the table's order; objects live as long as the node.
    std::vector<BasicProperty *> GetProperties() const;
    /// Null when the kind has no property with that value id.
    BasicProperty *GetPropertyByValueId(unsigned valueId) const;
    /// Properties of the child with that id; empty when there is no such child.
    std::vector<BasicProperty *> GetPropertiesByParent(unsigned long id) const;
    /// Properties that refer to signals: what live data can be bound to.
    std::vector<BasicProperty *> GetInputProperties() const;

    /// Sets a property after checking type, range and choice; notifies when the value changed.
    /// NotFound, WrongType or OutOfRange leave the node unchanged.
    [[nodiscard]] Result SetProperty(unsigned valueId, const boost::any &value);
    /// The same from the text form of project files.
    [[nodiscard]] Result SetPropertyText(std::string_view key, std::string_view text);

    /// Privileges that this node can demand; kinds add their own to viewing and configuring.
    virtual AuthPrivArray GetAvailablePrivs() const;

    /// True when a link property of this node refers to `link`.
    bool IsLinked(const NodeLink &link) const;

    /// Attributes of the project file that no property took: unknown keys and values that did not
    /// read. Kept so that saving loses nothing.
    using Attributes = std::vector<std::pair<std::string, std::string>>;
    const Attributes &GetForeignAttributes() const;
    void AddForeignAttribute(std::string key, std::string value);
    void RemoveForeignAttribute(std::string_view key);

protected:
    BasicNode();

    /// Called after a property took a new value, before subscribers hear of it.
    virtual void OnPropertyChanged(const PropertyDescriptor &descriptor);
    virtual void NotifyPropertyChanged(BasicProperty *property) = 0;
    /// Called after the name or the description took a new text.
    virtual void NotifyTextChanged(bool isName) = 0;

private:
    friend class NodesCollection;
    friend class ConfigNode;
    friend class NodesArray;
    friend class systemCore;
    friend class ElementGroupProperty;
    friend class EventColorProperties;

    struct Rare; // what few nodes have: property objects, foreign attributes, colours, group

    Rare &rare() const;
    ConfigNode *originalsParent() const;
    void setParent(ConfigNode *parent);
    void announce(const PropertyDescriptor &descriptor);

    const KindInfo *m_kind = nullptr;
    unsigned long m_id = 0;
    ConfigNode *m_parent = nullptr;
    const ProjectPlace *m_place = nullptr;
    std::string m_name;
    std::string m_description;
    mutable std::unique_ptr<Rare> m_rare;
};

} // namespace Nodes
