#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindTable.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/serial/ElementScan.h"
#include "nodes/serial/NodeGraft.h"
#include "nodes/serial/XmlText.h"

#include <boost/property_tree/ptree.hpp>

namespace Nodes {

namespace {

using boost::property_tree::ptree;

// Keys are pushed, never "put": a property may contain the separator of paths.
void push(ptree &tree, const std::string &key, const std::string &value)
{
    tree.push_back({key, ptree(value)});
}

ptree propertiesOf(const ConfigNode &node)
{
    ptree properties;
    for (const PropertyDescriptor &d : node.GetKind()->properties) {
        if (!node.GetKind()->IsDefault(d, node))
            push(properties, d.key, d.binding.format(d, node));
    }
    for (const auto &[key, value] : node.GetForeignAttributes())
        push(properties, key, value);
    return properties;
}

std::string textOf(const ptree &tree, const char *key)
{
    const auto found = tree.find(key);
    return found == tree.not_found() ? std::string() : found->second.data();
}

void readProperties(const ptree &tree, ConfigNode &node)
{
    const auto properties = tree.find("properties");
    if (properties == tree.not_found())
        return;
    for (const auto &[key, value] : properties->second) {
        const PropertyDescriptor *d = node.GetKind()->FindProperty(std::string_view(key));
        const bool isRead = d && d->binding.parse(*d, node, value.data());
        if (!isRead && IsForeignKey(key))
            node.AddForeignAttribute(key, value.data());
    }
}

/// Detached node of the tree under a fresh id; null when its kind is not known.
std::unique_ptr<ConfigNode> readNode(const ptree &tree, NodesCollection &project, IdMap &ids,
                                     int depth)
{
    const KindInfo *kind = KindTable::Instance().FindByKey(textOf(tree, "kind"));
    if (!kind || depth > ConfigNode::MaximumDepth)
        return nullptr;
    std::unique_ptr<ConfigNode> node = project.CreateDetached(*kind);
    if (const auto old = ParseNodeId(textOf(tree, "id")))
        ids.emplace(*old, node->GetId());
    node->SetName(textOf(tree, "name"));
    node->SetDescription(textOf(tree, "description"));
    readProperties(tree, *node);
    const auto children = tree.find("children");
    if (children == tree.not_found())
        return node;
    if (!children->second.empty() && kind->type.GetSubtype() == NodeType::SubtypeUnknown)
        return nullptr; // its own are in its text
    for (const auto &[key, child] : children->second) {
        std::unique_ptr<ConfigNode> made = readNode(child, project, ids, depth + 1);
        if (!made)
            return nullptr;
        node->Append(std::move(made));
    }
    return node;
}

} // namespace

ptree ConfigNode::SerializePropTree() const
{
    ptree tree;
    if (!m_kind)
        return tree;
    push(tree, "kind", m_kind->key);
    push(tree, "id", std::to_string(m_id));
    push(tree, "name", m_name);
    push(tree, "description", m_description);
    tree.push_back({"properties", propertiesOf(*this)});
    ptree children;
    for (const auto &child : m_children)
        children.push_back({"node", child->SerializePropTree()});
    tree.push_back({"children", std::move(children)});
    return tree;
}

Result ConfigNode::DeserializePropTree(const ptree &tree)
{
    NodesCollection *project = GetNodesCollection();
    if (!m_kind || !project)
        return Result(this, Result::NotAvailable, "the node is part of no project");
    if (textOf(tree, "kind") != m_kind->key)
        return Result(this, Result::WrongType, textOf(tree, "kind") + " instead of " + m_kind->key);
    IdMap ids;
    std::unique_ptr<ConfigNode> read = readNode(tree, *project, ids, 1);
    if (!read)
        return Result(this, Result::ParseError, "unknown kind or too many levels");
    return Graft(*this, std::move(read), ids);
}

} // namespace Nodes
