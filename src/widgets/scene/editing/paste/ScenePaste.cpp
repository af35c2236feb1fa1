#include "widgets/scene/editing/paste/ScenePaste.h"

#include "widgets/scene/editing/ElementClipboard.h"
#include "widgets/scene/editing/SceneSelection.h"
#include "widgets/scene/editing/groups/GroupEdits.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"
#include "utils/undo/CopyNodeWidgetGroupCommand.h"
#include "utils/undo/IUndo.h"

namespace Widgets {

PasteReport pasteElements(const Nodes::ConfigNode &layer, QPoint point, SceneSelection &selection,
                          Utils::IUndo &undo)
{
    PasteReport report;
    Nodes::NodesCollection *project = layer.GetNodesCollection();
    if (!project)
        return report;
    const Nodes::NodesArray clones = ElementClipboard::take(*project, report);
    if (clones.empty())
        return report;
    GroupEdits::renew(clones, layer, ElementClipboard::enteredGroup());
    selection.clear(); // what is pasted appears selected
    undo.pushToUndoStack(
        new Utils::CopyNodeWidgetGroupCommand(Nodes::NodeLink(&layer), clones, point));
    // The command has said why.
    if (!project->IsInTree(*clones[0].GetNode()))
        report = {};
    ElementClipboard::discard(*project, clones.GetLinks());
    return report;
}

} // namespace Widgets
