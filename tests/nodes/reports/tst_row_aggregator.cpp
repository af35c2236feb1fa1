#include "nodes/reports/data/RowAggregator.h"

#include "support/Rows.h"

#include <cmath>
#include <limits>
#include <random>

using namespace Nodes;

namespace {

constexpr double none = std::numeric_limits<double>::quiet_NaN();

struct Sample
{
    Timestamp time;
    double number;
    Quality quality;
};
using Samples = std::vector<Sample>;

bool isKnown(const Sample &sample)
{
    return std::isfinite(sample.number) && sample.quality != Quality::Bad &&
           sample.quality != Quality::Stale;
}

// Second by second, with no cleverness at all.
SignalFacts naive(const Samples &samples, const ReportSpan &row, Timestamp heldUntil,
                  double threshold)
{
    SignalFacts facts;
    facts.length = row.end - row.begin;
    facts.worst = Quality::Bad;
    double sum = 0, running = 0, starts = 0;
    for (Timestamp t = row.begin; t < row.end; ++t) {
        const Sample *held = nullptr;
        const Sample *knownBefore = nullptr;
        for (const Sample &sample : samples) {
            if (sample.time > t)
                break;
            if (sample.time < t && isKnown(sample))
                knownBefore = &sample;
            held = &sample;
        }
        if (!held || !isKnown(*held) || (held == &samples.back() && t >= heldUntil))
            continue;
        if (held->time == t && knownBefore && knownBefore->number <= threshold &&
            held->number > threshold)
            ++starts;
        if (facts.known == 0) {
            facts.first = held->number;
            facts.worst = Quality::Good;
        }
        facts.known += 1;
        facts.last = held->number;
        facts.minimum = std::fmin(facts.minimum, held->number);
        facts.maximum = std::fmax(facts.maximum, held->number);
        sum += held->number;
        running += held->number > threshold ? 1 : 0;
        if (held->quality == Quality::Uncertain)
            facts.worst = Quality::Uncertain;
    }
    if (facts.known == 0)
        return facts;
    facts.mean = sum / double(facts.known);
    facts.integral = sum / 3600e6;
    facts.hours = running / 3600e6;
    facts.starts = starts;
    return facts;
}

void compare(const SignalFacts &is, const SignalFacts &expected)
{
    for (int aggregate = AggregateMean; aggregate <= AggregateChange; ++aggregate) {
        const double a = is.Get(enReportAggregate(aggregate));
        const double b = expected.Get(enReportAggregate(aggregate));
        const bool isSame =
            std::isnan(b) ? std::isnan(a) : std::abs(a - b) <= 1e-9 * (1 + std::abs(b));
        QVERIFY2(isSame,
                 qPrintable(QString("aggregate %1: %2, not %3").arg(aggregate).arg(a).arg(b)));
    }
    QCOMPARE(is.known, expected.known);
    QCOMPARE(is.length, expected.length);
    QCOMPARE(int(is.worst), int(expected.worst));
}

SignalFacts factsOf(const Samples &samples, const ReportSpan &row, Timestamp heldUntil)
{
    RowAggregator sums({row}, 0.5);
    for (const Sample &sample : samples)
        sums.Add(sample.time, sample.number, sample.quality);
    return sums.Finish(heldUntil).front();
}

} // namespace

class RowAggregatorTest : public QObject
{
    Q_OBJECT

private slots:
    void asBruteForce_data();
    void asBruteForce();
    void holesAreNoZeros();
    void countersAndStarts();
};

void RowAggregatorTest::asBruteForce_data()
{
    QTest::addColumn<unsigned>("seed");
    for (unsigned seed = 1; seed <= 60; ++seed)
        QTest::newRow(qPrintable(QString::number(seed))) << seed;
}

void RowAggregatorTest::asBruteForce()
{
    QFETCH(unsigned, seed);
    std::mt19937 random(seed);
    const auto upTo = [&random](int most) { return int(random() % unsigned(most + 1)); };
    Samples samples;
    Timestamp time = upTo(30) - 20;
    const Quality qualities[] = {Quality::Good,      Quality::Good, Quality::Good,
                                 Quality::Uncertain, Quality::Bad,  Quality::Stale};
    for (int i = upTo(40); i >= 0; --i) {
        time += 1 + upTo(12);
        samples.push_back({time, upTo(9) == 0 ? none : double(upTo(4)) - 1, qualities[upTo(5)]});
    }
    std::vector<ReportSpan> rows;
    for (Timestamp begin = upTo(10); rows.size() < 9;) {
        const Timestamp end = begin + 1 + upTo(25);
        rows.push_back({begin, end});
        begin = end;
    }
    const Timestamp held = samples.back().time + upTo(40);
    RowAggregator sums(rows, 0.5);
    for (const Sample &sample : samples)
        sums.Add(sample.time, sample.number, sample.quality);
    const std::vector<SignalFacts> facts = sums.Finish(held);
    QCOMPARE(facts.size(), rows.size());
    for (std::size_t i = 0; i < rows.size() && !QTest::currentTestFailed(); ++i)
        compare(facts[i], naive(samples, rows[i], held, 0.5));
}

void RowAggregatorTest::holesAreNoZeros()
{
    const ReportSpan row{100, 200};
    const SignalFacts half =
        factsOf({{0, 10, Quality::Good}, {150, none, Quality::Bad}}, row, 1000);
    QCOMPARE(half.mean, 10.0);
    QCOMPARE(half.GetCoverage(), 0.5);
    QCOMPARE(half.minimum, 10.0);
    const SignalFacts unknown = factsOf({{0, none, Quality::Bad}}, row, 1000);
    QVERIFY(std::isnan(unknown.mean) && std::isnan(unknown.integral) && std::isnan(unknown.hours));
    QCOMPARE(unknown.GetCoverage(), 0.0);
    QCOMPARE(int(unknown.worst), int(Quality::Bad));
    QCOMPARE(factsOf({{0, 3, Quality::Good}}, row, 130).known, Timestamp(30));
    QVERIFY(std::isnan(factsOf({}, row, 1000).mean));
}

void RowAggregatorTest::countersAndStarts()
{
    const Samples pump = {{0, 0, Quality::Good},     {110, 1, Quality::Good},
                          {130, none, Quality::Bad}, {140, 1, Quality::Good},
                          {150, 0, Quality::Good},   {160, none, Quality::Bad},
                          {170, 1, Quality::Good},   {200, 0, Quality::Good}};
    const SignalFacts facts = factsOf(pump, {100, 200}, 1000);
    QCOMPARE(facts.starts, 2.0); // running before and behind a hole is no start
    QCOMPARE(facts.hours * 3600e6, 60.0);
    const Samples counter = {{50, 1000, Quality::Good}, {120, 1010, Quality::Good}};
    QCOMPARE(factsOf(counter, {100, 200}, 1000).Get(AggregateChange), 10.0);
}

QTEST_APPLESS_MAIN(RowAggregatorTest)
#include "tst_row_aggregator.moc"
