// The journal as a station writes it: what an append costs its caller, and how many entries a
// second get through queue, hash chain and durable transactions into the file.
#include "nodes/journal/EventJournal.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <unistd.h>

namespace {

namespace fs = std::filesystem;

constexpr int burst = 50000;

void demand(const Nodes::Result &result)
{
    if (result)
        return;
    std::fprintf(stderr, "%s\n", result.ToString().c_str());
    std::abort();
}

Nodes::BasicEvent alarmEntry(int number)
{
    Nodes::BasicEvent event;
    event.level = Nodes::LevelAlarm;
    event.type = Nodes::TypeAlarmActive;
    event.text = "Давление в барабане выше предела 16,2 МПа";
    event.source = "Котельная/Котёл 1/Барабан/Давление " + std::to_string(number % 1000) + "/HH";
    event.newValue = "16.31";
    event.alarmState = Nodes::AlarmState::ActiveUnacked;
    event.priority = 2;
    event.occurrence = 1700000000000ul + static_cast<unsigned long>(number);
    return event;
}

struct Journal
{
    Journal()
    {
        fs::remove_all(directory);
        demand(journal.Open((directory / "journal.sqlite").string()));
    }
    ~Journal()
    {
        journal.Close();
        fs::remove_all(directory);
    }

    const fs::path directory =
        fs::temp_directory_path() / ("bench_journal_" + std::to_string(::getpid()));
    Nodes::EventJournal journal;
};

void append(benchmark::State &state)
{
    Journal kept;
    int number = 0;
    for (auto _ : state) {
        for (int i = 0; i < burst; ++i)
            demand(kept.journal.Append(alarmEntry(number++)));
        state.PauseTiming();
        demand(kept.journal.Flush());
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * burst);
}

void store(benchmark::State &state)
{
    Journal kept;
    int number = 0;
    for (auto _ : state) {
        for (int i = 0; i < burst; ++i)
            demand(kept.journal.Append(alarmEntry(number++)));
        demand(kept.journal.Flush());
    }
    state.SetItemsProcessed(state.iterations() * burst);
}

BENCHMARK(append)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);
BENCHMARK(store)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);

} // namespace

BENCHMARK_MAIN();
