#include "editor/usages/NodeCommands.h"

#include "editor/project/ProjectSession.h"
#include "editor/tree/ProjectTreePanel.h"
#include "editor/usages/ReplaceDialog.h"
#include "editor/usages/Usage.h"
#include "editor/usages/UsagesPanel.h"
#include "editor/workspace/DockRaise.h"
#include "editor/workspace/Workspace.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"

#include <algorithm>

namespace Editor {

namespace {

Nodes::NodeLinks selectedNodes(Workspace &workspace)
{
    Nodes::NodeLinks nodes;
    for (const Nodes::NodeLink &node : workspace.selection().nodes()) {
        if (node.isValid())
            nodes.push_back(node);
    }
    return nodes;
}

/// The signal that is to be replaced: one selected, else the first that a selected node shows.
Nodes::NodeLink signalOf(const Nodes::NodeLinks &nodes)
{
    constexpr auto family = Nodes::NodeType::TypeSignal;
    if (nodes.empty() || nodes.front().GetNodeType().GetFamily() == family)
        return nodes.empty() ? Nodes::NodeLink() : nodes.front();
    const Usages links = FindLinksOf(nodes, *nodes.front().GetNodesCollection());
    const auto found = std::find_if(links.begin(), links.end(), [](const Usage &link) {
        return link.target.GetNodeType().GetFamily() == family;
    });
    return found == links.end() ? Nodes::NodeLink() : found->target;
}

} // namespace

bool NodeCommands::hasNodes(Workspace &workspace)
{
    return !selectedNodes(workspace).empty();
}

bool NodeCommands::canRename(Workspace &workspace)
{
    return selectedNodes(workspace).size() == 1 && !workspace.session().isReadOnly();
}

void NodeCommands::rename(Workspace &workspace)
{
    auto *tree = workspace.window()->findChild<ProjectTreePanel *>();
    const Nodes::NodeLinks nodes = selectedNodes(workspace);
    if (!tree || nodes.empty())
        return;
    raiseDock(*tree);
    tree->startRenaming(nodes.front());
}

void NodeCommands::findUsages(Workspace &workspace)
{
    UsagesPanel::showFor(workspace, selectedNodes(workspace));
}

void NodeCommands::replaceNode(Workspace &workspace)
{
    const Nodes::NodeLinks nodes = selectedNodes(workspace);
    const Nodes::NodeLink signal = signalOf(nodes);
    const bool isInSelection = !signal.isEmpty() && signal != nodes.front();
    ReplaceDialog dialog(workspace, ReplaceDialog::ModeNode, signal, nodes);
    dialog.setWholeProject(!isInSelection);
    dialog.exec();
}

void NodeCommands::replacePattern(Workspace &workspace)
{
    const Nodes::NodeLinks nodes = selectedNodes(workspace);
    ReplaceDialog dialog(workspace, ReplaceDialog::ModePattern, {}, nodes);
    dialog.setWholeProject(FindLinksOf(nodes, *workspace.session().project()).empty() ||
                           nodes.empty());
    dialog.exec();
}

void NodeCommands::findNode(Workspace &workspace)
{
    if (auto *tree = workspace.window()->findChild<ProjectTreePanel *>()) {
        raiseDock(*tree);
        tree->startSearch();
    }
}

} // namespace Editor
