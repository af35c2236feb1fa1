#include "widgets/scene/editing/arrange/LayerEdits.h"

#include "widgets/scene/editing/arrange/EditGroup.h"
#include "widgets/scene/editing/arrange/EditedElements.h"
#include "widgets/scene/editing/groups/GroupEdits.h"

#include "nodes/model/FreeName.h"
#include "nodes/visual/BasicWidget.h"
#include "nodes/visual/windows/BasicComposition.h"
#include "nodes/visual/windows/BasicLayer.h"
#include "utils/undo/ChangeTextCommand.h"
#include "utils/undo/MoveNodesCommand.h"

#include <algorithm>
#include <unordered_set>

namespace Widgets {

namespace {

std::vector<std::string_view> namesBelow(const Nodes::ConfigNode &parent)
{
    std::vector<std::string_view> names;
    for (const auto &child : parent.Children())
        names.push_back(child->GetName());
    return names;
}

// The new name is given where the element stands now: it has to be free on both sides.
void freeNames(const Nodes::NodeLinks &moved, const Nodes::ConfigNode &layer, QUndoCommand *parent)
{
    const std::vector<std::string_view> present = namesBelow(layer);
    std::unordered_set<std::string_view> there(present.begin(), present.end());
    std::vector<std::string> given;
    given.reserve(moved.size()); // the views stay good
    for (const Nodes::NodeLink &link : moved) {
        const Nodes::ConfigNode *node = link.GetNode();
        given.push_back(node->GetName());
        if (there.count(given.back()) != 0) {
            std::vector<std::string_view> taken = namesBelow(*node->GetParent());
            taken.insert(taken.end(), there.begin(), there.end());
            given.back() = Nodes::FreeName(taken, node->GetName(), 2);
            new Utils::ChangeTextCommand(link, Utils::ChangeTextCommand::Name, given.back(),
                                         parent);
        }
        there.insert(given.back());
    }
}

} // namespace

std::vector<Nodes::BasicLayer *> LayerEdits::layersOf(const Nodes::ConfigNode *document)
{
    std::vector<Nodes::BasicLayer *> layers;
    if (!dynamic_cast<const Nodes::BasicComposition *>(document))
        return layers;
    for (const auto &child : document->Children()) {
        if (auto *layer = dynamic_cast<Nodes::BasicLayer *>(child.get()))
            layers.push_back(layer);
    }
    std::stable_sort(layers.begin(), layers.end(),
                     [](const Nodes::BasicLayer *a, const Nodes::BasicLayer *b) {
                         return a->GetZOrder() < b->GetZOrder();
                     });
    return layers;
}

QUndoCommand *LayerEdits::moveTo(const EditedElements &edited, const Nodes::BasicLayer &layer)
{
    Nodes::NodeLinks moved;
    for (const Nodes::BasicWidget *element : edited.elements) {
        if (element->GetParent() != &layer)
            moved.push_back(Nodes::NodeLink(element));
    }
    if (moved.empty())
        return nullptr;
    EditGroup group(QStringLiteral("Перемещение виджетов в слой %1")
                        .arg(QString::fromStdString(layer.GetName())));
    freeNames(moved, layer, group.parent());
    GroupEdits::giveWay(group, edited.elements, layer);
    new Utils::MoveNodesCommand(moved, Nodes::NodeLink(&layer), Nodes::NodeLink(), group.parent());
    return group.take();
}

QUndoCommand *LayerEdits::moveToNext(const EditedElements &edited, int step)
{
    const int key = edited.keyIndex();
    if (key < 0)
        return nullptr;
    const std::vector<Nodes::BasicLayer *> layers = layersOf(edited.document);
    const auto own =
        std::find(layers.begin(), layers.end(), edited.elements[std::size_t(key)]->GetParent());
    const auto next = own - layers.begin() + step;
    if (own == layers.end() || next < 0 || next >= static_cast<long>(layers.size()))
        return nullptr;
    return moveTo(edited, *layers[std::size_t(next)]);
}

} // namespace Widgets
