// What snapping adds to each move of a drag among many elements. The frame of a drag at 60 a
// second is 16 ms.
#include "widgets/scene/editing/guides/Snapping.h"

#include <benchmark/benchmark.h>

#include <QRandomGenerator>

namespace {

QVector<QRectF> elements(int count)
{
    QRandomGenerator random(1);
    QVector<QRectF> rects;
    for (int i = 0; i < count; ++i)
        rects.append(QRectF(random.bounded(1840), random.bounded(1040), 16 + random.bounded(64),
                            16 + random.bounded(24)));
    return rects;
}

constexpr Qt::Edges allEdges = Qt::LeftEdge | Qt::TopEdge | Qt::RightEdge | Qt::BottomEdge;

void moveAmong(benchmark::State &state)
{
    const Widgets::Snapping snapping(elements(static_cast<int>(state.range(0))));
    const Widgets::SnapOptions options;
    int step = 0;
    for (auto _ : state) {
        const QRectF moved(step % 1800, step * 7 % 1000, 80, 30);
        benchmark::DoNotOptimize(snapping.snap(moved, allEdges, options));
        ++step;
    }
}
BENCHMARK(moveAmong)->Arg(100)->Arg(1000)->Arg(5000)->Arg(20000)->Unit(benchmark::kMicrosecond);

void beginDrag(benchmark::State &state)
{
    const QVector<QRectF> rects = elements(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        const Widgets::Snapping snapping(rects);
        benchmark::DoNotOptimize(&snapping);
    }
}
BENCHMARK(beginDrag)->Arg(5000)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
