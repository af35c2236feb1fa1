// The numbers of the boiler's shift report, as they stand in its PDF, against what a count second
// by second over the same archive gives.
#include "nodes/archive/HistoryService.h"
#include "nodes/archive/HistorySource.h"
#include "nodes/archive/history/StoredHistory.h"
#include "nodes/journal/EventJournal.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/reports/time/ReportPeriod.h"
#include "nodes/reports/time/shiftTable.h"
#include "nodes/serial/ProjectReader.h"
#include "nodes/system/systemCore.h"

#include "nodes/ManualClock.h"
#include "nodes/archive/ArchiveFixture.h"
#include "support/Rows.h"
#include "widgets/reports/schedule/ReportFiling.h"

#include <QProcess>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QStandardPaths>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <random>

using namespace Nodes;
using namespace Widgets;

namespace {

constexpr int shiftSeconds = 12 * 3600;
constexpr Timestamp second = 1000000;
constexpr Timestamp begin = Timestamp(1699948800) * second; // 2023-11-14 08:00 UTC
constexpr double unknown = std::numeric_limits<double>::quiet_NaN();
constexpr unsigned long shiftSchedule = 2491;
constexpr int patience = 60000; // ms

/// What a signal was in each second of the shift; unknown in a hole.
using Seconds = std::vector<double>;

/// One signal of the archive.
class ArchivedHistory : public HistorySource
{
public:
    ArchivedHistory(unsigned long signal, std::shared_ptr<const StoredHistory> stored)
        : m_key(ArchiveFixture::key(signal)), m_stored(std::move(stored))
    {
    }

    Result Read(HistoryColumnBuilder &into, const std::atomic<bool> &isCancelled) const override
    {
        return m_stored->Read(m_key, 0, into, isCancelled);
    }

private:
    const ArchiveSignalKey m_key;
    const std::shared_ptr<const StoredHistory> m_stored;
};

double meanOf(const Seconds &all, int from, int to)
{
    double sum = 0;
    int known = 0;
    for (int i = from; i < to; ++i) {
        if (!std::isnan(all[std::size_t(i)])) {
            sum += all[std::size_t(i)];
            ++known;
        }
    }
    return sum / known;
}

double integralOf(const Seconds &all, int from, int to)
{
    double sum = 0;
    for (int i = from; i < to; ++i)
        sum += std::isnan(all[std::size_t(i)]) ? 0 : all[std::size_t(i)] / 3600;
    return sum;
}

int startsOf(const Seconds &all)
{
    int starts = 0;
    for (std::size_t i = 1; i < all.size(); ++i)
        starts += all[i] > 0.5 && !(all[i - 1] > 0.5) ? 1 : 0;
    return starts;
}

/// The numbers of a line behind its title, marks left out.
QVector<double> numbersAfter(const QString &title, const QString &text)
{
    static const QRegularExpression number(QStringLiteral("-?\\d+(?:,\\d+)?"));
    QVector<double> found;
    for (const QString &line : text.split('\n')) {
        const int place = line.indexOf(title);
        if (place < 0)
            continue;
        auto match = number.globalMatch(line, place + title.size());
        while (match.hasNext())
            found << match.next().captured().replace(',', '.').toDouble();
        break;
    }
    return found;
}

bool isPrinted(double printed, double expected, int decimals)
{
    return std::abs(printed - expected) <= 0.5 * std::pow(10, -decimals) + 1e-6;
}

} // namespace

class ShiftReportTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void hoursAndTotals_data();
    void hoursAndTotals();
    void wholeShift();
    void hoursRun();
    void cleanupTestCase() { m_core.GetJournal().Close(); }

private:
    void archive(unsigned long signal, const SampleRun &run);
    void archiveProcess(unsigned long signal, double mean, double swing);
    void archivePump(unsigned long signal, const std::vector<int> &switches);
    void fileReport();

    ArchiveFixture m_archive;
    std::shared_ptr<const StoredHistory> m_stored =
        std::make_shared<StoredHistory>(m_archive.location);
    std::vector<std::shared_ptr<const HistorySource>> m_sources;
    std::map<unsigned long, Seconds> m_seconds;
    systemCore m_core;
    QTemporaryDir m_data;
    std::mt19937 m_random{7};
    QString m_text; // of the PDF
};

void ShiftReportTest::initTestCase()
{
    qputenv("TZ", "UTC0");
    ManualClock::Use(); // past the end of that shift
    if (QStandardPaths::findExecutable("pdftotext").isEmpty())
        QSKIP("pdftotext is not installed; tools/install-dependencies installs it");
    const std::string file = STATION_SOURCE_DIR "/projects/boiler/project.xml";
    std::unique_ptr<NodesCollection> project;
    QVERIFY(ProjectReader().ReadFile(file, project));
    m_core.AdoptProject(std::move(project), file);
    m_core.SetDataDirectory(m_data.path().toStdString());
    QVERIFY(m_core.GetJournal().Open(m_data.filePath("journal.sqlite").toStdString()));
    // Below a thousand each: no separators.
    archiveProcess(128, 90, 10);
    archiveProcess(129, 60, 8);
    archiveProcess(130, 0.8, 0.05);
    archiveProcess(136, 180, 20);
    archiveProcess(137, 600, 90);
    archiveProcess(139, 60, 10);
    archiveProcess(134, -5, 6);
    archivePump(72, {5400, 12600, 20000, 36007});
    archivePump(74, {0, 43000});
    fileReport();
}

void ShiftReportTest::archive(unsigned long signal, const SampleRun &run)
{
    m_archive.write(signal, run);
    Seconds &seconds = m_seconds[signal];
    std::size_t last = 0;
    for (int i = 0; i < shiftSeconds; ++i) {
        while (last + 1 < run.Size() && run.times[last + 1] <= begin + i * second)
            ++last;
        seconds.push_back(run.KindAt(last) == SampleKind::Gap ? unknown : run.numbers[last]);
    }
    const auto source = std::make_shared<ArchivedHistory>(signal, m_stored);
    m_sources.push_back(source);
    QVERIFY(m_core.GetHistory().AddSource(signal, source));
}

// From before the shift to after it, at any second; half an hour of the third hour is lost.
void ShiftReportTest::archiveProcess(unsigned long signal, double mean, double swing)
{
    SampleRun run;
    for (int at = -500; at < shiftSeconds + 1000; at += 20 + int(m_random() % 400)) {
        if (at > 9000 && at < 10800) {
            run.AddGap(begin + at * second);
            at = 10800;
        }
        run.Add(begin + at * second, mean + swing * (double(m_random() % 2001) / 1000 - 1),
                Quality::Good);
    }
    archive(signal, run);
}

// Off before the first one.
void ShiftReportTest::archivePump(unsigned long signal, const std::vector<int> &switches)
{
    SampleRun run;
    run.AddLogical(begin - 100 * second, false, Quality::Good);
    for (std::size_t i = 0; i < switches.size(); ++i)
        run.AddLogical(begin + switches[i] * second, i % 2 == 0, Quality::Good);
    archive(signal, run);
}

void ShiftReportTest::fileReport()
{
    const auto *schedule =
        dynamic_cast<reportSchedule *>(m_core.GetNodesCollection()->FindNode(shiftSchedule));
    QVERIFY(schedule);
    ReportFiling filing(m_core);
    QSignalSpy finished(&filing, &ReportFiling::finished);
    filing.start(ReportJob::of(*schedule, {begin, begin + shiftSeconds * second},
                               shiftTable::PlanOf(m_core.GetNodesCollection())));
    QVERIFY(finished.wait(patience));
    QCOMPARE(finished[0][1].toString(), QString());
    QProcess reader;
    reader.start("pdftotext", {"-layout", finished[0][0].toStringList().value(0), "-"});
    QVERIFY(reader.waitForFinished(patience));
    m_text = QString::fromUtf8(reader.readAllStandardOutput());
    QVERIFY2(m_text.contains("Смена дневная, 14.11.2023 08:00 – 20:00"), qPrintable(m_text));
}

void ShiftReportTest::hoursAndTotals_data()
{
    const Rows<int, unsigned long, int, bool> row("column", "signal", "decimals", "isIntegral");
    row("supply", 0, 128UL, 1, false);
    row("return", 1, 129UL, 1, false);
    row("pressure", 2, 130UL, 3, false);
    row("flow", 3, 136UL, 1, false);
    row("power", 4, 137UL, 0, false);
    row("gas", 5, 139UL, 0, true);
    row("outside", 6, 134UL, 1, false);
}

void ShiftReportTest::hoursAndTotals()
{
    QFETCH(int, column);
    QFETCH(unsigned long, signal);
    QFETCH(int, decimals);
    QFETCH(bool, isIntegral);
    const auto count = isIntegral ? integralOf : meanOf;
    for (int hour = 0; hour < 12; ++hour) {
        const double expected = count(m_seconds.at(signal), hour * 3600, (hour + 1) * 3600);
        const QString title = QStringLiteral("%1:00 – %2:00")
                                  .arg(hour + 8, 2, 10, QLatin1Char('0'))
                                  .arg(hour + 9, 2, 10, QLatin1Char('0'));
        // The hours stand in their table first below its heading.
        const QString table = m_text.mid(m_text.indexOf("по часам"));
        const QVector<double> printed = numbersAfter(title, table);
        QCOMPARE(printed.size(), 7);
        QVERIFY2(
            isPrinted(printed[column], expected, decimals),
            qPrintable(QString("%1: %2, not %3").arg(title).arg(printed[column]).arg(expected)));
    }
    const QVector<double> totals = numbersAfter("За период", m_text);
    QCOMPARE(totals.size(), 7);
    const double total = count(m_seconds.at(signal), 0, shiftSeconds); // not the mean of means
    QVERIFY2(isPrinted(totals[column], total, decimals),
             qPrintable(QString("%1, not %2").arg(totals[column]).arg(total)));
}

void ShiftReportTest::wholeShift()
{
    const Seconds &all = m_seconds.at(128);
    Seconds known;
    std::copy_if(all.begin(), all.end(), std::back_inserter(known),
                 [](double value) { return !std::isnan(value); });
    QVERIFY(known.size() < all.size());
    const double expected[] = {*std::min_element(known.begin(), known.end()),
                               meanOf(all, 0, shiftSeconds),
                               *std::max_element(known.begin(), known.end()), all.back(),
                               100.0 * double(known.size()) / shiftSeconds};
    const QVector<double> printed = numbersAfter("Сеть: температура подачи", m_text);
    QCOMPARE(printed.size(), 5);
    for (int i = 0; i < 5; ++i)
        QVERIFY2(isPrinted(printed[i], expected[i], 1),
                 qPrintable(QString("%1: %2, not %3").arg(i).arg(printed[i]).arg(expected[i])));
    // What is missing is marked where it is, and nowhere else.
    const QStringList lines = m_text.mid(m_text.indexOf("по часам")).split('\n');
    for (const QString &line : lines.mid(0, lines.indexOf(QRegularExpression("За период.*"))))
        QCOMPARE(line.count('*'), line.contains("10:00 – ") ? 7 : 0);
}

void ShiftReportTest::hoursRun()
{
    for (const auto &[signal, name] :
         {std::pair(72UL, "Сетевой насос 1"), std::pair(74UL, "Сетевой насос 2")}) {
        const Seconds &all = m_seconds.at(signal);
        const QVector<double> printed = numbersAfter(name, m_text);
        QCOMPARE(printed.size(), 3);
        const double hours = integralOf(all, 0, shiftSeconds);
        QVERIFY2(isPrinted(printed[0], hours, 2),
                 qPrintable(QString("%1: %2, not %3").arg(name).arg(printed[0]).arg(hours)));
        QCOMPARE(int(printed[1]), startsOf(all) + (all[0] > 0.5 ? 1 : 0));
        QCOMPARE(printed[2], 100.0);
    }
}

QTEST_MAIN(ShiftReportTest)
#include "tst_shift_report.moc"
