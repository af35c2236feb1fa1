#include "editor/signals/SheetCommand.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/project/signals/SheetPlan.h"
#include "utils/undo/AddNodeLinkCommand.h"
#include "utils/undo/ChangePropertyCommand.h"
#include "utils/undo/ChangeTextCommand.h"
#include "utils/undo/CommandGroup.h"
#include "utils/undo/RemoveNodeLinkGroup.h"

namespace Editor {

using Nodes::SheetPlan;
using Utils::ChangeTextCommand;

QUndoCommand *makeSheetCommand(const SheetPlan &plan, const QString &text)
{
    if (plan.isEmpty())
        return nullptr;
    auto *group = new Utils::CommandGroup(text);
    for (const SheetPlan::Text &name : plan.names)
        new ChangeTextCommand(name.node, ChangeTextCommand::Name, name.text, group);
    for (const SheetPlan::Change &change : plan.changes)
        new Utils::ChangePropertyCommand(change.node, change.valueId, change.value, group);
    for (const SheetPlan::Text &description : plan.descriptions)
        new ChangeTextCommand(description.node, ChangeTextCommand::Description, description.text,
                              group);
    for (const SheetPlan::Addition &addition : plan.additions)
        new Utils::AddNodeLinkCommand(addition.clone, addition.parent, group);
    if (!plan.removals.empty())
        new Utils::RemoveNodeLinkGroup(
            Nodes::NodeLink(plan.removals.front().GetNodesCollection()->GetRoot()), plan.removals,
            group);
    return group;
}

} // namespace Editor
