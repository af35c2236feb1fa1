// The property table of 10,000 selected elements: shown, one property of all set, taken back, and
// the same of one element, which is what there would be without a selection.

#include "editor/properties/PropertyModel.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindTable.h"
#include "nodes/model/NodesCollection.h"

#include <QGuiApplication>
#include <QUndoStack>
#include <benchmark/benchmark.h>

namespace {

using Editor::PropertyModel;
using Nodes::NodeType;

struct Drawing
{
    explicit Drawing(int count)
    {
        const Nodes::KindTable &kinds = Nodes::KindTable::Instance();
        if (!project.SetRoot(project.CreateDetached(*kinds.FindByKey("project"))))
            std::abort();
        Nodes::ConfigNode *composition =
            project.CreateNode(kinds.FindByKey("composition")->type, project.GetRoot());
        Nodes::ConfigNode *layer = project.CreateNode(kinds.FindByKey("layer")->type, composition);
        const NodeType label = kinds.FindByKey("label")->type;
        std::vector<std::unique_ptr<Nodes::ConfigNode>> made;
        for (int i = 0; i < count; ++i) {
            made.push_back(project.CreateDetached(*kinds.Find(label)));
            made.back()->SetName("label " + std::to_string(i));
        }
        layer->AddNodes(made);
        for (const auto &child : layer->Children())
            nodes.emplace_back(child.get());
    }

    Nodes::NodesCollection project;
    Nodes::NodeLinks nodes;
    QUndoStack stack;
    PropertyModel model{[this](QUndoCommand *command) {
        stack.push(command);
        return true;
    }};
};

void show(benchmark::State &state)
{
    Drawing drawing(int(state.range(0)));
    for (auto _ : state) {
        drawing.model.setNodes({});
        drawing.model.setNodes(drawing.nodes);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void changeAll(benchmark::State &state)
{
    Drawing drawing(int(state.range(0)));
    drawing.model.setNodes(drawing.nodes);
    const QModelIndex row = drawing.model.find(QStringLiteral("width"));
    const QModelIndex cell = row.sibling(row.row(), PropertyModel::ColumnValue);
    int width = 100;
    for (auto _ : state) {
        if (!drawing.model.setData(cell, QString::number(100 + ++width % 500)))
            state.SkipWithError("refused");
        state.PauseTiming();
        drawing.stack.undo();
        drawing.model.refresh();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void undoAll(benchmark::State &state)
{
    Drawing drawing(int(state.range(0)));
    drawing.model.setNodes(drawing.nodes);
    const QModelIndex row = drawing.model.find(QStringLiteral("width"));
    if (!drawing.model.setData(row.sibling(row.row(), PropertyModel::ColumnValue), "321"))
        state.SkipWithError("refused");
    for (auto _ : state) {
        drawing.stack.undo();
        drawing.model.refresh();
        state.PauseTiming();
        drawing.stack.redo();
        drawing.model.refresh();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(show)->Arg(1)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(changeAll)->Arg(1)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(undoAll)->Arg(1)->Arg(10000)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
