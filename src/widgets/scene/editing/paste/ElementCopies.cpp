#include "widgets/scene/editing/paste/ElementCopies.h"

#include "widgets/scene/editing/arrange/EditedElements.h"
#include "widgets/scene/editing/groups/GroupEdits.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/visual/BasicWidget.h"
#include "utils/undo/CommandGroup.h"
#include "utils/undo/CopyNodeWidgetGroupCommand.h"

#include <algorithm>
#include <climits>
#include <memory>
#include <vector>

namespace Widgets {

namespace {

/// Copies that stand in one layer.
struct Copies
{
    Nodes::NodeLink layer;
    Nodes::NodesArray clones;
    QPoint corner{INT_MAX, INT_MAX};
};

std::vector<Copies> byLayer(const EditedElements &edited, const Nodes::NodesArray &clones)
{
    std::vector<Copies> found;
    for (std::size_t i = 0; i < clones.size(); ++i) {
        const Nodes::BasicWidget &original = *edited.elements[i];
        const Nodes::NodeLink layer(original.GetParent());
        auto known = std::find_if(found.begin(), found.end(),
                                  [&layer](const Copies &c) { return c.layer == layer; });
        if (known == found.end()) {
            found.push_back({layer, {}});
            known = std::prev(found.end());
        }
        known->clones.push_back(clones[i]);
        const Nodes::NPoint at = original.GetPosition();
        known->corner = {std::min(known->corner.x(), at.x), std::min(known->corner.y(), at.y)};
    }
    return found;
}

} // namespace

QUndoCommand *ElementCopies::duplicate(const EditedElements &edited, QPoint offset)
{
    if (edited.elements.empty())
        return nullptr;
    Nodes::NodesArray originals;
    for (const Nodes::BasicWidget *element : edited.elements)
        originals.push_back(Nodes::NodeLink(element));
    Nodes::NodesCollection *project = edited.elements.front()->GetNodesCollection();
    Nodes::NodesArray clones;
    if (!project || !project->CloneNodes(originals, clones, true))
        return nullptr;
    const std::vector<Copies> layers = byLayer(edited, clones);
    for (const Copies &copies : layers) {
        const std::string entered =
            copies.layer.GetNode() == edited.scope.layer ? edited.scope.group : std::string();
        GroupEdits::renew(copies.clones, *copies.layer.GetNode(), entered, entered);
    }
    if (layers.size() == 1)
        return new Utils::CopyNodeWidgetGroupCommand(layers[0].layer, layers[0].clones,
                                                     layers[0].corner + offset);
    auto group =
        std::make_unique<Utils::CommandGroup>(QStringLiteral("Копирование группы виджетов"));
    for (const Copies &copies : layers)
        new Utils::CopyNodeWidgetGroupCommand(copies.layer, copies.clones, copies.corner + offset,
                                              group.get());
    return group.release();
}

} // namespace Widgets
