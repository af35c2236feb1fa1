// Calling up the sample's screens with all their controls: from the action to the first full
// paint. Usage: bench_overview PROJECT.xml [benchmark options]
#include "LabelWindow.h"

#include "nodes/serial/ProjectReader.h"
#include "nodes/visual/BasicWidget.h"
#include "nodes/visual/windows/BasicComposition.h"
#include "widgets/windows/WindowComposite.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>

namespace {

std::string projectFile;

std::unique_ptr<Nodes::NodesCollection> load()
{
    std::unique_ptr<Nodes::NodesCollection> project;
    const Nodes::Result read = Nodes::ProjectReader().ReadFile(projectFile, project);
    if (!read)
        throw std::runtime_error(read.ToString());
    return project;
}

/// The sample at run time, every signal with a good value, without its drivers.
struct Sample
{
    Sample()
    {
        core.AdoptProject(load(), projectFile);
        core.SetWorkMode(Nodes::WorkModeRuntime);
        manager = std::make_unique<Widgets::WindowManager>(&core);
        for (auto *signal : all<Nodes::BasicSignal>())
            signal->GetCell()->Publish(1);
    }

    template <class Node> std::vector<Node *> all() const
    {
        std::vector<Node *> found;
        for (const Nodes::NodeLink &node : core.GetNodesCollection()->GetRoot()->GetNodes(true)) {
            if (auto *typed = dynamic_cast<Node *>(node.GetNode()))
                found.push_back(typed);
        }
        return found;
    }
    template <class Node> Node &named(const char *name) const
    {
        for (Node *node : all<Node>()) {
            if (node->GetName() == name)
                return *node;
        }
        throw std::runtime_error(std::string("the project has no ") + name);
    }

    static void add(Nodes::ConfigNode &window, const Nodes::ConfigNode &elements)
    {
        const Nodes::NodesArray nodes = elements.GetArray();
        const Nodes::Result allowed = window.CanDropNodes(nodes, Nodes::ConfigNode::DropCopy);
        if (!allowed)
            throw std::runtime_error(allowed.ToString());
        window.DropNodes(nodes, Nodes::ConfigNode::DropCopy);
    }
    static void addLayers(Nodes::ConfigNode &window, const Nodes::BasicComposition &page)
    {
        for (const Nodes::NodeLink &layer : page.GetNodes())
            add(window, *layer.GetNode());
    }
    /// A window of all elements of two pages and two windows.
    Nodes::BasicWindow &gather()
    {
        auto &window = *core.GetNodesCollection()->CreateNode(
            Nodes::NodeType(Nodes::NodeType::SubtypeWindow), core.GetNodesCollection()->GetRoot());
        LabelProject::set(window, "width", "1920");
        LabelProject::set(window, "height", "1000");
        addLayers(window, named<Nodes::BasicComposition>("Котельная"));
        addLayers(window, named<Nodes::BasicComposition>("Котёл 1"));
        add(window, named<Nodes::BasicWindow>("Управление котлом 1"));
        add(window, named<Nodes::BasicWindow>("Обучение"));
        return dynamic_cast<Nodes::BasicWindow &>(window);
    }

    Nodes::systemCore core;
    std::unique_ptr<Widgets::WindowManager> manager;
};

int elementCount(const Nodes::ConfigNode &node)
{
    int count = 0;
    for (const Nodes::NodeLink &below : node.GetNodes(true))
        count += dynamic_cast<const Nodes::BasicWidget *>(below.GetNode()) ? 1 : 0;
    return count;
}

double secondsSince(std::chrono::steady_clock::time_point begun)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begun).count();
}

void openEveryControl(benchmark::State &state)
{
    Sample sample;
    Nodes::BasicWindow &node = sample.gather();
    state.counters["elements"] = elementCount(node);
    for (auto _ : state) {
        const auto begun = std::chrono::steady_clock::now();
        QWidget *window = sample.manager->createWindow(&node, nullptr).widget;
        PaintCounter paints(static_cast<Widgets::ProxyView *>(window)->viewport());
        window->show();
        paints.await();
        state.SetIterationTime(secondsSince(begun));
        delete window;
        settle();
    }
}

void turnPage(benchmark::State &state)
{
    Sample sample;
    auto &overview = sample.named<Nodes::BasicComposition>("Котельная");
    auto &boiler = sample.named<Nodes::BasicComposition>("Котёл 1");
    auto *window = static_cast<Widgets::WindowComposite *>(
        sample.manager->createWindow(&sample.named<Nodes::BasicWindow>("Мнемосхема"), nullptr)
            .widget);
    window->LoadComposition(&boiler);
    window->show();
    settle();
    state.counters["elements"] = elementCount(overview);
    PaintCounter paints(window->viewport());
    for (auto _ : state) {
        const auto begun = std::chrono::steady_clock::now();
        window->LoadComposition(&overview);
        paints.await();
        state.SetIterationTime(secondsSince(begun));
        window->LoadComposition(&boiler);
        settle();
    }
}

} // namespace

BENCHMARK(openEveryControl)->UseManualTime()->Iterations(30)->Unit(benchmark::kMillisecond);
BENCHMARK(turnPage)->UseManualTime()->Iterations(30)->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    const BenchApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (argc < 2) {
        std::fputs("usage: bench_overview PROJECT.xml [benchmark options]\n", stderr);
        return 2;
    }
    projectFile = argv[1];
    benchmark::RunSpecifiedBenchmarks();
}
