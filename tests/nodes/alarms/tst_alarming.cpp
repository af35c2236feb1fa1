#include "nodes/alarms/AlarmStation.h"
#include "nodes/storage/SqliteDatabase.h"
#include "support/Rows.h"

#include <QDir>
#include <QFile>

#include <thread>

Q_DECLARE_METATYPE(Nodes::AlarmState)

using namespace Nodes;

using Station = AlarmStation;

class TestAlarming : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        ManualClock::Use();
        m_directory = std::make_unique<QTemporaryDir>();
    }

    void delayAndShelfEnd()
    {
        Station station(*m_directory);
        station.raise();
        QVERIFY(station.alarming->Shelve(station.high, 60));
        ManualClock::Use().Advance(60 * ManualClock::second);
        QTRY_COMPARE(station.events().size(), std::size_t(3));
        for (const int i : {0, 1, 2})
            QCOMPARE(station.events()[i].alarmState,
                     i == 1 ? AlarmState::Shelved : AlarmState::ActiveUnacked);
    }

    // Nobody configured it: the station itself watches its records.
    void tellsOfRecordsAtRisk()
    {
        const QDir data(m_directory->filePath("data"));
        QVERIFY(data.mkpath("journal.sqlite") && data.mkpath("journal.sqlite.spill"));
        CoreFixture station(*m_directory);
        auto *alarming = station.add<systemAlarming>("alarming", station.root());
        QCOMPARE(station.core.Start().GetType(), Result::StorageError);
        QVERIFY(alarming->GetActiveAlarms().empty());
        // Longer than a backup may hold a file, by a clock that nobody sets.
        ManualClock::Use().SetBack(3600 * ManualClock::second);
        ManualClock::Use().Advance(4 * ManualClock::second);
        QTRY_COMPARE(alarming->GetActiveAlarms().size(), std::size_t(1));
        const BasicEvent told = alarming->GetActiveAlarms()[0];
        QCOMPARE(told.priority, 1);
        QVERIFY(told.text.find("Записи станции под угрозой") == 0);
        QVERIFY(data.rmdir("journal.sqlite") && data.rmdir("journal.sqlite.spill"));
        QVERIFY(alarming->Acknowledge(told.sourceNode, "вижу"));
        QTRY_VERIFY(alarming->GetActiveAlarms().empty());
        QCOMPARE(station.journalledText("под угрозой").size(), std::size_t(3));
    }

    void journalled()
    {
        Station station(*m_directory);
        station.raise();
        QVERIFY(station.alarming->Acknowledge(station.high, "вижу"));
        station.publish(10);
        QTRY_COMPARE(station.events().size(), std::size_t(3));
        JournalQuery query;
        query.source = station.high->GetPath();
        std::vector<BasicEvent> stored = station.journalled(query);
        for (BasicEvent &event : stored)
            event.id = 0;
        std::vector<BasicEvent> heard = station.events();
        // Lists hear how the alarm stands; the journal has the deed, once.
        QCOMPARE(heard[1].text, heard[0].text);
        QVERIFY(heard[1].alarmState == AlarmState::ActiveAcked);
        heard.erase(heard.begin() + 1);
        for (BasicEvent &event : heard)
            event.raised = event.acknowledged = event.returned = 0;
        QVERIFY(stored == heard);
        query.source = "Acknowledgement";
        QCOMPARE(station.journalled(query).size(), std::size_t(1));
    }

    void blinkingConnection()
    {
        Station station(*m_directory, false, 0);
        station.publish(90);
        QTRY_COMPARE(station.events().size(), std::size_t(1));
        const BasicEvent raised = station.events().front();
        for (const Quality quality : {Quality::Bad, Quality::Good}) {
            ManualClock::Use().Advance(1000);
            station.publish(90, quality);
        }
        QTRY_COMPARE(station.events().size(), std::size_t(3));
        for (const BasicEvent &event : station.events())
            QVERIFY(event.time == raised.time && event.raised == raised.time);
        QVERIFY(station.events()[1].text != raised.text && station.events()[2].text == raised.text);
        JournalQuery query;
        query.source = station.high->GetPath();
        QCOMPARE(station.journalled(query).size(), std::size_t(1));
    }

    void acknowledgesMany()
    {
        Station station(*m_directory, true, 0);
        ConfigNode *second = station.add("alarmLimit", station.tank, nullptr, {{"limit", "70"}});
        QVERIFY(station.core.Stop() && station.core.Start());
        for (const double value : {90, 10, 90})
            station.publish(value);
        QTRY_COMPARE(station.events().size(), std::size_t(6));
        const auto occurrence = [&](const ConfigNode *alarm, bool isLast) {
            std::vector<unsigned long> numbers;
            for (const BasicEvent &event : station.events()) {
                if (event.sourceNode == NodeLink(alarm))
                    numbers.push_back(event.occurrence);
            }
            return isLast ? numbers.back() : numbers.front();
        };
        const AlarmOccurrences batch{{second, occurrence(second, true)},
                                     {station.high, occurrence(station.high, false)},
                                     {station.tank, 1}};
        const auto acknowledge = [&] {
            std::vector<Result::ResultType> types;
            for (const Result &result : station.alarming->Acknowledge(batch, "все"))
                types.push_back(result.GetType());
            return types;
        };
        QVERIFY(acknowledge() == std::vector(3, Result::AccessDenied));
        QCOMPARE(station.journalledText("нет прав, тревог: 3").size(), std::size_t(1));
        QVERIFY(station.logIn("acknowledge"));
        QVERIFY((acknowledge() == std::vector<Result::ResultType>{Result::Success, Result::Refused,
                                                                  Result::NotFound}));
        QCOMPARE(station.highState(), AlarmState::ActiveUnacked);
        QTRY_COMPARE(station.events().size(), std::size_t(7));
        const auto stored = station.journalledText("Комментарий: все");
        QCOMPARE(stored.size(), std::size_t(1));
        QCOMPARE(stored[0].user, std::string("acknowledge"));
        QVERIFY(station.core.Stop());
        QVERIFY(acknowledge() == std::vector(3, Result::NotAvailable));
    }

    void rights_data()
    {
        const Rows<std::string, bool, bool> row("user", "mayAcknowledge", "mayShelve");
        row("nobody", "", false, false);
        row("acknowledger", "acknowledge", true, false);
        row("shelver", "shelve", false, true);
    }

    void rights()
    {
        QFETCH(std::string, user);
        QFETCH(bool, mayAcknowledge);
        QFETCH(bool, mayShelve);
        Station station(*m_directory, true);
        station.raise();
        QVERIFY(user.empty() || station.logIn(user));
        const auto answer = [](bool isAllowed) {
            return isAllowed ? Result::Success : Result::AccessDenied;
        };
        systemAlarming &alarming = *station.alarming;
        QCOMPARE(alarming.Acknowledge(station.high).GetType(), answer(mayAcknowledge));
        QCOMPARE(alarming.Shelve(station.high, 1).GetType(), answer(mayShelve));
        QCOMPARE(alarming.Unshelve(station.high).GetType(), answer(mayShelve));
        QCOMPARE(alarming.SetSuppressed(station.high, true).GetType(), answer(mayShelve));
        QCOMPARE(alarming.SetOutOfService(station.high, true).GetType(), answer(mayShelve));
        QTRY_COMPARE(station.events().size(), std::size_t(1 + mayAcknowledge + 4 * mayShelve));
        for (std::size_t i = 1; i < station.events().size(); ++i)
            QCOMPARE(station.events()[i].user, user);
        const auto refused = station.journalledText("нет прав");
        QCOMPARE(refused.size(), std::size_t(!mayAcknowledge + 4 * !mayShelve));
    }

    void messagesNameWhoDidThem()
    {
        Station station(*m_directory, true);
        QVERIFY(station.logIn("shelve"));
        for (const EventLevel level : {LevelWarning, LevelAction})
            QVERIFY(station.tank->StoreMessage(level, "проба", station.tank));
        const auto stored = station.journalledText("проба");
        QCOMPARE(stored.size(), std::size_t(2));
        for (const BasicEvent &event : stored) {
            QCOMPARE(event.user, std::string(event.level == LevelAction ? "shelve" : ""));
            QCOMPARE(event.source, station.tank->GetPath());
        }
    }

    void refusals()
    {
        Station station(*m_directory);
        systemAlarming &alarming = *station.alarming;
        QCOMPARE(alarming.Acknowledge(station.high).GetType(), Result::NotFound);
        QCOMPARE(alarming.Acknowledge(station.tank).GetType(), Result::NotFound);
        QCOMPARE(alarming.Unshelve(station.high).GetType(), Result::NotFound);
        QCOMPARE(alarming.Shelve(station.high, 0).GetType(), Result::OutOfRange);
        QCOMPARE(alarming.Shelve(station.high, 86401).GetType(), Result::OutOfRange);
        QVERIFY(alarming.Shelve(station.high, 86400));
        QVERIFY(station.core.Stop());
        QCOMPARE(alarming.Unshelve(station.high).GetType(), Result::NotAvailable);
    }

    void restart()
    {
        BasicEvent before;
        {
            Station station(*m_directory);
            station.raise();
            ManualClock::Use().Advance(1000);
            QVERIFY(station.alarming->Acknowledge(station.high));
            QVERIFY(station.alarming->Shelve(station.quality, 60));
            QTRY_COMPARE(station.events().size(), std::size_t(3));
            before = station.events()[1];
        }
        ManualClock::Use().Advance(1000);
        Station station(*m_directory);
        QCOMPARE(station.highState(), AlarmState::ActiveAcked);
        QTRY_VERIFY(station.events().size() >= 2);
        for (const BasicEvent &event : station.events()) {
            if (event.sourceNode == NodeLink(station.high))
                QVERIFY(event.time == before.time && event.raised == before.raised &&
                        event.acknowledged == before.time && event.returned == 0);
        }
        QCOMPARE(station.alarming->GetActiveAlarms().size(), std::size_t(2));
        station.publish(10);
        QTRY_COMPARE(station.highState(), AlarmState::Normal);
        QTRY_COMPARE(station.events().back().type, TypeAlarmReturned);
        QCOMPARE(station.events().back().occurrence, before.occurrence);
        QCOMPARE(station.events().back().raised, before.raised);
        ManualClock::Use().Advance(60 * ManualClock::second);
        QTRY_VERIFY(station.alarming->GetActiveAlarms().empty());
    }

    // Their alarms may have the same numbers, and even the same names.
    void statesOfAnotherProject()
    {
        {
            Station station(*m_directory);
            station.raise();
        }
        {
            Station another(*m_directory, false, 500, "another");
            QVERIFY(another.alarming->GetActiveAlarms().empty());
            QVERIFY(another.alarming->SetOutOfService(another.high, true));
            QVERIFY(another.journalledText("нет в проекте").empty());
        }
        Station station(*m_directory);
        QCOMPARE(station.highState(), AlarmState::ActiveUnacked);
    }

    // Also when nothing but the number is kept, and the clock was set back meanwhile.
    void occurrencesOnlyGrow()
    {
        unsigned long before = 0;
        ManualClock::Use().Advance(3600 * ManualClock::second);
        {
            Station station(*m_directory);
            station.raise();
            QVERIFY(station.alarming->Acknowledge(station.high));
            station.publish(10);
            QTRY_COMPARE(station.events().size(), std::size_t(3));
            before = station.events().back().occurrence;
        }
        ManualClock::Use().Advance(-3600 * ManualClock::second);
        Station station(*m_directory);
        QVERIFY(station.alarming->GetActiveAlarms().empty());
        station.raise();
        QVERIFY(station.alarming->GetActiveAlarms().front().occurrence > before);
    }

    void stateFileOfEarlierVersion_data()
    {
        const Rows<std::string> row("path");
        row("names no places", "");
        row("of another project", "Another/alarm");
    }

    // Such a file knows no times but the last change, and the number tells when it was raised.
    // Nor does it know whose it is: what is kept of another place is not that of this alarm.
    void stateFileOfEarlierVersion()
    {
        QFETCH(std::string, path);
        const Timestamp second = ManualClock::second;
        const Timestamp raised = ManualClock::Use().Now() - 100 * second;
        const Timestamp changed = raised + 40 * second;
        Station station(*m_directory);
        QVERIFY(station.core.Stop());
        const std::string rows = " (" + idOf(station.high) + ", 1, 1, 0, 0, 0, " +
                                 std::to_string(changed) + ", " + std::to_string(raised / 1000) +
                                 "), (" + idOf(station.quality) + ", 0, 0, 0, 0, 0, " +
                                 std::to_string(changed) + ", " + std::to_string(changed) +
                                 "), (99999, 0, 1, 0, 1, 0, " + std::to_string(changed) + ", 0)";
        const QString states = m_directory->filePath("data/alarms.sqlite");
        QVERIFY(QFile::remove(states));
        SqliteDatabase file;
        QVERIFY(file.Open(states.toStdString(), SqliteDatabase::Mode::ReadWrite));
        QVERIFY(file.Execute(
            "CREATE TABLE alarms (node INTEGER PRIMARY KEY, active INTEGER, acked INTEGER, "
            "suppressed INTEGER, out_of_service INTEGER, shelved_until INTEGER, changed INTEGER, "
            "occurrence INTEGER)"));
        QVERIFY(file.Execute(("INSERT INTO alarms VALUES" + rows).c_str()));
        if (!path.empty())
            QVERIFY(file.Execute(("CREATE TABLE places (node INTEGER PRIMARY KEY, path TEXT, "
                                  "missing_since INTEGER); INSERT INTO places SELECT node, '" +
                                  path + "', 0 FROM alarms")
                                     .c_str()));
        file.Close();
        QVERIFY(station.core.Start());
        if (!path.empty()) {
            QVERIFY(station.alarming->GetActiveAlarms().empty());
            QCOMPARE(station.journalledText("Состояние тревоги забыто").size(), std::size_t(2));
            QCOMPARE(station.journalledText("нет в проекте").size(), std::size_t(1));
            return;
        }
        QTRY_COMPARE(station.events().size(), std::size_t(4)); // told, then marked: no value yet
        for (const BasicEvent &event : station.events()) {
            const bool isHigh = event.sourceNode == NodeLink(station.high);
            QCOMPARE(event.raised, isHigh ? raised : changed);
            QCOMPARE(event.acknowledged, isHigh ? changed : 0);
            QCOMPARE(event.returned, isHigh ? 0 : changed);
        }
    }

    void memoryOfMissingAlarm_data()
    {
        // days: until the station is started without the alarm a second time
        const Rows<int, std::string, AlarmState> row("days", "name", "state");
        row("back again", 89, "", AlarmState::OutOfService);
        row("forgotten", 91, "", AlarmState::Normal);
        row("another one", 1, "новая", AlarmState::Normal);
    }

    void memoryOfMissingAlarm()
    {
        QFETCH(int, days);
        QFETCH(std::string, name);
        Station station(*m_directory);
        QVERIFY(station.alarming->SetOutOfService(station.high, true));
        QVERIFY(station.core.Stop());
        std::unique_ptr<ConfigNode> high = station.tank->RemoveNode(station.high);
        for (const int passed : {0, days}) {
            ManualClock::Use().Advance(passed * 86400 * ManualClock::second);
            QVERIFY(station.core.Start());
            QVERIFY(station.core.Stop());
        }
        if (!name.empty())
            high->SetName(name);
        QVERIFY(station.tank->AddNode(high));
        QVERIFY(station.core.Start());
        QTEST(station.highState(), "state");
        QCOMPARE(station.journalledText("Состояние тревоги забыто").size(),
                 std::size_t(station.highState() == AlarmState::Normal));
    }

    void startAndStopAreNoLoss()
    {
        Station station(*m_directory);
        QVERIFY(station.core.Stop());
        auto *driver = station.add("simulatorDriver", station.station);
        auto *signal = station.add<BasicSignal>("simulatorSignal", driver);
        station.add("alarmQuality", signal, nullptr, {{"onDelay", "0"}});
        QVERIFY(station.core.Start());
        QTRY_VERIFY(signal->GetValue().IsGood());
        QVERIFY(station.core.Stop());
        QVERIFY(station.events().empty());
    }

    void damagedStateFile()
    {
        const QDir data(m_directory->filePath("data"));
        QFile file(data.filePath("alarms.sqlite"));
        QVERIFY(data.mkpath(".") && file.open(QIODevice::WriteOnly) &&
                file.write(QByteArray(5000, 'x')) > 0);
        file.close();
        Station station(*m_directory);
        station.raise();
        QCOMPARE(station.journalledText("состояний тревог повреждён").size(), std::size_t(1));
        QCOMPARE(data.entryList({"alarms.sqlite.damaged-*Z"}).size(), 1);
    }

    void concurrentPublishers()
    {
        Station station(*m_directory, false, 0);
        std::vector<std::thread> threads;
        for (int t = 0; t < 3; ++t) {
            threads.emplace_back([&station] {
                for (int i = 0; i < 200; ++i) {
                    station.publish(i % 2 ? 10 : 90);
                    (void)station.alarming->Acknowledge(station.high);
                }
            });
        }
        for (std::thread &thread : threads)
            thread.join();
        station.publish(10);
        (void)station.alarming->Acknowledge(station.high);
        QCOMPARE(station.highState(), AlarmState::Normal);
        QVERIFY(station.core.Stop());
        // The order of the announcements is the order of the changes.
        bool isActive = false;
        for (const BasicEvent &event : station.events()) {
            if (event.type != TypeAlarmActive && event.type != TypeAlarmReturned)
                continue;
            QVERIFY(isActive != (event.type == TypeAlarmActive));
            isActive = event.type == TypeAlarmActive;
        }
        QVERIFY(!isActive && !station.events().empty());
    }

private:
    std::unique_ptr<QTemporaryDir> m_directory;
};

QTEST_APPLESS_MAIN(TestAlarming)
#include "tst_alarming.moc"
