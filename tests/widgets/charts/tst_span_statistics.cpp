#include "support/Rows.h"

#include "widgets/charts/statistics/CursorTable.h"
#include "widgets/charts/statistics/SpanStatistics.h"

#include "nodes/values/IntervalSample.h"

#include <cmath>

using namespace Widgets;

using Samples = QVector<QPair<double, double>>; // x in ms, y
using Join = SpanIntegrator::Join;

Q_DECLARE_METATYPE(Join)
Q_DECLARE_METATYPE(Samples)

class TestSpanStatistics : public QObject
{
    Q_OBJECT

private slots:
    void areThoseOfWhatIsDrawn_data()
    {
        const double nan = std::nan("");
        const Rows<Join, Samples, double, double, double, double> row("join", "samples", "mean",
                                                                      "minimum", "maximum", "gaps");
        // Of the span 1000 to 3000.
        row("line through", Join::Lines, {{0, 0}, {4000, 40}}, 20, 10, 30, 0);
        row("step holds", Join::Steps, {{0, 7}, {2000, 9}, {4000, 1}}, 8, 7, 9, 0);
        row("line with a peak", Join::Lines, {{1000, 0}, {2000, 50}, {3000, 0}}, 25, 0, 50, 0);
        row("gap of a line", Join::Lines, {{1000, 4}, {1500, 4}, {2000, nan}, {2500, 4}, {3000, 4}},
            4, 4, 4, 1000);
        row("gap of steps", Join::Steps, {{1000, 4}, {2000, nan}, {2500, 8}, {3000, 8}},
            (4 * 1000 + 8 * 500) / 1500.0, 4, 8, 500);
        row("begins and ends within", Join::Lines, {{1500, 2}, {2500, 2}}, 2, 2, 2, 1000);
        row("unordered is passed over", Join::Steps, {{1000, 1}, {500, 99}, {3000, 1}}, 1, 1, 1, 0);
        row("nothing", Join::Lines, {}, nan, nan, nan, 2000);
    }
    void areThoseOfWhatIsDrawn()
    {
        QFETCH(Samples, samples);
        QFETCH(Join, join);
        SpanIntegrator sums(3000, 1000, join); // either way round
        for (const auto &[x, y] : qAsConst(samples))
            sums.add(x, y, Nodes::Quality::Good);
        const SpanStatistics found = sums.finish();
        QTEST(found.mean, "mean");
        QTEST(found.minimum, "minimum");
        QTEST(found.maximum, "maximum");
        QTEST(found.gaps, "gaps");
        if (found.covered > 0)
            QCOMPARE(found.integral, found.mean * found.covered / 1000);
    }
    void badIsAGapAndUncertainIsRemarked()
    {
        SpanIntegrator sums(0, 1000, Join::Steps);
        sums.add(0, 1, Nodes::Quality::Uncertain);
        sums.add(500, 1000, Nodes::Quality::Bad);
        sums.add(1000, 1, Nodes::Quality::Good);
        QCOMPARE(sums.finish().mean, 1.0);
        QCOMPARE(sums.finish().gaps, 500.0);
        QCOMPARE(sums.finish().worst, Nodes::Quality::Uncertain);
    }
    void extremesOfAggregatesAreExactAndTheirMeansAreNot()
    {
        SpanIntegrator sums(0, 2000, Join::Lines);
        sums.addAggregate(0, 1000, {0, 0, -5, 15, 5, 5, 100, Nodes::Quality::Good});
        sums.addAggregate(1000, 2000, {0, 0, 4, 6, 5, 5, 100, Nodes::Quality::Good});
        const SpanStatistics found = sums.finish();
        QVERIFY(found.isApproximate);
        QCOMPARE(found.minimum, -5.0);
        QCOMPARE(found.maximum, 15.0);
        QCOMPARE(found.count, std::size_t(200));
        QVERIFY(std::abs(found.mean - 5) < 0.1);
    }
    void integralsHaveTheUnitOfTheQuantity_data()
    {
        const Rows<QString, QString, double> row("unit", "integral", "seconds");
        row("rate an hour", "м³/ч", "м³", 3600);
        row("rate a second", "кг/с", "кг", 1);
        row("no rate", "кВт", "кВт·ч", 3600);
        row("none", "", "ч", 3600);
    }
    void integralsHaveTheUnitOfTheQuantity()
    {
        QFETCH(QString, unit);
        QTEST(CursorTable::integralUnit(unit).first, "integral");
        QTEST(CursorTable::integralUnit(unit).second, "seconds");
    }
};

QTEST_APPLESS_MAIN(TestSpanStatistics)
#include "tst_span_statistics.moc"
