// Loading and saving a project of 100,000 labels with 20 properties each: time and memory.
// Budget: load at most 0.6 s, at most 200 MB more resident at the highest point.
#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindTable.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/NodesContainer.h"
#include "nodes/serial/ProjectReader.h"
#include "nodes/serial/ProjectWriter.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int labelCount = 100000;
constexpr int propertyCount = 20;

/// Some value other than a fresh node's; "" when the property is left alone.
std::string unusualText(const Nodes::PropertyDescriptor &d, int number)
{
    switch (d.binding.type) {
    case Nodes::PropertyType::Bool:
        return d.defaultText == "true" ? "false" : "true";
    case Nodes::PropertyType::Int:
        return d.choices.empty() ? std::to_string(d.hasRange ? int(d.maximum) : number + 1)
                                 : d.choices.back().token;
    case Nodes::PropertyType::Link:
    case Nodes::PropertyType::Links:
        return std::to_string(number + 4);
    case Nodes::PropertyType::Color:
        return "#10203040";
    case Nodes::PropertyType::String:
        return "text value";
    default:
        return {};
    }
}

std::unique_ptr<Nodes::ConfigNode> makeLabel(Nodes::NodesCollection &project, int number)
{
    const Nodes::KindInfo &kind = *Nodes::KindTable::Instance().FindByKey("label");
    std::unique_ptr<Nodes::ConfigNode> label = project.CreateDetached(kind);
    label->SetName("Label " + std::to_string(number));
    int changed = 0;
    for (const Nodes::PropertyDescriptor &d : kind.properties) {
        const std::string text = unusualText(d, number);
        const bool isUsed = changed < propertyCount && !text.empty() && text != d.defaultText;
        changed += isUsed && d.binding.parse(d, *label, text) ? 1 : 0;
    }
    return label;
}

std::unique_ptr<Nodes::NodesCollection> makeProject()
{
    auto project = std::make_unique<Nodes::NodesCollection>();
    const Nodes::KindTable &kinds = Nodes::KindTable::Instance();
    if (!project->SetRoot(project->CreateDetached(*kinds.FindByKey("project"))))
        std::abort();
    using Type = Nodes::NodeType;
    Nodes::ConfigNode *window =
        project->CreateNode(Type(Type::SubtypeComposition), project->GetRoot());
    Nodes::ConfigNode *layer = project->CreateNode(Type(Type::SubtypeLayer), window);
    for (int i = 0; i < labelCount; ++i)
        layer->Append(makeLabel(*project, i));
    return project;
}

/// File of the generated project, removed at exit. Another process makes it, so that the heap of
/// this one is as small as a station's before it loads.
class ProjectFile
{
public:
    ProjectFile()
    {
        const pid_t child = ::fork();
        if (child == 0)
            ::_exit(Nodes::ProjectWriter::WriteFile(*makeProject(), path) ? 0 : 1);
        int status = 1;
        if (::waitpid(child, &status, 0) != child || status != 0)
            std::abort();
    }
    ~ProjectFile() { std::filesystem::remove(path); }

    const std::string path = std::filesystem::temp_directory_path() /
                             ("bench_project_" + std::to_string(::getpid()) + ".xml");
};

const std::string &projectFile()
{
    static const ProjectFile file;
    return file.path;
}

double statusMegabytes(const std::string &field)
{
    std::ifstream status("/proc/self/status");
    std::string word;
    double kilobytes = 0;
    while (status >> word) {
        if (word == field)
            status >> kilobytes;
    }
    return kilobytes / 1024;
}

/// Highest resident size is counted from now on.
void resetPeak()
{
    std::ofstream("/proc/self/clear_refs") << "5";
}

void loadProject(benchmark::State &state)
{
    const std::string &file = projectFile();
    double growth = 0;
    for (auto _ : state) {
        state.PauseTiming();
        std::unique_ptr<Nodes::NodesCollection> project;
        Nodes::ProjectReader reader;
        ::malloc_trim(0);
        resetPeak();
        const double before = statusMegabytes("VmRSS:");
        state.ResumeTiming();
        if (!reader.ReadFile(file, project))
            state.SkipWithError("the project does not load");
        state.PauseTiming();
        growth = std::max(growth, statusMegabytes("VmHWM:") - before);
        project.reset();
        state.ResumeTiming();
    }
    state.counters["peak_MB"] = growth;
    state.counters["file_MB"] = double(std::filesystem::file_size(file)) / 1048576;
}

void saveProject(benchmark::State &state)
{
    std::unique_ptr<Nodes::NodesCollection> project = makeProject();
    for (auto _ : state)
        benchmark::DoNotOptimize(Nodes::ProjectWriter::ToText(*project));
}

/// What the first question of who refers to what costs, and the questions after it.
void buildLinkIndex(benchmark::State &state)
{
    std::unique_ptr<Nodes::NodesCollection> project;
    Nodes::ProjectReader reader;
    if (!reader.ReadFile(projectFile(), project))
        state.SkipWithError("the project does not load");
    const Nodes::NodeLink target(project->GetRoot()->GetNodeAt(0));
    ::malloc_trim(0);
    const double before = statusMegabytes("VmRSS:");
    for (auto _ : state)
        benchmark::DoNotOptimize(project->FindUses(target));
    state.counters["index_MB"] = statusMegabytes("VmRSS:") - before;
}

void deleteReferredNodes(benchmark::State &state)
{
    std::unique_ptr<Nodes::NodesCollection> project;
    Nodes::ProjectReader reader;
    if (!reader.ReadFile(projectFile(), project))
        state.SkipWithError("the project does not load");
    Nodes::ConfigNode *layer = project->GetRoot()->GetNodeAt(0)->GetNodeAt(0);
    (void)project->FindUses(layer);
    for (auto _ : state) {
        if (!layer->DeleteNode(layer->GetNodeAt(layer->GetNodeCount() - 2)->GetId()))
            state.SkipWithError("not deleted");
    }
}

void packAndUnpack(benchmark::State &state)
{
    std::unique_ptr<Nodes::NodesCollection> project = makeProject();
    (void)project->remember(*project->GetRoot());
    Nodes::NodesContainer nodes;
    nodes.Add(Nodes::NodeLink(project->GetRoot()->GetNodeAt(0)));
    for (auto _ : state) {
        Nodes::NodesContainer copies;
        if (!project->Deserialize(project->Serialize(nodes), copies))
            state.SkipWithError("the packed nodes do not read back");
        for (const Nodes::NodeLink &copy : copies)
            project->TakeClone(copy);
    }
}

} // namespace

BENCHMARK(loadProject)->Unit(benchmark::kMillisecond)->Iterations(1)->Repetitions(7);
BENCHMARK(buildLinkIndex)->Unit(benchmark::kMillisecond)->Iterations(1)->Repetitions(3);
BENCHMARK(deleteReferredNodes)->Unit(benchmark::kMicrosecond)->Iterations(1000);
BENCHMARK(saveProject)->Unit(benchmark::kMillisecond)->Iterations(1)->Repetitions(5);
BENCHMARK(packAndUnpack)->Unit(benchmark::kMillisecond)->Iterations(1)->Repetitions(5);

BENCHMARK_MAIN();
