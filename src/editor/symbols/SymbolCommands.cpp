#include "editor/symbols/SymbolCommands.h"

#include "editor/project/ProjectSession.h"
#include "editor/symbols/SymbolCatalogue.h"
#include "editor/wizard/NodeRecipe.h"
#include "editor/workspace/DocumentView.h"
#include "editor/workspace/Workspace.h"

#include "nodes/model/FreeName.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/visual/elements/widgetState.h"
#include "nodes/visual/elements/widgetSymbol.h"
#include "utils/undo/AddNodeLinkCommand.h"
#include "utils/undo/CommandGroup.h"
#include "widgets/scene/ProxyLayer.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyView.h"

#include <vector>

namespace Editor {

namespace {

struct UsualState
{
    const char *name;
    const char *value;
    const char *look;
    const char *text;
};

constexpr UsualState yesNo[] = {{"Остановлен", "0", "off", ""}, {"Работает", "1", "on", ""}};
constexpr UsualState numbered[] = {{"Остановлен", "0", "off", ""},
                                   {"Работает", "1", "on", ""},
                                   {"В движении", "2", "moving", ""},
                                   {"Авария", "3", "fault", "Авария"}};

template <std::size_t count>
void addStates(const UsualState (&states)[count], const Nodes::widgetSymbol &symbol,
               QUndoCommand *group)
{
    for (const UsualState &state : states) {
        NodeRecipe recipe(QStringLiteral("state"), QString::fromUtf8(state.name));
        recipe.set(QStringLiteral("from"), QString(state.value))
            .set(QStringLiteral("to"), QString(state.value))
            .set(QStringLiteral("look"), QString(state.look))
            .set(QStringLiteral("text"), QString::fromUtf8(state.text));
        new Utils::AddNodeLinkCommand(recipe.make(*symbol.GetNodesCollection()),
                                      Nodes::NodeLink(&symbol), group);
    }
}

std::vector<const Nodes::widgetSymbol *> withoutStates(Workspace &workspace)
{
    std::vector<const Nodes::widgetSymbol *> found;
    for (const Nodes::NodeLink &link : workspace.selection().nodes()) {
        const auto *symbol = dynamic_cast<const Nodes::widgetSymbol *>(link.GetNode());
        if (symbol && symbol->GetSignal() && symbol->Children().empty())
            found.push_back(symbol);
    }
    return found;
}

Nodes::ConfigNode *topLayer(const Widgets::ProxyScene &scene)
{
    const QList<Widgets::ProxyLayer *> layers = scene.sortZOrder();
    return layers.isEmpty() ? nullptr : layers.last()->getNode();
}

} // namespace

void SymbolCommands::insert(Workspace &workspace, const SymbolRow &row)
{
    DocumentView *document = workspace.document();
    const Widgets::ProxyScene *scene = document ? document->scene() : nullptr;
    const Widgets::ProxyView *view = document ? document->view() : nullptr;
    Nodes::ConfigNode *layer = scene ? topLayer(*scene) : nullptr;
    if (!view || !layer) {
        workspace.tell(Workspace::Warning,
                       QStringLiteral("Откройте окно или страницу, на которую поставить "
                                      "мнемосимвол, или перетащите его туда."));
        return;
    }
    const QPoint middle = view->mapToScene(view->viewport()->rect().center()).toPoint() -
                          QPoint(row.size.width(), row.size.height()) / 2;
    constexpr int grid = 8; // pixels
    Widgets::DroppedProperties::Texts texts = row.properties();
    const std::string title = texts.take(QStringLiteral("name")).toStdString();
    std::vector<std::string_view> taken;
    for (const auto &child : layer->Children())
        taken.emplace_back(child->GetName());
    NodeRecipe recipe(QStringLiteral("symbol"),
                      QString::fromStdString(Nodes::FreeName(taken, title, 1)));
    recipe.set(QStringLiteral("x"), qRound(middle.x() / double(grid)) * grid)
        .set(QStringLiteral("y"), qRound(middle.y() / double(grid)) * grid);
    for (auto it = texts.cbegin(); it != texts.cend(); ++it)
        recipe.set(it.key(), it.value());
    Nodes::NodesCollection &project = *layer->GetNodesCollection();
    const Nodes::NodeLink link = recipe.make(project);
    if (workspace.push(new Utils::AddNodeLinkCommand(link, Nodes::NodeLink(layer))))
        workspace.selection().select({link}, nullptr);
    (void)project.TakeClone(link); // refused ones are still there
}

bool SymbolCommands::canFillStates(Workspace &workspace)
{
    return !withoutStates(workspace).empty();
}

void SymbolCommands::fillStates(Workspace &workspace)
{
    auto *group = new Utils::CommandGroup(QStringLiteral("Состояния мнемосимволов"));
    for (const Nodes::widgetSymbol *symbol : withoutStates(workspace))
        makeStates(*symbol, group);
    workspace.push(group);
}

QUndoCommand *SymbolCommands::makeStates(const Nodes::widgetSymbol &symbol, QUndoCommand *parent)
{
    const Nodes::BasicSignal *signal = symbol.GetSignal();
    if (!signal)
        return nullptr;
    const Nodes::enSignalValueType type = signal->GetValueType();
    if (type != Nodes::enSignalValueType::Bool && type != Nodes::enSignalValueType::Int &&
        type != Nodes::enSignalValueType::ULong)
        return nullptr; // a measured value is shown by the level and by a text
    auto *group = new Utils::CommandGroup(QStringLiteral("Состояния мнемосимвола"), parent);
    if (type == Nodes::enSignalValueType::Bool)
        addStates(yesNo, symbol, group);
    else
        addStates(numbered, symbol, group);
    return group;
}

} // namespace Editor
