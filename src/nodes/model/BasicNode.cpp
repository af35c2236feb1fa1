#include "nodes/model/BasicNode.h"

#include "nodes/model/BasicNodeRare.h"
#include "nodes/model/ChangeBatch.h"
#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindInfo.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/services/ModelServices.h"
#include "nodes/model/services/StationFinder.h"

#include <algorithm>

namespace Nodes {

namespace {

/// Keeps the project's index of links true while a property takes another value.
class LinksChange
{
public:
    LinksChange(const BasicNode &node, const PropertyDescriptor &descriptor) : m_node(node)
    {
        const PropertyType type = descriptor.binding.type;
        const bool refers = type == PropertyType::Link || type == PropertyType::Links ||
                            type == PropertyType::Resource;
        NodesCollection *project = refers ? node.GetNodesCollection() : nullptr;
        if (!project || !project->hasLinkIndex() || !project->IsInTree(node))
            return;
        m_project = project;
        m_project->leaveLinks(m_node);
    }
    ~LinksChange()
    {
        if (m_project)
            m_project->enterLinks(m_node);
    }
    LinksChange(const LinksChange &) = delete;
    LinksChange &operator=(const LinksChange &) = delete;

private:
    const BasicNode &m_node;
    NodesCollection *m_project = nullptr;
};

// The node may have left its project since: nobody shows it then.
void tellChange(const ChangeBatch::Change &change)
{
    const NodesCollection *project = NodesCollection::FromToken(change.project);
    ConfigNode *node = project ? project->FindNode(change.node) : nullptr;
    if (node)
        node->NotifyPropertyChanged(
            change.valueId == 0 ? nullptr : node->GetPropertyByValueId(change.valueId));
}

} // namespace

BasicNode::BasicNode() = default;
BasicNode::~BasicNode() = default;

BasicNode::Rare &BasicNode::rare() const
{
    if (!m_rare)
        m_rare = std::make_unique<Rare>();
    return *m_rare;
}

ConfigNode *BasicNode::originalsParent() const
{
    return m_rare ? m_rare->originalsParent.GetNode() : nullptr;
}

void BasicNode::setParent(ConfigNode *parent)
{
    m_parent = parent;
    if (m_rare)
        m_rare->originalsParent = NodeLink();
}

AuthPrivArray BasicNode::GetAvailablePrivs() const
{
    return {PrivilegeView, PrivilegeConfigure};
}

NodeType BasicNode::GetNodeType() const
{
    return m_kind ? m_kind->type : NodeType();
}

std::vector<ConfigNode *> BasicNode::GetPathNodes() const
{
    std::vector<ConfigNode *> path;
    const BasicNode *node = this;
    while (node) {
        path.push_back(static_cast<ConfigNode *>(const_cast<BasicNode *>(node)));
        node = node->GetParent();
    }
    std::reverse(path.begin(), path.end());
    return path;
}

std::string BasicNode::GetPath() const
{
    std::string path;
    for (const BasicNode *node = this; node->GetParent(); node = node->GetParent())
        path = path.empty() ? node->m_name : node->m_name + "/" + path;
    return path;
}

std::string BasicNode::GetLinkName(enLinkNameType type) const
{
    return type == LinkNamePath ? GetPath() : m_name;
}

void BasicNode::SetName(std::string name)
{
    if (name == m_name)
        return;
    m_name = std::move(name);
    NotifyTextChanged(true);
}

void BasicNode::SetDescription(std::string description)
{
    if (description == m_description)
        return;
    m_description = std::move(description);
    NotifyTextChanged(false);
}

const ModelServices &BasicNode::GetServices() const
{
    static const ModelServices none;
    const NodesCollection *project = GetNodesCollection();
    return project ? project->GetServices() : none;
}

systemCore *BasicNode::GetCore() const
{
    return GetServices().core;
}

BasicStation *BasicNode::GetStation() const
{
    for (const BasicNode *node = this; node; node = node->GetParent()) {
        if (const BasicStation *station = node->AsStation())
            return const_cast<BasicStation *>(station);
    }
    return GetLocalStation();
}

BasicStation *BasicNode::GetLocalStation() const
{
    const StationFinder *stations = GetServices().stations;
    return stations ? stations->GetLocalStation() : nullptr;
}

bool BasicNode::IsLocal() const
{
    return GetStation() == GetLocalStation();
}

std::vector<BasicProperty *> BasicNode::GetProperties() const
{
    std::vector<BasicProperty *> all;
    if (!m_kind)
        return all;
    for (const PropertyDescriptor &descriptor : m_kind->properties)
        all.push_back(GetPropertyByValueId(descriptor.valueId));
    return all;
}

BasicProperty *BasicNode::GetPropertyByValueId(unsigned valueId) const
{
    const PropertyDescriptor *descriptor = m_kind ? m_kind->FindProperty(valueId) : nullptr;
    if (!descriptor)
        return nullptr;
    auto &properties = rare().properties;
    for (const auto &property : properties) {
        if (&property->GetDescriptor() == descriptor)
            return property.get();
    }
    auto *self = const_cast<BasicNode *>(this);
    return properties.emplace_back(std::make_unique<BasicProperty>(self, descriptor)).get();
}

std::vector<BasicProperty *> BasicNode::GetPropertiesByParent(unsigned long id) const
{
    const NodesCollection *project = GetNodesCollection();
    const ConfigNode *child = project ? project->FindNode(id) : nullptr;
    return child && child->GetParent() == this ? child->GetProperties()
                                               : std::vector<BasicProperty *>();
}

std::vector<BasicProperty *> BasicNode::GetInputProperties() const
{
    std::vector<BasicProperty *> inputs;
    if (!m_kind)
        return inputs;
    for (const PropertyDescriptor &d : m_kind->properties) {
        const auto &families = d.linkFamilies;
        if (std::find(families.begin(), families.end(), NodeType::TypeSignal) != families.end())
            inputs.push_back(GetPropertyByValueId(d.valueId));
    }
    return inputs;
}

void BasicNode::OnPropertyChanged(const PropertyDescriptor &) {}

void BasicNode::announce(const PropertyDescriptor &descriptor)
{
    RemoveForeignAttribute(descriptor.key);
    OnPropertyChanged(descriptor);
    const NodesCollection *project = GetNodesCollection();
    const bool isFound = project && project->FindNode(m_id) == this;
    if (!isFound ||
        !ChangeBatch::Defer({project->GetToken(), m_id, descriptor.valueId}, &tellChange))
        NotifyPropertyChanged(GetPropertyByValueId(descriptor.valueId));
}

Result BasicNode::SetProperty(unsigned valueId, const boost::any &value)
{
    const PropertyDescriptor *d = m_kind ? m_kind->FindProperty(valueId) : nullptr;
    if (!d)
        return Result(this, Result::NotFound, "property " + std::to_string(valueId));
    const boost::any old = d->binding.get(*this);
    const std::string oldText = d->binding.format(*d, *this);
    {
        const LinksChange links(*this, *d);
        if (!d->binding.set(*this, value))
            return Result(this, Result::WrongType, d->key);
        const std::string newText = d->binding.format(*d, *this);
        if (newText == oldText)
            return Result();
        // Ranges are known to the text form only: the new value is checked by reading it back.
        if (!d->binding.parse(*d, *this, newText)) {
            d->binding.set(*this, old);
            return Result(this, Result::OutOfRange, d->key + " = " + newText);
        }
    }
    announce(*d);
    return Result();
}

Result BasicNode::SetPropertyText(std::string_view key, std::string_view text)
{
    const PropertyDescriptor *d = m_kind ? m_kind->FindProperty(key) : nullptr;
    if (!d)
        return Result(this, Result::NotFound, "property " + std::string(key));
    const std::string old = d->binding.format(*d, *this);
    {
        const LinksChange links(*this, *d);
        if (!d->binding.parse(*d, *this, text))
            return Result(this, Result::WrongType, d->key + " = " + std::string(text));
    }
    if (d->binding.format(*d, *this) != old)
        announce(*d);
    return Result();
}

bool BasicNode::IsLinked(const NodeLink &link) const
{
    if (!m_kind || link.isEmpty())
        return false;
    for (const PropertyDescriptor &d : m_kind->properties) {
        if (d.binding.type != PropertyType::Link && d.binding.type != PropertyType::Links)
            continue;
        const boost::any value = d.binding.get(*this);
        if (const auto *single = boost::any_cast<NodeLink>(&value)) {
            if (*single == link)
                return true;
        } else if (const auto *list = boost::any_cast<NodeLinks>(&value)) {
            if (std::find(list->begin(), list->end(), link) != list->end())
                return true;
        }
    }
    return false;
}

const BasicNode::Attributes &BasicNode::GetForeignAttributes() const
{
    static const Attributes none;
    return m_rare ? m_rare->foreign : none;
}

void BasicNode::AddForeignAttribute(std::string key, std::string value)
{
    rare().foreign.emplace_back(std::move(key), std::move(value));
}

void BasicNode::RemoveForeignAttribute(std::string_view key)
{
    if (!m_rare)
        return;
    auto &foreign = m_rare->foreign;
    foreign.erase(std::remove_if(foreign.begin(), foreign.end(),
                                 [&](const auto &attribute) { return attribute.first == key; }),
                  foreign.end());
}

} // namespace Nodes
