#include "nodes/alarms/AlarmFixture.h"
#include "support/Rows.h"

#include <QtTest>

#include <limits>

using namespace Nodes;

Q_DECLARE_METATYPE(Nodes::AlarmState)

namespace {

constexpr Timestamp ms = 1000;
constexpr Timestamp never = std::numeric_limits<Timestamp>::max();

} // namespace

class TestAlarmTracker : public QObject
{
    Q_OBJECT

private slots:
    void conditions_data()
    {
        // values: value:alarm up afterwards
        const Rows<QByteArray, QString, QString> row("kind", "properties", "values");
        row("high, at the limit", "alarmLimit", "type=H limit=80", "79.9:0 80:1 79.9:0");
        row("high-high with deadband", "alarmLimit", "type=HH limit=80 deadband=5",
            "80:1 79:1 75.1:1 75:0 79:0 81:1");
        row("low", "alarmLimit", "type=L limit=10", "10.1:0 10:1 10.1:0");
        row("low-low with deadband, negative", "alarmLimit", "type=LL limit=-10 deadband=2",
            "-9:0 -10:1 -9:1 -8:0");
        row("text is no number", "alarmLimit", "type=H limit=80", "90:1 x:1 10:0 x:0");
        row("true", "alarmDiscrete", "", "false:0 true:1 false:0");
        row("number 1 is true", "alarmDiscrete", "value=1", "false:0 true:1");
        row("number", "alarmDiscrete", "value=3", "2:0 3:1 4:0");
        row("text", "alarmDiscrete", "value=Авария", "Норма:0 Авария:1");
        row("both ways from a set point", "alarmDeviation", "setPoint=50 limit=5 deadband=1",
            "54:0 55:1 54.5:1 54:0 45:1 x:1 46:0");
        row("below a set point", "alarmDeviation", "setPoint=50 limit=5 direction=low",
            "60:0 45:1 46:0");
        row("above a set point", "alarmDeviation", "setPoint=-50 limit=5 direction=high",
            "-60:0 -45:1 -46:0");
        row("any bit of a mask", "alarmBits", "mask=0x0C", "3:0 4:1 8:1 12.5:1 16:0");
        row("pattern of bits", "alarmBits", "mask=12 pattern=0x4", "12:0 6:1 8:0 -1:0 -9:1 -5:0");
        row("no bits", "alarmBits", "mask=6 pattern=0", "4:0 9:1");
        row("no mask", "alarmBits", "", "1:0 -1:0");
        row("pattern that is none", "alarmBits", "mask=6 pattern=oops", "6:0 0:0");
    }

    void conditions()
    {
        QFETCH(QByteArray, kind);
        QFETCH(QString, properties);
        QFETCH(QString, values);
        Alarm alarm(kind.constData(), properties);
        for (const QString &step : values.split(' ')) {
            const QString text = step.section(':', 0, 0);
            bool isNumber = false;
            const double number = text.toDouble(&isNumber);
            SignalValue value(text.toStdString());
            if (isNumber)
                value.SetValue(number);
            else if (text == "true" || text == "false")
                value.SetValue(text == "true");
            alarm.judge(value);
            QVERIFY2(alarm.tracker.GetMemory().isActive == (step.section(':', 1) == "1"),
                     qPrintable(step));
        }
    }

    // Steps: h value high, l value low, b bad, a acknowledge, s shelve 1000 ms, u unshelve, o/i out
    // of service and in, p/r suppressed and released, d/e by design, x reset, a number passes so
    // many ms. The state follows.
    void scripts_data()
    {
        const Rows<QString, QString> row("properties", "script");
        // States: 1 active, 2 acked, 3 returned unacked, 4 normal, 5 shelved, 6 suppressed, 7 out,
        // 8 waits for its reset.
        row("acknowledged, then gone", "", "l4 h1 a2 l4");
        row("gone, then acknowledged", "", "h1 l3 a4 a4");
        row("back before acknowledged", "", "h1 l3 h1 a2");
        row("no acknowledgement wanted", "ackRequired=false", "h2 a2 l4");
        row("on delay", "onDelay=500", "h4 499:4 1:1");
        row("on delay, interrupted", "onDelay=500", "h4 499:4 l4 h4 499:4 1:1");
        row("off delay", "offDelay=500", "h1 a2 l2 499:2 1:4");
        row("off delay, interrupted", "offDelay=500", "h1 l1 499:1 h1 l1 499:1 1:3");
        row("lost value keeps it up", "", "h1 b1 l3");
        row("lost value raises nothing", "", "l4 b4 h1");
        row("lost value starts the delay anew", "onDelay=500", "h4 400:4 b4 200:4 h4 499:4 1:1");
        row("lost value stops the off delay", "offDelay=500", "h1 l1 400:1 b1 900:1 l1 499:1 1:3");
        row("shelved and back by itself", "", "h1 s5 999:5 1:1");
        row("shelved again runs longer", "", "h1 s5 500:5 s5 999:5 1:1");
        row("unshelved by hand", "", "h1 a2 s5 u2 2000:2");
        row("came while shelved", "", "s5 h5 1000:1");
        row("came and went while shelved", "", "s5 h5 l5 u4");
        row("went while shelved", "", "h1 s5 l5 u3");
        row("acknowledged while shelved", "", "h1 s5 a5 u2");
        row("suppressed", "", "p6 h6 r1 p6 l6 r3");
        row("out of service", "", "h1 o7 l7 h7 i1");
        row("shelved under suppressed", "", "p6 s6 u6 s6 o7 u7 r7 i4");
        row("out of service goes before suppressed before shelved", "", "s5 p6 o7 r7 p7 i6 r5");
        row("latched: acknowledged, gone, reset", "latched=true", "h1 x1 a2 x2 l8 x4 x4");
        row("latched: gone, acknowledged, reset", "latched=true", "h1 l3 x3 a8 x4");
        row("latched: back before the reset", "latched=true", "h1 a2 l8 h1 a2 l8 x4");
        row("latched, no acknowledgement wanted", "latched=true ackRequired=false", "h2 l8 x4");
        row("latched: lost value", "latched=true", "h1 a2 b2 x2 l8 b8 x4");
        row("latched: came and went hidden", "latched=true", "s5 h5 l5 u4");
        row("latched: went hidden", "latched=true", "h1 o7 l7 i3 a8 d6 x6 e4");
        row("by design", "", "d6 h6 e1 d6 l6 e3");
        row("by design and by hand", "", "h1 d6 p6 e6 r1");
        row("by design over the shelf", "", "s5 d6 1000:6 e4");
    }

    void scripts()
    {
        QFETCH(QString, properties);
        QFETCH(QString, script);
        Alarm alarm("alarmLimit", "type=H limit=80 " + properties);
        AlarmState shown = AlarmState::Normal;
        AlarmTracker &tracker = alarm.tracker;
        const std::map<QChar, std::function<void()>> steps{
            {'h', [&] { alarm.judge(90.0); }},
            {'l', [&] { alarm.judge(10.0); }},
            {'b', [&] { alarm.judge(withQuality(95.0, Quality::Bad)); }},
            {'a', [&] { alarm.acknowledge(); }},
            {'s', [&] { alarm.shelve(1000); }},
            {'u', [&] { tracker.Unshelve("anna", alarm.now(), alarm.records); }},
            {'o', [&] { tracker.SetOutOfService(true, "anna", alarm.now(), alarm.records); }},
            {'i', [&] { tracker.SetOutOfService(false, "anna", alarm.now(), alarm.records); }},
            {'p', [&] { tracker.SetSuppressed(true, "", alarm.now(), alarm.records); }},
            {'r', [&] { tracker.SetSuppressed(false, "", alarm.now(), alarm.records); }},
            {'d', [&] { tracker.SuppressByDesign(true, alarm.now(), alarm.records); }},
            {'e', [&] { tracker.SuppressByDesign(false, alarm.now(), alarm.records); }},
            {'x', [&] { (void)tracker.Reset("anna", alarm.now(), alarm.records); }},
        };
        for (const QString &step : script.split(' ')) {
            alarm.records.clear();
            if (step[0].isDigit())
                alarm.pass(step.section(':', 0, 0).toInt());
            else
                steps.at(step[0])();
            const AlarmState state = tracker.GetState();
            QVERIFY2(int(state) == step.right(1).toInt(), qPrintable(step));
            // What operators see never changes without a record that says so.
            if (state != shown)
                QCOMPARE(alarm.records.size(), std::size_t(1));
            // Nor does an operator's act go unrecorded under a higher state.
            if (QString("suoi").contains(step[0]))
                QVERIFY(alarm.records.size() == 1 && alarm.records[0].user == "anna");
            if (!alarm.records.empty())
                QVERIFY(alarm.records.back().alarmState == state);
            shown = state;
        }
    }

    void records()
    {
        Alarm alarm("alarmLimit", "type=H limit=80 priority=1");
        alarm.judge(90.5);
        alarm.pass(1);
        const unsigned long seen = alarm.records[0].occurrence;
        QVERIFY(alarm.acknowledge(seen));
        QVERIFY(alarm.acknowledge(seen) == Result::NotFound);
        alarm.judge(10.0);
        alarm.judge(90.5);
        const auto &r = alarm.records;
        QCOMPARE(r.size(), std::size_t(4));
        const EventType types[] = {TypeAlarmActive, TypeAcknowledgement, TypeAlarmReturned,
                                   TypeAlarmActive};
        for (std::size_t i = 0; i < r.size(); ++i) {
            QCOMPARE(r[i].type, types[i]);
            QVERIFY(r[i].sourceNode == alarm.node->GetNodeLink());
            QCOMPARE(r[i].user, std::string(i == 1 ? "anna" : ""));
        }
        QCOMPARE(r[0].text, std::string("Уровень: Тревога"));
        QCOMPARE(r[0].newValue, std::string("90.5"));
        QCOMPARE(r[1].time - r[0].time, 1 * ms);
        QCOMPARE(r[1].level, LevelAcknowledge);
        QCOMPARE(r[1].text,
                 std::string("Квитирование события \"Уровень: Тревога\". Комментарий: осмотр"));
        QCOMPARE(r[1].source, std::string("Acknowledgement"));
        QVERIFY(r[0].occurrence != 0 && r[0].occurrence == r[1].occurrence);
        QVERIFY(r[1].occurrence == r[2].occurrence && r[3].occurrence > r[2].occurrence);
    }

    // What was not seen is not acknowledged: another occurrence, or one that came too late.
    void acknowledgesWhatWasSeen()
    {
        Alarm alarm("alarmLimit", "type=H limit=80");
        const auto acknowledgeSeen = [&](Timestamp seenBy) {
            return alarm.tracker.AcknowledgeSeen(seenBy, "anna", "", alarm.now(), alarm.records)
                .GetType();
        };
        for (const double value : {90.0, 10.0, 90.0}) {
            alarm.judge(value);
            alarm.pass(1);
        }
        const unsigned long first = alarm.records[0].occurrence;
        alarm.records.clear();
        QCOMPARE(alarm.acknowledge(first).GetType(), Result::Refused);
        QCOMPARE(acknowledgeSeen(alarm.time - 2 * ms), Result::NotFound);
        QVERIFY(alarm.records.empty());
        QCOMPARE(alarm.tracker.GetState(), AlarmState::ActiveUnacked);
        QCOMPARE(acknowledgeSeen(alarm.time), Result::Success);
        alarm.judge(10.0);
        alarm.shelve(5);
        alarm.judge(90.0);
        QCOMPARE(acknowledgeSeen(alarm.time), Result::NotFound);
        alarm.pass(5);
        QCOMPARE(acknowledgeSeen(alarm.time - 1), Result::NotFound);
        QCOMPARE(acknowledgeSeen(alarm.time), Result::Success);
    }

    // Neither a lost value nor a restart nor any operation moves the times of an occurrence.
    void times()
    {
        Alarm alarm("alarmLimit", "type=H limit=80");
        const auto shown = [&] {
            const BasicEvent r = alarm.tracker.GetRecord();
            return std::vector<Timestamp>{r.raised, r.acknowledged, r.returned};
        };
        alarm.judge(90.0);
        const Timestamp raised = alarm.now().wall;
        alarm.pass(1);
        alarm.judge(withQuality(90.0, Quality::Bad));
        QCOMPARE(alarm.tracker.GetRecord().time, raised);
        alarm.pass(1);
        alarm.acknowledge();
        const Timestamp acknowledged = alarm.now().wall;
        alarm.pass(1);
        alarm.tracker.Restore(alarm.tracker.GetMemory(), alarm.now());
        alarm.shelve(1);
        QVERIFY((shown() == std::vector<Timestamp>{raised, acknowledged, 0}));
        alarm.pass(1);
        alarm.judge(10.0);
        QVERIFY((shown() == std::vector<Timestamp>{raised, acknowledged, alarm.now().wall}));
        alarm.pass(1);
        alarm.judge(90.0);
        QVERIFY((shown() == std::vector<Timestamp>{alarm.now().wall, 0, 0}));
    }

    void lostValue()
    {
        Alarm alarm("alarmLimit", "type=H limit=80");
        alarm.judge(90.0);
        const AlarmMemory before = alarm.tracker.GetMemory();
        alarm.pass(1);
        alarm.records.clear();
        for (const Quality lost : {Quality::Stale, Quality::Bad}) {
            alarm.judge(withQuality(20.0, lost));
            const QString text = QString::fromStdString(alarm.tracker.GetRecord().text);
            QVERIFY(text.endsWith("(значение недостоверно)"));
        }
        alarm.judge(withQuality(91.0, Quality::Uncertain));
        QCOMPARE(alarm.tracker.GetRecord().text, std::string("Уровень: Тревога"));
        QVERIFY(alarm.records.empty() && alarm.tracker.GetMemory() == before);
    }

    void qualityAlarm()
    {
        Alarm alarm("alarmQuality", "onDelay=500");
        QCOMPARE(alarm.judge(SignalValue()), AlarmState::Normal);
        QCOMPARE(alarm.tracker.Deadline(), never);
        QCOMPARE(alarm.judge(withQuality(1.0, Quality::Stale)), AlarmState::Normal);
        QCOMPARE(alarm.pass(300), AlarmState::Normal);
        QCOMPARE(alarm.judge(SignalValue(Result(Result::NotConnected))), AlarmState::Normal);
        QCOMPARE(alarm.tracker.Deadline() - alarm.time, 200 * ms);
        QCOMPARE(alarm.pass(200), AlarmState::ActiveUnacked);
        QCOMPARE(alarm.judge(withQuality(1.0, Quality::Uncertain)), AlarmState::ReturnedUnacked);
        QCOMPARE(alarm.tracker.Deadline(), never);
    }

    void restore_data()
    {
        // pause: ms between the two runs
        const Rows<int, AlarmState> row("pause", "state");
        row("still on the shelf", 900, AlarmState::Shelved);
        row("shelving ran out meanwhile", 5000, AlarmState::ActiveAcked);
        row("the clock was set back", -100000000, AlarmState::Shelved);
    }

    void restore()
    {
        QFETCH(int, pause);
        Alarm before("alarmLimit", "type=H limit=80");
        before.judge(90.0);
        before.acknowledge();
        before.shelve(1000);
        Alarm after("alarmLimit", "type=H limit=80");
        after.time = before.time + pause * ms;
        after.tracker.Restore(before.tracker.GetMemory(), after.now());
        after.judge(SignalValue());
        QTEST(after.pass(0), "state");
        QCOMPARE(after.pass(pause < 0 ? 86400000 : 100), AlarmState::ActiveAcked);
        after.judge(10.0);
        after.judge(90.0);
        QVERIFY(after.records.back().occurrence > before.records.back().occurrence);
    }
};

QTEST_APPLESS_MAIN(TestAlarmTracker)
#include "tst_alarm_tracker.moc"
