// 10,000 configured limit alarms with their journal and their file of states, as a station runs
// them. Budget: 10,000 changes a second are announced without falling behind; a list of 10,000 is
// read, and acknowledged, within a small part of the 300 ms in which an operator expects it.
#include "nodes/alarms/systemAlarming.h"
#include "nodes/auth/systemAuthentication.h"
#include "nodes/journal/EventJournal.h"
#include "nodes/model/KindTable.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/system/systemCore.h"
#include "nodes/values/ValueCell.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include <unistd.h>

namespace {

using Time = std::chrono::steady_clock;

constexpr std::size_t alarmCount = 10000;

void demand(const Nodes::Result &result)
{
    if (result)
        return;
    std::fprintf(stderr, "%s\n", result.ToString().c_str());
    std::abort();
}

// Named by the caller: looking for free names among 10,000 takes minutes.
Nodes::ConfigNode *make(Nodes::NodesCollection &project, const char *kind,
                        Nodes::ConfigNode *parent, const std::string &name)
{
    std::unique_ptr<Nodes::ConfigNode> node =
        project.CreateDetached(*Nodes::KindTable::Instance().FindByKey(kind));
    node->SetName(name);
    Nodes::ConfigNode *made = node.get();
    demand(parent->AddNode(node));
    return made;
}

void set(Nodes::ConfigNode *node, const char *key, const std::string &text)
{
    demand(node->SetPropertyText(key, text));
}

/// A station of 10,000 alarms, each on a signal of its own, that runs until it is destroyed.
class Station
{
public:
    Station()
    {
        auto project = std::make_unique<Nodes::NodesCollection>();
        const Nodes::KindTable &kinds = Nodes::KindTable::Instance();
        if (!project->SetRoot(project->CreateDetached(*kinds.FindByKey("project"))))
            std::abort();
        Nodes::ConfigNode *station = make(*project, "station", project->GetRoot(), "Station");
        alarming =
            static_cast<Nodes::systemAlarming *>(make(*project, "alarming", station, "Alarms"));
        addUser(*project, station);
        for (std::size_t i = 0; i < alarmCount; ++i) {
            signals.push_back(static_cast<Nodes::BasicSignal *>(
                make(*project, "memorySignal", station, "Signal " + std::to_string(i))));
            Nodes::ConfigNode *alarm = make(*project, "alarmLimit", signals.back(), "High");
            set(alarm, "limit", "80");
            places.resize(std::max<std::size_t>(places.size(), alarm->GetId() + 1));
            places[alarm->GetId()] = i;
        }
        std::filesystem::create_directories(directory);
        Nodes::NodesCollection::SetCurrent(project.get());
        core.AdoptProject(std::move(project), (directory / "project.xml").string());
        demand(core.Start());
        demand(users->Authenticate(users->GetSubObject("Operator")));
    }
    ~Station()
    {
        (void)core.Stop();
        std::filesystem::remove_all(directory);
    }

    void publish(std::size_t signal, bool isBeyond)
    {
        signals[signal]->GetCell()->Publish(isBeyond ? 90.0 : 10.0);
    }
    void raiseAll()
    {
        for (const bool isBeyond : {false, true}) {
            for (std::size_t i = 0; i < alarmCount; ++i)
                publish(i, isBeyond);
        }
    }
    void settle() const
    {
        for (;;) {
            const Nodes::AlarmHealth health = alarming->GetHealth();
            if (health.unannounced == 0 && health.unkept == 0)
                return demand(core.GetJournal().Flush());
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
    }

    void addUser(Nodes::NodesCollection &project, Nodes::ConfigNode *station)
    {
        users = static_cast<Nodes::systemAuthentication *>(
            make(project, "authentication", station, "Users"));
        Nodes::ConfigNode *role = make(project, "role", users, "Operators");
        set(make(project, "grant", role, "Grant"), "privileges", "acknowledge");
        Nodes::ConfigNode *operatorNode = make(project, "user", users, "Operator");
        set(operatorNode, "passwordless", "true");
        set(operatorNode, "roles", std::to_string(role->GetId()));
    }

    const std::filesystem::path directory =
        std::filesystem::temp_directory_path() / ("bench_alarms_" + std::to_string(::getpid()));
    Nodes::systemCore core;
    Nodes::systemAlarming *alarming = nullptr;
    std::vector<Nodes::BasicSignal *> signals;
    std::vector<std::size_t> places; // of the alarms' ids
    Nodes::systemAuthentication *users = nullptr;
};

Station &station()
{
    static Station instance;
    return instance;
}

/// How long announcements took from the publication of their value.
class Latencies
{
public:
    explicit Latencies(Station &observed)
        : m_station(observed),
          m_published(alarmCount),
          m_connection(observed.alarming->ConnectAlarm(
              [this](const Nodes::BasicEvent &event) { note(event.sourceNode.GetNodeId()); }))
    {
    }
    void publish(std::size_t signal, bool isBeyond)
    {
        m_published[signal] = Time::now().time_since_epoch().count();
        m_station.publish(signal, isBeyond);
    }
    void report(benchmark::State &state)
    {
        m_station.settle();
        m_connection.Disconnect();
        std::sort(m_taken.begin(), m_taken.end());
        const auto at = [this](double share) {
            const std::size_t index = std::size_t(share * double(m_taken.size() - 1));
            return double(m_taken[index]) / 1e6;
        };
        state.counters["p50_ms"] = at(0.5);
        state.counters["p99_ms"] = at(0.99);
        state.counters["max_ms"] = at(1);
        state.counters["changes"] = double(m_taken.size());
    }

private:
    void note(unsigned long alarm)
    {
        const std::size_t place = m_station.places[alarm];
        m_taken.push_back(Time::now().time_since_epoch().count() - m_published[place]);
    }

    Station &m_station;
    std::vector<std::atomic<Time::rep>> m_published;
    std::vector<Time::rep> m_taken; // the announcing thread's, until all is settled
    Nodes::ScopedConnection m_connection;
};

/// One publisher at a fixed rate for three seconds; latency from the value to the announcement.
void sustained(benchmark::State &state)
{
    Station &plant = station();
    const auto rate = std::size_t(state.range(0));
    for (auto _ : state) {
        Latencies latencies(plant);
        const Time::time_point begin = Time::now();
        std::size_t late = 0;
        for (std::size_t i = 0; i < 3 * rate; ++i) {
            const auto due = begin + std::chrono::nanoseconds(1000000000 / rate * i);
            if (Time::now() < due - std::chrono::microseconds(200))
                std::this_thread::sleep_until(due);
            late += Time::now() > due + std::chrono::milliseconds(20) ? 1 : 0;
            latencies.publish(i % alarmCount, i / alarmCount % 2 == 0);
        }
        const double published = std::chrono::duration<double>(Time::now() - begin).count();
        latencies.report(state);
        state.counters["publisher_late"] = double(late);
        state.counters["changes_per_s"] = double(3 * rate) / published;
    }
    const Nodes::AlarmHealth health = plant.alarming->GetHealth();
    state.counters["refused"] = double(health.refused);
}
BENCHMARK(sustained)->Arg(10000)->Arg(20000)->Iterations(1)->Unit(benchmark::kMillisecond);

/// As fast as it goes, until all is announced, journalled and kept.
void flood(benchmark::State &state)
{
    Station &plant = station();
    for (auto _ : state) {
        for (std::size_t i = 0; i < 5 * alarmCount; ++i)
            plant.publish(i % alarmCount, i / alarmCount % 2 == 0);
        plant.settle();
    }
    state.SetItemsProcessed(state.iterations() * 5 * std::int64_t(alarmCount));
}
BENCHMARK(flood)->Iterations(3)->Unit(benchmark::kMillisecond)->UseRealTime();

void getActiveAlarms(benchmark::State &state)
{
    Station &plant = station();
    plant.raiseAll();
    plant.settle();
    for (auto _ : state)
        benchmark::DoNotOptimize(plant.alarming->GetActiveAlarms().size());
}
BENCHMARK(getActiveAlarms)->Unit(benchmark::kMillisecond);

/// A list that opens: all alarms in batches of 1,000.
void takeFeed(benchmark::State &state)
{
    Station &plant = station();
    plant.raiseAll();
    plant.settle();
    for (auto _ : state) {
        const auto feed = plant.alarming->OpenFeed([] {});
        while (feed->Take(1000).hasMore) {
        }
    }
}
BENCHMARK(takeFeed)->Unit(benchmark::kMillisecond);

void acknowledgeAll(benchmark::State &state)
{
    Station &plant = station();
    for (auto _ : state) {
        state.PauseTiming();
        plant.raiseAll();
        plant.settle();
        Nodes::AlarmOccurrences seen;
        for (const Nodes::BasicEvent &alarm : plant.alarming->GetActiveAlarms())
            if (alarm.alarmState == Nodes::AlarmState::ActiveUnacked)
                seen.push_back({alarm.sourceNode, alarm.occurrence});
        state.ResumeTiming();
        for (const Nodes::Result &result : plant.alarming->Acknowledge(seen))
            demand(result);
    }
}
BENCHMARK(acknowledgeAll)->Iterations(5)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
