#include "nodes/alarms/AlarmStation.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/storage/SqliteDatabase.h"
#include "nodes/visual/LimitZones.h"
#include "support/Rows.h"

#include <QDir>
#include <QFile>

#include <algorithm>

Q_DECLARE_METATYPE(Nodes::Quality)
Q_DECLARE_METATYPE(Nodes::Result::ResultType)

using namespace Nodes;

namespace {

AlarmTuning limitOf(double limit)
{
    AlarmTuning tuning;
    tuning.limit = limit;
    return tuning;
}

/// The one alarm that is hidden.
BasicEvent hidden(const systemAlarming &alarming)
{
    const std::vector<BasicEvent> all = alarming.GetHiddenAlarms();
    return all.size() == 1 ? all[0] : BasicEvent();
}

} // namespace

class TestAlarmOperations : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        ManualClock::Use();
        m_directory = std::make_unique<QTemporaryDir>();
    }

    void rights_data()
    {
        const Rows<std::string, bool> row("user", "mayTune");
        row("the right one", "configure", true);
        row("who may acknowledge", "acknowledge", false);
        row("nobody", "", false);
    }

    void rights()
    {
        QFETCH(std::string, user);
        QFETCH(bool, mayTune);
        AlarmStation station(*m_directory, true);
        if (!user.empty())
            QVERIFY(station.logIn(user));
        const AlarmTuning before = station.alarming->GetTuning(station.high);
        const Result tuned = station.alarming->Tune(station.high, limitOf(70));
        QCOMPARE(tuned.IsSuccess(), mayTune);
        QCOMPARE(station.alarming->GetTuned().size(), std::size_t(mayTune));
        if (mayTune) {
            const TunedAlarm told = station.alarming->GetTuned()[0];
            QVERIFY(told.by == user && *told.tuning.limit == 70 && *told.project.limit == 80);
            const char *entry = "предел 80 → 70";
            QTRY_COMPARE(station.journalledText(entry).size(), std::size_t(1));
            QCOMPARE(station.journalledText(entry)[0].user, user);
        } else {
            QVERIFY(tuned == Result::AccessDenied);
            QVERIFY(station.alarming->GetTuning(station.high) == before);
            QCOMPARE(station.journalledText("нет прав").size(), std::size_t(1));
            QVERIFY(station.alarming->RevertTuning(station.high) == Result::AccessDenied);
        }
    }

    void limitsInOrder()
    {
        AlarmStation station(*m_directory);
        const auto add = [&](const char *type, const char *limit) {
            return station.add("alarmLimit", station.tank, nullptr,
                               {{"type", type}, {"limit", limit}});
        };
        ConfigNode *highHigh = add("HH", "90");
        ConfigNode *low = add("L", "20");
        station.set(station.tank, {{"unit", "°C"}, {"decimals", "1"}});
        QVERIFY(station.core.Stop() && station.core.Start());
        const auto tune = [&](ConfigNode *alarm, double limit) {
            return station.alarming->Tune(alarm, limitOf(limit));
        };
        const Result above = tune(station.high, 90);
        QVERIFY(above == Result::OutOfRange);
        QCOMPARE(above.GetDetail(),
                 std::string("Предел H 90.0 °C должен быть ниже предела HH (90.0 °C)"));
        QVERIFY(tune(highHigh, 95));
        QVERIFY(tune(station.high, 94)); // what counts counts, not what the project says
        QVERIFY(tune(highHigh, 93) == Result::OutOfRange);
        QVERIFY(tune(low, 94) == Result::OutOfRange);
        QVERIFY(tune(low, 93));
        const LimitZones zones = LimitZones::FromAlarms(*station.tank); // what gauges show
        QVERIFY(zones.highHigh == 95 && zones.high == 94 && zones.low == 93);
        QVERIFY(station.alarming->RevertTuning(station.high) == Result::OutOfRange);
        QVERIFY(station.alarming->RevertTuning(low));
        QVERIFY(station.alarming->RevertTuning(station.high));
        QVERIFY(station.alarming->RevertTuning(station.high) == Result::NotFound);
    }

    void staysOverRestart_data()
    {
        const Rows<bool> row("isKilled");
        row("stopped", false);
        row("killed", true); // nothing is written at the end
    }

    void staysOverRestart()
    {
        QFETCH(bool, isKilled);
        QTemporaryDir image;
        const auto prepare = [](AlarmStation &station) {
            station.set(station.high, {{"latched", "true"}, {"firstUpGroup", "горелка"}});
            return station.core.Start().IsSuccess();
        };
        auto former = std::make_unique<AlarmStation>(*m_directory, false, 0, "fixture", true);
        QVERIFY(prepare(*former));
        former->publish(90);
        QVERIFY(former->alarming->Acknowledge(former->high, "осмотр"));
        former->publish(10);
        QVERIFY(former->highState() == AlarmState::AwaitingReset);
        QVERIFY(former->alarming->SetOutOfService(former->quality, true, "ремонт"));
        QVERIFY(former->alarming->Tune(former->quality, {{}, {}, 700, {}}));
        QVERIFY(former->alarming->Shelve(former->high, 600, "поверка"));
        const Timestamp until = ManualClock::Use().Now() + 600 * ManualClock::second;
        QTRY_COMPARE(former->alarming->GetHealth().unkept, std::size_t(0));
        QVERIFY(QDir(image.path()).mkpath("data"));
        for (const char *file : {"data/alarms.sqlite", "data/alarms.sqlite-wal"})
            QVERIFY(!isKilled || QFile::copy(m_directory->filePath(file), image.filePath(file)));
        former.reset();
        AlarmStation station(isKilled ? image : *m_directory, false, 0, "fixture", true);
        QVERIFY(prepare(station));
        QCOMPARE(station.alarming->GetHiddenAlarms().size(), std::size_t(2));
        for (const BasicEvent &alarm : station.alarming->GetHiddenAlarms()) {
            const bool isHigh = alarm.sourceNode == NodeLink(station.high);
            QCOMPARE(alarm.hiddenReason, std::string(isHigh ? "поверка" : "ремонт"));
            QCOMPARE(alarm.hiddenUntil, isHigh ? until : 0);
            QCOMPARE(alarm.comment, std::string(isHigh ? "осмотр" : ""));
        }
        QCOMPARE(*station.alarming->GetTuning(station.quality).onDelay, 700);
        QVERIFY(station.alarming->Unshelve(station.high));
        QVERIFY(station.highState() == AlarmState::AwaitingReset);
        QVERIFY(station.alarming->Reset(station.high));
        QVERIFY(station.highState() == AlarmState::Normal);
        QTRY_COMPARE(station.journalledText(": сброшена").size(), std::size_t(1));
    }

    // A project that says something new counts; what was tuned by then is told of and forgotten.
    void projectChangedMeanwhile()
    {
        {
            AlarmStation station(*m_directory);
            QVERIFY(station.alarming->Tune(station.high, limitOf(70)));
        }
        AlarmStation station(*m_directory);
        QCOMPARE(*station.alarming->GetTuning(station.high).limit, 70.0);
        QVERIFY(station.core.Stop());
        station.set(station.high, {{"limit", "85"}});
        QVERIFY(station.core.Start());
        QCOMPARE(*station.alarming->GetTuning(station.high).limit, 85.0);
        QVERIFY(station.alarming->GetTuned().empty());
        QCOMPARE(station.journalledText("отменена, проект изменён: предел 70 → 85").size(),
                 std::size_t(1));
        QVERIFY(station.core.Stop());
        QVERIFY(station.core.Start()); // once
        QCOMPARE(station.journalledText("отменена, проект изменён").size(), std::size_t(1));
    }

    // The file of the first version had none of the later columns.
    void stateFileOfFirstVersion()
    {
        const QString file = m_directory->filePath("data/alarms.sqlite");
        unsigned long occurrence = 0;
        {
            AlarmStation station(*m_directory, false, 0);
            station.publish(90);
            QTRY_VERIFY(station.highState() == AlarmState::ActiveUnacked);
            QVERIFY(station.alarming->SetSuppressed(station.high, true, "лишняя"));
            occurrence = hidden(*station.alarming).occurrence;
        }
        SqliteDatabase database;
        QVERIFY(database.Open(file.toStdString(), SqliteDatabase::Mode::ReadWrite));
        QVERIFY(database.Execute(
            "CREATE TABLE first (home INTEGER NOT NULL, node INTEGER NOT NULL, active INTEGER, "
            "acked INTEGER, suppressed INTEGER, out_of_service INTEGER, shelved_until INTEGER, "
            "changed INTEGER, occurrence INTEGER, path TEXT, missing_since INTEGER, raised "
            "INTEGER, "
            "acknowledged INTEGER, returned INTEGER, seen INTEGER, PRIMARY KEY (home, node)) "
            "WITHOUT ROWID;"
            "INSERT INTO first SELECT home, node, active, acked, suppressed, out_of_service, "
            "shelved_until, changed, occurrence, path, missing_since, raised, acknowledged, "
            "returned, seen FROM states;"
            "DROP TABLE states; ALTER TABLE first RENAME TO states; PRAGMA user_version = 1"));
        database.Close();
        AlarmStation station(*m_directory, false, 0);
        QVERIFY(hidden(*station.alarming).alarmState == AlarmState::Suppressed);
        QCOMPARE(hidden(*station.alarming).occurrence, occurrence);
        QVERIFY(hidden(*station.alarming).hiddenReason.empty());
        QVERIFY(station.alarming->Tune(station.high, limitOf(70)));
        QVERIFY(station.core.Stop() && station.core.Start());
        QCOMPARE(*station.alarming->GetTuning(station.high).limit, 70.0);
    }

    void suppressedByDesign_data()
    {
        const Rows<bool, bool, Quality, bool> row("inverted", "pump", "quality", "isSuppressed");
        row("the pump is off", true, false, Quality::Good, true);
        row("it runs", true, true, Quality::Good, false);
        row("nobody knows", true, false, Quality::Bad, false);
        row("nobody has known for long", true, false, Quality::Stale, false);
        row("while true", false, true, Quality::Good, true);
        row("while true, it is not", false, false, Quality::Good, false);
    }

    void suppressedByDesign()
    {
        QFETCH(bool, inverted);
        QFETCH(bool, pump);
        QFETCH(Quality, quality);
        QFETCH(bool, isSuppressed);
        AlarmStation station(*m_directory, false, 0);
        auto *running = station.add<BasicSignal>("memorySignal", station.station, "Насос");
        QVERIFY(station.core.Stop());
        station.set(station.high, {{"suppressWhen", idOf(running)},
                                   {"suppressInverted", inverted ? "true" : "false"},
                                   {"suppressText", "насос остановлен"}});
        QVERIFY(station.core.Start());
        running->GetCell()->Publish(inverted != pump); // what it is not
        SignalValue value(pump);
        value.SetQuality(quality);
        running->GetCell()->Publish(value);
        station.publish(90);
        const BasicEvent told = hidden(*station.alarming);
        QCOMPARE(told.alarmState == AlarmState::Suppressed, isSuppressed);
        QCOMPARE(told.hiddenReason,
                 std::string(isSuppressed ? "по проекту: насос остановлен" : ""));
        QCOMPARE(station.highState(),
                 isSuppressed ? AlarmState::Suppressed : AlarmState::ActiveUnacked);
    }

    void suppressedByScript_data()
    {
        // values of the pumps: 0, 1, b bad, - none yet
        const Rows<std::string, std::string, bool> row("script", "pumps", "isSuppressed");
        row("both are off", "not s1 and not s2", "00", true);
        row("one runs", "not s1 and not s2", "01", false);
        row("nobody knows of one", "not s1 and not s2", "0b", false);
        row("one has told nothing yet", "not s1 and not s2", "0-", false);
        row("no logical value", "5", "00", false);
        row("not Lua", "not not (", "00", false);
        row("endless", "while true do end", "00", false);
    }

    void suppressedByScript()
    {
        QFETCH(std::string, script);
        QFETCH(std::string, pumps);
        QFETCH(bool, isSuppressed);
        AlarmStation station(*m_directory, false, 0, "fixture", true);
        auto *probe = station.add<BasicSignal>("memorySignal", station.station);
        std::string inputs;
        std::vector<std::shared_ptr<ValueCell>> cells;
        for (std::size_t i = 0; i < pumps.size(); ++i) {
            auto *pump = station.add<BasicSignal>("memorySignal", station.station);
            cells.push_back(pump->GetCell());
            inputs += (i == 0 ? "" : " ") + idOf(pump);
        }
        station.set(station.high, {{"suppressScript", script}, {"suppressInputs", inputs}});
        // Scripts run in their order: when this one has run, the one before it has.
        ConfigNode *last = station.add("alarmLimit", probe, nullptr,
                                       {{"suppressScript", "s1"}, {"suppressInputs", idOf(probe)}});
        QVERIFY(station.core.Start());
        for (std::size_t i = 0; i < pumps.size(); ++i) {
            if (pumps[i] != '-')
                cells[i]->Publish(pumps[i] == 'b' ? SignalValue(Result(Result::NotConnected))
                                                  : SignalValue(pumps[i] == '1'));
        }
        probe->GetCell()->Publish(true);
        const auto isHidden = [&](const ConfigNode *alarm) {
            for (const BasicEvent &event : station.alarming->GetHiddenAlarms()) {
                if (event.sourceNode == NodeLink(alarm))
                    return true;
            }
            return false;
        };
        QTRY_VERIFY(isHidden(last));
        QTRY_COMPARE(isHidden(station.high), isSuppressed);
        const bool isBroken = script.find("s1") == std::string::npos;
        QTRY_COMPARE(station.journalledText("условие не вычисляется").size(),
                     std::size_t(isBroken));
    }

    void findings_data()
    {
        const Rows<QByteArray, QByteArray, Result::ResultType> row("kind", "properties", "finding");
        row("no mask", "alarmBits", "", Result::InvalidArgument);
        row("pattern beyond the mask", "alarmBits", "mask=4 pattern=3", Result::InvalidArgument);
        row("bits", "alarmBits", "mask=0x0c pattern=4", Result::Success);
        row("rate", "alarmRate", "limit=0", Result::OutOfRange);
        row("deviation", "alarmDeviation", "limit=0", Result::OutOfRange);
        row("compared with nothing", "alarmDeviation", "reference=99999", Result::NotFound);
        row("suppressed by nothing", "alarmLimit", "suppressWhen=99999", Result::NotFound);
        row("script of nothing", "alarmLimit", "suppressScript=s1 suppressInputs=99999",
            Result::NotFound);
        row("HH below H", "alarmLimit", "type=HH limit=79", Result::OutOfRange);
        row("HH above H", "alarmLimit", "type=HH limit=81", Result::Success);
        row("L above H", "alarmLimit", "type=L limit=81", Result::Success); // H tells it
    }

    void findings()
    {
        QFETCH(QByteArray, kind);
        QFETCH(QByteArray, properties);
        QFETCH(Result::ResultType, finding);
        AlarmStation station(*m_directory, false, 0, "fixture", true);
        const auto count = [](const ConfigNode *node, Result::ResultType type) {
            const ValidationResults found = node->isValid();
            return std::count_if(found.begin(), found.end(), [type](const ValidationMessage &m) {
                return m.GetResult().GetType() == type && m.GetMessageStr().find("Тревога") == 0;
            });
        };
        QCOMPARE(count(station.high, Result::OutOfRange), 0);
        ConfigNode *alarm = station.add(kind.constData(), station.tank);
        for (const QByteArray &property : properties.split(' ')) {
            const QList<QByteArray> parts = property.split('=');
            if (parts.size() == 2)
                QVERIFY(alarm->SetPropertyText(parts[0].toStdString(), parts[1].toStdString()));
        }
        QCOMPARE(count(alarm, Result::Success), 1); // the advice to guide the operator
        for (const auto type : {Result::InvalidArgument, Result::OutOfRange, Result::NotFound})
            QCOMPARE(count(alarm, type), type == finding ? 1 : 0);
        const bool isAbove = properties == "type=L limit=81";
        QCOMPARE(count(station.high, Result::OutOfRange), isAbove ? 1 : 0);
        QVERIFY(alarm->SetPropertyText("cause", "утечка"));
        QCOMPARE(count(alarm, Result::Success), 0);
    }

    // Until the signal has its first value what was before the restart holds; without a condition
    // in the project nothing does.
    void suppressionOverRestart()
    {
        const auto prepare = [](AlarmStation &station) {
            auto *running = station.add<BasicSignal>("memorySignal", station.station, "Насос");
            (void)station.core.Stop();
            station.set(station.high, {{"suppressWhen", idOf(running)}});
            (void)station.core.Start();
            return running->GetCell();
        };
        {
            AlarmStation station(*m_directory, false, 0);
            prepare(station)->Publish(true);
            QVERIFY(hidden(*station.alarming).alarmState == AlarmState::Suppressed);
        }
        {
            AlarmStation station(*m_directory, false, 0);
            QVERIFY(station.alarming->GetHiddenAlarms().empty());
        }
        {
            AlarmStation station(*m_directory, false, 0);
            prepare(station)->Publish(true);
        }
        AlarmStation station(*m_directory, false, 0, "fixture", true);
        const std::shared_ptr<ValueCell> cell = prepare(station);
        QVERIFY(hidden(*station.alarming).alarmState == AlarmState::Suppressed);
        cell->Publish(false);
        QVERIFY(station.alarming->GetHiddenAlarms().empty());
    }

    void flood()
    {
        AlarmStation station(*m_directory, false, 0);
        QVERIFY(station.core.Stop());
        station.set(station.alarming, {{"floodBegin", "3"}, {"floodEnd", "2"}});
        QVERIFY(station.core.Start());
        std::mutex mutex;
        std::vector<AlarmFlood> told;
        const ScopedConnection connection =
            station.alarming->ConnectFlood([&](const AlarmFlood &flood) {
                const std::lock_guard lock(mutex);
                told.push_back(flood);
            });
        const auto tellings = [&] {
            const std::lock_guard lock(mutex);
            return told.size();
        };
        for (int i = 0; i < 4; ++i) {
            QVERIFY(!station.alarming->GetFlood().isFlood);
            station.publish(90);
            station.publish(10);
        }
        QVERIFY(station.alarming->GetFlood().isFlood);
        QTRY_COMPARE(tellings(), std::size_t(1));
        ManualClock::Use().Advance(601 * ManualClock::second);
        QTRY_COMPARE(tellings(), std::size_t(2));
        QVERIFY(told[0].isFlood && told[0].raisedInTenMinutes == 4 && !told[1].isFlood);
        QTRY_COMPARE(station.journalledText("Лавина тревог: за 10 минут 4").size(), std::size_t(1));
        QTRY_COMPARE(station.journalledText("Лавина тревог окончена: всего 4").size(),
                     std::size_t(1));
    }

private:
    std::unique_ptr<QTemporaryDir> m_directory;
};

QTEST_APPLESS_MAIN(TestAlarmOperations)
#include "tst_alarm_operations.moc"
