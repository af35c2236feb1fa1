#include "nodes/ProjectFixture.h"
#include "nodes/alarms/BasicAlarm.h"
#include "nodes/alarms/engine/AlarmEngine.h"
#include "nodes/alarms/state/SqliteAlarmStates.h"
#include "nodes/alarms/suppression/SuppressionScripts.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/values/ValueCell.h"
#include "support/Rows.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <condition_variable>
#include <map>
#include <thread>

using namespace Nodes;

namespace {

/// Store in memory that hangs or fails as it is told.
class MoodyStore : public AlarmStateStore
{
public:
    const std::string &GetLocation() const override { return m_location; }
    Result Open(StoreOpening &) override
    {
        const std::lock_guard lock(m_mutex);
        m_isOpen = m_answer.IsSuccess();
        return m_answer;
    }
    void Close() override { m_isOpen = false; }
    bool IsOpen() const override { return m_isOpen; }
    bool NoticeMove() override { return false; }
    Result Load(Memories &memories, unsigned long &) override
    {
        memories = m_kept;
        return Result();
    }
    Result Save(const Memories &memories) override
    {
        std::unique_lock lock(m_mutex);
        m_isAsked = true;
        m_called.wait(lock, [this] { return !m_isHanging; });
        for (const auto &[node, stored] : memories) {
            if (m_answer)
                m_kept[node] = stored;
        }
        return m_answer;
    }

    void Hang(bool isHanging)
    {
        const std::lock_guard lock(m_mutex);
        m_isHanging = isHanging;
        m_isAsked = false;
        m_called.notify_all();
    }
    void Answer(const Result &answer)
    {
        const std::lock_guard lock(m_mutex);
        m_answer = answer;
    }
    bool IsHanging() const
    {
        const std::lock_guard lock(m_mutex);
        return m_isHanging && m_isAsked;
    }
    bool Holds(const ConfigNode *alarm, bool isActive) const
    {
        const std::lock_guard lock(m_mutex);
        const auto found = m_kept.find(alarm->GetId());
        return found != m_kept.end() && found->second.memory.isActive == isActive;
    }

private:
    mutable std::mutex m_mutex;
    std::condition_variable m_called;
    const std::string m_location = "memory";
    Memories m_kept;
    Result m_answer;
    std::atomic<bool> m_isOpen{false};
    bool m_isHanging = false;
    bool m_isAsked = false;
};

/// Ten alarms, each on a signal of its own, and what was announced of them.
struct Plant
{
    Plant()
    {
        for (int i = 0; i < 10; ++i) {
            tanks.push_back(project.add<BasicSignal>("memorySignal", project.root()));
            alarms.push_back(
                project.add<BasicAlarm>("alarmLimit", tanks.back(), nullptr, {{"limit", "80"}}));
        }
        connection = engine->Connect([this](const BasicEvent &) { ++announced; });
    }
    ~Plant() { engine->Stop(); }

    void start() { start(store); }
    void start(std::shared_ptr<AlarmStateStore> used)
    {
        SuppressionScripts none;
        std::vector<AlarmInputs> inputs;
        for (const BasicAlarm *alarm : alarms)
            inputs.push_back(alarm->MakeInputs(none));
        engine->Start(inputs, nullptr, std::move(used));
    }
    void publish(std::size_t tank, double value) { tanks[tank]->GetCell()->Publish(value); }
    AlarmFeed openFeed()
    {
        return {engine, engine->OpenFeed([this] { ++wakes; })};
    }

    ProjectFixture project;
    std::vector<BasicSignal *> tanks;
    std::vector<const BasicAlarm *> alarms;
    std::shared_ptr<MoodyStore> store = std::make_shared<MoodyStore>();
    std::shared_ptr<AlarmEngine> engine = std::make_shared<AlarmEngine>();
    std::atomic<int> announced{0};
    std::atomic<int> wakes{0};
    ScopedConnection connection;
};

/// What a list makes of a feed.
struct List
{
    bool take(AlarmFeed &feed, std::size_t limit)
    {
        const AlarmFeed::Batch batch = feed.Take(limit);
        if (batch.isAnew)
            shown.clear();
        for (const BasicEvent &alarm : batch.alarms) {
            if (alarm.alarmState == AlarmState::Normal)
                shown.erase(alarm.sourceNode.GetNodeId());
            else
                shown[alarm.sourceNode.GetNodeId()] = alarm;
        }
        events += batch.events;
        return batch.hasMore;
    }
    bool matches(const AlarmEngine &engine) const
    {
        const std::vector<BasicEvent> active = engine.GetActive();
        return active.size() == shown.size() &&
               std::all_of(active.begin(), active.end(), [this](const BasicEvent &alarm) {
                   const auto found = shown.find(alarm.sourceNode.GetNodeId());
                   return found != shown.end() && found->second == alarm;
               });
    }

    std::map<unsigned long, BasicEvent> shown;
    std::uint64_t events = 0;
};

} // namespace

class TestAlarmEngine : public QObject
{
    Q_OBJECT

private slots:
    void deadbandOfTheSignalHidesNoLimit()
    {
        Plant plant;
        ValueCell &tank = *plant.tanks[0]->GetCell();
        plant.start();
        for (const double level : {79., 80.5, 79.5})
            tank.Publish(level, 5);
        QTRY_COMPARE(plant.announced, 2);
        QCOMPARE(tank.Value().ToDouble(), 79.);
    }

    void hangingDiskSilencesNothing()
    {
        Plant plant;
        plant.store->Hang(true);
        plant.start();
        plant.publish(0, 90);
        QTRY_VERIFY(plant.store->IsHanging());
        plant.publish(1, 90);
        for (int i = 0; i <= 100; ++i)
            plant.publish(2, i % 2 ? 10 : 90);
        QTRY_COMPARE(plant.announced, 103);
        AlarmHealth health = plant.engine->GetHealth();
        QVERIFY(health.isKeeping && health.lastKept == 0 && health.unkeptSince != 0);
        QCOMPARE(health.unkept, std::size_t(3));
        plant.store->Hang(false);
        QTRY_COMPARE(plant.engine->GetHealth().unkept, std::size_t(0));
        health = plant.engine->GetHealth();
        QVERIFY(health.lastKept != 0 && health.unkeptSince == 0);
        QVERIFY(plant.store->Holds(plant.alarms[0], true));
        QVERIFY(plant.store->Holds(plant.alarms[2], true));
    }

    void stopKeepsTheLast()
    {
        Plant plant;
        plant.start();
        plant.publish(0, 90);
        QTRY_VERIFY(plant.store->Holds(plant.alarms[0], true));
        plant.store->Hang(true);
        plant.publish(1, 90);
        QTRY_VERIFY(plant.store->IsHanging());
        plant.publish(0, 10);
        plant.publish(2, 90);
        std::thread stopping([&plant] { plant.engine->Stop(); });
        plant.store->Hang(false);
        stopping.join();
        QVERIFY(plant.store->Holds(plant.alarms[0], false));
        QVERIFY(plant.store->Holds(plant.alarms[1], true));
        QVERIFY(plant.store->Holds(plant.alarms[2], true));
    }

    void failedWritesAreTriedAgain()
    {
        Plant plant;
        plant.start();
        plant.store->Answer(Result(Result::StorageError, "disk full"));
        plant.publish(0, 90);
        plant.publish(1, 90);
        QTRY_VERIFY(plant.engine->GetHealth().trouble.find("disk full") != std::string::npos);
        plant.publish(0, 10);
        QCOMPARE(plant.engine->GetHealth().unkept, std::size_t(2));
        plant.store->Answer(Result());
        QTRY_COMPARE(plant.engine->GetHealth().unkept, std::size_t(0));
        QCOMPARE(plant.engine->GetHealth().trouble, std::string());
        QVERIFY(plant.store->Holds(plant.alarms[0], false));
        QVERIFY(plant.store->Holds(plant.alarms[1], true));
    }

    void storeThatOpensLateGetsAll()
    {
        Plant plant;
        plant.store->Answer(Result(Result::StorageError, "not mounted"));
        plant.publish(0, 90);
        plant.start();
        QTRY_VERIFY(!plant.engine->GetHealth().trouble.empty());
        QCOMPARE(plant.engine->GetHealth().unkept, plant.alarms.size());
        plant.store->Answer(Result());
        QTRY_VERIFY(plant.store->Holds(plant.alarms[0], true));
        QTRY_VERIFY(plant.store->Holds(plant.alarms[9], false));
    }

    void fileThatIsGoneIsWrittenAnew_data()
    {
        const Rows<bool, bool, bool> row("isReplaced", "hasDirectory", "isStopping");
        row("removed", false, true, false);
        row("removed with its directory", false, false, false);
        row("replaced", true, true, false);
        row("removed before the end", false, true, true);
    }

    // Also the states of alarms that are not in the project, as far as the file can still be read.
    void fileThatIsGoneIsWrittenAnew()
    {
        QFETCH(bool, isReplaced);
        QFETCH(bool, hasDirectory);
        QFETCH(bool, isStopping);
        const QTemporaryDir directory;
        const QString data = directory.filePath("data");
        const std::string file = (data + "/alarms.sqlite").toStdString();
        const unsigned long missing = 4711;
        StoreOpening opening;
        const auto save = [&](const std::string &into) {
            SqliteAlarmStates states(into);
            StoredAlarm stored;
            stored.memory.isOutOfService = true;
            QVERIFY(states.Open(opening) && states.Save({{missing, stored}}));
        };
        save(file);
        Plant plant;
        plant.start(std::make_shared<SqliteAlarmStates>(file));
        plant.publish(0, 90);
        QTRY_VERIFY(plant.engine->GetHealth().lastKept != 0);
        QTRY_COMPARE(plant.engine->GetHealth().unkept, std::size_t(0));
        if (hasDirectory)
            QVERIFY(QFile::remove(QString::fromStdString(file)));
        else
            QVERIFY(QDir(data).removeRecursively());
        if (isReplaced)
            save(file);
        if (!isStopping) {
            QTRY_VERIFY(plant.engine->GetHealth().trouble.find("removed or replaced") !=
                        std::string::npos);
            QCOMPARE(plant.engine->GetHealth().unkept, plant.alarms.size());
            QTRY_COMPARE(plant.engine->GetHealth().trouble, std::string());
        }
        plant.engine->Stop();
        SqliteAlarmStates states(file);
        AlarmStateStore::Memories kept;
        unsigned long last = 0;
        QVERIFY(states.Open(opening) && states.Load(kept, last));
        QVERIFY(kept[plant.alarms[0]->GetId()].memory.isActive);
        QVERIFY(kept[missing].memory.isOutOfService);
        QCOMPARE(last, kept[plant.alarms[0]->GetId()].memory.occurrence);
        QCOMPARE(opening.setAside, std::string());
    }

    // However publishers, operators and the reader meet, the list ends as the alarms stand.
    void feedMissesNothing()
    {
        Plant plant;
        plant.start();
        plant.publish(3, 90);
        AlarmFeed early = plant.openFeed();
        std::atomic<bool> isFlooding{true};
        std::vector<std::thread> threads;
        for (const std::size_t first : {0, 5}) {
            threads.emplace_back([&, first] {
                for (int i = 0; i < 2000; ++i)
                    plant.publish(first + std::size_t(i % 5), i / 5 % 3 ? 90 : 10);
                plant.publish(first, 90);
            });
        }
        threads.emplace_back([&] {
            std::vector<Result> results;
            const auto acknowledge = [](std::size_t, AlarmTracker &tracker, const AlarmMoment &now,
                                        AlarmTracker::Records &records) {
                return tracker.AcknowledgeSeen(now.steady, "anna", "", now, records);
            };
            for (std::size_t i = 0; isFlooding; ++i) {
                results.clear();
                plant.engine->Operate({plant.alarms[i % 10]->GetId()}, acknowledge, results);
            }
        });
        AlarmFeed feed = plant.openFeed();
        List list;
        int takes = 0;
        for (; takes < 1000; ++takes)
            list.take(feed, 3);
        isFlooding = false;
        for (std::thread &thread : threads)
            thread.join();
        for (bool hasMore = true; hasMore; ++takes)
            hasMore = list.take(feed, 3);
        QVERIFY(!list.shown.empty() && list.matches(*plant.engine));
        List whole;
        whole.take(early, SIZE_MAX);
        QVERIFY(whole.matches(*plant.engine));
        QTRY_COMPARE(plant.engine->GetHealth().unannounced, std::size_t(0));
        QCOMPARE(whole.events, std::uint64_t(plant.announced));
        QVERIFY(plant.wakes <= takes + 2);
    }

    void feedWakesOnceUntilTaken()
    {
        Plant plant;
        plant.start();
        AlarmFeed feed = plant.openFeed();
        QTRY_COMPARE(plant.wakes, 1);
        plant.publish(0, 90);
        plant.publish(0, 10);
        plant.publish(0, 90);
        QTRY_COMPARE(plant.announced, 3);
        QCOMPARE(plant.wakes, 1);
        const AlarmFeed::Batch batch = feed.Take();
        QVERIFY(batch.isAnew && !batch.hasMore);
        QCOMPARE(batch.events, std::uint64_t(3));
        QCOMPARE(batch.alarms.size(), std::size_t(1));
        QCOMPARE(batch.alarms[0].alarmState, AlarmState::ActiveUnacked);
        plant.publish(1, 90);
        QTRY_COMPARE(plant.wakes, 2);
        QCOMPARE(feed.Take().alarms.size(), std::size_t(1));
    }

    void feedOutlivesTheAlarms()
    {
        Plant plant;
        plant.start();
        AlarmFeed feed = plant.openFeed();
        QTRY_COMPARE(plant.wakes, 1);
        plant.publish(0, 90);
        List list;
        list.take(feed, 10);
        QCOMPARE(list.shown.size(), std::size_t(1));
        plant.engine->Stop();
        QTRY_COMPARE(plant.wakes, 2);
        list.take(feed, 10);
        QVERIFY(list.shown.empty());
        plant.start();
        QTRY_VERIFY(list.take(feed, 10) || list.shown.size() == 1);
        plant.engine.reset();
        QVERIFY(feed.Take().alarms.empty());
        plant.engine = std::make_shared<AlarmEngine>();
    }
};

QTEST_APPLESS_MAIN(TestAlarmEngine)
#include "tst_alarm_engine.moc"
