// Editing large scenes: opening, selecting, dragging, undoing and pasting, beside a bare scene of
// as many plain items.
#include "EditedWindow.h"

#include <benchmark/benchmark.h>

#include <QGraphicsRectItem>
#include <QGraphicsView>
#include <QMouseEvent>
#include <QPainter>

namespace {

/// Presses on the first element and drags it with all that is selected; each step is painted.
class Drag
{
public:
    explicit Drag(QGraphicsView &view) : m_view(view), m_at(view.mapFromScene(5, 5))
    {
        send(QEvent::MouseButtonPress, Qt::LeftButton);
    }
    void step()
    {
        m_at += QPoint(m_count / 50 % 2 == 0 ? 1 : -1, 0);
        ++m_count;
        send(QEvent::MouseMove, Qt::NoButton);
        m_view.viewport()->repaint();
    }
    void release() { send(QEvent::MouseButtonRelease, Qt::LeftButton); }

private:
    void send(QEvent::Type type, Qt::MouseButton button)
    {
        const Qt::MouseButtons buttons =
            type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent event(type, m_at, m_view.viewport()->mapToGlobal(m_at), button, buttons,
                          Qt::NoModifier);
        QApplication::sendEvent(m_view.viewport(), &event);
    }

    QGraphicsView &m_view;
    QPoint m_at;
    int m_count = 0;
};

/// Peer: a rectangle, which shows nothing of being selected.
class PlainItem : public QGraphicsRectItem
{
public:
    PlainItem() : QGraphicsRectItem(0, 0, 14, 8) { setFlags(ItemIsMovable | ItemIsSelectable); }
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *) override
    {
        painter->setPen(Qt::gray);
        painter->drawRect(rect());
    }
};

struct BareWindow
{
    explicit BareWindow(int count)
    {
        scene.setItemIndexMethod(QGraphicsScene::NoIndex);
        scene.setSceneRect(0, 0, 1600, 1000);
        for (int i = 0; i < count; ++i) {
            auto *item = new PlainItem;
            item->setPos(placeOf(i));
            scene.addItem(item);
        }
        view.setViewportUpdateMode(QGraphicsView::FullViewportUpdate);
        view.setFixedSize(1602, 1002);
        view.setScene(&scene);
        PaintCounter counter(view.viewport());
        view.show();
        counter.await();
    }
    void selectAll() const
    {
        const QList<QGraphicsItem *> items = scene.items();
        for (QGraphicsItem *item : items)
            item->setSelected(true);
    }

    QGraphicsScene scene;
    QGraphicsView view;
};

void open(benchmark::State &state)
{
    EditedWindow window(int(state.range(0)));
    for (auto _ : state) {
        window.open();
        state.PauseTiming();
        window.view.reset();
        state.ResumeTiming();
    }
}

void selectAll(benchmark::State &state)
{
    EditedWindow window(int(state.range(0)));
    window.open();
    for (auto _ : state) {
        window.selectAll();
        window.view->viewport()->repaint();
        state.PauseTiming();
        window.scene->clearSelection();
        settle();
        state.ResumeTiming();
    }
}

void selectAllBare(benchmark::State &state)
{
    BareWindow window(int(state.range(0)));
    for (auto _ : state) {
        window.selectAll();
        window.view.viewport()->repaint();
        state.PauseTiming();
        window.scene.clearSelection();
        state.ResumeTiming();
    }
}

void drag(benchmark::State &state)
{
    EditedWindow window(int(state.range(0)));
    window.open();
    window.selectAll();
    Drag drag(*window.view);
    drag.step();
    PaintCounter counter(window.view->viewport());
    for (auto _ : state)
        drag.step();
    drag.release();
    state.counters["paintings"] =
        benchmark::Counter(counter.paints, benchmark::Counter::kAvgIterations);
}

void dragBare(benchmark::State &state)
{
    BareWindow window(int(state.range(0)));
    window.selectAll();
    Drag drag(window.view);
    drag.step();
    PaintCounter counter(window.view.viewport());
    for (auto _ : state)
        drag.step();
    drag.release();
    state.counters["paintings"] =
        benchmark::Counter(counter.paints, benchmark::Counter::kAvgIterations);
}

/// Letting go of a drag: one step of so many elements; then its undo.
void commitAndUndo(benchmark::State &state)
{
    EditedWindow window(int(state.range(0)));
    window.open();
    window.selectAll();
    for (auto _ : state) {
        state.PauseTiming();
        Drag drag(*window.view);
        drag.step();
        state.ResumeTiming();
        drag.release();
        window.stack.undo();
        window.view->viewport()->repaint();
        state.PauseTiming();
        settle();
        if (window.stack.count() != 1)
            state.SkipWithError("the drag made no step");
        state.ResumeTiming();
    }
}

void paste(benchmark::State &state)
{
    EditedWindow window(int(state.range(0)));
    window.open();
    window.selectAll();
    window.scene->onCopyToBuffer();
    for (auto _ : state) {
        window.scene->onPasteFromBuffer({20, 20});
        window.view->viewport()->repaint();
        state.PauseTiming();
        if (window.stack.count() != 1)
            state.SkipWithError("nothing was pasted");
        window.stack.undo();
        window.stack.clear();
        settle();
        state.ResumeTiming();
    }
}

#define EDITING_BENCH(name) BENCHMARK(name)->Unit(benchmark::kMillisecond)
EDITING_BENCH(open)->Arg(5000)->Iterations(5);
EDITING_BENCH(selectAll)->Arg(5000)->Arg(10000)->Iterations(5);
EDITING_BENCH(selectAllBare)->Arg(5000)->Arg(10000)->Iterations(5);
EDITING_BENCH(drag)->Arg(1000)->Arg(5000)->Arg(10000)->Iterations(40);
EDITING_BENCH(dragBare)->Arg(1000)->Arg(5000)->Arg(10000)->Iterations(40);
EDITING_BENCH(commitAndUndo)->Arg(1000)->Arg(5000)->Iterations(5);
EDITING_BENCH(paste)->Arg(1000)->Iterations(5);

} // namespace

int main(int argc, char **argv)
{
    BenchApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
