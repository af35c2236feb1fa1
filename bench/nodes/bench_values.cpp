#include "nodes/archive/HistoryColumnBuilder.h"
#include "nodes/archive/SessionHistory.h"
#include "nodes/values/ValueCell.h"

#include <benchmark/benchmark.h>

#include <atomic>
#include <memory>

namespace {

using namespace Nodes;

/// A value published with one subscriber; what taps and deadbands cost beside that.
void publish(benchmark::State &state, bool isTapped, double deadband)
{
    ValueCell cell;
    double sum = 0;
    const ScopedConnection connection(
        cell.Subscribe([&sum](const SignalValue &value) { sum += value.ToDouble(); }));
    if (isTapped)
        cell.AddTap(std::make_shared<SessionHistory>(10000));
    double number = 0;
    for (auto _ : state)
        cell.Publish(number += 1, deadband);
    benchmark::DoNotOptimize(sum);
    state.SetItemsProcessed(state.iterations());
}

/// A million samples of one signal, read for a plot of so many points.
void readHistory(benchmark::State &state)
{
    constexpr int samples = 1000000;
    SessionHistory history(samples);
    for (int i = 0; i < samples; ++i)
        history.Offer(1000000 + i * 1000, double(i % 777));
    const std::atomic<bool> isCancelled{false};
    for (auto _ : state) {
        HistoryColumnBuilder builder(0, 2000000000, std::size_t(state.range(0)));
        benchmark::DoNotOptimize(history.Read(builder, isCancelled));
        benchmark::DoNotOptimize(builder.Take());
    }
    state.SetItemsProcessed(state.iterations() * samples);
}

BENCHMARK_CAPTURE(publish, plain, false, 0);
BENCHMARK_CAPTURE(publish, tapped, true, 0);
BENCHMARK_CAPTURE(publish, within_the_deadband, false, 1e9);
BENCHMARK_CAPTURE(publish, deadband_left_each_time, true, 0.5);
BENCHMARK(readHistory)->Arg(0)->Arg(2000)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
