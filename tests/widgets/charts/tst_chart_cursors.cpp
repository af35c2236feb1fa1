#include "OperatedChart.h"
#include "support/Rows.h"

#include "widgets/charts/pickers/CursorMarkers.h"
#include "widgets/charts/pickers/CursorRelay.h"
#include "widgets/charts/pickers/IPickerCanvas.h"
#include "widgets/charts/statistics/CursorPanel.h"
#include "widgets/charts/statistics/CursorTable.h"

#include "nodes/values/NumberText.h"

#include <qwt_symbol.h>

using namespace Widgets;

Q_DECLARE_METATYPE(std::vector<QPointF>)

class TestChartCursors : public QObject
{
    Q_OBJECT

private slots:
    void clickMarksTheNearestSampleOfEachSeries()
    {
        Pointed chart;
        chart.click(chart.place(103, 50));
        const auto points = chart.markers("x-marker");
        QCOMPARE(points.size(), std::size_t(2));
        QCOMPARE(points[0]->value(), QPointF(OperatedChart::at(100), 40));
        QCOMPARE(points[0]->label().text(), QString("40.0 °C"));
        QCOMPARE(points[0]->symbol()->style(), QwtSymbol::XCross);
        QCOMPARE(points[0]->labelAlignment(), Qt::Alignment(Qt::AlignRight));
        QCOMPARE(points[1]->value(), QPointF(OperatedChart::at(110), 65)); // with its offset
        QCOMPARE(points[1]->label().text(), QString("60.0 м³/ч"));         // and without
        const auto lines = chart.markers("line-marker");
        QCOMPARE(lines.size(), std::size_t(1));
        QCOMPARE(lines[0]->xValue(), OperatedChart::at(100));
        QCOMPARE(lines[0]->linePen().color(), QColor(Qt::red));
        QCOMPARE(lines[0]->label().text(), ChartTime::text(OperatedChart::at(100), "hh:mm:ss"));
        chart.legend->rows().refresh();
        QCOMPARE(chart.legend->rows().index(0, int(SerieColumn::CursorValue)).data().toString(),
                 QString("40.0"));
        chart.click(chart.place(500, 50));
        QCOMPARE(chart.markers("x-marker")[0]->labelAlignment(), Qt::Alignment(Qt::AlignLeft));
    }
    void whatIsNotThereIsNotMarked()
    {
        Pointed chart;
        QSignalSpy replotted(chart.picker(), &IPickerCanvas::replot);
        chart.serie(1).setVisible(false);
        chart.append(0, 510, std::nan(""), Nodes::Quality::Bad);
        chart.click(chart.place(510, 50)); // a gap
        QCOMPARE(chart.markers("x-marker").size(), std::size_t(0));
        chart.setWindow(700, 900); // beyond all samples
        chart.click(chart.place(800, 50));
        QCOMPARE(chart.markers("line-marker").size(), std::size_t(0));
        QCOMPARE(replotted.count(), 2);
    }
    void samplesOfOneColumnAreToldWithTheirExtremes()
    {
        Pointed chart;
        for (const double y : {31.0, 45.0, 47.0})
            chart.append(0, 550 + y / 1000, y, Nodes::Quality::Uncertain);
        chart.click(chart.place(550, 50));
        QCOMPARE(chart.markers("x-marker")[0]->label().text().mid(4),
                 QString(" [31.0, 47.0] (сомнительно)"));
    }
    void secondCursorIsSetWithShiftOrByHolding()
    {
        Pointed chart;
        chart.click(chart.place(100, 50), Qt::ShiftModifier); // no first one yet
        QVERIFY(!chart.picker()->position(IPickerCanvas::SecondCursor));
        chart.click(chart.place(400, 50), Qt::ShiftModifier);
        QCOMPARE(chart.positions(), qMakePair(100.0, 400.0));
        sendMouse(*chart.plot->canvas(), QEvent::MouseButtonPress, chart.place(200, 50));
        QCOMPARE(chart.positions().first, 200.0);
        QTRY_COMPARE(chart.positions(), qMakePair(100.0, 200.0));
        sendMouse(*chart.plot->canvas(), QEvent::MouseButtonRelease, chart.place(200, 50));
        sendMouse(*chart.plot->canvas(), QEvent::MouseButtonPress, chart.place(300, 50));
        sendMouse(*chart.plot->canvas(), QEvent::MouseMove, chart.place(500, 50));
        QCOMPARE(chart.positions().first, 500.0);
        sendMouse(*chart.plot->canvas(), QEvent::MouseButtonRelease, chart.place(500, 50));
        chart.choose("Убрать второй визир");
        QCOMPARE(chart.markers("line-marker").size(), std::size_t(1));
        chart.plot->createPanner();
        QCOMPARE(chart.markers("x-marker").size(), std::size_t(0));
        QVERIFY(!chart.serie().cursor());
    }
    void bothCursorsGiveStatisticsFirstAsDrawnThenByTheArchive()
    {
        Pointed chart;
        for (int second = 0; second <= 600; ++second)
            chart.archive->samples.emplace_back(OperatedChart::time(second), second < 300 ? 0 : 80,
                                                Nodes::Quality::Good);
        CursorPanel &panel = *chart.aids->cursorPanel();
        QSignalSpy completed(&panel, &CursorPanel::completed);
        chart.click(chart.place(100, 50));
        QVERIFY(!panel.isVisible());
        chart.click(chart.place(400, 50), Qt::ShiftModifier);
        QVERIFY(panel.isVisible());
        QVERIFY(panel.heading().endsWith("Δt = 00:05:00.000"));
        QCOMPARE(row(panel, 0).mid(1, 4), QStringList({"40.0", "70.0", "30.0", "55.00"}));
        QVERIFY(row(panel, 0).last().startsWith("≈"));
        // A live step holds on behind its last sample.
        QCOMPARE(row(panel, 1).mid(2, 3), QStringList({"60.0", Nodes::NoValueText, "60.00"}));
        QVERIFY(row(panel, 1).last().contains("без разрывов: 10 с"));
        QTRY_COMPARE(completed.count(), 1);
        // Two hundred seconds of 0, a hundred of 80, and the slope between them.
        QCOMPARE(row(panel, 0).mid(4, 3), QStringList({"26.80", "0.0", "80.0"}));
        QCOMPARE(row(panel, 0).at(7), QString("2.23333 °C·ч"));
        QCOMPARE(row(panel, 0).last(), QString());
        QVERIFY(panel.geometry().top() >= chart.plot->geometry().bottom());
    }
    void manySamplesAreFirstGuessedThenAddedUp()
    {
        Pointed chart;
        double area = 0;
        for (int i = 0; i < 300000; ++i) {
            const double number = i % 20 == 7 ? 100 : 1; // of seldom peaks aggregates know little
            chart.archive->samples.emplace_back(OperatedChart::time(100 + i * 0.001), number,
                                                Nodes::Quality::Good);
            area += number;
        }
        CursorPanel &panel = *chart.aids->cursorPanel();
        chart.click(chart.place(100, 50));
        chart.click(chart.place(400, 50), Qt::ShiftModifier);
        QSignalSpy completed(&panel, &CursorPanel::completed);
        QTRY_COMPARE(completed.count(), 1);
        QVERIFY(row(panel, 0).last().startsWith("≈"));
        QTRY_COMPARE(row(panel, 0).last(), QString());
        QVERIFY(std::abs(row(panel, 0).at(4).toDouble() - area / 300000) < 0.02);
    }
    void labelsStandOnTheCanvasAndNotOnEachOther_data()
    {
        const Rows<std::vector<QPointF>, QSizeF> row("anchors", "size");
        const std::vector<QPointF> same(8, {100, 50});
        row("eight at one point", same, {80, 18});
        row("at the corners", {{1, 1}, {399, 1}, {1, 199}, {399, 199}}, {80, 18});
        row("right edge", {{395, 100}, {395, 104}, {396, 98}}, {150, 18});
        row("no room for all", std::vector<QPointF>(40, {200, 100}), {190, 18});
    }
    void labelsStandOnTheCanvasAndNotOnEachOther()
    {
        QFETCH(std::vector<QPointF>, anchors);
        QFETCH(QSizeF, size);
        const QRectF canvas(0, 0, 400, 200);
        const QRectF time(85, 140, 15, 60);
        const auto places = CursorLabels::arrange(
            anchors, std::vector<QSizeF>(anchors.size(), size), {time}, canvas);
        int placed = 0;
        for (std::size_t i = 0; i < places.size(); ++i) {
            if (places[i].isNull())
                continue;
            ++placed;
            QVERIFY(canvas.contains(places[i]) && !places[i].intersects(time));
            for (std::size_t j = 0; j < i; ++j)
                QVERIFY(!places[i].intersects(places[j]));
        }
        QCOMPARE(placed, qMin(int(anchors.size()), anchors.size() > 20 ? placed : 20));
        QVERIFY(placed >= qMin(int(anchors.size()), 8));
    }

private:
    /// With samples, and pointing.
    struct Pointed : OperatedChart
    {
        Pointed()
        {
            for (int i = 0; i <= 5; ++i)
                append(0, i * 100, 30.0 + i * 10);
            append(1, 110, 60.0);
            plot->createPicker();
        }
        IPickerCanvas *picker() const { return CursorRelay::of(*plot).picker(); }
        QPair<double, double> positions() const
        {
            const auto seconds = [this](IPickerCanvas::enCursor cursor) {
                return (picker()->position(cursor).value_or(0) - at(0)) / 1000;
            };
            return {seconds(IPickerCanvas::FirstCursor), seconds(IPickerCanvas::SecondCursor)};
        }
    };
    static QStringList row(const CursorPanel &panel, int number)
    {
        QStringList cells;
        for (int column = 0; column < CursorTable::Count; ++column)
            cells << panel.table().index(number, column).data().toString();
        return cells;
    }
};

QTEST_MAIN(TestChartCursors)
#include "tst_chart_cursors.moc"
