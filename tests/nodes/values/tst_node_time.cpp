#include "nodes/values/Clock.h"
#include "nodes/values/NodeTime.h"
#include "support/Rows.h"

#include <boost/date_time/posix_time/posix_time.hpp>

#include <QtTest>

Q_DECLARE_METATYPE(Nodes::enRelativeTimeType)
Q_DECLARE_METATYPE(Nodes::enRelativeTimeAdjust)

using namespace Nodes;

namespace {

class FixedClock : public Clock
{
public:
    Timestamp Now() const override { return now; }
    Timestamp Steady() const override { return now; }
    Timestamp now = 0;
};

FixedClock theClock;

} // namespace

class NodeTimeTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        qputenv("TZ", "Europe/Berlin"); // a zone with daylight saving time
        tzset();
        Clock::Install(&theClock);
    }

    void relativeTimes_data()
    {
        // now: UTC; offset: minutes
        const Rows<std::string, enRelativeTimeType, enRelativeTimeAdjust, int, std::string> row(
            "now", "type", "adjust", "offset", "text");
        using T = enRelativeTimeType;
        using A = enRelativeTimeAdjust;
        const char *usual = "2024-05-15 10:20:30"; // a Wednesday, 12:20:30 in Berlin
        row("20 minutes ago", usual, T::Now, A::Begin, -20, "15.05.2024 12:00:30");
        row("no boundary asked for", usual, T::Day, A::None, 5, "15.05.2024 12:25:30");
        row("this minute", usual, T::Minute, A::Begin, 0, "15.05.2024 12:20:00");
        row("end of the hour", usual, T::Hour, A::End, 0, "15.05.2024 13:00:00");
        row("yesterday from 08:00", usual, T::Day, A::Begin, -16 * 60, "14.05.2024 08:00:00");
        row("weeks begin on Monday", usual, T::Week, A::Begin, 0, "13.05.2024 00:00:00");
        row("a Sunday ends the week", "2024-05-19 20:00:00", T::Week, A::End, 0,
            "20.05.2024 00:00:00");
        row("end of February", "2024-02-29 12:00:00", T::Month, A::End, 0, "01.03.2024 00:00:00");
        row("end of December", "2023-12-31 12:00:00", T::Month, A::End, 0, "01.01.2024 00:00:00");
        row("this year", usual, T::Year, A::Begin, 0, "01.01.2024 00:00:00");
        row("local day differs from UTC's", "2024-05-15 22:30:00", T::Day, A::Begin, 0,
            "16.05.2024 00:00:00");
        row("day of 23 hours", "2024-03-31 08:00:00", T::Day, A::End, 0, "01.04.2024 00:00:00");
        row("second 02:30 of that night", "2024-10-27 01:30:00", T::Minute, A::End, 0,
            "27.10.2024 02:31:00");
    }

    void relativeTimes()
    {
        QFETCH(std::string, now);
        QFETCH(enRelativeTimeType, type);
        QFETCH(enRelativeTimeAdjust, adjust);
        QFETCH(int, offset);
        const auto moment = boost::posix_time::time_from_string(now);
        theClock.now = Timestamp(boost::posix_time::to_time_t(moment)) * 1000000;
        const NodeTime time{type, adjust, boost::posix_time::minutes(offset)};
        QVERIFY(time.isRelative());
        QTEST(time.ToString("%d.%m.%Y %H:%M:%S"), "text");
        if (adjust != enRelativeTimeAdjust::Begin && type == enRelativeTimeType::Minute)
            QCOMPARE((time.GetTime() - moment).total_seconds(), 60L);
    }

    void pointsAndSpans()
    {
        QVERIFY(NodeTime().GetTime().is_special() && NodeTime().ToString().empty());
        const auto moment = boost::posix_time::time_from_string("2024-01-01 00:00:00.25");
        QCOMPARE(NodeTime(moment).GetTime(), moment);
        QVERIFY(NodeTime(moment).GetDuration().is_special());
        QCOMPARE(NodeTime(moment).ToString("%H:%M"), std::string("01:00"));
        theClock.now = 1704067200250000;
        const NodeTime span(boost::posix_time::minutes(-90));
        QCOMPARE(span.GetTime(), moment - boost::posix_time::minutes(90));
        QCOMPARE(span.ToString(), std::string("-01:30:00"));
    }
    void cleanupTestCase() { Clock::Install(nullptr); }
};

QTEST_APPLESS_MAIN(NodeTimeTest)
#include "tst_node_time.moc"
