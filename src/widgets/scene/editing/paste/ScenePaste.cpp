#include "widgets/scene/editing/paste/ScenePaste.h"

#include "widgets/scene/editing/ElementClipboard.h"
#include "widgets/scene/editing/SceneSelection.h"
#include "widgets/scene/editing/groups/GroupEdits.h"
#include "widgets/scene/editing/paste/CopiedTemplates.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/visual/windows/BasicComposition.h"
#include "nodes/visual/windows/BasicWindow.h"
#include "utils/undo/AddNodeLinkCommand.h"
#include "utils/undo/CommandGroup.h"
#include "utils/undo/CopyNodeWidgetGroupCommand.h"
#include "utils/undo/IUndo.h"

namespace Widgets {

namespace {

/// Where templates stand: beside the window or composition.
Nodes::NodeLink besideScreenOf(const Nodes::ConfigNode &layer)
{
    const Nodes::ConfigNode *screen = &layer;
    while (screen->GetParent() && !dynamic_cast<const Nodes::BasicWindow *>(screen) &&
           !dynamic_cast<const Nodes::BasicComposition *>(screen))
        screen = screen->GetParent();
    return Nodes::NodeLink(screen->GetParent());
}

CopiedTemplates::Pasted takeAll(Nodes::NodesCollection &project, PasteReport &report)
{
    if (std::optional<CopiedTemplates::Pasted> whole = CopiedTemplates::take(project, report)) {
        GroupEdits::tellApart(whole->elements, ElementClipboard::sourceLayers());
        return *whole;
    }
    return {ElementClipboard::take(project, report), {}};
}

QUndoCommand *makeStep(const Nodes::ConfigNode &layer, const CopiedTemplates::Pasted &pasted,
                       QPoint point)
{
    const Nodes::NodeLink owner(&layer);
    if (pasted.templates.empty())
        return new Utils::CopyNodeWidgetGroupCommand(owner, pasted.elements, point);
    auto *step = new Utils::CommandGroup(QString());
    for (const Nodes::NodeLink &source : pasted.templates)
        new Utils::AddNodeLinkCommand(source, besideScreenOf(layer), step);
    step->setText(
        (new Utils::CopyNodeWidgetGroupCommand(owner, pasted.elements, point, step))->text());
    return step;
}

} // namespace

PasteReport pasteElements(const Nodes::ConfigNode &layer, QPoint point, SceneSelection &selection,
                          Utils::IUndo &undo)
{
    PasteReport report;
    Nodes::NodesCollection *project = layer.GetNodesCollection();
    if (!project)
        return report;
    const CopiedTemplates::Pasted pasted = takeAll(*project, report);
    const Nodes::NodesArray &clones = pasted.elements;
    if (clones.empty())
        return report;
    GroupEdits::renew(clones, layer, ElementClipboard::enteredGroup());
    selection.clear(); // what is pasted appears selected
    undo.pushToUndoStack(makeStep(layer, pasted, point));
    // The command has said why.
    if (!project->IsInTree(*clones[0].GetNode()))
        report = {};
    ElementClipboard::discard(*project, clones.GetLinks());
    ElementClipboard::discard(*project, pasted.templates.GetLinks());
    return report;
}

} // namespace Widgets
