#include "widgets/reports/ReportCells.h"

#include "widgets/reports/export/DataExport.h"
#include "widgets/reports/export/XlsxCheck.h"

#include "nodes/FileSizeLimit.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <limits>

using Widgets::DataExport;
using Widgets::ExportSheets;

namespace {

LimeReport::SharedRowsPtr kinds()
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const QDateTime time(QDate(2026, 3, 1), QTime(6, 30, 5, 250));
    auto cells = std::make_shared<ReportCells>(
        QStringList{"time", "Давление; кПа", "text", "flag", "count"},
        QVector<QVariantList>{
            {time, 0.1, "=1+1", true, 7},
            {time.addDays(1), nan, "a;\"b\"\nc", false, 9007199254740993LL},
            {QDateTime(), QVariant(), "", QVariant(), QVariant()},
            {QDateTime(QDate(1850, 1, 1), QTime(0, 0)), -2.5e-7, "-5", true, -1}});
    cells->qualities.insert({1, 1}, Nodes::Quality::Bad);
    cells->qualities.insert({3, 1}, Nodes::Quality::Stale);
    return cells;
}

LimeReport::SharedRowsPtr numbers(int count)
{
    QVector<QVariantList> rows;
    for (int i = 0; i < count; ++i)
        rows.append({i, i * 0.1, QString("строка %1").arg(i)});
    return std::make_shared<ReportCells>(QStringList{"n", "x", "t"}, rows);
}

QByteArray contentOf(const QString &file)
{
    QFile opened(file);
    return opened.open(QIODevice::ReadOnly) ? opened.readAll() : QByteArray("no file");
}

QStringList dumped(const QString &file)
{
    QProcess python;
    python.start("python3", {STATION_SOURCE_DIR "/tests/widgets/reports/xlsx_dump.py", file});
    if (!python.waitForFinished())
        return {"no python3"};
    return QString::fromUtf8(python.readAllStandardOutput() + python.readAllStandardError())
        .split('\n', Qt::SkipEmptyParts);
}

/// The error an export ended with.
QString exported(DataExport &exporting, const QString &file, const ExportSheets &sheets)
{
    QSignalSpy finished(&exporting, &DataExport::finished);
    exporting.start(file, DataExport::formatOf(file), sheets);
    if (finished.isEmpty() && !finished.wait(60000))
        return "not finished";
    return finished.first().first().toString();
}

} // namespace

class tst_report_export : public QObject
{
    Q_OBJECT

private slots:
    void csv();
    void csvOfSeveral();
    void spreadsheet();
    void rowsGoOnInFurtherSheets();
    void sheetNames();
    void fullDisk_data();
    void fullDisk();
    void tornFilesAreSeen();
    void cancelLeavesNothing_data();
    void cancelLeavesNothing();
    void nothingToWrite();

private:
    QString path(const QString &name) const { return m_directory.filePath(name); }
    QStringList leftOver() const { return QDir(m_directory.path()).entryList(QDir::Files); }

    QTemporaryDir m_directory;
};

void tst_report_export::csv()
{
    DataExport exporting;
    QSignalSpy progressed(&exporting, &DataExport::progressed);
    QCOMPARE(exported(exporting, path("a.csv"), {{"источник", kinds()}}), QString());
    const QList<QByteArray> lines = contentOf(path("a.csv")).split('\r');
    QCOMPARE(lines[0], QByteArray("\xef\xbb\xbftime;\"Давление; кПа\";\"Давление; кПа (качество)\";"
                                  "text;flag;count"));
    QVERIFY(lines[1].startsWith("\n2026-03-01T06:30:05.250"));
    QVERIFY(lines[1].endsWith(";0.1;;'=1+1;1;7"));
    QVERIFY(lines[2].endsWith(";;Недостоверно;\"a;\"\"b\"\"\nc\";0;9007199254740993"));
    QCOMPARE(lines[3], QByteArray("\n;;;;;"));
    QVERIFY(lines[4].endsWith(";-2.5e-7;Устарело;'-5;1;-1") ||
            lines[4].endsWith(";-2.5e-07;Устарело;'-5;1;-1"));
    QCOMPARE(progressed.last().first().toInt(), 100);
}

void tst_report_export::csvOfSeveral()
{
    DataExport exporting;
    QCOMPARE(exported(exporting, path("m.csv"), {{"a/b", numbers(2)}, {"a/b", numbers(1)}}),
             QString());
    QCOMPARE(exporting.files(), QStringList({path("m - a_b.csv"), path("m - a_b (2).csv")}));
    QCOMPARE(contentOf(path("m - a_b.csv")).count('\n'), 3);
    QCOMPARE(contentOf(path("m - a_b (2).csv")).count('\n'), 2);
}

void tst_report_export::spreadsheet()
{
    DataExport exporting;
    QCOMPARE(exported(exporting, path("a.xlsx"), {{"Котёл", kinds()}, {"пусто", numbers(0)}}),
             QString());
    const QStringList cells = dumped(path("a.xlsx"));
    const QString day = QString::number(QDate(1899, 12, 30).daysTo(QDate(2026, 3, 1)) +
                                            (6 * 3600 + 30 * 60 + 5.25) / 86400,
                                        'f', 6);
    for (const QString &expected :
         {QString("Котёл|frozen|1"), QString("Котёл|B1|inlineStr||Давление; кПа"),
          QString("Котёл|C1|inlineStr||Давление; кПа (качество)"), QString("Котёл|B2|n||0.1"),
          QString("Котёл|D2|inlineStr||=1+1"), QString("Котёл|E2|b||1"), QString("Котёл|F2|n||7"),
          QString("Котёл|C3|inlineStr||Недостоверно"), QString("Котёл|E3|b||0"),
          QString("Котёл|F3|inlineStr||9007199254740993"), QString("Котёл|C5|inlineStr||Устарело"),
          QString("Котёл|A5|inlineStr||1850-01-01T00:00:00.000"), QString("пусто|A1|inlineStr||n")})
        QVERIFY2(cells.contains(expected),
                 qPrintable(expected + " is not in\n" + cells.join('\n')));
    const QStringList time = cells.filter("Котёл|A2|n|dd.mm.yyyy hh:mm:ss|");
    QCOMPARE(time.size(), 1);
    QCOMPARE(QString::number(time.first().section('|', 4).toDouble(), 'f', 6), day);
    QVERIFY(cells.filter("Котёл|B3|").isEmpty()); // not a number is nothing, not 0
    QVERIFY(cells.filter("|formula|").isEmpty());
}

void tst_report_export::rowsGoOnInFurtherSheets()
{
    DataExport exporting;
    exporting.setRowsPerSheet(1000);
    QCOMPARE(exported(exporting, path("r.xlsx"), {{"s", numbers(2500)}}), QString());
    const QStringList cells = dumped(path("r.xlsx"));
    QVERIFY(cells.contains("s|A1001|n||999"));
    QVERIFY(cells.contains("s (2)|A1|inlineStr||n"));
    QVERIFY(cells.contains("s (2)|A2|n||1000"));
    QVERIFY(cells.contains("s (3)|A501|n||2499"));
    QVERIFY(cells.filter(QRegularExpression("\\|A502\\|")).size() == 2);
}

void tst_report_export::sheetNames()
{
    DataExport exporting;
    const QString endless = QString(40, QChar(0x416));
    QCOMPARE(exported(exporting, path("n.xlsx"),
                      {{endless, numbers(1)},
                       {endless.toLower(), numbers(1)},
                       {"[a]:*?/\\'", numbers(1)},
                       {"", numbers(1)}}),
             QString());
    QStringList names;
    for (const QString &line : dumped(path("n.xlsx")).filter("|frozen|"))
        names += line.section('|', 0, 0);
    QCOMPARE(names, QStringList({endless.left(31), endless.toLower().left(27) + " (2)", "_a_______",
                                 "Данные"}));
}

void tst_report_export::fullDisk_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("limit");

    QTest::newRow("csv") << "full.csv" << 100000;
    QTest::newRow("sheet being written") << "full.xlsx" << 500000;
    QTest::newRow("container being written") << "full.xlsx" << 3000;
}

void tst_report_export::fullDisk()
{
    QFETCH(QString, name);
    QFETCH(int, limit);
    QFile before(path(name));
    QVERIFY(before.open(QIODevice::WriteOnly) && before.write("before") == 6);
    before.close();
    const QStringList files = leftOver();
    DataExport exporting;
    QString error;
    {
        const FileSizeLimit full{rlim_t(limit)};
        error = exported(exporting, path(name), {{"s", numbers(20000)}});
    }
    QVERIFY2(error.contains(name) && error.contains("Проверьте место на диске"), qPrintable(error));
    QCOMPARE(contentOf(path(name)), QByteArray("before"));
    QCOMPARE(leftOver(), files);
    QCOMPARE(exported(exporting, path(name), {{"s", numbers(20000)}}), QString());
}

void tst_report_export::tornFilesAreSeen()
{
    DataExport exporting;
    QCOMPARE(exported(exporting, path("t.xlsx"), {{"s", numbers(3000)}}), QString());
    QCOMPARE(Widgets::xlsxFault(path("t.xlsx"), 3001), QString());
    QVERIFY(Widgets::xlsxFault(path("t.xlsx"), 3000).contains("не все строки"));
    const QByteArray whole = contentOf(path("t.xlsx"));
    for (int i = 0; i < 100; ++i) {
        const QByteArray torn = whole.left(int(qint64(whole.size()) * i / 100));
        QFile file(path("torn.xlsx"));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(torn) == torn.size());
        file.close();
        QVERIFY2(!Widgets::xlsxFault(path("torn.xlsx"), 3001).isEmpty(),
                 qPrintable(QString::number(i)));
    }
}

void tst_report_export::cancelLeavesNothing_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("csv") << "cancelled.csv";
    QTest::newRow("xlsx") << "cancelled.xlsx";
}

void tst_report_export::cancelLeavesNothing()
{
    QFETCH(QString, name);
    const QStringList before = leftOver();
    const auto rows = numbers(100000);
    DataExport exporting;
    QSignalSpy finished(&exporting, &DataExport::finished);
    exporting.start(path(name), DataExport::formatOf(name), {{"s", rows}});
    QVERIFY(exporting.isRunning());
    exporting.cancel();
    QVERIFY(finished.wait(60000));
    QCOMPARE(finished.first().first().toString(), QString("Экспорт отменён."));
    QCOMPARE(leftOver(), before);
    {
        DataExport abandoned;
        abandoned.start(path(name), DataExport::formatOf(name), {{"s", rows}});
    }
    QCOMPARE(leftOver(), before);
}

void tst_report_export::nothingToWrite()
{
    DataExport exporting;
    QVERIFY(exported(exporting, path("e.csv"), {{"gone", nullptr}}).contains("нет данных"));
    for (const QString name : {"d.csv", "d.xlsx"}) {
        QVERIFY(QDir(m_directory.path()).mkdir(name));
        QVERIFY(exported(exporting, path(name), {{"s", numbers(1)}}).contains("не файл"));
    }
    QVERIFY(exported(exporting, "/proc/none/e.csv", {{"s", numbers(1)}}).contains("не записан"));
    QVERIFY(exported(exporting, "/proc/none/e.xlsx", {{"s", numbers(1)}}).contains("не записан"));
}

QTEST_GUILESS_MAIN(tst_report_export)
#include "tst_report_export.moc"
