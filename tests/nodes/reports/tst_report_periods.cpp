#include "nodes/reports/data/ReportQuestion.h"
#include "nodes/reports/data/ReportTable.h"
#include "nodes/reports/data/SignalInquiry.h"
#include "nodes/reports/time/LocalCalendar.h"
#include "nodes/reports/time/ReportPeriod.h"

#include "support/Rows.h"

#include <ctime>

using namespace Nodes;

namespace {

// Europe/Berlin by rule, so that no time zone files are needed: forward on 29.03.2026 at 02:00,
// back on 25.10.2026 at 03:00.
constexpr const char *berlin = "CET-1CEST,M3.5.0,M10.5.0/3";
constexpr Timestamp second = 1000000;
constexpr Timestamp hour = 3600 * second;

Timestamp at(int year, int month, int day, int hours = 0, int minutes = 0)
{
    return LocalCalendar::MomentOf({year, month, day}, hours * 3600 + minutes * 60);
}

QString text(const ReportSpan &span)
{
    return QString::fromStdString(ReportIntervalText(span));
}

} // namespace

class ReportPeriodsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        qputenv("TZ", berlin);
        ::tzset();
    }
    void periods_data();
    void periods();
    void daysOfOtherLengths_data();
    void daysOfOtherLengths();
    void rowsCoverTheSpan_data();
    void rowsCoverTheSpan();
    void centuriesAreCut();
    void shiftTables_data();
    void shiftTables();
    void titles();
};

void ReportPeriodsTest::periods_data()
{
    const Rows<int, Timestamp, QString> row("period", "moment", "expected");
    row("day shift", PeriodShift, at(2026, 11, 22, 8), "2026-11-22 08:00:00 - 2026-11-22 20:00:00");
    row("night shift, evening", PeriodShift, at(2026, 11, 22, 20),
        "2026-11-22 20:00:00 - 2026-11-23 08:00:00");
    row("night shift, morning", PeriodShift, at(2026, 11, 22, 7, 59),
        "2026-11-21 20:00:00 - 2026-11-22 08:00:00");
    row("shift of a long night", PeriodShift, at(2026, 10, 25, 2),
        "2026-10-24 20:00:00 - 2026-10-25 08:00:00");
    row("day", PeriodDay, at(2026, 12, 31, 23), "2026-12-31 00:00:00 - 2027-01-01 00:00:00");
    row("week from monday", PeriodWeek, at(2026, 11, 22, 23),
        "2026-11-16 00:00:00 - 2026-11-23 00:00:00");
    row("week of a monday", PeriodWeek, at(2026, 11, 23),
        "2026-11-23 00:00:00 - 2026-11-30 00:00:00");
    row("february", PeriodMonth, at(2028, 2, 29), "2028-02-01 00:00:00 - 2028-03-01 00:00:00");
    row("december", PeriodMonth, at(2026, 12, 1), "2026-12-01 00:00:00 - 2027-01-01 00:00:00");
}

void ReportPeriodsTest::periods()
{
    QFETCH(int, period);
    QFETCH(Timestamp, moment);
    const ShiftPlan shifts;
    const auto kind = enReportPeriod(period);
    const ReportSpan span = PeriodAt(kind, moment, shifts);
    QTEST(text(span), "expected");
    QCOMPARE(text(PeriodAt(kind, span.end - 1, shifts)), text(span));
    QCOMPARE(PeriodAfter(kind, span, shifts).begin, span.end);
    QCOMPARE(PeriodBefore(kind, span, shifts).end, span.begin);
    QCOMPARE(text(PeriodAfter(kind, PeriodBefore(kind, span, shifts), shifts)), text(span));
}

void ReportPeriodsTest::daysOfOtherLengths_data()
{
    const Rows<int, Timestamp, int, QString> row("period", "moment", "hours", "row 3");
    row("ordinary", PeriodDay, at(2026, 6, 1), 24, "02:00 – 03:00");
    row("forward", PeriodDay, at(2026, 3, 29, 12), 23, "03:00 – 04:00");
    row("back", PeriodDay, at(2026, 10, 25, 12), 25, "02:00 – 02:00");
    row("long night shift", PeriodShift, at(2026, 10, 25, 5), 13, "22:00 – 23:00");
    row("short night shift", PeriodShift, at(2026, 3, 29, 5), 11, "22:00 – 23:00");
}

void ReportPeriodsTest::daysOfOtherLengths()
{
    QFETCH(int, period);
    QFETCH(Timestamp, moment);
    QFETCH(int, hours);
    const ShiftPlan shifts;
    const ReportSpan span = PeriodAt(enReportPeriod(period), moment, shifts);
    QCOMPARE(span.end - span.begin, hours * hour);
    const std::vector<ReportSpan> rows = PartSpan(span, StepHour, shifts);
    QCOMPARE(rows.size(), std::size_t(hours));
    for (const ReportSpan &row : rows)
        QCOMPARE(row.end - row.begin, hour);
    QTEST(QString::fromStdString(RowTitle(StepHour, rows[2], shifts)), "row 3");
}

void ReportPeriodsTest::rowsCoverTheSpan_data()
{
    const Rows<int, Timestamp, Timestamp, int> row("step", "begin", "end", "rows");
    row("cut hours", StepHour, at(2026, 6, 1, 8, 20), at(2026, 6, 1, 10, 5), 3);
    row("days over the change", StepDay, at(2026, 10, 24), at(2026, 10, 27), 3);
    row("cut days", StepDay, at(2026, 6, 1, 12), at(2026, 6, 3, 12), 3);
    row("shifts of a day", StepShift, at(2026, 6, 1), at(2026, 6, 2), 3);
    row("whole", StepWhole, at(2026, 6, 1), at(2026, 7, 1), 1);
    row("nothing", StepHour, at(2026, 6, 1), at(2026, 6, 1), 0);
}

void ReportPeriodsTest::rowsCoverTheSpan()
{
    QFETCH(int, step);
    QFETCH(Timestamp, begin);
    QFETCH(Timestamp, end);
    const std::vector<ReportSpan> parts = PartSpan({begin, end}, enReportStep(step), ShiftPlan());
    QTEST(int(parts.size()), "rows");
    Timestamp expected = begin;
    for (const ReportSpan &part : parts) {
        QCOMPARE(part.begin, expected);
        QVERIFY(part.end > part.begin);
        expected = part.end;
    }
    QCOMPARE(expected, end);
}

void ReportPeriodsTest::centuriesAreCut()
{
    const ReportSpan span{at(1970, 1, 1), at(2026, 1, 1)};
    const std::vector<ReportSpan> rows = PartSpan(span, StepHour, ShiftPlan());
    QCOMPARE(rows.size(), MostParts);
    ReportOrder order;
    order.span = span;
    order.now = span.end;
    ReportTable table;
    QCOMPARE(RowsUntilNow(order, StepHour, table).size(), MostParts);
    QCOMPARE(table.result.GetType(), Result::LimitExceeded);
}

void ReportPeriodsTest::shiftTables_data()
{
    const Rows<QString, QString, int, QString> row("starts", "names", "result", "at 03:00");
    row("three", "08:00 16:00 00:00", "утро; вечер; ночь", Result::Success, "ночь");
    row("one", "06:30", "", Result::Success, "2026-05-31 06:30:00 - 2026-06-01 06:30:00");
    row("no time", "08:00 25:00", "", Result::ParseError, "");
    row("none", " ", "", Result::ParseError, "");
    row("twice", "08:00 08:00:00", "", Result::Duplicate, "");
    row("names too many", "08:00", "a;b", Result::ParseError, "");
}

void ReportPeriodsTest::shiftTables()
{
    QFETCH(QString, starts);
    QFETCH(QString, names);
    ShiftPlan plan;
    const Result read = ShiftPlan::Parse(starts.toStdString(), names.toStdString(), plan);
    QTEST(int(read.GetType()), "result");
    if (!read)
        return;
    const ShiftPlan::Shift shift = plan.At(at(2026, 6, 1, 3));
    QTEST(shift.name.empty() ? text({shift.begin, shift.end}) : QString::fromStdString(shift.name),
          "at 03:00");
}

void ReportPeriodsTest::titles()
{
    const ShiftPlan shifts;
    const auto title = [&](enReportPeriod period, Timestamp moment) {
        return QString::fromStdString(
            PeriodTitle(period, PeriodAt(period, moment, shifts), shifts));
    };
    QCOMPARE(title(PeriodShift, at(2026, 6, 1, 9)),
             QString("Смена дневная, 01.06.2026 08:00 – 20:00"));
    QCOMPARE(title(PeriodShift, at(2026, 6, 1, 21)),
             QString("Смена ночная, 01.06.2026 20:00 – 02.06.2026 08:00"));
    QCOMPARE(title(PeriodWeek, at(2026, 6, 1)), QString("Неделя 01.06.2026 – 07.06.2026"));
    QCOMPARE(title(PeriodMonth, at(2026, 6, 1)), QString("Месяц 06.2026"));
    QCOMPARE(text({at(2026, 6, 1) + 1500, at(2026, 6, 2)}),
             QString("2026-06-01 00:00:00.001500 - 2026-06-02 00:00:00"));
}

QTEST_APPLESS_MAIN(ReportPeriodsTest)
#include "tst_report_periods.moc"
