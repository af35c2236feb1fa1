#include "nodes/ManualClock.h"
#include "nodes/ProjectFixture.h"
#include "nodes/model/ValidationResults.h"
#include "nodes/timers/TimerSchedule.h"
#include "nodes/timers/operationTimer.h"

#include <QtTest>

#include <atomic>
#include <cstdlib>
#include <ctime>

using namespace Nodes;

namespace {

constexpr Timestamp second = ManualClock::second;
constexpr Timestamp hour = 3600 * second;

/// A wall time given as UTC text.
Timestamp utc(const char *text)
{
    return QDateTime::fromString(QString(text) + "Z", Qt::ISODate).toMSecsSinceEpoch() * 1000;
}

} // namespace

class TestTimers : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void timeOfDay_data();
    void timeOfDay();
    void missedPeriods();
    void daily_data();
    void daily();
    void clockSet();
    void firesOnThread();
    void once();
    void stopsFromSlot();
    void badTime();

private:
    operationTimer *add(ProjectFixture &project, std::initializer_list<const char *> properties)
    {
        auto *timer = static_cast<operationTimer *>(project.add("operationTimer", project.root()));
        for (auto text = properties.begin(); text != properties.end(); text += 2) {
            if (!timer->SetPropertyText(text[0], text[1]))
                qFatal("%s", text[0]);
        }
        return timer;
    }
};

void TestTimers::initTestCase()
{
    ManualClock::Use();
    // A zone with summer time: 2024-03-31 02:00 becomes 03:00, 2024-10-27 03:00 becomes 02:00.
    qputenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3");
    tzset();
}

void TestTimers::timeOfDay_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("seconds");
    QTest::newRow("full") << QByteArray("23:59:58") << 86398;
    QTest::newRow("short") << QByteArray("06:30") << 23400;
    for (const char *bad :
         {"", "6:30", "24:00", "23:60", "23:59:60", "23:59:", "23", "23:59:58x", "-1:00", "ab:cd"})
        QTest::newRow(bad) << QByteArray(bad) << -1;
}

void TestTimers::timeOfDay()
{
    QFETCH(QByteArray, text);
    QTEST(TimerSchedule::ParseTimeOfDay(text.constData()).value_or(-1), "seconds");
}

void TestTimers::missedPeriods()
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

void TestTimers::daily_data()
{
    QTest::addColumn<int>("seconds");
    QTest::addColumn<QByteArray>("begin");
    QTest::addColumn<QByteArray>("first");
    QTest::addColumn<QByteArray>("second");
    const auto row = [](const char *name, int seconds, const char *begin, const char *first,
                        const char *second) {
        QTest::newRow(name) << seconds << QByteArray(begin) << QByteArray(first)
                            << QByteArray(second);
    };
    row("later today", 6 * 3600, "2024-01-10T03:00:00", "2024-01-10T05:00:00",
        "2024-01-11T05:00:00");
    row("passed today", 6 * 3600, "2024-01-10T05:00:00", "2024-01-11T05:00:00",
        "2024-01-12T05:00:00");
    row("over the year's end", 0, "2023-12-31T22:59:59", "2023-12-31T23:00:00",
        "2024-01-01T23:00:00");
    row("summer time begins", 6 * 3600, "2024-03-30T04:00:00", "2024-03-30T05:00:00",
        "2024-03-31T04:00:00");
    row("summer time ends", 6 * 3600, "2024-10-26T03:00:00", "2024-10-26T04:00:00",
        "2024-10-27T05:00:00");
}

void TestTimers::daily()
{
    QFETCH(int, seconds);
    QFETCH(QByteArray, begin);
    TimerSchedule schedule = TimerSchedule::Daily(seconds);
    schedule.Begin(utc(begin.constData()), 0);
    QFETCH(QByteArray, first);
    QFETCH(QByteArray, second);
    for (const QByteArray &due : {first, second}) {
        const Timestamp at = utc(due.constData());
        QVERIFY(!schedule.Poll(at - 1, 0));
        QVERIFY(schedule.Deadline() <= 1);
        QVERIFY(schedule.Poll(at, 0));
        QVERIFY(!schedule.Poll(at, 0));
    }
}

void TestTimers::clockSet()
{
    const Timestamp noon = utc("2024-01-10T11:00:00");
    TimerSchedule schedule = TimerSchedule::Daily(13 * 3600);
    schedule.Begin(noon, 0);
    QVERIFY(!schedule.Poll(noon, 0));
    QVERIFY2(schedule.Deadline() <= second, "looks at the wall clock every second");
    QVERIFY2(schedule.Poll(noon + 30 * hour, 0), "set forward over the time: fires once");
    QVERIFY(!schedule.Poll(noon + 30 * hour, 0));
    QVERIFY2(!schedule.Poll(noon - 72 * hour, 0), "set back by days: no firing,");
    QVERIFY2(schedule.Poll(noon - 71 * hour, 0), "but at the next such time");
}

void TestTimers::firesOnThread()
{
    ManualClock &clock = ManualClock::Use();
    ProjectFixture project;
    operationTimer *timer = add(project, {"interval", "200"});
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
    operationTimer *other = add(project, {"interval", "100"});
    std::atomic<bool> hasOtherFired{false};
    const auto otherConnection =
        other->ConnectFired([&](operationTimer *) { hasOtherFired = true; });
    QVERIFY(other->Start());
    clock.Advance(1000000);
    QTRY_VERIFY(hasOtherFired);
    QCOMPARE(fired.load(), 3);
}

void TestTimers::once()
{
    ManualClock &clock = ManualClock::Use();
    ProjectFixture project;
    operationTimer *timer = add(project, {"interval", "300", "mode", "once"});
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

void TestTimers::stopsFromSlot()
{
    ManualClock &clock = ManualClock::Use();
    ProjectFixture project;
    operationTimer *timer = add(project, {"interval", "100"});
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

void TestTimers::badTime()
{
    ProjectFixture project;
    operationTimer *timer = add(project, {"mode", "daily", "time", "25:00"});
    QCOMPARE(timer->Start().GetType(), Result::InvalidArgument);
    QVERIFY(timer->GetState() == NodeState::Stopped);
    ValidationResults results;
    timer->Validate(results);
    QCOMPARE(results.size(), std::size_t(1));
    QVERIFY(QString::fromStdString(results[0].GetMessageStr()).contains("25:00"));
}

QTEST_APPLESS_MAIN(TestTimers)
#include "tst_timers.moc"
