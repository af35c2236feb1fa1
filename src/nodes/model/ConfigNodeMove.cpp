// Names and places of nodes that stand in the tree already.
#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodeNotifications.h"
#include "nodes/model/NodesCollection.h"

#include <algorithm>

namespace Nodes {

namespace {

// Told to whoever edits: Result has a text for each.
constexpr int codeNoName = 1410;
constexpr int codeNameTaken = 1411;

} // namespace

Result ConfigNode::checkName(const std::string &name, const ConfigNode *except) const
{
    const bool isTaken = std::any_of(m_children.begin(), m_children.end(), [&](const auto &child) {
        return child.get() != except && child->GetName() == name;
    });
    return isTaken ? Result(this, Result::Duplicate, codeNameTaken) : Result();
}

Result ConfigNode::Rename(std::string name)
{
    if (name == GetName())
        return Result();
    if (name.empty() || name.find('/') != std::string::npos)
        return Result(this, Result::InvalidArgument, codeNoName);
    const ConfigNode *parent = GetParent();
    const Result allowed = parent ? parent->checkName(name, this) : Result();
    if (allowed)
        SetName(std::move(name));
    return allowed;
}

Result ConfigNode::MoveNode(const NodeLink &child, ConfigNode &parent, int index)
{
    const ConfigNode *node = child.GetNode();
    if (node && node->GetParent() == this && &parent != this) {
        Result allowed = parent.checkKind(*node);
        if (allowed && !node->GetName().empty())
            allowed = parent.checkName(node->GetName(), nullptr);
        if (!allowed)
            return allowed;
    }
    return ReturnNode(child, parent, index);
}

Result ConfigNode::ReturnNode(const NodeLink &child, ConfigNode &parent, int index)
{
    const ConfigNode *node = child.GetNode();
    const int from = IndexOf(node);
    if (from < 0)
        return Result(this, Result::NotFound, "child " + std::to_string(child.GetNodeId()));
    if (&parent == this) {
        reorder(child, index);
        return Result();
    }
    const Result allowed = parent.checkAdd(*node);
    if (!allowed)
        return allowed;
    std::unique_ptr<ConfigNode> moving = take(child);
    Result moved = parent.put(moving, index);
    if (!moved)
        (void)put(moving, from); // its place was free a moment ago
    return moved;
}

void ConfigNode::reorder(const NodeLink &child, int index)
{
    const int from = IndexOf(child.GetNode());
    const int last = GetNodeCount() - 1;
    const int to = index < 0 ? last : std::min(index, last);
    if (to == from)
        return;
    const auto at = [this](int place) { return m_children.begin() + place; };
    if (from < to)
        std::rotate(at(from), at(from + 1), at(to + 1));
    else
        std::rotate(at(to), at(from), at(from + 1));
    NodesCollection *project = GetNodesCollection();
    if (project && project->IsInTree(*this))
        project->touch();
    if (NodeNotifications *subscribers = existingNotifications())
        subscribers->childMoved(child);
    if (project)
        project->announce(*this, {NodeChange::ChildMoved, {}, child, 0});
}

} // namespace Nodes
