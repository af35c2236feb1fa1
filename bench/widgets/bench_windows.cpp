// Calling up a window of live labels: from the action to the first full paint.
#include "LabelWindow.h"

#include "widgets/actions/qBasicAction.h"
#include "widgets/windows/WindowBasic.h"

#include "nodes/actions/BasicAction.h"

#include <benchmark/benchmark.h>

#include <chrono>

namespace {

/// How the action reaches the GUI thread.
enum Way { Queued, Direct /* without the worker's pacing */ };

/// Counts the full paints of runtime windows.
class FullPaints : public QObject
{
public:
    FullPaints() { qApp->installEventFilter(this); }
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint &&
            qobject_cast<Widgets::WindowBasic *>(watched->parent()))
            ++count;
        return false;
    }
    int count = 0;
};

struct Opening
{
    explicit Opening(int labels) : project(labels)
    {
        action = static_cast<Nodes::BasicAction *>(
            project.add("actionShowWindow", project.add("folder", project.project.GetRoot())));
        LabelProject::set(*action, "window", std::to_string(project.window->GetId()));
    }

    void call(Way way)
    {
        if (way == Queued) {
            (void)project.manager->PushAction(action);
            return;
        }
        const std::unique_ptr<Widgets::qBasicAction> run(project.manager->CreateQAction(action));
        run->setState(Widgets::ActionHandedOver);
        (void)project.manager->OnActionExecuted(run.get());
    }

    /// Seconds from the call to the first paint that followed it.
    double measure(Way way)
    {
        const int before = paints.count;
        const auto begun = std::chrono::steady_clock::now();
        call(way);
        while (paints.count == before)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - begun).count();
    }

    QWidget *window() const { return project.manager->GetWindow(project.window->GetId()); }

    LabelProject project;
    Nodes::BasicAction *action;
    FullPaints paints;
};

void openWindow(benchmark::State &state)
{
    Opening opening(int(state.range(0)));
    for (auto _ : state) {
        state.SetIterationTime(opening.measure(Way(state.range(1))));
        delete opening.window();
        settle();
    }
}

void showAgain(benchmark::State &state)
{
    Opening opening(int(state.range(0)));
    opening.measure(Direct);
    for (auto _ : state) {
        opening.window()->hide();
        settle();
        state.SetIterationTime(opening.measure(Way(state.range(1))));
    }
}

} // namespace

BENCHMARK(openWindow)
    ->ArgNames({"labels", "direct"})
    ->ArgsProduct({{100, 1000}, {Queued, Direct}})
    ->UseManualTime()
    ->Iterations(30)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(showAgain)
    ->ArgNames({"labels", "direct"})
    ->ArgsProduct({{100, 1000}, {Queued, Direct}})
    ->UseManualTime()
    ->Iterations(30)
    ->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    const BenchApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
