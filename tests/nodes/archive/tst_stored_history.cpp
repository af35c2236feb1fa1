// What is read piece by piece, and kept, is what would be read at once.
#include "nodes/ManualClock.h"
#include "nodes/archive/MemoryArchive.h"
#include "nodes/archive/history/StoredHistory.h"
#include "nodes/archive/recording/RecentSamples.h"

#include <QtTest>

#include <cmath>
#include <random>

using namespace Nodes;

namespace {

const ArchiveSignalKey key{{{"project", 1, "station"}, 7, "level"}, ""};
const std::atomic<bool> goesOn{false};

QString textOf(const HistoryColumn &column)
{
    QStringList texts;
    for (std::size_t i = 0; i < column.times.size(); ++i) {
        QString text = QString("%1:%2/%3").arg(column.times[i]).arg(column.numbers[i]);
        text = text.arg(int(column.qualities[i]));
        if (!column.intervals.empty()) {
            const IntervalSample &s = column.intervals[i];
            text += QString("-%1:%2/%3/%4*%5").arg(s.end).arg(s.minimum).arg(s.maximum);
            text = text.arg(s.first).arg(s.count);
        }
        texts << text;
    }
    return texts.join(' ');
}

} // namespace

class TestStoredHistory : public QObject
{
    Q_OBJECT

private slots:
    void readsPiecesAsTheWhole()
    {
        MemoryArchive &archive = MemoryArchive::Use();
        ManualClock::Use();
        std::mt19937 random(11);
        const auto upTo = [&random](int limit) { return Timestamp(random() % unsigned(limit)); };
        Timestamp last = 0;
        for (Timestamp time = 1; time < 2000000; time += 1 + upTo(upTo(50) == 0 ? 90000 : 700)) {
            SampleRun one;
            if (upTo(20) == 0)
                one.AddGap(time);
            else
                one.Add(time, double(upTo(1000)), upTo(9) ? Quality::Good : Quality::Uncertain);
            archive.samplesOf[key][time] = one;
            last = time;
        }
        const StoredHistory stored("memory:");
        for (int round = 0; round < 300; ++round) {
            const Timestamp from = upTo(1900000), to = from + 1 + upTo(int(2000000 - from));
            const std::size_t maxPoints = 2 + std::size_t(upTo(round % 2 ? 3000 : 60));
            HistoryColumnBuilder whole(from, to, maxPoints), pieces(from, to, maxPoints);
            for (const auto &[time, one] : archive.samplesOf[key])
                whole.Add(time, one.numbers[0], one.qualities[0]);
            QVERIFY(stored.Read(key, round % 3 ? last : from + 1000, pieces, goesOn));
            const QString wanted = textOf(whole.Take()), got = textOf(pieces.Take());
            QVERIFY2(got == wanted, qPrintable(QString("%1\n%2\n%3").arg(round).arg(got, wanted)));
        }
    }

    void readsOnlyWhatComesIntoView()
    {
        MemoryArchive &archive = MemoryArchive::Use();
        ManualClock &clock = ManualClock::Use();
        for (Timestamp time = 0; time < 4000000; time += 100)
            archive.samplesOf[key][time].Add(time, double(time), Quality::Good);
        const StoredHistory stored("memory:");
        const auto readsOf = [&](Timestamp from, Timestamp closed = 4000000) {
            HistoryColumnBuilder builder(from, from + 2000000, 2000);
            const int before = archive.reads;
            return stored.Read(key, closed, builder, goesOn) ? archive.reads - before : -1;
        };
        const int first = readsOf(1000);
        QVERIFY(first > 6);
        QCOMPARE(readsOf(1000), 2); // the ends
        const int panned = readsOf(200000);
        QVERIFY2(panned > 2 && panned <= 4, qPrintable(QString::number(panned)));
        stored.Forget(key);
        QCOMPARE(readsOf(1000), first);
        clock.Advance(60 * ManualClock::second); // somebody else may have written
        QCOMPARE(readsOf(1000), first);
        // What still grows is read again.
        stored.Forget(key);
        QVERIFY(readsOf(1000, 1000000) > 0);
        QVERIFY(readsOf(1000, 1000000) > 4);
    }

    /// One question waits for a store that hangs, the others are answered at once.
    void leavesAStoreThatHangsAlone()
    {
        MemoryArchive &archive = MemoryArchive::Use();
        ManualClock &clock = ManualClock::Use();
        const StoredHistory stored("memory:");
        const auto ask = [&stored] {
            HistoryColumnBuilder builder(1, 1000, 0);
            return stored.Read(key, 0, builder, goesOn);
        };
        archive.setAway(true);
        QVERIFY(ask() == Result::StorageError && ask() == Result::StorageError);
        QCOMPARE(archive.reads, 2); // it says so at once: it may be asked
        archive.hangs = 20 * ManualClock::second;
        for (int i = 0; i < 5; ++i)
            QVERIFY(ask() == Result::StorageError);
        QCOMPARE(archive.reads, 3);
        archive.hangs = 0;
        archive.setAway(false);
        clock.Advance(11 * ManualClock::second);
        QVERIFY(ask());
    }

    /// Samples leave memory when they are stored, or when they are safe elsewhere and memory is
    /// short.
    void memoryLetsGoWhatIsSafe()
    {
        RecentSamples::Limits limits;
        limits.stored = 10;
        limits.unstored = 1000;
        limits.bytes = 50000;
        const auto progress = std::make_shared<RecentSamples::Progress>();
        RecentSamples samples(limits, progress);
        Timestamp time = 0;
        const auto add = [&](int count) {
            for (int i = 0; i < count; ++i) {
                if (!samples.Add({++time, double(time)}))
                    return false;
            }
            return true;
        };
        const auto taken = [&] {
            std::size_t count = 0;
            for (const RecentSamples::Part &part : samples.Take(1000000, 1000000))
                count += std::size_t(part.end() - part.begin());
            return count;
        };
        QVERIFY(add(5000));
        QCOMPARE(samples.Look(0, time).begin, Timestamp(1)); // none of it is safe
        QCOMPARE(taken(), std::size_t(5000));
        samples.Send(77);
        QVERIFY(add(5000));
        const RecentSamples::View away = samples.Look(0, time);
        QVERIFY(away.begin > 1 && away.begin <= 5000);
        QCOMPARE(away.missing, away.begin - 1);
        QCOMPARE(taken(), std::size_t(5000));
        samples.Send(78);
        progress->storedKey = 77;
        QCOMPARE(samples.Look(0, time).missing, Timestamp(0));
        progress->storedKey = 78;
        QVERIFY(add(5000));
        const RecentSamples::View back = samples.Look(0, time);
        QVERIFY(back.begin > 5000 && back.begin <= 10000);
        QCOMPARE(taken(), std::size_t(5000));
        samples.Send(0); // lost: it is shown as long as it is there
        QCOMPARE(progress->bytes.load(), sizeof(RecentSamples::Sample) * 5000);
    }

    /// A packet is no longer than a spill file takes, and texts that are stored leave memory.
    void longTextsAreCarriedInParts()
    {
        const auto progress = std::make_shared<RecentSamples::Progress>();
        RecentSamples samples({}, progress);
        const std::string text(1 << 20, 'x');
        std::size_t count = 0;
        std::uint64_t key = 0;
        for (Timestamp time = 1; time <= 100; ++time) {
            QVERIFY(samples.Add({time, NAN, Quality::Good, SampleKind::Text}, text));
            if (time % 50 != 0)
                continue;
            while (samples.HasUntaken()) {
                std::size_t bytes = 0;
                for (const RecentSamples::Part &part : samples.Take(65536, 4u << 20)) {
                    for (const RecentSamples::Sample &sample : part) {
                        bytes += part.TextOf(sample).size();
                        ++count;
                    }
                }
                QVERIFY(bytes > 0 && bytes <= 5u << 20);
                samples.Send(++key);
            }
            progress->storedKey = key;
        }
        QCOMPARE(count, std::size_t(100));
        QVERIFY(progress->bytes.load() < 60u << 20);
    }
};

QTEST_GUILESS_MAIN(TestStoredHistory)
#include "tst_stored_history.moc"
