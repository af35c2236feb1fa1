#include "nodes/CoreFixture.h"
#include "nodes/archive/HistoryService.h"
#include "nodes/reports/BasicReport.h"
#include "nodes/reports/KnownHistory.h"
#include "nodes/reports/ReportSignalInfo.h"
#include "nodes/reports/data/BasicReportSource.h"
#include "nodes/reports/schedule/reportSchedule.h"
#include "nodes/reports/time/LocalCalendar.h"

#include "support/Rows.h"

#include <cmath>
#include <limits>

using namespace Nodes;

namespace {

constexpr double unknown = std::numeric_limits<double>::quiet_NaN();
constexpr Timestamp hour = 3600 * Timestamp(1000000);
constexpr Timestamp day = 24 * hour;

ReportTablePtr ask(const BasicReportSource &source, const ReportOrder &order)
{
    const std::atomic<bool> never{false};
    return source.Ask(order)->Answer(never);
}

QString numbers(const ReportTable &table, const char *name)
{
    QStringList texts;
    const ReportColumn *column = table.Find(name);
    for (const double number : column ? column->numbers : std::vector<double>())
        texts << (std::isnan(number) ? QStringLiteral("-") : QString::number(number));
    return texts.join(' ');
}

QString texts(const ReportTable &table, const char *name)
{
    QStringList all;
    const ReportColumn *column = table.Find(name);
    for (const std::string &text : column ? column->texts : std::vector<std::string>())
        all << QString::fromStdString(text);
    return all.join('|');
}

} // namespace

class ReportSourcesTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { qputenv("TZ", "UTC0"); }
    void hoursOfSignals();
    void unitsFollowTheAggregate_data();
    void unitsFollowTheAggregate();
    void signalsAsRows();
    void samplesUpToTheLimit();
    void failuresAreTold();
    void eventsOfThePeriod();
    void alarmsByAreaAndShift();
    void schedulesFallDue_data();
    void schedulesFallDue();
    void placesOfFiles_data();
    void placesOfFiles();

private:
    static ReportOrder order(const CoreFixture &f, Timestamp begin, Timestamp end)
    {
        ReportOrder order;
        order.core = &f.core;
        order.span = {begin, end};
        order.now = end + day;
        return order;
    }
    QTemporaryDir m_directory;
};

void ReportSourcesTest::hoursOfSignals()
{
    CoreFixture f(m_directory);
    const ConfigNode *pump = f.add("memorySignal", f.root(), "pump");
    const auto history = std::make_shared<KnownHistory>(
        std::vector<KnownHistory::Sample>{{day, 0},
                                          {day + hour / 2, 1},
                                          {day + hour + hour / 2, unknown, Quality::Bad},
                                          {day + 2 * hour, 0}});
    QVERIFY(f.core.GetHistory().AddSource(pump->GetId(), history));
    ConfigNode *report = f.add("report", f.root());
    ConfigNode *summary = f.add("reportSummary", report, "hours");
    f.add("reportSignal", summary, "load", {{"signal", idOf(pump)}});
    f.add("reportSignal", summary, "runs", {{"signal", idOf(pump)}, {"aggregate", "hours"}});
    ReportOrder wanted = order(f, day - hour, day + 8 * hour);
    wanted.now = day + 3 * hour; // the future has no rows
    const ReportTablePtr table = ask(dynamic_cast<BasicReportSource &>(*summary), wanted);
    QVERIFY(table->result);
    QCOMPARE(table->rows, std::size_t(4));
    QCOMPARE(texts(*table, "row"),
             QString("23:00 – 00:00|00:00 – 01:00|01:00 – 02:00|02:00 – 03:00"));
    QCOMPARE(numbers(*table, "load"), QString("- 0.5 1 0"));
    QCOMPARE(texts(*table, "load_mark"), QString("||*|"));
    QCOMPARE(numbers(*table, "runs"), QString("- 0.5 0.5 0"));
}

void ReportSourcesTest::unitsFollowTheAggregate_data()
{
    const Rows<QString, QString, QString> row("aggregate", "unit", "told");
    row("mean", "mean", "т/ч", "т/ч");
    row("rate", "integral", "т/ч", "т");
    row("power", "integral", "кВт", "кВт·ч");
    row("plain number", "integral", "", "");
    row("hours of a current", "hours", "А", "ч");
    row("starts by a current", "starts", "А", "");
}

void ReportSourcesTest::unitsFollowTheAggregate()
{
    QFETCH(QString, aggregate);
    QFETCH(QString, unit);
    CoreFixture f(m_directory);
    const ConfigNode *signal =
        f.add("memorySignal", f.root(), "s", {{"unit", unit.toUtf8().constData()}});
    const ConfigNode *column =
        f.add("reportSignal", f.add("report", f.root()), "c",
              {{"signal", idOf(signal)}, {"aggregate", aggregate.toUtf8().constData()}});
    const auto &info = dynamic_cast<const ReportSignalInfo &>(*column);
    const QString told = QString::fromStdString(info.GetUnit());
    QTEST(told, "told");
}

void ReportSourcesTest::signalsAsRows()
{
    CoreFixture f(m_directory);
    ConfigNode *flow =
        f.add("memorySignal", f.root(), "flow", {{"unit", "т/ч"}, {"decimals", "1"}});
    flow->SetDescription("Расход");
    const auto history = std::make_shared<KnownHistory>(
        std::vector<KnownHistory::Sample>{{day, 10}, {day + hour, 20}});
    QVERIFY(f.core.GetHistory().AddSource(flow->GetId(), history));
    ConfigNode *report = f.add("report", f.root());
    ConfigNode *summary = f.add("reportSummary", report, "all", {{"rows", "signals"}});
    f.add("reportSignal", summary, "f", {{"signal", idOf(flow)}, {"aggregate", "integral"}});
    f.add("reportSignal", summary, "gone");
    const ReportTablePtr table =
        ask(dynamic_cast<BasicReportSource &>(*summary), order(f, day, day + 4 * hour));
    QCOMPARE(int(table->result.GetType()), int(Result::NotFound)); // told, but the rest is there
    QCOMPARE(texts(*table, "text"), QString("Расход|gone"));
    QCOMPARE(texts(*table, "unit"), QString("т|"));
    QCOMPARE(numbers(*table, "value"), QString("70 -"));
    QCOMPARE(numbers(*table, "mean"), QString("17.5 -"));
    QCOMPARE(numbers(*table, "coverage"), QString("100 0"));
}

void ReportSourcesTest::samplesUpToTheLimit()
{
    CoreFixture f(m_directory);
    const ConfigNode *signal = f.add("memorySignal", f.root());
    std::vector<KnownHistory::Sample> many;
    for (int i = 0; i < int(ReportTable::MostRows) + 10; ++i)
        many.push_back({day + i, double(i)});
    const auto history = std::make_shared<KnownHistory>(many);
    QVERIFY(f.core.GetHistory().AddSource(signal->GetId(), history));
    ConfigNode *report = f.add("report", f.root());
    const auto *source = f.add<BasicReportSource>("reportSignal", report, "s",
                                                  {{"signal", idOf(signal)}, {"step", "samples"}});
    const ReportTablePtr part = ask(*source, order(f, day + 5, day + 8));
    QCOMPARE(numbers(*part, "value"), QString("5 6 7"));
    QVERIFY(part->result);
    const ReportTablePtr all = ask(*source, order(f, day, 2 * day));
    QCOMPARE(all->rows, ReportTable::MostRows);
    QCOMPARE(int(all->result.GetType()), int(Result::LimitExceeded));
}

void ReportSourcesTest::failuresAreTold()
{
    CoreFixture f(m_directory);
    const ConfigNode *signal = f.add("memorySignal", f.root());
    ConfigNode *report = f.add("report", f.root());
    const auto *source =
        f.add<BasicReportSource>("reportSignal", report, "s", {{"signal", idOf(signal)}});
    const auto failure = [&] {
        return int(ask(*source, order(f, day, 2 * day))->result.GetType());
    };
    QCOMPARE(failure(), int(Result::NotAvailable)); // not archived
    const auto broken = std::make_shared<KnownHistory>(std::vector<KnownHistory::Sample>{{day, 5}});
    broken->result = Result(Result::StorageError);
    QVERIFY(f.core.GetHistory().AddSource(signal->GetId(), broken));
    QCOMPARE(failure(), int(Result::StorageError));
    const std::atomic<bool> cancelled{true};
    const ReportTablePtr ended = source->Ask(order(f, day, 2 * day))->Answer(cancelled);
    QCOMPARE(int(ended->result.GetType()), int(Result::Cancelled));
}

void ReportSourcesTest::eventsOfThePeriod()
{
    CoreFixture f(m_directory);
    QVERIFY(f.core.GetJournal().Open(m_directory.filePath("journal.sqlite").toStdString()));
    for (int i = 0; i < 30; ++i) {
        BasicEvent event;
        event.time = day + i * hour;
        event.level = i % 2 ? LevelAction : LevelAlarm;
        event.type = i % 2 ? TypeMessage : TypeAlarmActive;
        event.text = "событие " + std::to_string(i);
        QVERIFY(f.core.GetJournal().Append(event));
    }
    QVERIFY(f.core.GetJournal().Flush());
    ConfigNode *report = f.add("report", f.root());
    auto *source = f.add<BasicReportSource>("reportEvents", report, "e", {{"of", "alarms"}});
    const ReportTablePtr alarms = ask(*source, order(f, day + 2 * hour, day + 7 * hour));
    QCOMPARE(texts(*alarms, "text"), QString("событие 2|событие 4|событие 6"));
    QCOMPARE(texts(*alarms, "levelText"), QString("Тревога|Тревога|Тревога"));
    f.set(source, {{"of", "users"}, {"limit", "2"}, {"order", "newestFirst"}});
    const ReportTablePtr users = ask(*source, order(f, day, day + 30 * hour));
    QCOMPARE(texts(*users, "text"), QString("событие 29|событие 27"));
    QCOMPARE(int(users->result.GetType()), int(Result::LimitExceeded));
    f.core.GetJournal().Close();
}

void ReportSourcesTest::alarmsByAreaAndShift()
{
    CoreFixture f(m_directory);
    QVERIFY(f.core.GetJournal().Open(m_directory.filePath("alarms.sqlite").toStdString()));
    const auto alarmIn = [&](const char *folder) {
        ConfigNode *signal = f.add("memorySignal", f.add("folder", f.root(), folder));
        return f.add("alarmLimit", signal);
    };
    const ConfigNode *pump = alarmIn("Насос");
    const ConfigNode *boiler = alarmIn("Котёл");
    unsigned long occurrence = 0;
    const auto raise = [&](const ConfigNode *alarm, Timestamp at) {
        BasicEvent event;
        event.time = at;
        event.level = LevelAlarm;
        event.type = TypeAlarmActive;
        event.alarmState = AlarmState::ActiveUnacked;
        event.occurrence = ++occurrence;
        event.source = alarm->GetPath();
        event.sourceNode = alarm->GetNodeLink();
        QVERIFY(f.core.GetJournal().Append(event));
    };
    raise(pump, day);
    for (const int at : {9, 10, 23})
        raise(boiler, day + at * hour);
    QVERIFY(f.core.GetJournal().Flush());
    ConfigNode *report = f.add("report", f.root());
    auto *source = f.add<BasicReportSource>("reportAlarms", report, "a", {{"content", "areas"}});
    const ReportTablePtr areas = ask(*source, order(f, day, 2 * day));
    QCOMPARE(texts(*areas, "area"), QString("Котёл|Насос"));
    QCOMPARE(numbers(*areas, "raised"), QString("3 1"));
    QCOMPARE(numbers(*areas, "share"), QString("75 25"));
    QCOMPARE(numbers(*areas, "alarms"), QString("1 1"));
    f.set(source, {{"limit", "1"}});
    QCOMPARE(ask(*source, order(f, day, 2 * day))->rows, std::size_t(1));
    f.set(source, {{"content", "shifts"}});
    const ReportTablePtr shifts = ask(*source, order(f, day, day + 22 * hour));
    QCOMPARE(texts(*shifts, "row"),
             QString("02.01.1970 ночная|02.01.1970 дневная|02.01.1970 ночная"));
    QCOMPARE(numbers(*shifts, "raised"), QString("1 2 0"));
    const ReportTablePtr begun = ask(*source, order(f, day, day + 12 * hour));
    QCOMPARE(numbers(*begun, "rate").section(' ', -1), QString::number(2 / 24.0)); // so far
    QCOMPARE(texts(*shifts, "time").section('|', 1, 1), QString("1970-01-02 08:00:00"));
    f.core.GetJournal().Close();
}

void ReportSourcesTest::schedulesFallDue_data()
{
    // Periods that are due, by their first hours, and how many are left out.
    const Rows<QString, int, int, QString, int> row("period", "done", "now", "due", "skipped");
    row("not yet", "shift", 20, 32, "", 0);
    row("the delay", "shift", 20, 32 + 1, "20", 0);
    row("once only", "shift", 32, 34, "", 0);
    row("missed ones, the oldest first", "shift", 20, 60, "20 32 44", 0);
    row("too many missed", "shift", 20, 20 + 12 * 5 + 4, "44 56 68", 2);
    row("days", "day", 48, 73, "48", 0);
    row("clock set back", "shift", 80, 60, "", 0);
}

void ReportSourcesTest::schedulesFallDue()
{
    CoreFixture f(m_directory);
    QFETCH(QString, period);
    QFETCH(int, done);
    QFETCH(int, now);
    const auto *schedule = f.add<reportSchedule>(
        "reportSchedule", f.root(), "s",
        {{"period", period.toStdString()}, {"delay", "30"}, {"catchUp", "3"}});
    int skipped = -1;
    QStringList due;
    for (const ReportSpan &span : schedule->FindDue(done * hour, now * hour, ShiftPlan(), skipped))
        due << QString::number(span.begin / hour);
    QTEST(due.join(' '), "due");
    QTEST(skipped, "skipped");
}

void ReportSourcesTest::placesOfFiles_data()
{
    const Rows<QString, int, QString> row("folder", "result", "place");
    row("inside", "a/b", Result::Success, "/data/reports/a/b");
    row("none", "", Result::Success, "/data/reports/");
    row("out", "../..", Result::AccessDenied, "");
    row("out again", "a/../../..", Result::AccessDenied, "");
    row("anywhere", "/etc", Result::AccessDenied, "");
    row("given at the start", "${share}/x", Result::Success, "/mnt/share/x");
    row("out of what is given", "${share}/../x", Result::AccessDenied, "");
    row("a name behind", "x${share}", Result::Success, "/data/reports/x/mnt/share");
    row("not given", "${nothing}", Result::NotFound, "");
}

void ReportSourcesTest::placesOfFiles()
{
    CoreFixture f(m_directory);
    f.core.SetDataDirectory("/data");
    f.core.SetDefine("share", "/mnt/share");
    QFETCH(QString, folder);
    ConfigNode *report = f.add("report", f.root(), "Смена: \"1/2\"");
    const auto *schedule = f.add<reportSchedule>("reportSchedule", f.root(), "s",
                                                 {{"folder", folder.toStdString()},
                                                  {"report", idOf(report)},
                                                  {"fileName", " {report} {dd}.{MM} {shift}."}});
    std::string found;
    QTEST(int(schedule->FindFolder(found).GetType()), "result");
    QTEST(QString::fromStdString(found), "place");
    QCOMPARE(schedule->FileNameOf({20 * hour, 32 * hour}, ShiftPlan()),
             std::string("Смена_ _1_2_ 01.01 ночная"));
}

QTEST_APPLESS_MAIN(ReportSourcesTest)
#include "tst_report_sources.moc"
