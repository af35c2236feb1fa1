#include "nodes/ManualClock.h"
#include "nodes/ProjectFixture.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/timers/TimerSchedule.h"
#include "nodes/timers/operationTimer.h"
#include "support/Rows.h"

#include <QtTest>

#include <atomic>
#include <cstdlib>
#include <ctime>

using namespace Nodes;

namespace {

constexpr Timestamp second = ManualClock::second;
constexpr Timestamp hour = 3600 * second;

/// A wall time given as UTC text.
Timestamp utc(const std::string &text)
{
    const QDateTime time = QDateTime::fromString(text.c_str(), "yyyy-MM-dd hh:mm");
    return QDateTime(time.date(), time.time(), Qt::UTC).toMSecsSinceEpoch() * 1000;
}

} // namespace

class TestTimers : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        ManualClock::Use();
        // A zone with summer time: 2024-03-31 02:00 becomes 03:00, 2024-10-27 03:00 becomes 02:00.
        qputenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3");
        tzset();
    }

    void timeOfDay_data()
    {
        const Rows<QByteArray, int> row("text", "seconds");
        row("full", "23:59:58", 86398);
        row("short", "06:30", 23400);
        for (const char *bad : {"", "6:30", "24:00", "23:60", "23:59:60", "23:59:", "23",
                                "23:59:58x", "-1:00", "ab:cd"})
            row(bad, bad, -1);
    }

    void timeOfDay()
    {
        QFETCH(QByteArray, text);
        QTEST(TimerSchedule::ParseTimeOfDay(text.constData()).value_or(-1), "seconds");
    }

    void missedPeriods()
    {
        TimerSchedule schedule = TimerSchedule::Periodic(10);
        schedule.Begin(0, 100);
        QVERIFY(!schedule.Poll(0, 109));
        QVERIFY(schedule.Poll(0, 110));
        QCOMPARE(schedule.Deadline(), Timestamp(120));
        QVERIFY(schedule.Poll(0, 157));
        QVERIFY(!schedule.Poll(0, 159));
        QCOMPARE(schedule.Deadline(), Timestamp(160));
    }

    void daily_data()
    {
        const Rows<int, std::string, std::string, std::string> row("seconds", "begin", "first",
                                                                   "second");
        row("later today", 6 * 3600, "2024-01-10 03:00", "2024-01-10 05:00", "2024-01-11 05:00");
        row("passed today", 6 * 3600, "2024-01-10 05:00", "2024-01-11 05:00", "2024-01-12 05:00");
        row("year's end", 0, "2023-12-31 22:59", "2023-12-31 23:00", "2024-01-01 23:00");
        row("summer time begins", 6 * 3600, "2024-03-30 04:00", "2024-03-30 05:00",
            "2024-03-31 04:00");
        row("summer time ends", 6 * 3600, "2024-10-26 03:00", "2024-10-26 04:00",
            "2024-10-27 05:00");
    }

    void daily()
    {
        QFETCH(int, seconds);
        QFETCH(std::string, begin);
        TimerSchedule schedule = TimerSchedule::Daily(seconds);
        schedule.Begin(utc(begin), 0);
        QFETCH(std::string, first);
        QFETCH(std::string, second);
        for (const Timestamp at : {utc(first), utc(second)}) {
            QVERIFY(!schedule.Poll(at - 1, 0));
            QVERIFY(schedule.Deadline() <= 1);
            QVERIFY(schedule.Poll(at, 0));
            QVERIFY(!schedule.Poll(at, 0));
        }
    }

    void clockSet()
    {
        const Timestamp noon = utc("2024-01-10 11:00");
        TimerSchedule schedule = TimerSchedule::Daily(13 * 3600);
        schedule.Begin(noon, 0);
        QVERIFY(!schedule.Poll(noon, 0));
        QVERIFY2(schedule.Deadline() <= second, "looks at the wall clock every second");
        QVERIFY2(schedule.Poll(noon + 30 * hour, 0), "set forward over the time: fires once");
        QVERIFY(!schedule.Poll(noon + 30 * hour, 0));
        QVERIFY2(!schedule.Poll(noon - 72 * hour, 0), "set back by days: no firing,");
        QVERIFY2(schedule.Poll(noon - 71 * hour, 0), "but at the next such time");
    }

    void firesOnThread()
    {
        ManualClock &clock = ManualClock::Use();
        ProjectFixture project;
        operationTimer *timer = add(project, {{"interval", "200"}});
        std::atomic<int> fired{0};
        std::atomic<bool> isRightTimer{true};
        const auto connection = timer->ConnectFired([&](operationTimer *which) {
            isRightTimer = isRightTimer && which == timer;
            ++fired;
        });
        QVERIFY(timer->Start());
        QVERIFY(timer->Start());
        clock.Advance(200000);
        QTRY_COMPARE(fired.load(), 1);
        clock.Advance(900000);
        QTRY_COMPARE(fired.load(), 2);
        clock.Advance(100000);
        QTRY_COMPARE(fired.load(), 3);
        QVERIFY(isRightTimer);
        QVERIFY(timer->Stop());
        QVERIFY(timer->GetState() == NodeState::Stopped);
        operationTimer *other = add(project, {{"interval", "100"}});
        std::atomic<bool> hasOtherFired{false};
        const auto otherConnection =
            other->ConnectFired([&](operationTimer *) { hasOtherFired = true; });
        QVERIFY(other->Start());
        clock.Advance(1000000);
        QTRY_VERIFY(hasOtherFired);
        QCOMPARE(fired.load(), 3);
    }

    void once()
    {
        ManualClock &clock = ManualClock::Use();
        ProjectFixture project;
        operationTimer *timer = add(project, {{"interval", "300"}, {"mode", "once"}});
        std::atomic<int> fired{0};
        const auto connection = timer->ConnectFired([&](operationTimer *) { ++fired; });
        for (int run = 1; run <= 2; ++run) {
            QVERIFY(timer->Start());
            QVERIFY(timer->GetState() == NodeState::Running);
            clock.Advance(300000);
            QTRY_COMPARE(fired.load(), run);
            QVERIFY(timer->GetState() == NodeState::Stopped);
        }
    }

    void stopsFromSlot()
    {
        ManualClock &clock = ManualClock::Use();
        ProjectFixture project;
        operationTimer *timer = add(project, {{"interval", "100"}});
        std::atomic<int> fired{0};
        const auto connection = timer->ConnectFired([&](operationTimer *self) {
            ++fired;
            (void)self->Stop();
        });
        QVERIFY(timer->Start());
        clock.Advance(100000);
        QTRY_VERIFY(timer->GetState() == NodeState::Stopped);
        QCOMPARE(fired.load(), 1);
    }

    void badTime()
    {
        ProjectFixture project;
        operationTimer *timer = add(project, {{"mode", "daily"}, {"time", "25:00"}});
        QCOMPARE(timer->Start().GetType(), Result::InvalidArgument);
        QVERIFY(timer->GetState() == NodeState::Stopped);
        ValidationResults results;
        timer->Validate(results);
        QCOMPARE(results.size(), std::size_t(1));
        QVERIFY(QString::fromStdString(results[0].GetMessageStr()).contains("25:00"));
    }

private:
    static operationTimer *add(ProjectFixture &project,
                               const ProjectFixture::Properties &properties)
    {
        return project.add<operationTimer>("operationTimer", project.root(), nullptr, properties);
    }
};

QTEST_APPLESS_MAIN(TestTimers)
#include "tst_timers.moc"
