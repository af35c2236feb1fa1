// What becomes of live values on a plot: which are taken, how they move the window, what is kept.
#include "support/Rows.h"
#include "widgets/charts/ChartRig.h"

#include "widgets/charts/plots/PlotCanvas.h"

#include "nodes/charts/widgetChartGroup.h"

#include <qwt_scale_widget.h>

using namespace Widgets;
using ChartRig::Rig;
using Doubles = QVector<double>;

class TestPlotValues : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { qputenv("TZ", "Europe/Berlin"); }
    void timesAreLocal_data();
    void timesAreLocal();
    void valuesAreTaken_data();
    void valuesAreTaken();
    void followingMovesTheWindowAndTrims();
    void valuesOfAnotherSerieAreDropped();
    void replotsAreCoalesced();
    void memoryStaysBounded();
    void nothingPublishedIsLost();
};

void TestPlotValues::timesAreLocal_data()
{
    const Rows<QString, QString, QString> row("utc", "format", "text");
    row("winter", "2024-01-01T11:00:00Z", "", "12:00:00");
    row("an hour before clocks go forth", "2024-03-31T00:30:00Z", "hh:mm", "01:30");
    row("clocks have gone forth", "2024-03-31T01:30:00Z", "hh:mm", "03:30");
    row("the second 02:30 of a night", "2024-10-27T01:30:00Z", "hh:mm", "02:30");
    row("two lines", "2024-07-01T10:00:00Z", "dd.MM\\nhh:mm", "01.07\n12:00");
}

void TestPlotValues::timesAreLocal()
{
    QFETCH(QString, utc);
    const qint64 milliseconds = QDateTime::fromString(utc, Qt::ISODate).toMSecsSinceEpoch();
    const double x = ChartTime::toX(milliseconds * 1000 + 999);
    QCOMPARE(x, double(milliseconds + 3600000)); // the clock of 1970
    QCOMPARE(ChartTime::toUtc(x), quint64(milliseconds));
    QTEST(
        ChartTime::text(x, *static_cast<QString *>(QTest::qData("format", qMetaTypeId<QString>()))),
        "text");
    QCOMPARE(ChartTime::text(qQNaN()), QString());
}

void TestPlotValues::valuesAreTaken_data()
{
    const Rows<double, Nodes::SignalValue, bool, Doubles, Doubles> row("x", "value", "isTracking",
                                                                       "values", "window");
    const Doubles still{10000, 20000};
    row("a number, with the offset", 15000, 1.5, false, {4.0}, still);
    row("a whole number", 15000, 3, false, {5.5}, still);
    row("a contact", 15000, true, false, {3.5}, still);
    row("an unsigned number", 15000, 7ul, false, {9.5}, still);
    row("a text", 15000, "5", false, {}, still);
    row("an error", 15000, Nodes::Result(Nodes::Result::Timeout), true, {}, still);
    row("a text does not move the window", 25000, "5", true, {}, still);
    row("a tenth of the width ahead", 21000, 0.0, false, {2.5}, still);
    row("further ahead", 21001, 0.0, false, {}, still);
    row("ahead while following", 26000, 0.0, true, {2.5}, {16000, 26000});
    row("at the very end while following", 20000, 0.0, true, {2.5}, still);
    row("left of the window while following", 5000, 0.0, true, {2.5}, still);
}

void TestPlotValues::valuesAreTaken()
{
    QFETCH(double, x);
    QFETCH(Nodes::SignalValue, value);
    QFETCH(bool, isTracking);
    Rig rig;
    rig.setWindow(10000, 20000);
    if (isTracking)
        rig.plot->plotCanvas()->setTracking(true);
    QSignalSpy moved(rig.plot, &Plot::axisScaleChanged);
    emit rig.plot->appendPointsSignal({Rig::at(x, value)}, &rig.serie());
    QTEST(rig.values(), "values");
    rig.plot->replot();
    const QwtInterval window = rig.plot->window();
    QTEST((Doubles{window.minValue(), window.maxValue()}), "window");
    QCOMPARE(moved.count(), window.maxValue() > 20000 ? 1 : 0);
}

void TestPlotValues::followingMovesTheWindowAndTrims()
{
    Rig rig;
    rig.setWindow(10000, 20000);
    rig.plot->plotCanvas()->setTracking(true);
    std::vector<Nodes::SignalValue> values;
    for (int x = 6000; x <= 20000; x += 500)
        values.push_back(Rig::at(x));
    rig.plot->appendPoints(values, &rig.serie());
    QCOMPARE(rig.times().first(), 8500.0); // one point left of 9000: the line enters from the edge
    rig.plot->appendPoints({Rig::at(22200)}, &rig.serie());
    rig.plot->replot();
    rig.plot->appendPoints({Rig::at(22200)}, &rig.serie());
    QCOMPARE(rig.times().first(), 11000.0); // of a window from 12200 on
    QCOMPARE(rig.times().last(), 22200.0);
}

void TestPlotValues::valuesOfAnotherSerieAreDropped()
{
    Rig rig;
    rig.setWindow(10000, 20000);
    ISerie *shown = &rig.serie();
    rig.element->setCurrentGroup(1);
    rig.setWindow(10000, 20000);
    emit rig.plot->appendPointsSignal({Rig::at(15000)}, shown);
    emit rig.plot->appendPointsSignal({Rig::at(15000)}, reinterpret_cast<ISerie *>(1));
    emit rig.plot->appendPointsSignal({Rig::at(15000)}, nullptr);
    QCOMPARE(rig.times(), Doubles());
    QCOMPARE(shown->pointCount(), std::size_t(0));
    rig.element->setCurrentGroup(3); // out of range
    QCOMPARE(rig.element->groupManager()->group()->GetName(), std::string("Без архива"));
}

// One for any number of values within 300 ms, and none without a value.
void TestPlotValues::replotsAreCoalesced()
{
    Rig rig;
    QSignalSpy drawn(rig.plot->axisWidget(QwtAxisId(QwtAxis::xBottom)),
                     &QwtScaleWidget::scaleDivChanged);
    rig.plot->replot();
    drawn.clear();
    rig.plot->plotCanvas()->setTracking(true);
    const double end = rig.plot->window().maxValue();
    for (int i = 1; i <= 50; ++i)
        emit rig.plot->appendPointsSignal({Rig::at(end + 100000 + i)}, &rig.serie());
    QCOMPARE(drawn.count(), 0);
    QTRY_COMPARE(drawn.count(), 1);
}

// A shift of following at ten values a second, in a window of ten seconds.
void TestPlotValues::memoryStaysBounded()
{
    Rig rig;
    rig.setWindow(0, 10000);
    rig.plot->plotCanvas()->setTracking(true);
    std::size_t most = 0;
    for (int second = 0; second < 3600; ++second) {
        std::vector<Nodes::SignalValue> values;
        for (int i = 0; i < 10; ++i)
            values.push_back(Rig::at(second * 1000 + i * 100));
        rig.plot->appendPoints(values, &rig.serie());
        if (second % 10 == 0)
            rig.plot->replot();
        most = qMax(most, rig.serie().pointCount());
    }
    QVERIFY2(most < 300, qPrintable(QString::number(most)));
}

// Bursts from threads arrive whole and in order, whatever the GUI does meanwhile.
void TestPlotValues::nothingPublishedIsLost()
{
    constexpr int count = 20000;
    Rig rig;
    rig.element->start();
    rig.setWindow(0, 1e9);
    const Nodes::Timestamp start = Rig::at(1000).GetSourceTime();
    std::thread publisher([&] {
        for (int i = 0; i < count; ++i) {
            Nodes::SignalValue value = double(i);
            value.SetTimes(start + i * 1000, start + i * 1000);
            rig.node<Nodes::BasicSignal>(10)->GetCell()->Publish(value);
        }
    });
    publisher.join();
    QTRY_COMPARE(rig.times().size(), count);
    QCOMPARE(rig.values().last(), count - 1 + 2.5);
}

QTEST_MAIN(TestPlotValues)
#include "tst_plot_values.moc"
