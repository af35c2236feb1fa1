// Edits of everything in a large window, each until all of it is painted: deleting, pasting,
// duplicating and moving thousands of elements, their undo and their redo.
#include "EditedWindow.h"

#include "widgets/scene/editing/arrange/SceneEditTable.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

/// What was let go is deleted, what waits is done, and what is seen is painted.
void finish(const EditedWindow &window)
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    window.view->viewport()->repaint();
}

void deleteAll(EditedWindow &window)
{
    window.scene->removeWidget();
}

void pasteAll(EditedWindow &window)
{
    window.scene->onPasteFromBuffer({20, 20});
}

void duplicateAll(EditedWindow &window)
{
    for (const Widgets::SceneEditRow &row : Widgets::SceneEditTable::rows()) {
        if (std::string("duplicate") == row.id)
            window.scene->sceneEditor()->tableEdits().run(row);
    }
}

void moveAll(EditedWindow &window)
{
    for (Widgets::ProxyWidget *host : window.scene->sceneEditor()->selection().hosts())
        host->keyMove({1, 0, 0, 0});
    window.scene->onMoveFinished();
}

using Edit = void (*)(EditedWindow &);

void undo(EditedWindow &window)
{
    window.stack.undo();
}

void redo(EditedWindow &window)
{
    window.stack.redo();
}

double secondsOf(Edit step, EditedWindow &window)
{
    QElapsedTimer timer;
    timer.start();
    step(window);
    finish(window);
    return double(timer.nsecsElapsed()) / 1e9;
}

/// Times one of the edit, its undo and its redo.
void measure(benchmark::State &state, Edit edit, Edit timed)
{
    EditedWindow window(int(state.range(0)));
    window.open();
    window.selectAll();
    window.scene->onCopyToBuffer();
    for (auto _ : state) {
        window.selectAll();
        finish(window);
        double seconds = 0;
        for (const Edit step : {edit, Edit(undo), Edit(redo)}) {
            const double taken = secondsOf(step, window);
            seconds = step == timed ? taken : seconds;
        }
        if (window.stack.count() != 1)
            state.SkipWithError("the edit made no step");
        window.stack.undo();
        finish(window);
        state.SetIterationTime(seconds);
    }
}

void add(const char *name, Edit edit)
{
    const std::pair<const char *, Edit> parts[] = {{"", edit}, {"Undo", undo}, {"Redo", redo}};
    for (const auto &[part, timed] : parts) {
        benchmark::RegisterBenchmark((std::string(name) + part).c_str(), measure, edit, timed)
            ->Unit(benchmark::kMillisecond)
            ->UseManualTime()
            ->Arg(2500)
            ->Arg(5000)
            ->Arg(10000)
            ->Iterations(2);
    }
}

} // namespace

int main(int argc, char **argv)
{
    BenchApplication app(argc, argv);
    add("delete", deleteAll);
    add("paste", pasteAll);
    add("duplicate", duplicateAll);
    add("move", moveAll);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
