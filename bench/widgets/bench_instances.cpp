// Two hundred instances of one template on an edited screen, while the template is edited.
#include "EditedWindow.h"

#include <benchmark/benchmark.h>

namespace {

constexpr int columns = 20;
constexpr int elementsOfTemplate = 10;

/// A window of so many instances; their template stands beside it.
struct InstanceWindow
{
    explicit InstanceWindow(int count) : window(0)
    {
        LabelProject &project = window.project;
        source = project.add("windowTemplate", project.window->GetParent());
        LabelProject::set(*source, "width", "80");
        LabelProject::set(*source, "height", "100");
        for (int i = 0; i < elementsOfTemplate; ++i) {
            label = project.add("label", source);
            LabelProject::set(*label, "y", std::to_string(10 * i));
            LabelProject::set(*label, "width", "80");
            LabelProject::set(*label, "height", "10");
            LabelProject::set(*label, "text", "Ток");
        }
        for (int i = 0; i < count; ++i) {
            Nodes::ConfigNode *instance = project.add("instance", project.window);
            LabelProject::set(*instance, "template", std::to_string(source->GetId()));
            LabelProject::set(*instance, "x", std::to_string(i % columns * 80));
            LabelProject::set(*instance, "y", std::to_string(i / columns * 100));
            LabelProject::set(*instance, "width", "78");
            LabelProject::set(*instance, "height", "98");
        }
        window.open();
    }
    /// One property of the template, until every instance is painted anew.
    void edit(const char *key, const std::string &text) const
    {
        PaintCounter counter(window.view->viewport());
        LabelProject::set(*label, key, text);
        counter.await();
    }

    EditedWindow window;
    Nodes::ConfigNode *source = nullptr;
    Nodes::ConfigNode *label = nullptr;
};

void open(benchmark::State &state)
{
    for (auto _ : state) {
        const InstanceWindow window(int(state.range(0)));
        benchmark::DoNotOptimize(window.label);
    }
}

void changeText(benchmark::State &state)
{
    const InstanceWindow window(int(state.range(0)));
    int count = 0;
    for (auto _ : state)
        window.edit("text", ++count % 2 ? "Напор" : "Ток");
}

/// As a drag of it in another tab does.
void moveElement(benchmark::State &state)
{
    const InstanceWindow window(int(state.range(0)));
    int count = 0;
    for (auto _ : state)
        window.edit("x", std::to_string(++count % 40));
}

/// A change of another node, which no instance shows.
void changeBeside(benchmark::State &state)
{
    InstanceWindow window(int(state.range(0)));
    Nodes::ConfigNode *other = window.window.project.add("label", window.window.project.window);
    QCoreApplication::processEvents();
    int count = 0;
    for (auto _ : state) {
        LabelProject::set(*other, "text", std::to_string(++count));
        QCoreApplication::processEvents();
    }
}

/// Peer: as many labels on a screen of their own, one of which changes.
void changeOneLabel(benchmark::State &state)
{
    EditedWindow window(int(state.range(0)) * elementsOfTemplate);
    window.open();
    Nodes::ConfigNode *label = window.project.window->Children().front().get();
    int count = 0;
    for (auto _ : state) {
        PaintCounter counter(window.view->viewport());
        LabelProject::set(*label, "text", ++count % 2 ? "Напор" : "Ток");
        counter.await();
    }
}

} // namespace

BENCHMARK(open)->Arg(200)->Unit(benchmark::kMillisecond);
BENCHMARK(changeText)->Arg(200)->Unit(benchmark::kMillisecond);
BENCHMARK(moveElement)->Arg(200)->Unit(benchmark::kMillisecond);
BENCHMARK(changeBeside)->Arg(200)->Unit(benchmark::kMicrosecond);
BENCHMARK(changeOneLabel)->Arg(200)->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    BenchApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
