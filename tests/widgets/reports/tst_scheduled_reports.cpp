#include "widgets/reports/schedule/ScheduledReports.h"

#include "nodes/CoreFixture.h"
#include "nodes/ManualClock.h"
#include "widgets/reports/TemplateText.h"

#include <QSignalSpy>
#include <QtTest>

using namespace Nodes;
using namespace Widgets;

namespace {

constexpr Timestamp minute = 60 * ManualClock::second;
constexpr Timestamp hour = 60 * minute;

QString written(const QString &file, const QString &text)
{
    QFile output(file);
    if (!output.open(QIODevice::WriteOnly) || output.write(text.toUtf8()) < 0)
        qFatal("%s", qPrintable(file));
    return file;
}

} // namespace

/// A station with a report after each shift; the clock stands in the evening shift of 14.11.2023.
struct ScheduledStation : CoreFixture
{
    explicit ScheduledStation(const QTemporaryDir &directory)
        : CoreFixture(directory), folder(directory.filePath("data/reports/shifts"))
    {
        const QString file =
            written(directory.filePath("shift.lrxml"),
                    TemplateText::report({TemplateText::page({TemplateText::band(
                        "ReportHeader", "h", 100, {TemplateText::item("$V{period}")})})}));
        report = add("report", root(), "Смена", {{"template", file.toStdString()}});
        schedule = add("reportSchedule", root(), "s",
                       {{"report", idOf(report)},
                        {"folder", "shifts"},
                        {"fileName", "{yyyy}-{MM}-{dd} {shift}"},
                        {"catchUp", "2"}});
        QDir().mkpath(directory.filePath("data"));
        if (!core.GetJournal().Open(directory.filePath("data/journal.sqlite").toStdString()))
            qFatal("no journal");
    }
    ~ScheduledStation() { core.GetJournal().Close(); }

    /// Looks until nothing is due any more; the reports that were made or failed.
    int run(ScheduledReports &reports) const
    {
        QSignalSpy finished(&reports, &ScheduledReports::finished);
        int before = -1;
        while (before != finished.count()) {
            before = finished.count();
            reports.check();
            if (!QTest::qWaitFor([&] { return !reports.isBusy(); }, 20000))
                return -1;
        }
        return finished.count();
    }
    QString files() const { return QDir(folder).entryList(QDir::Files).join('|'); }
    int told(const char *text) { return int(journalledText(text).size()); }

    const QString folder;
    ConfigNode *report;
    ConfigNode *schedule;
};

class ScheduledReportsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        qputenv("TZ", "UTC0");
        ManualClock::Use();
    }
    void afterEachShift();
    void missedWhileDown();
    void troubleIsToldAndOvercome();
    void neverOverAnotherFile();
    void oldFilesGo();
    void tables();
    void clockThatWasAhead();
    void faultsOfTheTemplate();

private:
    ManualClock &m_clock = ManualClock::Use();
};

void ScheduledReportsTest::afterEachShift()
{
    const QTemporaryDir directory;
    ScheduledStation station(directory);
    ScheduledReports reports(station.core);
    QCOMPARE(station.run(reports), 0); // begins with the shift that is under way
    m_clock.Advance(12 * hour);        // it has ended
    QCOMPARE(station.run(reports), 1);
    QCOMPARE(station.files(), QString("2023-11-14 ночная.pdf"));
    QCOMPARE(station.told("«Смена» (Смена ночная, 14.11.2023 20:00 – 15.11.2023 08:00) составлен"),
             1);
    QCOMPARE(station.run(reports), 0); // once
    station.set(station.schedule, {{"enabled", "false"}});
    m_clock.Advance(12 * hour);
    QCOMPARE(station.run(reports), 0);
}

void ScheduledReportsTest::missedWhileDown()
{
    const QTemporaryDir directory;
    ScheduledStation station(directory);
    {
        ScheduledReports reports(station.core);
        QCOMPARE(station.run(reports), 0);
    }
    m_clock.Advance(5 * 12 * hour);
    {
        ScheduledReports reports(station.core);
        QCOMPARE(station.run(reports), 2);
    }
    QCOMPARE(QDir(station.folder).count(), 2U + 2);
    QCOMPARE(station.told("составлен с опозданием"), 2);
    QCOMPARE(station.told("пропущено 3"), 1);
    ScheduledReports again(station.core);
    QCOMPARE(station.run(again), 0);
}

void ScheduledReportsTest::troubleIsToldAndOvercome()
{
    const QTemporaryDir directory;
    ScheduledStation station(directory);
    ScheduledReports reports(station.core);
    QCOMPARE(station.run(reports), 0);
    QDir().mkpath(directory.filePath("data/reports"));
    written(station.folder, "no folder");
    m_clock.Advance(12 * hour);
    QCOMPARE(station.run(reports), 1);
    QCOMPARE(station.told("не составлен"), 1);
    QCOMPARE(station.run(reports), 0); // not at once again
    m_clock.Advance(2 * minute);
    QCOMPARE(station.run(reports), 1);
    QCOMPARE(station.told("не составлен"), 1); // the same is told once
    QVERIFY(QFile::remove(station.folder));
    m_clock.Advance(5 * minute);
    QCOMPARE(station.run(reports), 1);
    QCOMPARE(QDir(station.folder).entryList(QDir::Files).size(), 1);
    // A template that is gone is another trouble.
    QVERIFY(QFile::remove(directory.filePath("shift.lrxml")));
    m_clock.Advance(12 * hour);
    QCOMPARE(station.run(reports), 1);
    QCOMPARE(station.told("Шаблон отчёта"), 1);
}

void ScheduledReportsTest::neverOverAnotherFile()
{
    const QTemporaryDir directory;
    ScheduledStation station(directory);
    station.set(station.schedule, {{"fileName", "report"}});
    ScheduledReports reports(station.core);
    QCOMPARE(station.run(reports), 0);
    QDir().mkpath(station.folder);
    written(station.folder + "/report.pdf", "of somebody else");
    m_clock.Advance(12 * hour);
    QCOMPARE(station.run(reports), 1);
    QCOMPARE(station.files(), QString("report (2).pdf|report.pdf"));
    QFile other(station.folder + "/report.pdf");
    QVERIFY(other.open(QIODevice::ReadOnly));
    QCOMPARE(other.readAll(), QByteArray("of somebody else"));
}

void ScheduledReportsTest::oldFilesGo()
{
    const QTemporaryDir directory;
    ScheduledStation station(directory);
    station.set(station.schedule, {{"fileName", "{dd} {shift}"}, {"keepCount", "2"}});
    ScheduledReports reports(station.core);
    QCOMPARE(station.run(reports), 0);
    QDir().mkpath(station.folder);
    written(station.folder + "/notes.txt", "of somebody else");
    QStringList made;
    for (int shift = 0; shift < 4; ++shift) {
        m_clock.Advance(12 * hour);
        QCOMPARE(station.run(reports), 1);
        for (const QString &file : QDir(station.folder).entryList({"*.pdf"}))
            made += made.contains(file) ? QString() : file;
    }
    made.removeAll(QString());
    QTRY_COMPARE(QDir(station.folder).entryList({"*.pdf"}).size(), 2);
    QVERIFY(QFile::exists(station.folder + "/" + made.last()));
    QVERIFY(!QFile::exists(station.folder + "/" + made.first()));
    QVERIFY(QFile::exists(station.folder + "/notes.txt"));
}

void ScheduledReportsTest::tables()
{
    const QTemporaryDir directory;
    ScheduledStation station(directory);
    station.add("reportEvents", station.report, "events");
    station.set(station.schedule, {{"fileFormat", "xlsx"}, {"fileName", "data"}});
    ScheduledReports reports(station.core);
    QCOMPARE(station.run(reports), 0);
    m_clock.Advance(12 * hour);
    QCOMPARE(station.run(reports), 1);
    QCOMPARE(station.files(), QString("data.xlsx"));
    QVERIFY(QFileInfo(station.folder + "/data.xlsx").size() > 1000);
}

void ScheduledReportsTest::clockThatWasAhead()
{
    const QTemporaryDir directory;
    ScheduledStation station(directory);
    ScheduledReports reports(station.core);
    QCOMPARE(station.run(reports), 0);
    m_clock.Advance(24 * 365 * hour);
    QCOMPARE(station.run(reports), 2);
    m_clock.SetBack(24 * 365 * hour);
    QCOMPARE(station.run(reports), 0);
    QCOMPARE(station.told("Часы станции переведены назад"), 1);
    m_clock.Advance(12 * hour); // not in a year
    QCOMPARE(station.run(reports), 1);
    QCOMPARE(station.told("Часы станции переведены назад"), 1);
}

void ScheduledReportsTest::faultsOfTheTemplate()
{
    const QTemporaryDir directory;
    ScheduledStation station(directory);
    ScheduledReports reports(station.core);
    QCOMPARE(station.run(reports), 0);
    const QStringList bands{
        TemplateText::band("ReportHeader", "h", 100, {TemplateText::item("$V{nowhere}")})};
    written(directory.filePath("shift.lrxml"), TemplateText::report({TemplateText::page(bands)}));
    m_clock.Advance(12 * hour);
    QCOMPARE(station.run(reports), 1);
    QCOMPARE(station.told("Неполные данные"), 1);
    QCOMPARE(station.told("nowhere"), 1);
}

QTEST_MAIN(ScheduledReportsTest)
#include "tst_scheduled_reports.moc"
