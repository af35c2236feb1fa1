#include "nodes/ManualClock.h"
#include "nodes/ProjectFixture.h"
#include "nodes/alarms/systemAlarming.h"
#include "nodes/auth/systemAuthentication.h"
#include "nodes/journal/EventJournal.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/system/systemCore.h"
#include "nodes/values/ValueCell.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <mutex>
#include <thread>

using namespace Nodes;

namespace {

/// A station with two alarms, run by a core that records into a temporary directory.
class Station
{
public:
    explicit Station(const QTemporaryDir &directory, bool hasUsers = false)
    {
        auto project = std::make_unique<NodesCollection>();
        NodesCollection *nodes = project.get();
        QVERIFY(nodes->SetRoot(nodes->CreateDetached(ProjectFixture::kind("project"))));
        core.AdoptProject(std::move(project), directory.filePath("project.xml").toStdString());
        ConfigNode *station = add("station", nodes->GetRoot());
        alarming = static_cast<systemAlarming *>(add("alarming", station));
        if (hasUsers)
            addUsers(station);
        tank = static_cast<BasicSignal *>(add("memorySignal", station));
        high = add("alarmLimit", tank);
        set(high, "limit", "80");
        set(high, "onDelay", "500");
        quality = add("alarmQuality", tank);
        connection = alarming->ConnectAlarm([this](const BasicEvent &event) {
            const std::lock_guard lock(mutex);
            heard.push_back(event);
        });
    }
    ~Station() { core.Stop(); }

    ConfigNode *add(const char *kind, ConfigNode *parent)
    {
        return parent->GetNodesCollection()->CreateNode(ProjectFixture::kind(kind).type, parent);
    }
    static void set(ConfigNode *node, const char *key, const std::string &text)
    {
        QVERIFY(node->SetPropertyText(key, text));
    }
    void addUsers(ConfigNode *station)
    {
        users = static_cast<systemAuthentication *>(add("authentication", station));
        for (const char *privilege : {"acknowledge", "shelve"}) {
            ConfigNode *role = add("role", users);
            set(add("grant", role), "privileges", privilege);
            ConfigNode *user = add("user", users);
            user->SetName(privilege);
            set(user, "passwordless", "true");
            set(user, "roles", std::to_string(role->GetId()));
        }
    }
    void publish(double value) { tank->GetCell()->Publish(value); }
    std::vector<BasicEvent> events() const
    {
        const std::lock_guard lock(mutex);
        return heard;
    }
    std::vector<AlarmState> states() const
    {
        std::vector<AlarmState> list;
        for (const BasicEvent &event : events())
            list.push_back(event.alarmState);
        return list;
    }
    AlarmState highState() const
    {
        for (const BasicEvent &event : alarming->GetActiveAlarms()) {
            if (event.sourceNode == NodeLink(high))
                return event.alarmState;
        }
        return AlarmState::Normal;
    }
    void raise()
    {
        publish(90);
        ManualClock::Use().Advance(500000);
        QTRY_COMPARE(highState(), AlarmState::ActiveUnacked);
    }

    systemCore core;
    systemAlarming *alarming = nullptr;
    systemAuthentication *users = nullptr;
    BasicSignal *tank = nullptr;
    ConfigNode *high = nullptr;
    ConfigNode *quality = nullptr;
    mutable std::mutex mutex;
    std::vector<BasicEvent> heard;
    boost::signals2::scoped_connection connection;
};

} // namespace

class TestAlarming : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void delayAndShelfEnd();
    void journalled();
    void rights_data();
    void rights();
    void messagesNameWhoDidThem_data();
    void messagesNameWhoDidThem();
    void refusals();
    void restart();
    void damagedStateFile();
    void concurrentPublishers();

private:
    std::unique_ptr<QTemporaryDir> m_directory;
};

void TestAlarming::init()
{
    ManualClock::Use();
    m_directory = std::make_unique<QTemporaryDir>();
}

void TestAlarming::delayAndShelfEnd()
{
    Station station(*m_directory);
    QVERIFY(station.core.Start());
    station.publish(90);
    ManualClock::Use().Advance(499999);
    QCOMPARE(station.highState(), AlarmState::Normal);
    ManualClock::Use().Advance(1);
    QTRY_COMPARE(station.highState(), AlarmState::ActiveUnacked);
    QVERIFY(station.alarming->Shelve(station.high, 60));
    ManualClock::Use().Advance(60 * ManualClock::second);
    QTRY_COMPARE(station.states().size(), std::size_t(3));
    QVERIFY((station.states() == std::vector{AlarmState::ActiveUnacked, AlarmState::Shelved,
                                             AlarmState::ActiveUnacked}));
}

void TestAlarming::journalled()
{
    Station station(*m_directory);
    QVERIFY(station.core.Start());
    station.raise();
    QVERIFY(station.alarming->Acknowledge(station.high, "вижу"));
    station.publish(10);
    QTRY_COMPARE(station.states().size(), std::size_t(3));
    QVERIFY(station.core.GetJournal().Flush());
    JournalQuery query;
    query.source = station.high->GetPath();
    std::vector<BasicEvent> stored;
    QVERIFY(station.core.GetJournal().Query(query, stored));
    for (BasicEvent &event : stored)
        event.id = 0;
    QVERIFY(stored == station.events());
}

void TestAlarming::rights_data()
{
    QTest::addColumn<QByteArray>("user");
    QTest::addColumn<bool>("mayAcknowledge");
    QTest::addColumn<bool>("mayShelve");
    QTest::newRow("nobody") << QByteArray() << false << false;
    QTest::newRow("acknowledger") << QByteArray("acknowledge") << true << false;
    QTest::newRow("shelver") << QByteArray("shelve") << false << true;
}

void TestAlarming::rights()
{
    QFETCH(QByteArray, user);
    QFETCH(bool, mayAcknowledge);
    QFETCH(bool, mayShelve);
    Station station(*m_directory, true);
    QVERIFY(station.core.Start());
    station.raise();
    if (!user.isEmpty())
        QVERIFY(station.users->Authenticate(station.users->GetSubObject(user.constData())));
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
        QCOMPARE(station.events()[i].user, user.toStdString());
    QVERIFY(station.core.GetJournal().Flush());
    JournalQuery query;
    query.text = "нет прав";
    std::vector<BasicEvent> refused;
    QVERIFY(station.core.GetJournal().Query(query, refused));
    QCOMPARE(refused.size(), std::size_t(!mayAcknowledge + 4 * !mayShelve));
}

void TestAlarming::messagesNameWhoDidThem_data()
{
    QTest::addColumn<int>("level");
    QTest::addColumn<QByteArray>("user");
    QTest::newRow("lost device") << int(LevelWarning) << QByteArray();
    QTest::newRow("operator's action") << int(LevelAction) << QByteArray("shelve");
}

void TestAlarming::messagesNameWhoDidThem()
{
    QFETCH(int, level);
    Station station(*m_directory, true);
    QVERIFY(station.core.Start());
    QVERIFY(station.users->Authenticate(station.users->GetSubObject("shelve")));
    QVERIFY(station.tank->StoreMessage(EventLevel(level), "проба", station.tank));
    QVERIFY(station.core.GetJournal().Flush());
    JournalQuery query;
    query.text = "проба";
    std::vector<BasicEvent> stored;
    QVERIFY(station.core.GetJournal().Query(query, stored));
    QCOMPARE(stored.size(), std::size_t(1));
    QTEST(QByteArray::fromStdString(stored[0].user), "user");
    QCOMPARE(stored[0].source, station.tank->GetPath());
}

void TestAlarming::refusals()
{
    Station station(*m_directory);
    systemAlarming &alarming = *station.alarming;
    QCOMPARE(alarming.Acknowledge(station.high).GetType(), Result::NotAvailable);
    QVERIFY(station.core.Start());
    QCOMPARE(alarming.Acknowledge(station.high).GetType(), Result::NotFound);
    QCOMPARE(alarming.Acknowledge(station.tank).GetType(), Result::NotFound);
    QCOMPARE(alarming.Unshelve(station.high).GetType(), Result::NotFound);
    QCOMPARE(alarming.Shelve(station.high, 0).GetType(), Result::OutOfRange);
    QCOMPARE(alarming.Shelve(station.high, 86401).GetType(), Result::OutOfRange);
    QVERIFY(alarming.Shelve(station.high, 86400));
    QVERIFY(station.core.Stop());
    QCOMPARE(alarming.Unshelve(station.high).GetType(), Result::NotAvailable);
}

void TestAlarming::restart()
{
    unsigned long occurrence = 0;
    {
        Station station(*m_directory);
        QVERIFY(station.core.Start());
        station.raise();
        QVERIFY(station.alarming->Acknowledge(station.high));
        QVERIFY(station.alarming->Shelve(station.quality, 60));
        QTRY_VERIFY(!station.events().empty());
        occurrence = station.events().front().occurrence;
    }
    Station station(*m_directory);
    QVERIFY(station.core.Start());
    QCOMPARE(station.highState(), AlarmState::ActiveAcked);
    QTRY_VERIFY(station.events().size() >= 2);
    QCOMPARE(station.alarming->GetActiveAlarms().size(), std::size_t(2));
    station.publish(10);
    QTRY_COMPARE(station.highState(), AlarmState::Normal);
    QTRY_COMPARE(station.events().back().type, TypeAlarmReturned);
    QCOMPARE(station.events().back().occurrence, occurrence);
    ManualClock::Use().Advance(60 * ManualClock::second);
    QTRY_VERIFY(station.alarming->GetActiveAlarms().empty());
}

void TestAlarming::damagedStateFile()
{
    QDir().mkpath(m_directory->filePath("data"));
    QFile file(m_directory->filePath("data/alarms.sqlite"));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(QByteArray(5000, 'x')) > 0);
    file.close();
    Station station(*m_directory);
    QVERIFY(station.core.Start());
    station.raise();
    QVERIFY(station.core.GetJournal().Flush());
    JournalQuery query;
    query.text = "состояний тревог повреждён";
    std::vector<BasicEvent> told;
    QVERIFY(station.core.GetJournal().Query(query, told));
    QCOMPARE(told.size(), std::size_t(1));
    QCOMPARE(QDir(m_directory->filePath("data")).entryList({"alarms.sqlite.damaged-*Z"}).size(), 1);
}

void TestAlarming::concurrentPublishers()
{
    Station station(*m_directory);
    Station::set(station.high, "onDelay", "0");
    QVERIFY(station.core.Start());
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

QTEST_APPLESS_MAIN(TestAlarming)
#include "tst_alarming.moc"
