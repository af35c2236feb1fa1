// "What if" over a million archived samples with one and with five settings at once, beside a plain
// pass that makes a value of each sample, which is the least that judging them costs.
#include "nodes/alarms/BasicAlarm.h"
#include "nodes/alarms/trial/AlarmTrials.h"
#include "nodes/kinds/BuiltInKinds.h"
#include "nodes/model/KindTable.h"
#include "nodes/model/NodesCollection.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>

namespace {

constexpr Nodes::Timestamp second = 1000000;
constexpr Nodes::Timestamp begin = 1700000000 * second;
constexpr std::size_t count = 1000000;
constexpr std::size_t portion = 8192;

const Nodes::SampleRun &samples()
{
    static const Nodes::SampleRun all = [] {
        std::mt19937 random(1);
        Nodes::SampleRun run;
        run.Reserve(count);
        double value = 75;
        for (std::size_t i = 0; i < count; ++i) {
            value = std::clamp(value + double(random() % 200) / 100 - 1, 60.0, 90.0);
            run.Add(begin + Nodes::Timestamp(i) * second, value, Nodes::Quality::Good);
        }
        return run;
    }();
    return all;
}

Nodes::Result visit(Nodes::Timestamp, Nodes::Timestamp,
                    const std::function<bool(const Nodes::SampleRun &)> &visitor,
                    const std::atomic<bool> &)
{
    for (std::size_t i = 0; i < count; i += portion) {
        Nodes::SampleRun part;
        part.Append(samples(), i, std::min(i + portion, count));
        if (!visitor(part))
            break;
    }
    return Nodes::Result();
}

void plainPass(benchmark::State &state)
{
    (void)samples();
    for (auto _ : state) {
        double sum = 0;
        (void)visit(
            0, 0,
            [&](const Nodes::SampleRun &run) {
                for (std::size_t i = 0; i < run.Size(); ++i)
                    sum += Nodes::ValueOf(run, i).ToDouble();
                return true;
            },
            std::atomic<bool>(false));
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * std::int64_t(count));
}

void trials(benchmark::State &state)
{
    (void)samples();
    Nodes::NodesCollection project;
    const auto make = [](const char *key, Nodes::NodesCollection &of, Nodes::ConfigNode *parent) {
        return of.CreateNode(Nodes::KindTable::Instance().FindByKey(key)->type, parent);
    };
    (void)project.SetRoot(
        project.CreateDetached(*Nodes::KindTable::Instance().FindByKey("project")));
    Nodes::ConfigNode *signal = make("memorySignal", project, project.GetRoot());
    auto *alarm = dynamic_cast<Nodes::BasicAlarm *>(make("alarmLimit", project, signal));
    Nodes::AlarmTrials run;
    for (int i = 0; i < state.range(0); ++i) {
        Nodes::AlarmTuning tuning;
        tuning.limit = 80 + i;
        tuning.deadband = i;
        run.candidates.push_back(Nodes::AlarmSettings::Of(*alarm, tuning));
    }
    run.begin = begin;
    run.end = begin + Nodes::Timestamp(count) * second;
    run.samples = &visit;
    for (auto _ : state) {
        Nodes::AlarmTrials::Outcome outcome;
        const Nodes::Result result = run.Run(std::atomic<bool>(false), outcome);
        if (!result || outcome.figures.front().raised == 0)
            state.SkipWithError("nothing was judged");
    }
    state.SetItemsProcessed(state.iterations() * std::int64_t(count));
}

BENCHMARK(plainPass)->Unit(benchmark::kMillisecond);
BENCHMARK(trials)->Arg(1)->Arg(5)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
