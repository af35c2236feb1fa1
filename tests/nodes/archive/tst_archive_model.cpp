// The archive against brute force: whatever is written, in whatever order and however often, every
// question is answered as if all samples were looked at.
#include "ArchiveFixture.h"

#include "nodes/archive/HistoryColumnBuilder.h"
#include "nodes/values/Clock.h"
#include "support/PrivateCluster.h"

#include <cmath>
#include <map>
#include <optional>
#include <random>

using namespace Nodes;

namespace {

constexpr Timestamp second = 1000000;
constexpr Timestamp begin = Timestamp(1700000000) * second;

bool isSame(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

bool isSame(const IntervalSample &a, const IntervalSample &b)
{
    return a.begin == b.begin && a.end == b.end && isSame(a.minimum, b.minimum) &&
           isSame(a.maximum, b.maximum) && isSame(a.first, b.first) && isSame(a.last, b.last) &&
           a.count == b.count && a.worst == b.worst;
}

/// Empty when both are the same, else where they are not.
QString difference(const HistoryColumn &a, const HistoryColumn &b)
{
    if (a.times.size() != b.times.size() || a.intervals.size() != b.intervals.size())
        return QString("%1 points and %2 intervals, not %3 and %4")
            .arg(a.times.size())
            .arg(a.intervals.size())
            .arg(b.times.size())
            .arg(b.intervals.size());
    for (std::size_t i = 0; i < a.times.size(); ++i) {
        const bool isEqual = a.times[i] == b.times[i] && isSame(a.numbers[i], b.numbers[i]) &&
                             a.qualities[i] == b.qualities[i] &&
                             (a.intervals.empty() || isSame(a.intervals[i], b.intervals[i]));
        if (!isEqual)
            return QString("point %1 at %2").arg(i).arg(a.times[i]);
    }
    return {};
}

/// All samples of one signal.
struct Model
{
    std::map<Timestamp, SampleRun> samples; // of one each

    void take(const SampleRun &run)
    {
        for (std::size_t i = 0; i < run.Size(); ++i) {
            SampleRun one;
            one.Append(run, i, i + 1);
            samples.emplace(run.times[i], std::move(one));
        }
    }

    SampleRun all() const
    {
        SampleRun run;
        for (const auto &[time, one] : samples)
            run.Append(one);
        return run;
    }
};

class Source
{
public:
    explicit Source(unsigned seed) : m_random(seed) {}

    int number(int least, int most)
    {
        return std::uniform_int_distribution<int>(least, most)(m_random);
    }

    /// Samples of every kind, from a moment on, in their order.
    SampleRun run(Timestamp &time, int count, bool hasTexts)
    {
        SampleRun run;
        for (int i = 0; i < count; ++i) {
            time += number(0, 99) == 0 ? number(1, 1000) * second : number(1, 2000000);
            const Quality quality = number(0, 49) == 0 ? Quality(number(0, 3)) : Quality::Good;
            m_walk += number(-50, 50) / 100.0;
            const int kind = number(0, 399);
            if (kind == 0)
                run.Add(time, kind == 0 ? std::nan("") : 0, quality);
            else if (kind == 1)
                run.AddGap(time, Quality::Stale);
            else if (kind == 2)
                run.Add(time, std::sqrt(double(number(2, 1000))), quality);
            else if (hasTexts && kind < 200)
                run.AddText(time, "Партия " + std::to_string(number(1, 5)), quality);
            else if (hasTexts)
                run.AddLogical(time, number(0, 1) == 1, quality);
            else
                run.Add(time, std::round(m_walk * 100) / 100, quality);
        }
        return run;
    }

    std::mt19937 &random() { return m_random; }

private:
    std::mt19937 m_random;
    double m_walk = 50;
};

} // namespace

class ArchiveModelTest : public QObject
{
    Q_OBJECT

private slots:
    void answersAsBruteForce_data();
    void answersAsBruteForce();

private:
    void trim(ArchiveFixture &archive, Source &source, std::map<unsigned long, Model> &models);
    void write(ArchiveFixture &archive, Source &source, std::map<unsigned long, Model> &models);
    void compare(ArchiveFixture &archive, Source &source, unsigned long node, const Model &model);
    void compareColumn(ArchiveFixture &archive, Source &source, unsigned long node,
                       const SampleRun &all);
    void compareBuckets(ArchiveFixture &archive, Source &source, unsigned long node,
                        const SampleRun &all);
};

void ArchiveModelTest::answersAsBruteForce_data()
{
    QTest::addColumn<unsigned>("seed");
    QTest::addColumn<bool>("isServer");
    for (unsigned seed = 1; seed <= 3; ++seed)
        QTest::addRow("file, %u", seed) << seed << false;
    QTest::addRow("server, 4") << 4u << true;
    if (qEnvironmentVariableIsSet("STATION_TEST_SEED"))
        QTest::addRow("asked for")
            << unsigned(qEnvironmentVariableIntValue("STATION_TEST_SEED")) << false;
}

/// A signal of each pace: long runs that fill chunks, short ones, some late, some twice.
void ArchiveModelTest::write(ArchiveFixture &archive, Source &source,
                             std::map<unsigned long, Model> &models)
{
    Records records;
    for (int packets = source.number(1, 4); packets > 0; --packets) {
        SamplePacket packet;
        for (auto &[node, model] : models) {
            const int longest = node == 1 ? 30000 : node == 2 ? 300 : 3000;
            const bool isLate = source.number(0, 3) == 0 && !model.samples.empty();
            Timestamp time = model.samples.empty() ? begin : model.samples.rbegin()->first;
            if (isLate)
                time = begin + Timestamp(double(time - begin + 1) * source.number(-5, 100) / 100);
            SampleRun run = source.run(time, source.number(0, isLate ? 100 : longest), node == 3);
            model.take(run);
            if (source.number(0, 4) == 0)
                run.Append(run); // each sample twice
            packet.parts.push_back({ArchiveFixture::key(node), std::move(run), false});
        }
        std::shuffle(packet.parts.begin(), packet.parts.end(), source.random());
        records.push_back(archive.record(packet));
    }
    archive.write(records);
    if (source.number(0, 3) == 0)
        archive.write(records); // as a replay of the spill file would
}

/// The oldest samples go, and what stands above them.
void ArchiveModelTest::trim(ArchiveFixture &archive, Source &source,
                            std::map<unsigned long, Model> &models)
{
    const Model &longest = models.at(1);
    if (longest.samples.empty())
        return;
    const Timestamp first = longest.samples.begin()->first;
    const Timestamp span = longest.samples.rbegin()->first - first;
    const Timestamp border = first + Timestamp(double(span) * source.number(0, 70) / 100);
    ArchiveRetentionRules rules;
    if (source.number(0, 1) == 0)
        rules.others.maximumAge = Clock::Current().Now() - border;
    else
        rules.maximumBytes = std::uint64_t(source.number(20000, 200000));
    archive.store->SetRetention(rules);
    archive.tend();
    archive.store->SetRetention({});
    for (auto &[node, model] : models) {
        const SampleRun left = archive.stored(node);
        auto &samples = model.samples;
        samples.erase(samples.begin(),
                      left.IsEmpty() ? samples.end() : samples.lower_bound(left.times.front()));
        if (rules.others.maximumAge > 0)
            QVERIFY(left.Size() == samples.size() && left == model.all());
    }
}

void ArchiveModelTest::compareColumn(ArchiveFixture &archive, Source &source, unsigned long node,
                                     const SampleRun &all)
{
    const Timestamp first = all.times.front() - 100 * second;
    const Timestamp last = all.times.back() + 100 * second;
    const auto moment = [&] {
        const double share = source.number(0, 1000000) / 1e6;
        return first + Timestamp(double(last - first) * share);
    };
    Timestamp from = moment();
    Timestamp to = source.number(0, 2) == 0 ? from + source.number(0, 10000000) : moment();
    if (source.number(0, 3) == 0)
        from = all.times[std::size_t(source.number(0, int(all.Size()) - 1))];
    if (from > to)
        std::swap(from, to);
    const std::size_t points = source.number(0, 5) == 0 ? 0 : std::size_t(source.number(2, 3000));
    HistoryColumnBuilder expected(from, to, points);
    for (std::size_t i = 0; i < all.Size(); ++i)
        expected.Add(all.times[i], all.numbers[i], all.qualities[i]);
    HistoryColumnBuilder answered(from, to, points);
    const Result read = archive.reader()->Read(ArchiveFixture::key(node), answered, archive.never);
    QVERIFY2(read.IsSuccess(), read.ToString().c_str());
    const QString wrong = difference(answered.Take(), expected.Take());
    QVERIFY2(wrong.isEmpty(), qPrintable(QString("signal %1, %2 to %3, %4 points: %5")
                                             .arg(node)
                                             .arg(from)
                                             .arg(to)
                                             .arg(points)
                                             .arg(wrong)));
}

void ArchiveModelTest::compareBuckets(ArchiveFixture &archive, Source &source, unsigned long node,
                                      const SampleRun &all)
{
    const std::size_t count = std::size_t(source.number(1, 40));
    const Timestamp from = all.times.front() - 10;
    const Timestamp to = all.times.back() + source.number(-10, 10);
    if (to - from < Timestamp(count))
        return;
    std::vector<ArchiveBucket> buckets;
    QVERIFY(archive.reader()->ReadBuckets(ArchiveFixture::key(node), from, to, count, buckets,
                                          archive.never));
    QCOMPARE(buckets.size(), count);
    QCOMPARE(buckets.front().interval.begin, from);
    QCOMPARE(buckets.back().interval.end, to);
    for (const ArchiveBucket &bucket : buckets) {
        const SampleRun part = all.Part(bucket.interval.begin, bucket.interval.end - 1);
        double sum = 0;
        int known = 0;
        double highest = std::nan("");
        for (std::size_t i = 0; i < part.Size(); ++i) {
            const bool isKnown =
                !std::isnan(part.numbers[i]) &&
                (part.qualities[i] == Quality::Good || part.qualities[i] == Quality::Uncertain);
            sum += isKnown ? part.numbers[i] : 0;
            known += isKnown;
            if (isKnown)
                highest = std::fmax(highest, part.numbers[i]);
        }
        QCOMPARE(std::size_t(bucket.interval.count), part.Size());
        QVERIFY(isSame(bucket.interval.maximum, highest));
        QVERIFY(known == 0
                    ? std::isnan(bucket.mean)
                    : std::fabs(bucket.mean - sum / known) < 1e-9 * std::fmax(1, std::fabs(sum)));
    }
}

void ArchiveModelTest::compare(ArchiveFixture &archive, Source &source, unsigned long node,
                               const Model &model)
{
    if (model.samples.empty())
        return;
    const SampleRun all = model.all();
    QVERIFY2(archive.stored(node) == all, "what is visited is not what was written");
    // A server takes its time for each new connection.
    const int questions = archive.location == archive.file() ? 15 : 3;
    for (int i = 0; i < questions && !QTest::currentTestFailed(); ++i)
        compareColumn(archive, source, node, all);
    for (int i = 0; i < 3 && !QTest::currentTestFailed(); ++i)
        compareBuckets(archive, source, node, all);
}

void ArchiveModelTest::answersAsBruteForce()
{
    QFETCH(unsigned, seed);
    QFETCH(bool, isServer);
    if (isServer && PrivateCluster::Programs().empty())
        QSKIP("no PostgreSQL server is installed");
    std::optional<PrivateCluster> cluster;
    if (isServer)
        cluster.emplace();
    Source source(seed);
    ArchiveFixture archive(isServer ? cluster->Location() : std::string());
    std::map<unsigned long, Model> models{{1, {}}, {2, {}}, {3, {}}};
    for (int round = 0; round < 3 && !QTest::currentTestFailed(); ++round) {
        for (int i = 0; i < 3 && !QTest::currentTestFailed(); ++i)
            write(archive, source, models);
        if (source.number(0, 1) == 0)
            archive.tend();
        if (source.number(0, 1) == 0)
            trim(archive, source, models);
        if (source.number(0, 1) == 0)
            archive.open(); // what was in memory comes from the file again
        for (const auto &[node, model] : models)
            compare(archive, source, node, model);
        const ArchiveFindings found = archive.findings();
        QVERIFY2(found.empty(),
                 found.empty() ? "" : (found[0].place + ": " + found[0].text).c_str());
    }
}

QTEST_GUILESS_MAIN(ArchiveModelTest)
#include "tst_archive_model.moc"
