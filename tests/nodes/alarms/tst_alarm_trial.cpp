// What other settings of an alarm would have done, on archived samples.
#include "nodes/CoreFixture.h"
#include "nodes/ManualClock.h"
#include "nodes/alarms/BasicAlarm.h"
#include "nodes/alarms/statistics/AlarmStatistics.h"
#include "nodes/alarms/systemAlarming.h"
#include "nodes/alarms/trial/AlarmTrials.h"
#include "nodes/archive/recording/ArchiveRecording.h"
#include "nodes/archive/systemArchiver.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/values/ValueCell.h"
#include "support/Rows.h"

#include <QTemporaryDir>

#include <random>

using namespace Nodes;

namespace {

constexpr Timestamp second = 1000000;
constexpr Timestamp begin = 1700000000 * second;

SampleVisit visitOf(const SampleRun &run, std::size_t portion = 100)
{
    return [run, portion](Timestamp from, Timestamp to,
                          const std::function<bool(const SampleRun &)> &visitor,
                          const std::atomic<bool> &) {
        const SampleRun all = run.Part(from, to);
        for (std::size_t i = 0; i < all.Size(); i += portion) {
            SampleRun part;
            part.Append(all, i, std::min(i + portion, all.Size()));
            if (!visitor(part))
                break;
        }
        return Result();
    };
}

/// Samples at the seconds of a period, from "70@0 90@5 bad@7 85@9".
SampleRun samplesOf(const QString &script)
{
    SampleRun run;
    for (const QString &word : script.split(' ', Qt::SkipEmptyParts)) {
        const QStringList parts = word.split('@');
        const Timestamp at = begin + Timestamp(parts[1].toDouble() * second);
        if (parts[0] == "bad")
            run.AddGap(at);
        else
            run.Add(at, parts[0].toDouble(), Quality::Good);
    }
    return run;
}

/// The limit alarm by its definition, looked at every half second.
struct NaiveAlarm
{
    void step(double value, bool isGood, int halfSecond)
    {
        const bool isBeyond = value >= 80 || (isActive && value > 75);
        if (!isGood || isBeyond == isActive)
            since = -1;
        else if (since < 0)
            since = halfSecond;
        if (since >= 0 && halfSecond - since >= (isActive ? 5 : 3)) {
            isActive = !isActive;
            since = -1;
        }
    }
    bool isActive = false;
    int since = -1;
};

struct Station : CoreFixture
{
    explicit Station(const QTemporaryDir &directory) : CoreFixture(directory)
    {
        set(alarm, {{"limit", "80"}, {"deadband", "5"}, {"onDelay", "1500"}, {"offDelay", "2500"}});
        add("archiverSource", archiver, nullptr, {{"signal", idOf(tank)}});
    }
    bool isActive() const
    {
        for (const BasicEvent &event : alarming->GetActiveAlarms()) {
            if (event.sourceNode == alarm->GetNodeLink())
                return event.alarmState == AlarmState::ActiveUnacked;
        }
        return false;
    }

    ConfigNode *station = add("station", root());
    systemAlarming *alarming = add<systemAlarming>("alarming", station);
    systemArchiver *archiver = add<systemArchiver>("archiver", station);
    BasicSignal *tank = add<BasicSignal>("memorySignal", station);
    BasicAlarm *alarm = add<BasicAlarm>("alarmLimit", tank);
};

} // namespace

class TestAlarmTrial : public QObject
{
    Q_OBJECT

private slots:
    /// A station runs on values that come and go, and its archive is tried afterwards.
    void equalsTheLiveEngine()
    {
        ManualClock &clock = ManualClock::Use();
        QTemporaryDir directory;
        Station station(directory);
        QVERIFY(station.core.Start());
        const Timestamp from = clock.Now();
        std::mt19937 random(7);
        NaiveAlarm naive;
        double value = 78;
        bool isGood = true;
        for (int halfSecond = 1; halfSecond < 2400; ++halfSecond) {
            clock.Advance(second / 2);
            if (halfSecond % 2 == 0) {
                if (random() % 4 == 0)
                    value = 70 + double(random() % 2000) / 100;
                isGood = random() % 12 != 0;
                SignalValue published(value);
                published.SetQuality(isGood ? Quality::Good : Quality::Bad);
                station.tank->GetCell()->Publish(published);
            }
            naive.step(value, isGood, halfSecond);
            QTRY_COMPARE(station.isActive(), naive.isActive);
        }
        const Timestamp end = clock.Now() + 1;
        JournalQuery query;
        query.types = {TypeAlarmActive, TypeAlarmReturned};
        AlarmStatistics live({from, end});
        for (const BasicEvent &entry : station.journalled(query))
            live.Add(entry);
        QVERIFY(station.archiver->GetRecording()->Flush());

        AlarmTrials trials;
        trials.begin = from;
        trials.end = end;
        trials.candidates = {AlarmSettings::Of(*station.alarm)};
        QVERIFY(OpenSamples(*station.archiver, *station.tank, trials.samples));
        AlarmTrials::Outcome outcome;
        const Result result = trials.Run(std::atomic<bool>(false), outcome);
        QVERIFY2(result.IsSuccess(), result.ToString().c_str());
        const AlarmFigures had = live.GetFigures();
        const AlarmFigures &tried = outcome.figures.at(0);
        QVERIFY(had.raised > 20);
        QCOMPARE(tried.raised, had.raised);
        QCOMPARE(tried.perBin, had.perBin);
        QCOMPARE(tried.fleetingAlarms, had.fleetingAlarms);
        QCOMPARE(tried.activeAtEnd, had.activeAtEnd);
        QCOMPARE(tried.alarms.at(0).lastRaised, had.alarms.at(0).lastRaised);
        QCOMPARE(tried.alarms.at(0).fleeting, had.alarms.at(0).fleeting);
        QCOMPARE(tried.alarms.at(0).chattering, had.alarms.at(0).chattering);
        QVERIFY(station.core.Stop());
    }

    void candidates_data()
    {
        const Rows<QString, QString, int> row("samples", "tuning", "raised");
        const QString wave = "70@0 81@10 79@20 81@30 79@40 81@50 70@60";
        row("as it is", wave, "", 3);
        row("deadband", wave, "deadband=2", 1);
        row("higher limit", wave, "limit=82", 0);
        row("on delay is not reached", wave, "on=10500", 0);
        row("on delay is reached", wave, "on=10000", 3);
        row("off delay bridges", wave, "off=10500", 1);
        row("before the period", "81@-10 70@-5 81@5", "", 1);
        row("up when it begins", "81@-10 70@5", "", 0);
        row("a delay ends in the period", "81@-5", "on=10000", 1);
        row("a delay ends behind it", "81@95", "on=10000", 0);
        row("a gap begins the delay anew", "81@0 bad@5 81@8 70@16", "on=10000", 0);
        row("a gap keeps an alarm up", "81@0 bad@5 81@8", "", 1);
        row("no samples", "", "", 0);
    }
    void candidates()
    {
        QFETCH(QString, samples);
        QFETCH(QString, tuning);
        QFETCH(int, raised);
        ProjectFixture project;
        auto *signal = project.add<BasicSignal>("memorySignal", project.root());
        auto *alarm = project.add<BasicAlarm>("alarmLimit", signal, nullptr, {{"limit", "80"}});
        AlarmTuning wanted;
        const QString number = tuning.section('=', 1);
        if (tuning.startsWith("deadband"))
            wanted.deadband = number.toDouble();
        else if (tuning.startsWith("limit"))
            wanted.limit = number.toDouble();
        else if (tuning.startsWith("on"))
            wanted.onDelay = number.toInt();
        else if (tuning.startsWith("off"))
            wanted.offDelay = number.toInt();
        AlarmTrials trials{{AlarmSettings::Of(*alarm, wanted)}, begin, begin + 100 * second,
                           visitOf(samplesOf(samples), 2),      {},    {}};
        AlarmTrials::Outcome outcome;
        QVERIFY(trials.Run(std::atomic<bool>(false), outcome));
        QCOMPARE(int(outcome.figures.at(0).raised), raised);
    }

    void endsWhenCancelled()
    {
        ProjectFixture project;
        auto *signal = project.add<BasicSignal>("memorySignal", project.root());
        auto *alarm = project.add<BasicAlarm>("alarmLimit", signal);
        SampleRun run;
        for (int i = 0; i < 1000; ++i)
            run.Add(begin + i * second, i % 2, Quality::Good);
        AlarmTrials trials{
            {AlarmSettings::Of(*alarm)}, begin, begin + 1000 * second, visitOf(run), {}, {}};
        std::atomic<bool> isCancelled{false};
        int told = 0;
        trials.onProgress = [&](double) { isCancelled = ++told == 3; };
        AlarmTrials::Outcome outcome;
        QCOMPARE(trials.Run(isCancelled, outcome), Result::Cancelled);
        QCOMPARE(told, 3);
        trials.end = trials.begin;
        QCOMPARE(trials.Run(std::atomic<bool>(false), outcome), Result::InvalidArgument);
    }
};

QTEST_GUILESS_MAIN(TestAlarmTrial)
#include "tst_alarm_trial.moc"
