// What keeping unsaved work costs whoever edits meanwhile: the fork that begins it, beside writing
// the text in place, and the checks that run beside editing. Projects of 10,000 and 100,000 nodes.
#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/project/ProjectCheck.h"
#include "nodes/project/ProjectDiff.h"
#include "nodes/project/RecoveryWriter.h"
#include "nodes/serial/ProjectReader.h"
#include "nodes/serial/ProjectWriter.h"

#include <benchmark/benchmark.h>

#include <filesystem>

#include <unistd.h>

using namespace Nodes;

namespace {

std::unique_ptr<NodesCollection> makeProject(int nodes)
{
    std::string text = "<project format=\"1\" id=\"1\" name=\"P\">";
    int id = 1;
    while (id < nodes) {
        text += "<folder id=\"" + std::to_string(++id) + "\" name=\"F" + std::to_string(id) + "\">";
        for (int i = 0; i < 100; ++i) {
            const std::string number = std::to_string(++id);
            text += "<memorySignal id=\"" + number + "\" name=\"S" + number +
                    "\" type=\"double\" unit=\"bar\" maximum=\"250\"/>";
        }
        text += "</folder>";
    }
    ProjectReader reader;
    std::unique_ptr<NodesCollection> project;
    if (!reader.ReadBuffer(text + "</project>", "bench.xml", project))
        throw std::runtime_error("not read");
    return project;
}

/// What the editor waits for.
void beginRecovery(benchmark::State &state)
{
    const auto project = makeProject(int(state.range(0)));
    const auto directory =
        std::filesystem::temp_directory_path() / ("bench-recovery-" + std::to_string(::getpid()));
    RecoveryInfo info;
    info.project = "/bench/project.xml";
    info.file = (directory / "states" / "x.recovery").string();
    for (auto _ : state) {
        RecoveryWriter writer;
        if (!writer.Start(*project, info))
            state.SkipWithError("not begun");
        state.PauseTiming();
        const Result written = writer.Finish();
        state.ResumeTiming();
        if (!written)
            state.SkipWithError(written.GetDetail().c_str());
    }
    std::filesystem::remove_all(directory);
}

/// What it would wait for without the fork.
void writeText(benchmark::State &state)
{
    const auto project = makeProject(int(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(ProjectWriter::ToText(*project));
}

void check(benchmark::State &state)
{
    const auto project = makeProject(int(state.range(0)));
    for (auto _ : state) {
        ProjectCheck all(*project);
        all.Finish();
        benchmark::DoNotOptimize(all.GetProblems().size());
    }
}

/// The longest that an editor stands still between two slices of 8 ms.
void longestSlice(benchmark::State &state)
{
    const auto project = makeProject(int(state.range(0)));
    double longest = 0;
    for (auto _ : state) {
        ProjectCheck all(*project);
        for (bool goesOn = true; goesOn;) {
            const auto begin = std::chrono::steady_clock::now();
            goesOn = all.Work(std::chrono::milliseconds(8));
            const std::chrono::duration<double, std::milli> took =
                std::chrono::steady_clock::now() - begin;
            longest = std::max(longest, took.count());
        }
    }
    state.counters["ms"] = longest;
}

void diff(benchmark::State &state)
{
    const auto before = makeProject(int(state.range(0)));
    const auto after = makeProject(int(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(ProjectDiff(*before, *after).isEmpty());
}

} // namespace

BENCHMARK(beginRecovery)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(10);
BENCHMARK(writeText)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(check)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(longestSlice)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(diff)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
