// Statistics of alarms over entries in memory, beside a plain pass over the same entries, which is
// the least that anything which looks at each of them costs.
#include "nodes/alarms/statistics/AlarmStatistics.h"
#include "nodes/events/BasicEvent.h"

#include <benchmark/benchmark.h>

#include <random>
#include <vector>

namespace {

constexpr Nodes::Timestamp second = 1000000;
constexpr Nodes::Timestamp begin = 1700000000 * second;
constexpr std::size_t count = 1000000;
constexpr unsigned alarms = 2000;

/// Raised, acknowledged, returned, of some thousand alarms, for a month.
const std::vector<Nodes::BasicEvent> &entries()
{
    static const std::vector<Nodes::BasicEvent> all = [] {
        std::mt19937 random(1);
        std::vector<Nodes::BasicEvent> made(count);
        for (std::size_t i = 0; i < count; ++i) {
            Nodes::BasicEvent &entry = made[i];
            const unsigned long node = random() % alarms + 1;
            entry.time = begin + Nodes::Timestamp(i) * 2592 * 1000;
            entry.sourceNode = Nodes::NodeLink(node);
            entry.source = "Котельная/Котёл 1/Барабан/Давление " + std::to_string(node) + "/HH";
            entry.text = "Давление в барабане выше предела 16,2 МПа";
            entry.priority = int(node % 4) + 1;
            entry.occurrence = 1700000000000UL + i;
            const bool isUp = i % 2 == 0;
            entry.type = isUp ? Nodes::TypeAlarmActive : Nodes::TypeAlarmReturned;
            entry.alarmState =
                isUp ? Nodes::AlarmState::ActiveUnacked : Nodes::AlarmState::ReturnedUnacked;
        }
        return made;
    }();
    return all;
}

void plainPass(benchmark::State &state)
{
    const auto &all = entries();
    for (auto _ : state) {
        std::uint64_t sum = 0;
        for (const Nodes::BasicEvent &entry : all)
            sum += entry.type == Nodes::TypeAlarmActive ? entry.occurrence + entry.text.size() : 1;
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * std::int64_t(count));
}

void statistics(benchmark::State &state)
{
    const auto &all = entries();
    for (auto _ : state) {
        Nodes::AlarmStatistics made({begin, begin + 30 * Nodes::AlarmStatistics::Day});
        for (const Nodes::BasicEvent &entry : all)
            made.Add(entry);
        benchmark::DoNotOptimize(made.GetFigures());
    }
    state.SetItemsProcessed(state.iterations() * std::int64_t(count));
}

BENCHMARK(plainPass)->Unit(benchmark::kMillisecond);
BENCHMARK(statistics)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
