#include "OperatedChart.h"
#include "support/Rows.h"
#include "support/VisibleBoxes.h"

#include "widgets/charts/export/ChartExport.h"
#include "widgets/charts/export/CsvRows.h"
#include "widgets/charts/export/ExportProgress.h"

#include "nodes/archive/HistoryColumn.h"

#include <QImage>

using namespace Widgets;

class TestChartExport : public QObject
{
    Q_OBJECT

private slots:
    void rowsStandInTheOrderOfTime()
    {
        const auto column = [](std::vector<Nodes::Timestamp> times, std::vector<double> numbers) {
            auto made = std::make_shared<Nodes::HistoryColumn>();
            made->qualities.assign(times.size(), Nodes::Quality::Uncertain);
            made->times = std::move(times);
            made->numbers = std::move(numbers);
            return made;
        };
        const CsvRows rows({{"Подача \"А\"", "°C"}, {"Расход, м", ""}});
        const QByteArray text = rows.rows({column({10, 2000000, 2987654, 3000000}, {1, 2.5, 3, 9}),
                                           column({1000000}, {std::nan("")})},
                                          20, 3000000);
        QCOMPARE(QString(text),
                 QString(CsvRows::time(1000000) + ",\"Расход, м\",,\"\",uncertain\r\n" +
                         CsvRows::time(2000000) + ",\"Подача \"\"А\"\"\",2.5,\"°C\",uncertain\r\n" +
                         CsvRows::time(2987654) + ",\"Подача \"\"А\"\"\",3,\"°C\",uncertain\r\n"));
    }
    void timesHaveTheOffsetOfTheirDay()
    {
        qputenv("TZ", "Europe/Berlin");
        tzset();
        QCOMPARE(CsvRows::time(1700000000123456), QByteArray("2023-11-14T23:13:20.123+01:00"));
        QCOMPARE(CsvRows::time(1690000000000000), QByteArray("2023-07-22T06:26:40.000+02:00"));
        qputenv("TZ", "UTC");
        tzset();
    }
    void everySampleOfTheWindowIsWrittenOnce()
    {
        OperatedChart chart;
        for (int i = -1000; i < 7000; ++i)
            chart.archive->samples.emplace_back(OperatedChart::time(i * 0.1), i,
                                                Nodes::Quality::Good);
        QCOMPARE(save(chart, chart.data.filePath("a.csv")), QString());
        QFile file(chart.data.filePath("a.csv"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QList<QByteArray> lines = file.readAll().split('\n');
        QCOMPARE(lines.size(), 1 + 6001 + 1); // heading, both ends, after the last
        for (int i = 0; i <= 6000; ++i)
            QVERIFY(lines[i + 1].contains(",\"Температура подачи\"," + QByteArray::number(i) +
                                          ",\"°C\",good"));
        QVERIFY(visibleBoxes().join("").contains("Сохранено: "));
    }
    void allSignalsOfASerieAreWrittenEachOnce()
    {
        QByteArray nodes(OperatedChart::nodes);
        nodes.replace("</chartGroup>", R"(<chartXYSerie id="107" name="xy" source="20"
            sourceX="21"/><chartSerie id="108" name="past" source="20" shift="60"/></chartGroup>)");
        OperatedChart chart(nodes.replace(R"(name="t" source="21")", R"(name="t" source="20")"));
        for (const auto &archive : {chart.archive, chart.other})
            archive->samples.emplace_back(OperatedChart::time(1), 1, Nodes::Quality::Good);
        QCOMPARE(save(chart, chart.data.filePath("a.csv")), QString());
        QFile file(chart.data.filePath("a.csv"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray text = file.readAll();
        QCOMPARE(text.count('\n'), 1 + 2);
        QVERIFY(text.contains("Температура подачи") && text.contains("Расход"));
    }
    void whatGoesWrongLeavesNoFile_data()
    {
        const Rows<QString, bool, QString> row("file", "isCancelled", "told");
        row("no such directory", "none/a.csv", false, "не записан");
        row("full disk", "/dev/full", false, "не записан");
        row("cancelled", "a.csv", true, "отменено");
    }
    void whatGoesWrongLeavesNoFile()
    {
        QFETCH(QString, file);
        QFETCH(bool, isCancelled);
        QFETCH(QString, told);
        OperatedChart chart;
        for (int i = 0; i < 5000; ++i)
            chart.archive->samples.emplace_back(OperatedChart::time(i * 0.1), i,
                                                Nodes::Quality::Good);
        const QString path = chart.data.filePath(file);
        const QString error = save(chart, path, isCancelled);
        QVERIFY2(error.contains(told), qPrintable(error));
        QVERIFY(QFileInfo(path).size() == 0);
        QCOMPARE(QDir(chart.data.path()).entryList({"a.csv*"}), QStringList());
    }
    void picturesShowCurveAndTitle()
    {
        OperatedChart chart;
        for (int i = 0; i <= 600; ++i)
            chart.append(0, i, 50 + 30 * std::sin(i / 50.0));
        chart.plot->replot();
        const ChartExport &exports = *chart.aids->chartExport();
        QCOMPARE(exports.proposedName("png").left(14), QString("Котёл_ обзор 2"));
        QCOMPARE(exports.savePng(chart.data.filePath("a.png")), QString());
        const QImage picture(chart.data.filePath("a.png"));
        QCOMPARE(picture.width(), 2 * chart.plot->width());
        int drawn = 0;
        for (int x = 0; x < picture.width(); x += 3)
            for (int y = 0; y < picture.height(); y += 3)
                drawn += picture.pixelColor(x, y) == QColor("#3c608c");
        QVERIFY(drawn > 100);
        QCOMPARE(exports.savePdf(chart.data.filePath("a.pdf")), QString());
        QFile pdf(chart.data.filePath("a.pdf"));
        QVERIFY(pdf.open(QIODevice::ReadOnly));
        const QByteArray content = pdf.readAll();
        QVERIFY(content.startsWith("%PDF") && content.contains("/FontFile"));
        QVERIFY(exports.savePdf("/none/a.pdf").contains("не записан"));
    }

private:
    static QString save(OperatedChart &chart, const QString &file, bool isCancelled = false)
    {
        ChartExport &exports = *chart.aids->chartExport();
        QSignalSpy finished(&exports, &ChartExport::finished);
        exports.saveCsv(file);
        if (isCancelled)
            for (QWidget *window : QApplication::topLevelWidgets())
                if (auto *progress = qobject_cast<ExportProgress *>(window))
                    progress->reject();
        if (finished.isEmpty() && !finished.wait())
            return "does not end";
        return finished.first().first().toString();
    }
};

QTEST_MAIN(TestChartExport)
#include "tst_chart_export.moc"
