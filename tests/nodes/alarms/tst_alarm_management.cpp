#include "nodes/alarms/AlarmFixture.h"
#include "nodes/alarms/engine/AlarmFloodWatch.h"
#include "nodes/alarms/engine/FirstUpGroup.h"
#include "support/Rows.h"

#include <QtTest>

#include <random>

Q_DECLARE_METATYPE(Nodes::Result::ResultType)

using namespace Nodes;

namespace {

constexpr Timestamp ms = 1000;
constexpr Timestamp second = 1000 * ms;

/// What an alarm should show, written as plainly as it goes: time passes ms by ms.
struct NaiveAlarm
{
    bool isLatched, isAckRequired;
    int onDelay, offDelay;

    int time = 0, since = 0, shelfEnd = 0;
    bool isHigh = false, isUp = false, isWaiting = false, isResetDue = false, isSeen = true;
    bool isOut = false, isByHand = false, isByDesign = false;

    bool isHidden() const { return isOut || isByHand || isByDesign || shelfEnd != 0; }
    void see() { isSeen = isSeen || !isHidden(); }
    void value(bool high)
    {
        if (high != isHigh)
            since = time;
        isHigh = high;
        settle();
    }
    void settle()
    {
        if (isHigh != isUp && time - since >= (isUp ? offDelay : onDelay)) {
            isUp = isHigh;
            if (isUp) {
                isWaiting = isAckRequired;
                isResetDue = false;
                isSeen = !isHidden();
            } else {
                isWaiting = isWaiting && isSeen;
                isResetDue = isLatched && isSeen;
            }
        }
        if (shelfEnd != 0 && time >= shelfEnd)
            shelfEnd = 0;
        see();
    }
    void pass(int milliseconds)
    {
        for (const int end = time + milliseconds; time < end;) {
            ++time;
            settle();
        }
    }
    AlarmState state() const
    {
        return isOut                    ? AlarmState::OutOfService
               : isByHand || isByDesign ? AlarmState::Suppressed
               : shelfEnd != 0          ? AlarmState::Shelved
               : isUp && isWaiting      ? AlarmState::ActiveUnacked
               : isUp                   ? AlarmState::ActiveAcked
               : isWaiting              ? AlarmState::ReturnedUnacked
               : isResetDue             ? AlarmState::AwaitingReset
                                        : AlarmState::Normal;
    }
};

/// Time passes as it does for the engine: every deadline is met.
void pass(Alarm &alarm, int milliseconds)
{
    const Timestamp end = alarm.time + milliseconds * ms;
    while (alarm.tracker.Deadline() <= end) {
        alarm.time = std::max(alarm.time, alarm.tracker.Deadline());
        alarm.tracker.Tick(alarm.now(), alarm.records);
    }
    alarm.time = end;
    alarm.tracker.Tick(alarm.now(), alarm.records);
}

void act(char what, bool on, Alarm &alarm, NaiveAlarm &naive)
{
    AlarmTracker &tracker = alarm.tracker;
    switch (what) {
    case 'a':
        alarm.acknowledge();
        naive.isWaiting = false;
        break;
    case 'x':
        (void)tracker.Reset("anna", alarm.now(), alarm.records);
        naive.isResetDue = naive.isResetDue && naive.isWaiting;
        break;
    case 's':
        alarm.shelve(700);
        naive.shelfEnd = naive.time + 700;
        break;
    case 'u':
        tracker.Unshelve("anna", alarm.now(), alarm.records);
        naive.shelfEnd = 0;
        break;
    case 'o':
        tracker.SetOutOfService(on, "anna", alarm.now(), alarm.records);
        naive.isOut = on;
        break;
    case 'p':
        tracker.SetSuppressed(on, "anna", alarm.now(), alarm.records);
        naive.isByHand = on;
        break;
    case 'd':
        tracker.SuppressByDesign(on, alarm.now(), alarm.records);
        naive.isByDesign = on;
        break;
    default:
        alarm.judge(on ? 90.0 : 10.0);
        naive.value(on);
    }
    naive.see();
}

} // namespace

class TestAlarmManagement : public QObject
{
    Q_OBJECT

private slots:
    void random_data()
    {
        const Rows<bool, bool, int, int> row("latched", "ackRequired", "onDelay", "offDelay");
        row("plain", false, true, 0, 0);
        row("delays", false, true, 300, 500);
        row("latched", true, true, 0, 200);
        row("latched, no acknowledgement", true, false, 100, 0);
    }

    void random()
    {
        QFETCH(bool, latched);
        QFETCH(bool, ackRequired);
        QFETCH(int, onDelay);
        QFETCH(int, offDelay);
        const QString properties =
            QString("type=H limit=80 latched=%1 ackRequired=%2 onDelay=%3 offDelay=%4")
                .arg(latched ? "true" : "false", ackRequired ? "true" : "false")
                .arg(onDelay)
                .arg(offDelay);
        for (unsigned seed = 1; seed <= 40; ++seed) {
            std::mt19937 dice(seed);
            Alarm alarm("alarmLimit", properties);
            NaiveAlarm naive{latched, ackRequired, onDelay, offDelay};
            alarm.judge(10.0);
            std::string story;
            for (int i = 0; i < 150; ++i) {
                const char what = "vvvvaaxsuopd"[dice() % 12];
                const bool on = dice() % 2;
                const int time = int(dice() % 400);
                act(what, on, alarm, naive);
                story += std::string(1, what) + (on ? "+" : "-") + std::to_string(time) + " ";
                QVERIFY2(alarm.tracker.GetState() == naive.state(), story.c_str());
                pass(alarm, time);
                naive.pass(time);
                QVERIFY2(alarm.tracker.GetState() == naive.state(), story.c_str());
            }
        }
    }

    // Steps of a value: seconds:value:alarm up afterwards, b for a bad one, - for no new value.
    void rates_data()
    {
        const Rows<QString, QString> row("properties", "values");
        row("rises in a window", "limit=2 window=10", "0:0:0 10:0:0 5:10:0 5:20:1");
        row("too slowly", "limit=2 window=10", "0:0:0 10:0:0 5:9:0 5:19:0");
        row("falls", "limit=2 window=10", "0:90:0 10:90:0 10:70:1");
        row("rising only", "limit=2 window=10 direction=rising", "0:90:0 10:90:0 10:70:0");
        row("falling only", "limit=2 window=10 direction=falling", "0:90:0 10:90:0 10:70:1");
        row("by the minute", "limit=60 per=minute window=10", "0:0:0 10:0:0 1:9:0 1:10:1");
        row("steps and stays", "limit=2 window=10", "0:0:0 10:0:0 1:20:1 9.9:-:1 0.1:-:0");
        row("deadband", "limit=2 window=10 deadband=1", "0:0:0 10:0:0 1:20:1 5:12:1 1:10:0");
        row("unknown before the window is full", "limit=2 window=10",
            "0:0:0 9:90:0 0.5:90:0 0.5:90:1");
        row("unknown across a gap", "limit=2 window=10", "0:0:0 10:0:0 1:b:0 1:90:0 9:90:0 5:90:0");
        row("a gap keeps it up", "limit=2 window=10", "0:0:0 10:0:0 1:20:1 1:b:1 30:20:1 10:20:0");
    }

    void rates()
    {
        QFETCH(QString, properties);
        QFETCH(QString, values);
        Alarm alarm("alarmRate", properties);
        for (const QString &step : values.split(' ')) {
            const QStringList parts = step.split(':');
            pass(alarm, int(parts[0].toDouble() * 1000));
            if (parts[1] == "b")
                alarm.judge(withQuality(0.0, Quality::Bad));
            else if (parts[1] != "-")
                alarm.judge(parts[1].toDouble());
            QVERIFY2(alarm.tracker.GetMemory().isActive == (parts[2] == "1"), qPrintable(step));
        }
    }

    // However often a value comes, what happens between is seen.
    void rateOfManyValues()
    {
        Alarm alarm("alarmRate", "limit=2 window=10");
        for (int i = 0; i < 50000; ++i) {
            alarm.judge(i < 30000 ? 0.0 : (i - 30000) * 0.00201);
            pass(alarm, 1);
        }
        QVERIFY(alarm.tracker.GetMemory().isActive);
        QCOMPARE(alarm.records.size(), std::size_t(1));
        QCOMPARE(alarm.records[0].newValue.substr(0, 4), std::string("20.0"));
    }

    void deviationFromSignal()
    {
        Alarm alarm("alarmDeviation", "limit=5");
        auto *setPoint = alarm.project.add("memorySignal", alarm.project.root());
        alarm.project.set(alarm.node, {{"reference", std::to_string(setPoint->GetId())}});
        AlarmTracker tracker(AlarmSettings::Of(*alarm.node), alarm.lastOccurrence);
        const auto reference = [&](const SignalValue &value) {
            tracker.JudgeReference(value, alarm.now(), alarm.records);
            return tracker.GetState();
        };
        tracker.Judge(60.0, alarm.now(), alarm.records);
        QCOMPARE(tracker.GetState(), AlarmState::Normal); // compared with what?
        QCOMPARE(reference(withQuality(70.0, Quality::Stale)), AlarmState::Normal);
        QCOMPARE(reference(65.0), AlarmState::ActiveUnacked);
        QCOMPARE(reference(withQuality(60.0, Quality::Bad)), AlarmState::ActiveUnacked);
        QVERIFY(tracker.isDoubtful());
        QCOMPARE(reference(60.0), AlarmState::ReturnedUnacked);
    }

    void reminders()
    {
        Alarm alarm("alarmLimit", "type=H limit=80 realarm=2 priority=1");
        alarm.judge(90.0);
        const Timestamp raised = alarm.now().wall;
        pass(alarm, 119999);
        QCOMPARE(alarm.records.size(), std::size_t(1));
        pass(alarm, 1);
        QCOMPARE(alarm.records.size(), std::size_t(2));
        QVERIFY(alarm.records[1].type == TypeAlarmState && alarm.records[1].level == LevelCritical);
        QVERIFY(alarm.records[1].text.find("не квитирована 2 мин") != std::string::npos);
        const BasicEvent shown = alarm.tracker.GetRecord();
        QVERIFY(shown.reminders == 1 && shown.raised == raised && shown.time > raised);
        pass(alarm, 60000);
        alarm.shelve(240000);
        pass(alarm, 240000);
        const std::size_t before = alarm.records.size();
        pass(alarm, 119999);
        QCOMPARE(alarm.records.size(), before);
        pass(alarm, 1);
        QCOMPARE(alarm.tracker.GetRecord().reminders, 2);
        alarm.acknowledge();
        QCOMPARE(alarm.tracker.Deadline(), INT64_MAX);
    }

    void remindersTellWholeMinutes_data()
    {
        const Rows<int, QString> row("clock", "waited"); // seconds it runs meanwhile
        row("with seconds", 603, "не квитирована 10 мин");
        row("the clock set back", -3600, "не квитирована 2 мин");
    }
    void remindersTellWholeMinutes()
    {
        QFETCH(int, clock);
        QFETCH(QString, waited);
        Alarm alarm("alarmLimit", "type=H limit=80 realarm=2 priority=1");
        alarm.judge(90.0);
        const AlarmMoment raised = alarm.now();
        alarm.tracker.Tick({raised.wall + clock * 1000000LL, raised.steady + 120000000},
                           alarm.records);
        QCOMPARE(alarm.records.size(), std::size_t(2));
        QVERIFY(QString::fromStdString(alarm.records[1].text).endsWith(waited));
    }

    void firstUp()
    {
        const auto group = std::make_shared<FirstUpGroup>();
        Alarm first("alarmLimit", "type=H limit=80");
        Alarm second("alarmLimit", "type=H limit=80");
        first.tracker.Join(group);
        second.tracker.Join(group);
        const auto marks = [&] {
            return std::pair(first.tracker.GetRecord().isFirstUp,
                             second.tracker.GetRecord().isFirstUp);
        };
        first.tracker.SetOutOfService(true, "", first.now(), first.records);
        first.judge(90.0); // nobody sees it
        first.judge(10.0);
        first.tracker.SetOutOfService(false, "", first.now(), first.records);
        QVERIFY(marks() == std::pair(false, false));
        second.judge(90.0);
        QVERIFY(second.records.back().isFirstUp); // the record says it already
        first.judge(90.0);
        second.judge(10.0);
        second.acknowledge();
        second.judge(90.0); // the group was not quiet meanwhile
        QVERIFY(marks() == std::pair(false, true));
        for (Alarm *alarm : {&first, &second}) {
            alarm->judge(10.0);
            alarm->acknowledge();
        }
        QVERIFY(marks() == std::pair(false, false));
        first.judge(90.0);
        QVERIFY(marks() == std::pair(true, false));
        // A restart keeps the mark, and gives none to what merely comes back first.
        second.judge(90.0);
        const auto anew = std::make_shared<FirstUpGroup>();
        Alarm later("alarmLimit", "type=H limit=80");
        Alarm marked("alarmLimit", "type=H limit=80");
        later.tracker.Join(anew);
        marked.tracker.Join(anew);
        (void)later.tracker.Restore(second.tracker.GetMemory(), later.now());
        QVERIFY(!later.tracker.GetRecord().isFirstUp);
        (void)marked.tracker.Restore(first.tracker.GetMemory(), marked.now());
        QVERIFY(marked.tracker.GetRecord().isFirstUp && !later.tracker.GetRecord().isFirstUp);
    }

    void refusalsWriteNumbersWhole()
    {
        Alarm alarm("alarmLimit", "");
        const auto told = [&](const AlarmTuning &wanted) {
            const Result answer = alarm.tracker.Tune(wanted, "anna", alarm.now(), alarm.records);
            return QString::fromStdString(answer.GetDetail()).section(": ", -1);
        };
        QCOMPARE(told({{}, -1.0, {}, {}}), QString("допустимо от 0 до 1000000000000"));
        QCOMPARE(told({{}, {}, 86400001, {}}), QString("допустимо от 0 с до 86400 с"));
    }

    void tuning_data()
    {
        // numbers: limit deadband onDelay offDelay, - for none
        const Rows<QByteArray, QString, Result::ResultType> row("kind", "numbers", "result");
        row("limit", "alarmLimit", "90 - - -", Result::Success);
        row("all", "alarmLimit", "90 2 500 0", Result::Success);
        row("beyond the signal", "alarmLimit", "101 - - -", Result::OutOfRange);
        row("no number", "alarmLimit", "nan - - -", Result::InvalidArgument);
        row("deadband", "alarmLimit", "- -1 - -", Result::OutOfRange);
        row("delay", "alarmLimit", "- - 86400001 -", Result::OutOfRange);
        row("other delay", "alarmLimit", "- - 5 -1", Result::OutOfRange);
        row("alarm without a limit", "alarmDiscrete", "1 - - -", Result::InvalidArgument);
        row("delay of such", "alarmDiscrete", "- - - 700", Result::Success);
        row("rate beyond the signal", "alarmRate", "500 - - -", Result::Success);
    }

    void tuning()
    {
        QFETCH(QByteArray, kind);
        QFETCH(QString, numbers);
        QFETCH(Result::ResultType, result);
        Alarm alarm(kind.constData(), "");
        const QStringList parts = numbers.split(' ');
        AlarmTuning wanted;
        for (auto [number, i] : {std::pair(&wanted.limit, 0), std::pair(&wanted.deadband, 1)})
            if (parts[i] != "-")
                *number = parts[i].toDouble();
        for (auto [delay, i] : {std::pair(&wanted.onDelay, 2), std::pair(&wanted.offDelay, 3)})
            if (parts[i] != "-")
                *delay = parts[i].toInt();
        const AlarmTuning before = alarm.tracker.GetTuning();
        const Result answer = alarm.tracker.Tune(wanted, "anna", alarm.now(), alarm.records);
        QCOMPARE(answer.GetType(), result);
        QCOMPARE(answer.GetDetail().empty(), answer.IsSuccess());
        const AlarmTuning after = alarm.tracker.GetTuning();
        QCOMPARE(after == before, !answer);
        QCOMPARE(alarm.records.size(), std::size_t(answer.IsSuccess()));
        if (wanted.limit && answer)
            QCOMPARE(*after.limit, *wanted.limit);
        QVERIFY(!answer || alarm.tracker.RevertTuning("anna", alarm.now(), alarm.records));
        QVERIFY(alarm.tracker.GetTuning() == before && alarm.tracker.GetMemory().isBlank());
    }

    // At once, not with the next value; and a delay that runs begins anew.
    void tuningCountsAtOnce()
    {
        Alarm alarm("alarmLimit", "type=H limit=80");
        alarm.judge(85.0);
        const auto tune = [&](const AlarmTuning &wanted) {
            return alarm.tracker.Tune(wanted, "anna", alarm.now(), alarm.records).IsSuccess();
        };
        QVERIFY(tune({90.0, {}, 1000, {}}));
        QCOMPARE(alarm.tracker.GetState(), AlarmState::ReturnedUnacked);
        QVERIFY(alarm.records[1].text.find("предел 80 → 90, задержка возникновения 0 с → 1 с") !=
                std::string::npos);
        QVERIFY(tune({84.0, {}, {}, {}}));
        pass(alarm, 999);
        QVERIFY(!alarm.tracker.GetMemory().isActive);
        pass(alarm, 1);
        QVERIFY(alarm.tracker.GetMemory().isActive);
    }

    void projectOverrulesTuning()
    {
        Alarm before("alarmLimit", "type=H limit=80 onDelay=100");
        QVERIFY(before.tracker.Tune({90.0, {}, 500, {}}, "anna", before.now(), before.records));
        Alarm after("alarmLimit", "type=H limit=85 onDelay=100");
        const AlarmTuning dropped = after.tracker.Restore(before.tracker.GetMemory(), after.now());
        QVERIFY((dropped == AlarmTuning{90.0, {}, {}, {}}));
        QVERIFY((after.tracker.GetTuning() == AlarmTuning{85.0, 0.0, 500, 0}));
    }

    void flood()
    {
        AlarmFloodWatch watch(10, 5);
        const Timestamp wall = 1700000000 * second;
        for (int i = 0; i < 11; ++i) {
            QVERIFY(!watch.GetFlood().isFlood);
            watch.Add(i * 20 * second, wall + i);
        }
        QVERIFY(watch.GetFlood().isFlood && watch.GetFlood().since == wall + 10);
        QCOMPARE(watch.GetFlood().raisedInTenMinutes, 11);
        for (const int time : {719, 720}) { // what came at 120 s is over
            watch.Advance(time * second, wall);
            QCOMPARE(watch.GetFlood().raisedInTenMinutes, time == 719 ? 5 : 4);
            QCOMPARE(watch.GetFlood().isFlood, time == 719);
        }
        QCOMPARE(watch.GetRaisedInFlood(), std::uint64_t(11));
        watch.Advance(5000 * second, wall);
        QCOMPARE(watch.Deadline(), INT64_MAX);
    }
};

QTEST_APPLESS_MAIN(TestAlarmManagement)
#include "tst_alarm_management.moc"
