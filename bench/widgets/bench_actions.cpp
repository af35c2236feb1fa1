// 10,000 operator actions pushed at once, through the worker to the GUI thread, and how long the
// GUI thread was busy at a stretch meanwhile.
#include "LabelWindow.h"

#include "widgets/actions/qBasicAction.h"

#include "nodes/actions/BasicAction.h"

#include <benchmark/benchmark.h>

#include <QApplication>

#include <algorithm>
#include <chrono>

namespace {

using Clock = std::chrono::steady_clock;
constexpr int manyActions = 10000;

double secondsSince(Clock::time_point begun)
{
    return std::chrono::duration<double>(Clock::now() - begun).count();
}

/// A project with an action that writes a value and one that marks the end.
struct Writing
{
    Writing() : project(0), folder(project.add("folder", project.project.GetRoot()))
    {
        write = makeWrite(value);
        finish = makeWrite(mark);
    }
    Nodes::BasicAction *makeWrite(Nodes::BasicSignal *&signal)
    {
        signal = static_cast<Nodes::BasicSignal *>(project.add("memorySignal", folder));
        LabelProject::set(*signal, "writable", "true");
        Nodes::ConfigNode *action = project.add("actionWriteValue", folder);
        LabelProject::set(*action, "signal", std::to_string(signal->GetId()));
        LabelProject::set(*action, "value", "1");
        return static_cast<Nodes::BasicAction *>(action);
    }
    /// Seconds of the longest turn of the event loop until everything pushed has run.
    double runAll()
    {
        double longest = 0;
        while (mark->GetValue().ToDouble() != 1.0) {
            const Clock::time_point begun = Clock::now();
            QCoreApplication::processEvents();
            longest = std::max(longest, secondsSince(begun));
            QThread::usleep(100);
        }
        return longest;
    }

    LabelProject project;
    Nodes::ConfigNode *folder;
    Nodes::BasicSignal *value = nullptr;
    Nodes::BasicSignal *mark = nullptr;
    Nodes::BasicAction *write = nullptr;
    Nodes::BasicAction *finish = nullptr;
};

void pushedAtOnce(benchmark::State &state)
{
    Writing writing;
    const Nodes::NodeLinks actions(manyActions, writing.write->GetNodeLink());
    double push = 0;
    double longest = 0;
    for (auto _ : state) {
        writing.mark->GetCell()->Publish(0.0);
        const Clock::time_point begun = Clock::now();
        (void)writing.project.manager->PushActions(actions);
        (void)writing.project.manager->PushAction(writing.finish);
        push += secondsSince(begun);
        longest = std::max(longest, writing.runAll());
        state.SetIterationTime(secondsSince(begun));
    }
    state.counters["push_ms"] = push / double(state.iterations()) * 1e3;
    state.counters["longest_turn_ms"] = longest * 1e3;
    state.SetItemsProcessed(state.iterations() * manyActions);
}

/// The same runs one after the other, without queue and pacing.
void executedDirectly(benchmark::State &state)
{
    Writing writing;
    for (auto _ : state) {
        for (int i = 0; i < manyActions; ++i) {
            const std::unique_ptr<Widgets::qBasicAction> run(
                writing.project.manager->CreateQAction(writing.write));
            run->setState(Widgets::ActionHandedOver);
            (void)writing.project.manager->OnActionExecuted(run.get());
        }
    }
    state.SetItemsProcessed(state.iterations() * manyActions);
}

} // namespace

BENCHMARK(pushedAtOnce)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(executedDirectly)->Iterations(5)->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
