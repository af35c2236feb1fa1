// Who refers to what in the tree, and who hears of its changes.
#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodeNotifications.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/links/LinkIndex.h"
#include "nodes/model/links/LinkWalk.h"
#include "nodes/model/links/ResourceLink.h"
#include "nodes/values/SlotList.h"

#include <set>

namespace Nodes {

namespace {

template <class Visitor> void visitFiles(const BasicNode &node, Visitor visit)
{
    for (const PropertyDescriptor &d : node.GetKind()->properties) {
        if (d.binding.type != PropertyType::Resource)
            continue;
        const auto &resource = *static_cast<const ResourceLink *>(d.binding.data(node));
        if (!resource.GetFilePath().empty())
            visit(d, resource.GetFilePath());
    }
}

LinkIndex::Links linksOf(const BasicNode &node)
{
    LinkIndex::Links links;
    if (!node.GetKind())
        return links;
    VisitLinks(node, *node.GetKind(), [&](const PropertyDescriptor &, const NodeLink &to) {
        links.targets.push_back(to.GetNodeId());
    });
    visitFiles(node, [&](const PropertyDescriptor &, const std::string &file) {
        links.files.push_back(file);
    });
    return links;
}

void enterAll(LinkIndex &index, const ConfigNode &subtree)
{
    index.Enter(subtree.GetId(), linksOf(subtree));
    for (const auto &child : subtree.Children())
        enterAll(index, *child);
}

void leaveAll(LinkIndex &index, const ConfigNode &subtree)
{
    index.Leave(subtree.GetId(), linksOf(subtree));
    for (const auto &child : subtree.Children())
        leaveAll(index, *child);
}

/// Adds a property once, however often it refers.
void addUse(std::vector<LinkUse> &uses, const ConfigNode &node, const PropertyDescriptor &d)
{
    const LinkUse use{NodeLink(&node), d.valueId};
    if (uses.empty() || !(uses.back() == use))
        uses.push_back(use);
}

} // namespace

LinkIndex &NodesCollection::links() const
{
    if (!m_links) {
        m_links = std::make_unique<LinkIndex>();
        if (m_root)
            enterAll(*m_links, *m_root);
    }
    return *m_links;
}

void NodesCollection::enter(const ConfigNode &subtree)
{
    ++m_revision;
    if (m_links)
        enterAll(*m_links, subtree);
}

void NodesCollection::leave(const ConfigNode &subtree)
{
    ++m_revision;
    if (m_links)
        leaveAll(*m_links, subtree);
}

void NodesCollection::enterLinks(const BasicNode &node)
{
    if (m_links)
        m_links->Enter(node.GetId(), linksOf(node));
}

void NodesCollection::leaveLinks(const BasicNode &node)
{
    if (m_links)
        m_links->Leave(node.GetId(), linksOf(node));
}

std::vector<LinkUse> NodesCollection::FindUses(const NodeLink &target) const
{
    std::vector<LinkUse> uses;
    for (const unsigned long id : links().FindReferrers(target.GetNodeId())) {
        if (const ConfigNode *node = FindNode(id))
            VisitLinks(*node, *node->GetKind(), [&](const auto &d, const NodeLink &to) {
                if (to == target)
                    addUse(uses, *node, d);
            });
    }
    return uses;
}

std::vector<LinkUse> NodesCollection::FindUses(const ResourceLink &resource) const
{
    std::vector<LinkUse> uses;
    const std::string &path = resource.GetFilePath();
    for (const unsigned long id : links().FindReferrers(path)) {
        if (const ConfigNode *node = FindNode(id))
            visitFiles(*node, [&](const auto &d, const std::string &file) {
                if (file == path)
                    addUse(uses, *node, d);
            });
    }
    return uses;
}

std::vector<ConfigNode *> NodesCollection::FindReferrers(const IdSet &ids) const
{
    std::set<unsigned long> found;
    for (const unsigned long id : ids) {
        const std::vector<unsigned long> referrers = links().FindReferrers(id);
        found.insert(referrers.begin(), referrers.end());
    }
    std::vector<ConfigNode *> nodes;
    for (const unsigned long id : found) {
        if (ConfigNode *node = FindNode(id))
            nodes.push_back(node);
    }
    return nodes;
}

Connection NodesCollection::ConnectChanged(std::function<void(const NodeChange &)> slot)
{
    if (!m_changed)
        m_changed = std::make_unique<SlotList<const NodeChange &>>();
    return m_changed->Connect(std::move(slot));
}

void NodesCollection::announce(const BasicNode &node, NodeChange change) const
{
    if (!m_changed || !IsInTree(node))
        return;
    change.node = NodeLink(&node);
    (*m_changed)(change);
}

} // namespace Nodes
