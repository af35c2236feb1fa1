// The archive as a station uses it: how many samples a second get through queue, writer and durable
// transactions into the file, what a sample costs on the disk, and how long questions take.
// STATION_BENCH_SAMPLES: samples in the store that is asked (100 signals over a year), 10^7 unless
// set; the budget is for 10^8.
#include "nodes/archive/HistoryColumnBuilder.h"
#include "nodes/archive/store/ArchiveReader.h"
#include "nodes/archive/store/ArchiveStore.h"
#include "nodes/archive/store/SamplePacket.h"
#include "nodes/storage/records/Recorder.h"
#include "support/PrivateCluster.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <string>

#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using namespace Nodes;

constexpr Timestamp second = 1000000;
constexpr Timestamp begin = Timestamp(1700000000) * second;
constexpr Timestamp year = Timestamp(365) * 86400 * second;
const std::atomic<bool> never{false};

void demand(const Result &result)
{
    if (result)
        return;
    std::fprintf(stderr, "%s\n", result.ToString().c_str());
    std::abort();
}

ArchiveSignalKey keyOf(unsigned long node)
{
    ArchiveSignalKey key;
    key.source.home = {"7d1e0f2c-0000-4000-8000-000000000001", 1, "Станция"};
    key.source.node = node;
    key.source.name = "Котельная/Котёл 1/Барабан/Давление " + std::to_string(node);
    key.unit = "МПа";
    return key;
}

/// A signal that walks in steps of 0.01, sampled at about one rate, as a driver stamps it.
struct Walk
{
    explicit Walk(unsigned long node) : key(keyOf(node)), random(unsigned(node)) {}

    SampleRun next(std::size_t count, Timestamp period)
    {
        std::normal_distribution<double> step(0, 30);
        SampleRun run;
        run.Reserve(count);
        for (std::size_t i = 0; i < count; ++i) {
            hundredths += std::int64_t(step(random));
            run.Add(time, double(hundredths) / 100, Quality::Good);
            time += period;
        }
        return run;
    }

    ArchiveSignalKey key;
    std::mt19937 random;
    Timestamp time = begin;
    std::int64_t hundredths = 5000;
};

std::uint64_t writtenBytes()
{
    std::ifstream io("/proc/self/io");
    std::string name;
    std::uint64_t number = 0;
    while (io >> name >> number) {
        if (name == "write_bytes:")
            return number;
    }
    return 0;
}

/// Where a server of our own, which waits for the disk, keeps its databases.
class Server
{
public:
    static bool Exists() { return !PrivateCluster::Programs().empty(); }
    static Server &It()
    {
        static Server server;
        return server;
    }

    std::string NewBase() { return m_cluster.Location("base" + std::to_string(++m_count)); }
    double Bytes() const
    {
        m_cluster.Sql("CHECKPOINT");
        double bytes = 0;
        for (const auto &entry :
             fs::recursive_directory_iterator(m_cluster.Directory() + "/data/base"))
            bytes += entry.is_regular_file() ? double(entry.file_size()) : 0;
        return bytes;
    }
    const PrivateCluster &Cluster() const { return m_cluster; }

private:
    PrivateCluster m_cluster{true};
    int m_count = 0;
};

bool isMissing(benchmark::State &state, bool isServer)
{
    if (!isServer || Server::Exists())
        return false;
    state.SkipWithError("no PostgreSQL server is installed");
    return true;
}

/// A file, or a database on a server.
struct Place
{
    explicit Place(bool isServer = false)
    {
        fs::create_directories(directory);
        location = isServer ? Server::It().NewBase() : file();
        before = isServer ? Server::It().Bytes() : 0;
    }
    ~Place() { fs::remove_all(directory); }

    std::string file() const { return (directory / "archive.sqlite").string(); }
    double bytes() const
    {
        return location == file() ? double(fs::file_size(file())) : Server::It().Bytes() - before;
    }

    std::unique_ptr<ArchiveStore> open() const
    {
        std::unique_ptr<ArchiveStore> store;
        demand(ArchiveStores().Make(location, store));
        return store;
    }

    std::unique_ptr<ArchiveReader> reader() const
    {
        std::unique_ptr<ArchiveReader> reader;
        demand(ArchiveReaders().Make(location, reader));
        return reader;
    }

    static inline int made = 0;
    const fs::path directory =
        fs::path(std::getenv("STATION_BENCH_DIR") ? std::getenv("STATION_BENCH_DIR")
                                                  : fs::temp_directory_path().string()) /
        ("bench_archive_" + std::to_string(::getpid()) + "_" + std::to_string(++made));
    std::string location;
    double before = 0;
};

/// Packets of `count` samples of each of some signals.
std::vector<std::string> packets(std::size_t signals, std::size_t count, std::size_t number,
                                 Timestamp period)
{
    std::vector<Walk> walks;
    for (std::size_t i = 0; i < signals; ++i)
        walks.emplace_back(i + 1);
    std::vector<std::string> packed;
    for (std::size_t n = 0; n < number; ++n) {
        SamplePacket packet;
        for (Walk &walk : walks)
            packet.parts.push_back({walk.key, walk.next(count, period), false});
        packed.push_back(packet.Pack());
    }
    return packed;
}

/// Signals, samples of each in a packet, packets: through queue and writer, durable.
void insert(benchmark::State &state, bool isServer)
{
    if (isMissing(state, isServer))
        return;
    const auto signals = std::size_t(state.range(0));
    const auto count = std::size_t(state.range(1));
    const auto packed = packets(signals, count, std::size_t(state.range(2)), second / 10);
    double bytes = 0;
    double size = 0;
    double samples = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto place = std::make_unique<Place>(isServer);
        auto recorder =
            std::make_shared<Recorder>(SamplePacket::Format(), Recorder::Limits(), RecordHooks());
        demand(recorder->Open(place->open(), (place->directory / "spill").string()));
        const std::uint64_t before = writtenBytes();
        state.ResumeTiming();
        for (const std::string &packet : packed) {
            while (!recorder->Append(packet))
                demand(recorder->Flush());
        }
        demand(recorder->Flush());
        state.PauseTiming();
        recorder->Close(); // with what the log of the database leaves to do
        bytes += double(writtenBytes() - before);
        size += place->bytes();
        samples += double(signals * count * packed.size());
        place.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(std::int64_t(samples));
    if (!isServer)
        state.counters["written B/sample"] = bytes / samples;
    state.counters["file B/sample"] = size / samples;
}
void insertArguments(benchmark::internal::Benchmark *bench)
{
    bench->Args({100, 1000, 200})->Args({1000, 100, 200})->Args({1000, 1, 600});
    bench->Unit(benchmark::kMillisecond)->UseRealTime();
}
BENCHMARK_CAPTURE(insert, file, false)->Apply(insertArguments);
BENCHMARK_CAPTURE(insert, server, true)->Apply(insertArguments);

/// What a server's own way in makes of plain rows: 10^6 samples of 100 signals.
void copyRows(benchmark::State &state)
{
    if (isMissing(state, true))
        return;
    const PrivateCluster &cluster = Server::It().Cluster();
    const std::string file = cluster.Directory() + "/rows";
    {
        std::ofstream rows(file);
        std::vector<Walk> walks;
        for (unsigned long i = 0; i < 100; ++i)
            walks.emplace_back(i);
        for (int i = 0; i < 1000000; ++i) {
            Walk &walk = walks[std::size_t(i % 100)];
            const SampleRun run = walk.next(1, second);
            rows << i % 100 << '\t' << run.times[0] << '\t' << run.numbers[0] << "\t0\n";
        }
    }
    const double before = Server::It().Bytes();
    for (auto _ : state) {
        state.PauseTiming();
        cluster.Sql("DROP TABLE IF EXISTS rows; CREATE TABLE rows (signal int, time bigint, value "
                    "float8, quality smallint, PRIMARY KEY (signal, time))");
        state.ResumeTiming();
        cluster.Sql("COPY rows FROM '" + file + "'");
    }
    state.SetItemsProcessed(state.iterations() * 1000000);
    state.counters["file B/sample"] = (Server::It().Bytes() - before) / 1e6;
}
BENCHMARK(copyRows)->Unit(benchmark::kMillisecond)->UseRealTime();

/// 10^6 samples of one signal in no order, in packets of 10,000: an import of mixed files.
void insertMixed(benchmark::State &state)
{
    Walk walk(1);
    const SampleRun run = walk.next(1000000, second);
    std::vector<std::size_t> order(run.Size());
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = i;
    std::shuffle(order.begin(), order.end(), std::mt19937(3));
    for (auto _ : state) {
        Place place;
        const auto store = place.open();
        StoreOpening opening;
        demand(store->Open(opening));
        for (std::size_t begun = 0; begun < order.size(); begun += 10000) {
            SamplePacket packet;
            packet.parts.push_back({walk.key, {}, false});
            for (std::size_t i = begun; i < begun + 10000; ++i)
                packet.parts[0].run.Append(run, order[i], order[i] + 1);
            std::vector<std::uint64_t> numbers;
            demand(store->Write({{begun + 5, 1, packet.Pack()}}, numbers));
        }
    }
    state.SetItemsProcessed(state.iterations() * 1000000);
}
BENCHMARK(insertMixed)->Unit(benchmark::kMillisecond)->UseRealTime();

/// What a tap pays to make packets of its samples.
void pack(benchmark::State &state)
{
    Walk walk(1);
    SamplePacket packet;
    packet.parts.push_back({walk.key, walk.next(100000, second), false});
    for (auto _ : state)
        benchmark::DoNotOptimize(packet.Pack());
    state.SetItemsProcessed(state.iterations() * 100000);
}
BENCHMARK(pack)->Unit(benchmark::kMillisecond);

/// A store of 100 signals over a year, made once.
class Year
{
public:
    static Year &It(bool isServer)
    {
        static std::unique_ptr<Year> made[2];
        std::unique_ptr<Year> &one = made[isServer];
        if (!one)
            one = std::make_unique<Year>(isServer);
        return *one;
    }

    explicit Year(bool isServer) : place(isServer)
    {
        const char *wanted = std::getenv("STATION_BENCH_SAMPLES");
        const std::size_t each = std::size_t(wanted ? std::atof(wanted) : 1e7) / signals;
        const Timestamp period = year / Timestamp(each);
        store = place.open();
        StoreOpening opening;
        demand(store->Open(opening));
        std::uint64_t key = 1;
        for (unsigned long node = 1; node <= signals; ++node) {
            Walk walk(node);
            for (std::size_t done = 0; done < each; done += 100000) {
                SamplePacket packet;
                packet.parts.push_back(
                    {walk.key, walk.next(std::min<std::size_t>(100000, each - done), period),
                     false});
                std::vector<std::uint64_t> numbers;
                demand(store->Write({{key++, 1, packet.Pack()}}, numbers));
            }
        }
    }

    static constexpr unsigned long signals = 100;
    Place place;
    std::unique_ptr<ArchiveStore> store;
};

/// One question of a chart: hours of one signal, 2,000 columns, with a reader that is connected.
void anySpan(benchmark::State &state, bool isServer)
{
    if (isMissing(state, isServer))
        return;
    Year &data = Year::It(isServer);
    const auto reader = data.place.reader();
    const Timestamp span = Timestamp(state.range(0)) * 3600 * second;
    std::mt19937 random(7);
    std::size_t points = 0;
    for (auto _ : state) {
        const Timestamp from = begin + Timestamp(double(year - span) * (random() % 1000) / 1000.0);
        HistoryColumnBuilder builder(from, from + span, 2000);
        demand(reader->Read(keyOf(1 + random() % Year::signals), builder, never));
        points += builder.Take().times.size();
    }
    state.counters["points"] =
        benchmark::Counter(double(points), benchmark::Counter::kAvgIterations);
}
void spans(benchmark::internal::Benchmark *bench)
{
    for (const int hours : {1, 24, 24 * 7, 24 * 30, 24 * 120, 24 * 365})
        bench->Arg(hours);
    bench->Unit(benchmark::kMillisecond)->UseRealTime();
}
BENCHMARK_CAPTURE(anySpan, file, false)->Apply(spans);
BENCHMARK_CAPTURE(anySpan, server, true)->Apply(spans);

/// 10^6 samples of one signal, each of them.
void readMillion(benchmark::State &state, bool isServer)
{
    if (isMissing(state, isServer))
        return;
    Place place(isServer);
    const auto store = place.open();
    StoreOpening opening;
    demand(store->Open(opening));
    Walk walk(1);
    for (std::uint64_t key = 1; key <= 10; ++key) {
        SamplePacket packet;
        packet.parts.push_back({walk.key, walk.next(100000, second), false});
        std::vector<std::uint64_t> numbers;
        demand(store->Write({{key, 1, packet.Pack()}}, numbers));
    }
    store->Close();
    const auto reader = place.reader();
    for (auto _ : state) {
        HistoryColumnBuilder builder(begin, begin + year, 0);
        demand(reader->Read(keyOf(1), builder, never));
        const std::size_t size = builder.Take().times.size();
        if (size != 1000000)
            demand(Result(Result::Failed, std::to_string(size) + " samples"));
    }
    std::vector<ArchivedSignal> signals;
    demand(reader->ListSignals(signals));
    state.SetItemsProcessed(state.iterations() * 1000000);
    state.counters["packed B/sample"] = double(signals[0].bytes) / 1e6;
    state.counters["file B/sample"] = place.bytes() / 1e6;
}
BENCHMARK_CAPTURE(readMillion, file, false)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(readMillion, server, true)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

BENCHMARK_MAIN();
