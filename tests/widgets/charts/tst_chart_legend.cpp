#include "OperatedChart.h"

#include "widgets/charts/multiaxis/MultiAxisPlot.h"

#include "nodes/charts/widgetChartBasicSerie.h"
#include "utils/convert/ValueConversions.h"

#include <QAbstractItemModelTester>
#include <QHeaderView>
#include <QScrollBar>
#include <QToolButton>

#include <qwt_plot_curve.h>

using namespace Widgets;

class TestChartLegend : public QObject
{
    Q_OBJECT

private slots:
    void columnsAreThoseOfTheNodeUntilTheOperatorChooses()
    {
        OperatedChart chart;
        const QAbstractItemModelTester tester(&chart.legend->rows());
        QCOMPARE(shown(chart), QStringList({"", "", "Название", "Визир", "Значение", "Ед."}));
        chart.set(100, "legendColumns", "name unit nonsense value");
        chart.legend->onUpdateProperties();
        QCOMPARE(shown(chart), QStringList({"Название", "Ед.", "Значение"}));
        chart.legend->setArchiverMode(true);
        QCOMPARE(shown(chart), QStringList({"Название", "Мин", "Макс", "Ед."}));
        chart.legend->setArchiverMode(false);
        chart.legend->setColumnShown(SerieColumn::Unit, false);
        chart.legend->onUpdateProperties();
        QCOMPARE(shown(chart), QStringList({"Название", "Значение"}));
    }
    void rowsAreHighEnoughForFingersAndTellTheWholeName()
    {
        OperatedChart chart;
        chart.set(104, "text", QString("Очень длинное название сигнала ").repeated(6));
        chart.legend->onUpdateProperties();
        QVERIFY(chart.legend->rowHeight(0) >= 28);
        QCOMPARE(text(chart, 0, SerieColumn::Unit), QString("°C"));
        QCOMPARE(chart.legend->horizontalScrollBar()->isVisible(), false);
        const QModelIndex name = chart.legend->rows().index(0, int(SerieColumn::Name));
        QVERIFY(name.data(Qt::ToolTipRole).toString().contains("название сигнала Очень"));
    }
    void tapHidesACurveAndGreysItsRow()
    {
        OperatedChart chart;
        QSignalSpy updated(chart.legend, &Legend::seriesUpdated);
        tap(chart, 0, SerieColumn::Visible);
        QCOMPARE(chart.serie().isVisible(), false);
        QCOMPARE(updated.count(), 1);
        QVERIFY(chart.legend->rows().index(0, 2).data(Qt::ForegroundRole).isValid());
        tap(chart, 0, SerieColumn::Visible);
        QCOMPARE(chart.serie().isVisible(), true);
    }
    void tapBringsACurveToTheFrontAndBack()
    {
        OperatedChart chart;
        auto &curve = dynamic_cast<QwtPlotCurve &>(chart.serie());
        const double width = curve.pen().widthF();
        const double z = curve.z();
        tap(chart, 0, SerieColumn::Name);
        QCOMPARE(chart.legend->highlighted(), &chart.serie());
        QVERIFY(curve.pen().widthF() > width && curve.z() > z);
        chart.set(104, "thickness", "4");
        QCOMPARE(curve.pen().widthF(), 6.0);
        tap(chart, 1, SerieColumn::Name);
        QCOMPARE(curve.pen().widthF(), 4.0);
        QCOMPARE(curve.z(), z);
        tap(chart, 1, SerieColumn::Name);
        QVERIFY(!chart.legend->highlighted());
    }
    void colourIsChosenForTheTimeBeing()
    {
        OperatedChart chart;
        tap(chart, 0, SerieColumn::Color);
        QTRY_VERIFY(QApplication::activePopupWidget());
        QApplication::activePopupWidget()->findChild<QToolButton *>("#7b3f9e")->click();
        QCOMPARE(chart.serie().getColor(), QColor("#7b3f9e"));
        QCOMPARE(dynamic_cast<QwtPlotCurve &>(chart.serie()).pen().color(), QColor("#7b3f9e"));
        const Nodes::NColor kept = chart.node<Nodes::widgetChartBasicSerie>(104)->GetPenColor();
        QCOMPARE(Utils::NColorToQColor(kept), QColor("#3c608c"));
    }
    void valuesAreTakenFourTimesASecondAndMarkedWhenNotGood()
    {
        OperatedChart chart;
        QSignalSpy changed(&chart.legend->rows(), &QAbstractItemModel::dataChanged);
        for (int i = 0; i < 100; ++i)
            emit chart.serie().informationChaged();
        QTRY_VERIFY(!chart.legend->rows().isWaiting());
        QCOMPARE(changed.count(), 0); // nothing reads differently
        chart.publish(10, 41.25, Nodes::Quality::Stale);
        emit chart.serie().informationChaged();
        QTRY_COMPARE(changed.count(), 1);
        QCOMPARE(changed.first().at(1).toModelIndex().column(), int(SerieColumn::Value));
        const QModelIndex cell = chart.legend->rows().index(0, int(SerieColumn::Value));
        QCOMPARE(cell.data(SerieQualityRole).toInt(), int(Nodes::Quality::Stale));
        QVERIFY(cell.data().toString().startsWith("41.2"));
    }

private:
    static QStringList shown(const OperatedChart &chart)
    {
        const QHeaderView *header = chart.legend->horizontalHeader();
        QStringList titles;
        for (int place = 0; place < header->count(); ++place) {
            const int column = header->logicalIndex(place);
            if (!header->isSectionHidden(column))
                titles << chart.legend->rows().headerData(column, Qt::Horizontal, 0).toString();
        }
        return titles;
    }
    static QString text(const OperatedChart &chart, int row, SerieColumn column)
    {
        return chart.legend->rows().index(row, int(column)).data().toString();
    }
    static void tap(const OperatedChart &chart, int row, SerieColumn column)
    {
        const QModelIndex index = chart.legend->rows().index(row, int(column));
        const QPoint middle = chart.legend->visualRect(index).center();
        for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease})
            sendMouse(*chart.legend->viewport(), type, middle);
    }
};

QTEST_MAIN(TestChartLegend)
#include "tst_chart_legend.moc"
