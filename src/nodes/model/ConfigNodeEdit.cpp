#include "nodes/model/ConfigNode.h"
#include "nodes/model/FreeName.h"
#include "nodes/model/KindInfo.h"
#include "nodes/model/NodeNotifications.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/links/LinkWalk.h"

#include <algorithm>

namespace Nodes {

namespace {

int depthOf(const ConfigNode *node)
{
    int depth = 0;
    for (; node; node = node->GetParent())
        ++depth;
    return depth;
}

std::vector<ConfigNode *> referrersTo(const IdSet &ids, const ConfigNode &anywhere)
{
    const NodesCollection *project = anywhere.GetNodesCollection();
    return project ? project->FindReferrers(ids) : std::vector<ConfigNode *>();
}

int removeLinksTo(const IdSet &ids, const ConfigNode &anywhere)
{
    int count = 0;
    const auto edit = [&ids](const NodeLink &link) {
        return ids.count(link.GetNodeId()) ? std::nullopt : std::optional<NodeLink>(link);
    };
    // By link: whoever hears of the first change may delete the next node.
    NodeLinks referrers;
    for (const ConfigNode *node : referrersTo(ids, anywhere))
        referrers.emplace_back(node);
    for (const NodeLink &link : referrers) {
        if (ConfigNode *node = link.GetNode())
            count += EditLinks(*node, edit);
    }
    return count;
}

/// A node outside of the set that refers into it; null when there is none.
const ConfigNode *findReferrer(const IdSet &ids, const ConfigNode &anywhere)
{
    const auto nodes = referrersTo(ids, anywhere);
    const auto found = std::find_if(nodes.begin(), nodes.end(), [&ids](const ConfigNode *node) {
        return ids.count(node->GetId()) == 0;
    });
    return found == nodes.end() ? nullptr : *found;
}

bool isAncestor(const ConfigNode *ancestor, const ConfigNode *node)
{
    while (node && node != ancestor)
        node = node->GetParent();
    return node != nullptr;
}

} // namespace

std::string ConfigNode::freeName(const std::string &wanted, int first) const
{
    std::vector<std::string_view> names;
    names.reserve(m_children.size());
    for (const auto &child : m_children)
        names.push_back(child->GetName());
    return FreeName(names, wanted, first);
}

void ConfigNode::leaveTree() const
{
    OnLeftTree();
    for (const auto &child : m_children)
        child->leaveTree();
}

void ConfigNode::enterTree() const
{
    OnEnteredTree();
    for (const auto &child : m_children)
        child->enterTree();
}

bool ConfigNode::isIndexed() const
{
    const NodesCollection *project = GetNodesCollection();
    return project && project->FindNode(m_id) == this;
}

int ConfigNode::GetHeight() const
{
    int highest = 0;
    for (const auto &child : m_children)
        highest = std::max(highest, child->GetHeight());
    return highest + 1;
}

Result ConfigNode::checkAdd(const ConfigNode &node) const
{
    if (GetNodeType().GetSubtype() == NodeType::SubtypeUnknown)
        return Result(this, Result::InvalidArgument, "an unknown element takes no nodes");
    if (node.GetNodesCollection() != GetNodesCollection())
        return Result(this, Result::InvalidArgument, "the node belongs to another project");
    if (isAncestor(&node, this))
        return Result(this, Result::Cycle, "a node cannot stand below itself");
    if (depthOf(this) + node.GetHeight() > MaximumDepth)
        return Result(this, Result::LimitExceeded,
                      "tree deeper than " + std::to_string(MaximumDepth) + " levels");
    return Result();
}

Result ConfigNode::checkKind(const ConfigNode &node) const
{
    const NodeType type = node.GetNodeType();
    const bool isUnknown = type.GetSubtype() == NodeType::SubtypeUnknown;
    if (m_kind && !isUnknown && !m_kind->AllowsChild(type))
        return Result(this, Result::InvalidArgument,
                      type.ToString() + " may not stand below " + m_kind->key);
    return Result();
}

Result ConfigNode::AddNode(std::unique_ptr<ConfigNode> &node, int index)
{
    const Result allowed = node ? checkKind(*node) : Result();
    return allowed ? AdoptNode(node, index) : allowed;
}

Result ConfigNode::AdoptNode(std::unique_ptr<ConfigNode> &node, int index)
{
    if (!node)
        return Result(this, Result::InvalidArgument, "no node to add");
    const Result allowed = checkAdd(*node);
    if (!allowed)
        return allowed;
    const NodeLink link(node.get());
    const Result added = put(node, index);
    const ConfigNode *stays = link.GetNode(); // a subscriber may have taken it out again
    if (added && stays)
        stays->enterTree();
    return added;
}

Result ConfigNode::put(std::unique_ptr<ConfigNode> &node, int index)
{
    NodesCollection *project = GetNodesCollection();
    if (isIndexed()) {
        const Result remembered = project->remember(*node);
        if (!remembered) {
            project->forget(*node);
            return remembered;
        }
    }
    if (project && project->takeRenameMark(node->m_id))
        node->SetName(freeName(node->GetName(), 2));
    node->setParent(this);
    const bool isLast = index < 0 || index >= GetNodeCount();
    const auto place = isLast ? m_children.end() : m_children.begin() + index;
    const ConfigNode *child = m_children.insert(place, std::move(node))->get();
    const NodeLink link(child);
    if (project && project->IsInTree(*this))
        project->enter(*child);
    if (NodeNotifications *subscribers = existingNotifications())
        subscribers->childAdded(link);
    if (project)
        project->announce(*this, {NodeChange::ChildAdded, {}, link, 0});
    return Result();
}

void ConfigNode::Append(std::unique_ptr<ConfigNode> child)
{
    child->setParent(this);
    m_children.push_back(std::move(child));
}

std::vector<std::unique_ptr<ConfigNode>> ConfigNode::TakeChildren()
{
    for (const auto &child : m_children)
        child->setParent(nullptr);
    return std::move(m_children);
}

std::unique_ptr<ConfigNode> ConfigNode::RemoveNode(const NodeLink &child)
{
    std::unique_ptr<ConfigNode> node = take(child);
    if (node)
        node->leaveTree();
    return node;
}

std::unique_ptr<ConfigNode> ConfigNode::take(const NodeLink &child)
{
    // From the end, where a group is taken from. The id is compared first: a link is dear to make.
    const auto isChild = [&, id = child.GetNodeId()](const auto &node) {
        return node->m_id == id && NodeLink(node.get()) == child;
    };
    const auto found = std::find_if(m_children.rbegin(), m_children.rend(), isChild);
    if (found == m_children.rend())
        return nullptr;
    std::unique_ptr<ConfigNode> node = std::move(*found);
    m_children.erase(std::next(found).base());
    NodesCollection *project = GetNodesCollection();
    if (project) {
        if (project->IsInTree(*this))
            project->leave(*node);
        project->forget(*node);
    }
    node->setParent(nullptr);
    if (NodeNotifications *subscribers = existingNotifications())
        subscribers->childRemoved(child);
    if (project)
        project->announce(*this, {NodeChange::ChildRemoved, {}, child, 0});
    return node;
}

int ConfigNode::AddNodes(std::vector<std::unique_ptr<ConfigNode>> &nodes, int index)
{
    int count = 0;
    for (auto &node : nodes) {
        if (AddNode(node, index < 0 ? index : index + count))
            ++count;
    }
    return count;
}

std::vector<std::unique_ptr<ConfigNode>> ConfigNode::RemoveNodes(const NodesArray &children)
{
    std::vector<std::unique_ptr<ConfigNode>> removed;
    for (const NodeLink &child : children) {
        if (std::unique_ptr<ConfigNode> node = RemoveNode(child))
            removed.push_back(std::move(node));
    }
    return removed;
}

Result ConfigNode::DeleteNode(unsigned long id, bool references, bool force)
{
    const ConfigNode *child = GetSubObject(id);
    if (!child)
        return Result(this, Result::NotFound, "child " + std::to_string(id));
    const IdSet ids = IdsOf(*child);
    if (references) {
        removeLinksTo(ids, *this);
    } else if (!force) {
        if (const ConfigNode *referrer = findReferrer(ids, *this))
            return Result(child, Result::Refused, "referred to by " + referrer->GetPath());
    }
    RemoveNode(NodeLink(child));
    return Result();
}

int ConfigNode::DeleteNodes(const NodesArray &nodes)
{
    IdSet ids;
    NodeLinks doomed;
    for (const NodeLink &link : nodes) {
        const ConfigNode *node = link.GetNode();
        if (!node || node == this || !isAncestor(this, node))
            continue;
        ids.merge(IdsOf(*node));
        doomed.push_back(link);
    }
    // One walk over the project for all of them: it may be large, and so may the selection.
    if (!doomed.empty())
        removeLinksTo(ids, *this);
    int count = 0;
    for (const NodeLink &link : doomed) {
        const ConfigNode *node = link.GetNode(); // none when it stood below one just deleted
        count += node && node->GetParent()->RemoveNode(link) ? 1 : 0;
    }
    return count;
}

int ConfigNode::RemoveLink(const NodeLink &link)
{
    return EditLinks(*this, [&link](const NodeLink &held) {
        return held == link ? std::nullopt : std::optional<NodeLink>(held);
    });
}

int ConfigNode::ReplaceLink(const NodeLink &from, const NodeLink &to)
{
    if (to.isEmpty())
        return RemoveLink(from);
    return EditLinks(*this, [&](const NodeLink &held) -> std::optional<NodeLink> {
        return held == from ? to : held;
    });
}

int ConfigNode::ReplaceLink(const NodeLink &from, const std::string &path)
{
    const NodesCollection *project = GetNodesCollection();
    if (!project)
        return 0;
    const std::vector<ConfigNode *> targets = project->GetNodesByPath(path);
    return targets.empty() ? 0 : ReplaceLink(from, NodeLink(targets.front()));
}

int ConfigNode::RemoveReferences()
{
    return removeLinksTo({m_id}, *this);
}

} // namespace Nodes
