// Charts side by side: ours, a stock Qwt curve, QCustomPlot (with libqcustomplot-dev) and the bare
// drawing of one span per pixel column as the limit. Each frame is painted whole, scales and grid
// included, at 1600 x 800. BENCH_PICTURES=DIR keeps the last picture of each.
#include "ChartPeers.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QDir>

namespace {

void keepPicture(const ChartPeer &chart, const QString &name)
{
    const QString directory = qEnvironmentVariable("BENCH_PICTURES");
    if (!directory.isEmpty())
        chart.image().save(QDir(directory).filePath(name + ".png"));
}

/// The whole of one noisy sine.
void replot(benchmark::State &state, const QString &peer, int points, double penWidth)
{
    const auto chart = ChartPeer::make(peer);
    chart->addCurves(1, penWidth);
    chart->fill(points);
    chart->setRange(0, points);
    for (auto _ : state)
        chart->paint();
    keepPicture(*chart, QStringLiteral("%1-%2-%3").arg(peer).arg(points).arg(penWidth));
}

/// Scales and grid alone.
void emptyFrame(benchmark::State &state, const QString &peer)
{
    const auto chart = ChartPeer::make(peer);
    chart->setRange(0, 100'000);
    for (auto _ : state)
        chart->paint();
}

std::unique_ptr<ChartPeer> twentyCurves(const QString &peer)
{
    auto chart = ChartPeer::make(peer);
    chart->addCurves(20, 1);
    chart->fill(100'000);
    return chart;
}

void replotTwenty(benchmark::State &state, const QString &peer)
{
    const auto chart = twentyCurves(peer);
    chart->setRange(0, 100'000);
    for (auto _ : state)
        chart->paint();
    keepPicture(*chart, peer + "-twenty");
}

/// Half of what is held is in view, a tenth of that further with each frame.
void pan(benchmark::State &state, const QString &peer)
{
    const auto chart = twentyCurves(peer);
    int frame = 0;
    for (auto _ : state) {
        const double from = (frame++ % 10) * 5'000;
        chart->setRange(from, from + 50'000);
        chart->paint();
    }
    state.counters["frames/s"] =
        benchmark::Counter(double(state.iterations()), benchmark::Counter::kIsRate);
    keepPicture(*chart, peer + "-pan");
}

/// One point more on each curve and the axis after it.
void append(benchmark::State &state, const QString &peer)
{
    const auto chart = twentyCurves(peer);
    int at = 100'000;
    for (auto _ : state) {
        for (int curve = 0; curve < 20; ++curve)
            chart->append(curve, at, ChartPeer::valueAt(curve, at));
        ++at;
        chart->setRange(at - 100'000, at);
        chart->paint();
    }
    state.counters["frames/s"] =
        benchmark::Counter(double(state.iterations()), benchmark::Counter::kIsRate);
    keepPicture(*chart, peer + "-append");
}

template <class Run> void add(const QString &name, Run run)
{
    benchmark::RegisterBenchmark(qPrintable(name), run)->Unit(benchmark::kMillisecond);
}

void addAll(const QString &peer)
{
    add("no curve/" + peer, [=](benchmark::State &state) { emptyFrame(state, peer); });
    for (const int points : {10'000, 100'000, 1'000'000}) {
        for (const double width : {1.0, 2.0})
            add(QStringLiteral("replot/%1/pen %2/%3").arg(points).arg(width).arg(peer),
                [=](benchmark::State &state) { replot(state, peer, points, width); });
    }
    add("replot 20 x 100000/" + peer, [=](benchmark::State &state) { replotTwenty(state, peer); });
    if (peer == "limit")
        return;
    add("pan 20 x 100000/" + peer, [=](benchmark::State &state) { pan(state, peer); });
    add("append 20 x 100000/" + peer, [=](benchmark::State &state) { append(state, peer); });
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    for (const char *peer : {"limit", "ours", "custom", "stock"}) {
        if (ChartPeer::make(peer))
            addAll(peer);
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
