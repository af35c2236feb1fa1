// The journal as a station writes it: what an append costs its caller, and how many entries a
// second get through queue, hash chain and durable transactions into the file; and what a list and
// an export read of a long one (JOURNAL_ROWS=10000000 for ten million entries, 7 GB of disk).
#include "nodes/journal/EventJournal.h"
#include "nodes/journal/JournalReader.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <unistd.h>

namespace {

namespace fs = std::filesystem;

constexpr int burst = 50000;
constexpr int rare = 100000;     // entries, of which one has another text
constexpr int listRows = 900000; // that a list reads at most
constexpr int pageRows = 4000;   // at a time
constexpr Nodes::Timestamp second = 1000000;
constexpr Nodes::Timestamp firstTime = 1700000000 * second;

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
    int rows = 0;
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

/// A journal of JOURNAL_ROWS entries (by default a million), made once.
Journal &longJournal()
{
    static Journal kept;
    static const int rows = [] {
        const char *wanted = std::getenv("JOURNAL_ROWS");
        const int count = wanted ? std::atoi(wanted) : 1000000;
        for (int i = 0; i < count; ++i) {
            Nodes::BasicEvent entry = alarmEntry(i);
            entry.time = firstTime + i * second;
            if (i % rare == rare / 2)
                entry.text = "Обрыв шлейфа извещателя";
            demand(kept.journal.Append(entry));
            if (i % burst == 0)
                demand(kept.journal.Flush());
        }
        demand(kept.journal.Flush());
        return count;
    }();
    kept.rows = rows;
    return kept;
}

void verify(benchmark::State &state)
{
    Journal &kept = longJournal();
    for (auto _ : state)
        demand(kept.journal.Verify());
    state.SetItemsProcessed(state.iterations() * kept.rows);
}

/// The first 1,000 entries of an interval in the middle that is a tenth of the journal.
void firstPage(benchmark::State &state)
{
    Journal &kept = longJournal();
    const auto reader = kept.journal.OpenReader();
    Nodes::JournalQuery query;
    query.begin = firstTime + kept.rows / 2 * second;
    query.end = firstTime + kept.rows / 10 * 6 * second;
    query.limit = 1000;
    query.order =
        state.range(0) == 0 ? Nodes::JournalQuery::OldestFirst : Nodes::JournalQuery::NewestFirst;
    std::vector<Nodes::BasicEvent> page;
    for (auto _ : state)
        demand(reader->Query(query, page));
    state.counters["rows"] = double(kept.rows);
}

Nodes::JournalQuery ofAll(const Journal &kept, std::size_t limit)
{
    Nodes::JournalQuery query;
    query.begin = firstTime;
    query.end = firstTime + kept.rows * second;
    query.limit = limit;
    query.order = Nodes::JournalQuery::NewestFirst;
    return query;
}

/// Pages of what the query finds, of at most so many entries in all; how many there were.
int readPages(Nodes::JournalReader &reader, Nodes::JournalQuery query, int most)
{
    int count = 0;
    std::vector<Nodes::BasicEvent> page;
    do {
        page.clear();
        demand(reader.Query(query, page));
        count += int(page.size());
        if (!page.empty())
            query.after = Nodes::JournalKey::Of(page.back());
    } while (page.size() == query.limit && count < most);
    return count;
}

/// What stands on the screen first when a list of the whole journal is opened.
void openList(benchmark::State &state)
{
    Journal &kept = longJournal();
    const auto reader = kept.journal.OpenReader();
    for (auto _ : state)
        readPages(*reader, ofAll(kept, 500), 500);
}

/// All that such a list holds.
void fillList(benchmark::State &state)
{
    Journal &kept = longJournal();
    const auto reader = kept.journal.OpenReader();
    int count = 0;
    for (auto _ : state)
        count = readPages(*reader, ofAll(kept, pageRows), listRows);
    state.SetItemsProcessed(state.iterations() * count);
}

/// A text that one in a hundred thousand entries has, in the whole journal.
void searchText(benchmark::State &state)
{
    Journal &kept = longJournal();
    const auto reader = kept.journal.OpenReader();
    Nodes::JournalQuery query = ofAll(kept, pageRows);
    query.text = "обрыв шлейфа";
    int found = 0;
    for (auto _ : state)
        found = readPages(*reader, query, listRows);
    if (found != kept.rows / rare)
        state.SkipWithError("not all were found");
    state.SetItemsProcessed(state.iterations() * kept.rows);
}

BENCHMARK(openList)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(fillList)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(searchText)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(append)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);
BENCHMARK(store)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);
BENCHMARK(verify)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(firstPage)
    ->ArgName("newest")
    ->Arg(0)
    ->Arg(1)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

} // namespace

BENCHMARK_MAIN();
