// The whole road of samples: published into cells by several threads, tapped, gathered, carried and
// committed to an SQLite file.
#include "nodes/archive/HistoryColumnBuilder.h"
#include "nodes/archive/recording/ArchiveRecording.h"
#include "nodes/values/Clock.h"
#include "nodes/values/ValueCell.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <thread>

namespace {

using namespace Nodes;

/// An archive in a directory of its own, with so many signals.
struct Plant
{
    Plant(int signals, const char *location)
    {
        std::filesystem::remove_all(directory);
        std::filesystem::create_directories(directory);
        ArchiveRecording::Settings settings;
        settings.location = location ? location : (directory / "archive.sqlite").string();
        settings.spillFile = (directory / "archive.spill").string();
        settings.home = {"bench", 1, "bench"};
        settings.heartbeat = {{settings.home, 1, "archive"}, ""};
        settings.memoryBytes = 512u << 20;
        recording =
            std::make_unique<ArchiveRecording>(settings, [](EventLevel, const std::string &text) {
                std::fprintf(stderr, "%s\n", text.c_str());
            });
        if (!recording->Open())
            std::abort();
        for (int i = 0; i < signals; ++i) {
            cells.push_back(std::make_shared<ValueCell>());
            const ArchiveSignalKey key{{settings.home, 10 + static_cast<unsigned long>(i), "s"},
                                       ""};
            intakes.push_back(recording->Connect(key, {}));
            cells.back()->AddTap(intakes.back());
        }
    }
    ~Plant()
    {
        for (std::size_t i = 0; i < cells.size(); ++i)
            cells[i]->RemoveTap(*intakes[i]);
        recording->Close();
        std::filesystem::remove_all(directory);
    }

    const std::filesystem::path directory =
        std::filesystem::temp_directory_path() / "bench_archive_road";
    std::unique_ptr<ArchiveRecording> recording;
    std::vector<std::shared_ptr<ValueCell>> cells;
    std::vector<std::shared_ptr<SignalIntake>> intakes;
};

/// A walk of one decimal in each signal, published by four threads as fast as they can; the time
/// until the last sample is safe counts.
void record(benchmark::State &state)
{
    constexpr int threads = 4, rounds = 500000;
    const int signals = int(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        auto plant = std::make_unique<Plant>(signals, nullptr);
        state.ResumeTiming();
        std::vector<std::thread> publishers;
        for (int thread = 0; thread < threads; ++thread) {
            publishers.emplace_back([&, thread] {
                unsigned random = unsigned(thread) + 1;
                std::vector<int> walks(std::size_t(signals), 1000);
                for (int i = 0; i < rounds; ++i) {
                    const auto at = std::size_t(thread + i * threads) % std::size_t(signals);
                    random = random * 1664525u + 1013904223u;
                    walks[at] += (random >> 30) < 2 ? 1 : -1;
                    plant->cells[at]->Publish(double(walks[at]) / 10);
                }
            });
        }
        for (std::thread &publisher : publishers)
            publisher.join();
        const Result flushed = plant->recording->Flush();
        state.PauseTiming();
        const ArchiveHealth health = plant->recording->GetHealth();
        if (!flushed || health.lost > 0 || health.packets.aside > 0)
            state.SkipWithError("samples were lost or put aside");
        plant.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * threads * rounds);
}

/// What a publisher pays: cell, tap and buffer.
void offer(benchmark::State &state)
{
    Plant plant(1, nullptr);
    double number = 0;
    for (auto _ : state)
        plant.cells.front()->Publish(number += 1);
    state.SetItemsProcessed(state.iterations());
}

BENCHMARK(record)->Arg(4)->Arg(100)->Arg(10000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(offer)->Iterations(1000000);

} // namespace

BENCHMARK_MAIN();
