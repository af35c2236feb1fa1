#include "editor/usages/Removal.h"

#include "editor/usages/RemovalDialog.h"
#include "editor/usages/Usage.h"
#include "editor/workspace/Workspace.h"

#include "nodes/model/ConfigNode.h"
#include "utils/undo/CommandGroup.h"
#include "utils/undo/RemoveNodeLinkGroup.h"
#include "utils/undo/ReplaceLinksCommand.h"

namespace Editor {

namespace {

std::vector<Utils::LinkReplacement> linksToReplace(const RemovalPlan &plan)
{
    std::vector<Utils::LinkReplacement> links;
    const Usages usages = FindUsagesFromOutside(plan.nodes);
    for (const auto &[from, to] : plan.replacements) {
        for (const Usage &usage : usages) {
            if (usage.target == from)
                links.push_back({usage.use.node, usage.use.valueId, from, to});
        }
    }
    return links;
}

} // namespace

std::optional<RemovalPlan> askRemoval(Workspace &workspace, const Nodes::NodeLinks &nodes)
{
    RemovalPlan plan;
    for (const Nodes::NodeLink &node : nodes) {
        if (node.isValid() && node->GetParent())
            plan.nodes.push_back(node);
    }
    if (plan.nodes.empty())
        return std::nullopt;
    const Usages usages = FindUsagesFromOutside(plan.nodes);
    if (usages.empty())
        return plan;
    RemovalDialog dialog(workspace, plan.nodes, usages);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    plan.replacements = dialog.replacements();
    return plan;
}

QUndoCommand *makeRemoval(const RemovalPlan &plan)
{
    auto *group = new Utils::CommandGroup(
        plan.nodes.size() == 1 ? QStringLiteral("Удаление узла %1")
                                     .arg(QString::fromStdString(plan.nodes.front().GetLinkName()))
                               : QStringLiteral("Удаление группы узлов"));
    const auto links = linksToReplace(plan);
    if (!links.empty())
        new Utils::ReplaceLinksCommand(links, group);
    const Nodes::ConfigNode *first = plan.nodes.empty() ? nullptr : plan.nodes.front().GetNode();
    new Utils::RemoveNodeLinkGroup(Nodes::NodeLink(first ? first->GetParent() : nullptr),
                                   plan.nodes, group);
    return group;
}

} // namespace Editor
