#pragma once

#include "nodes/model/links/NodeLink.h"

#include <QString>

#include <optional>
#include <utility>
#include <vector>

class QUndoCommand;

namespace Editor {

class Workspace;

/// What is to be removed, and where the links to it are to lead instead.
struct RemovalPlan
{
    Nodes::NodeLinks nodes;
    /// A node that goes, and the one that takes its place in links; links to the others go too.
    std::vector<std::pair<Nodes::NodeLink, Nodes::NodeLink>> replacements;
};

/// Asks what becomes of links to the nodes and to what stands below them, where nodes that stay
/// have any; without such links nothing is asked. Nothing when the user thinks better of it. The
/// project's root is left out, and so are nodes that are gone.
std::optional<RemovalPlan> askRemoval(Workspace &workspace, const Nodes::NodeLinks &nodes);
/// One step that replaces the links and removes the nodes.
QUndoCommand *makeRemoval(const RemovalPlan &plan);

} // namespace Editor
