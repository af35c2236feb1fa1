#include "ArchiveFixture.h"

#include "nodes/FileSizeLimit.h"
#include "nodes/ManualClock.h"
#include "nodes/archive/HistoryColumnBuilder.h"
#include "nodes/storage/SqliteDatabase.h"
#include "nodes/storage/SqliteStatement.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <random>
#include <thread>

using namespace Nodes;

Q_DECLARE_METATYPE(Nodes::SampleRun)

namespace {

constexpr Timestamp second = 1000000;
constexpr Timestamp hour = 3600 * second;
constexpr Timestamp begin = Timestamp(1600000000) * second;

/// One sample a second that counts up from `first`.
SampleRun counting(Timestamp from, std::size_t count, double first = 0)
{
    SampleRun run;
    for (std::size_t i = 0; i < count; ++i)
        run.Add(from + Timestamp(i) * second, first + double(i), Quality::Good);
    return run;
}

/// The same of numbers that nothing makes small.
SampleRun noise(Timestamp from, std::size_t count)
{
    std::mt19937_64 random(count);
    std::uniform_real_distribution<double> number(-1, 1);
    SampleRun run;
    for (std::size_t i = 0; i < count; ++i)
        run.Add(from + Timestamp(i) * second, number(random), Quality::Good);
    return run;
}

/// The first number of the answer to `sql`, which may change the file as well.
std::int64_t ask(const std::string &file, const std::string &sql)
{
    SqliteDatabase database;
    if (!database.Open(file, SqliteDatabase::Mode::ReadWrite))
        return -1;
    SqliteStatement statement(database, sql);
    const std::int64_t number = statement.Step() ? statement.Integer(0) : 0;
    return statement.GetResult() ? number : -1;
}

std::int64_t middleChunk(const ArchiveFixture &archive)
{
    return ask(archive.file(), "SELECT id FROM blocks WHERE height = 0 AND signal = 1 "
                               "ORDER BY first LIMIT 1 OFFSET 1");
}

} // namespace

class ArchiveStoreTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { ManualClock::Use(); }
    void packetComesBack_data();
    void packetComesBack();
    void damagedPacketIsKeptApart();
    void signalKeepsItsHistoryWhenRenamed();
    void storedSampleStays();
    void generatedSamplesAreMarked();
    void samplesFarAheadMakeNothingLate();
    void slowSignalsArePacked();
    void longTextsStayReadable();
    void retention_data();
    void retention();
    void newRetentionTakesEffectAtOnce();
    void damageIsFoundAndMended_data();
    void damageIsFoundAndMended();
    void damagedChunkIsAGap();
    void failedWriteChangesNothing_data();
    void failedWriteChangesNothing();
    void ruinedFileIsSetAside();
    void damagedPagesAreSalvaged();
    void laterVersionIsRefused();
    void othersFilesAreRefused();
    void backupIsOneState();
    void questionsOfNothing_data();
    void questionsOfNothing();
    void visitEndsWhenAsked();
};

void ArchiveStoreTest::packetComesBack_data()
{
    QTest::addColumn<SampleRun>("run");
    const auto row = [](const char *name, auto fill) {
        SampleRun run;
        for (int i = 0; i < 300; ++i)
            fill(run, begin + i * i * 37, i);
        QTest::newRow(name) << run;
    };
    row("decimals", [](SampleRun &run, Timestamp time, int i) {
        run.Add(time, (i * 7919 % 1000 - 500) / 100.0, Quality(i / 100));
    });
    row("doubles", [](SampleRun &run, Timestamp time, int i) {
        run.Add(time, std::sin(i) * std::pow(10, i % 60 - 30), Quality::Good);
    });
    row("extremes", [](SampleRun &run, Timestamp time, int i) {
        const double most = std::numeric_limits<double>::max();
        const double numbers[] = {most, -most, 5e-324, 9007199254740993.0, 1e15 + 0.3, 0};
        run.Add(time, numbers[i % 6], Quality::Uncertain);
    });
    row("everything", [](SampleRun &run, Timestamp time, int i) {
        if (i % 4 == 0)
            run.Add(time, i % 8 == 0 ? INFINITY : std::nan(""), Quality::Good);
        else if (i % 4 == 1)
            run.AddLogical(time, i % 3 == 0, Quality::Stale);
        else if (i % 4 == 2)
            run.AddText(time, i % 3 == 0 ? "" : "Пар; " + std::string(std::size_t(i), '"'),
                        Quality::Good);
        else
            run.Add(time, i, Quality::Good);
    });
    SampleRun wild;
    for (const Timestamp time : {begin, Timestamp(5), begin * 2000, begin, Timestamp(-7)})
        wild.Add(time, double(time), Quality::Bad);
    QTest::newRow("times in any order") << wild;
    QTest::newRow("nothing") << SampleRun();
}

void ArchiveStoreTest::packetComesBack()
{
    QFETCH(SampleRun, run);
    SamplePacket packet;
    packet.parts.push_back({ArchiveFixture::key(3), run, true});
    packet.parts.push_back({ArchiveFixture::key(4), counting(begin, 2), false});
    const std::string bytes = packet.Pack();
    const std::optional<SamplePacket> read = SamplePacket::Unpack(bytes);
    QVERIFY(read && read->parts.size() == 2);
    QVERIFY(read->parts[0].run == run);
    QVERIFY(read->parts[0].isGenerated && !read->parts[1].isGenerated);
    QVERIFY(read->parts[1].signal.IsSame(ArchiveFixture::key(4)));
    QVERIFY(read->parts[1].signal.IsCalledAs(ArchiveFixture::key(4)));
    for (std::size_t size = 0; size < bytes.size(); ++size)
        QVERIFY(!SamplePacket::Unpack(std::string_view(bytes).substr(0, size)));
}

void ArchiveStoreTest::damagedPacketIsKeptApart()
{
    ArchiveFixture archive;
    SamplePacket packet;
    packet.parts.push_back({archive.key(1), counting(begin, 10), false});
    archive.write({{7, 1, "no packet"}, archive.record(packet)});
    QCOMPARE(archive.stored(1).Size(), std::size_t(10));
    const ArchiveFindings found = archive.findings();
    QCOMPARE(found.size(), std::size_t(1));
    QVERIFY2(found[0].place.find("record 7") != std::string::npos, found[0].place.c_str());
}

void ArchiveStoreTest::signalKeepsItsHistoryWhenRenamed()
{
    ArchiveFixture archive;
    archive.write(1, counting(begin, 10));
    SamplePacket packet;
    packet.parts.push_back({archive.key(1), counting(begin + hour, 10), false});
    packet.parts[0].signal.source.name = "Котёл/Новое имя";
    ArchiveSignalKey elsewhere = archive.key(1);
    elsewhere.source.home.station = 2;
    packet.parts.push_back({elsewhere, counting(begin, 3), false});
    archive.write({archive.record(packet)});
    std::vector<ArchivedSignal> listed;
    QVERIFY(archive.reader()->ListSignals(listed));
    QCOMPARE(listed.size(), std::size_t(2));
    QCOMPARE(listed[0].key.source.name, std::string("Котёл/Новое имя"));
    QCOMPARE(listed[0].samples, std::uint64_t(20));
    QCOMPARE(listed[0].first, begin);
    QCOMPARE(listed[0].last, begin + hour + 9 * second);
    QCOMPARE(listed[1].samples, std::uint64_t(3));
}

void ArchiveStoreTest::storedSampleStays()
{
    ArchiveFixture archive;
    archive.write(1, counting(begin, 5000));
    archive.write(1, counting(begin, 5000, 100)); // chunk and log
    QVERIFY(archive.stored(1) == counting(begin, 5000));
    archive.open();
    archive.write(1, counting(begin - hour, 3601, 100));
    const SampleRun all = archive.stored(1);
    QCOMPARE(all.Size(), std::size_t(8600));
    QCOMPARE(all.numbers[3600], 0.0);
    QCOMPARE(all.numbers[3599], 100.0 + 3599);
}

void ArchiveStoreTest::generatedSamplesAreMarked()
{
    ArchiveFixture archive;
    archive.write(1, counting(begin, 5000), true);
    archive.write(1, counting(begin + 2 * hour, 10));
    archive.write(2, counting(begin, 10));
    archive.open();
    std::vector<ArchivedSignal> listed;
    QVERIFY(archive.reader()->ListSignals(listed));
    QVERIFY(listed[0].IsGenerated() && !listed[1].IsGenerated());
    QCOMPARE(listed[0].generatedFrom, begin);
    QCOMPARE(listed[0].generatedTo, begin + 4999 * second);
}

/// The clock was a century ahead for a moment.
void ArchiveStoreTest::samplesFarAheadMakeNothingLate()
{
    ArchiveFixture archive;
    const Timestamp now = ManualClock::Use().Now();
    archive.write(1, counting(now + 876000 * hour, 10));
    for (int i = 0; i < 5; ++i)
        archive.write(1, counting(now - hour + i * 1000 * second, 1000));
    archive.tend();
    QCOMPARE(ask(archive.file(), "SELECT max(last) FROM blocks") / second,
             (now - hour) / second + 4095);
    QCOMPARE(archive.stored(1).Size(), std::size_t(5010));
    QVERIFY(archive.findings().empty());
}

void ArchiveStoreTest::slowSignalsArePacked()
{
    ArchiveFixture archive;
    constexpr unsigned long many = 250;
    constexpr std::size_t each = 1000;
    constexpr int rounds = 7;
    for (int round = 0; round < rounds; ++round) {
        SamplePacket packet;
        for (unsigned long node = 1; node <= many; ++node)
            packet.parts.push_back({archive.key(node), noise(begin + round * hour, each), false});
        archive.write({archive.record(packet)});
        archive.tend();
        QVERIFY(ask(archive.file(), "SELECT sum(length(data)) FROM log") < 8 << 20);
    }
    const std::int64_t chunks = ask(archive.file(), "SELECT count(*) FROM blocks WHERE height = 0");
    QVERIFY2(chunks >= std::int64_t(many) && chunks <= std::int64_t(3 * many),
             qPrintable(QString::number(chunks)));
    for (const unsigned long node : {1ul, 100ul, many}) {
        const SampleRun all = archive.stored(node);
        QCOMPARE(all.Size(), each * rounds);
        QVERIFY(all.Part(begin + 3 * hour, begin + 3 * hour + 999 * second) ==
                noise(begin + 3 * hour, each));
    }
    QVERIFY(archive.findings().empty());
}

/// A block of so many of them would be longer than any that is read.
void ArchiveStoreTest::longTextsStayReadable()
{
    ArchiveFixture archive;
    SampleRun all;
    for (int portion = 0; portion < 17; ++portion) {
        SampleRun run;
        for (int i = 0; i < 256; ++i) {
            const int number = portion * 256 + i;
            run.AddText(begin + number, std::string(66000, char('a' + number % 26)), Quality::Good);
        }
        all.Append(run);
        archive.write(3, std::move(run));
        archive.tend();
    }
    QVERIFY(archive.findings().empty());
    QVERIFY(archive.stored(3) == all);
}

void ArchiveStoreTest::retention_data()
{
    QTest::addColumn<Timestamp>("age");
    QTest::addColumn<std::uint64_t>("bytes");
    QTest::addColumn<std::uint64_t>("whole");
    QTest::addColumn<std::size_t>("fewest"); // samples kept of the signal
    QTest::addColumn<std::size_t>("most");
    const std::size_t all = 300000;
    QTest::newRow("none") << Timestamp(0) << std::uint64_t(0) << std::uint64_t(0) << all << all;
    QTest::newRow("age") << 10 * hour << std::uint64_t(0) << std::uint64_t(0) << std::size_t(36000)
                         << std::size_t(36000 + 4096);
    QTest::newRow("bytes") << Timestamp(0) << std::uint64_t(1000) << std::uint64_t(0)
                           << std::size_t(10000) << std::size_t(290000);
    QTest::newRow("whole") << Timestamp(0) << std::uint64_t(0) << std::uint64_t(1500)
                           << std::size_t(10000) << std::size_t(290000);
}

void ArchiveStoreTest::retention()
{
    QFETCH(Timestamp, age);
    QFETCH(std::uint64_t, bytes);
    QFETCH(std::uint64_t, whole);
    QFETCH(std::size_t, fewest);
    QFETCH(std::size_t, most);
    ArchiveFixture archive;
    const Timestamp now = ManualClock::Use().Now();
    const SampleRun run = counting(now - 300000 * second, 300000);
    archive.write(1, run);
    archive.write(2, run.Part(now - 50000 * second, now));
    ArchiveRetentionRules rules;
    rules.bySignal[archive.key(1)] = {age, bytes};
    rules.maximumBytes = whole;
    archive.store->SetRetention(rules);
    archive.tend();
    const SampleRun left = archive.stored(1);
    QVERIFY2(left.Size() >= fewest && left.Size() <= most,
             qPrintable(QString::number(left.Size())));
    QVERIFY(left == run.Part(left.times.front(), now));
    if (bytes > 0 || whole > 0)
        QVERIFY(ask(archive.file(), "SELECT sum(bytes) FROM blocks WHERE height = 0") <=
                std::int64_t(whole > 0 ? whole : bytes + 1000));
    if (whole == 0)
        QCOMPARE(archive.stored(2).Size(), std::size_t(50000)); // has no rule
    QVERIFY(archive.findings().empty());
    archive.write(1, counting(now - 400000 * second, 100)); // older than all that is left
    archive.write(1, counting(now, 100));
    QCOMPARE(archive.stored(1).Size(), left.Size() + 200);
    QVERIFY(archive.findings().empty());
}

void ArchiveStoreTest::newRetentionTakesEffectAtOnce()
{
    ArchiveFixture archive;
    archive.write(1, counting(begin, 300000));
    ArchiveRetentionRules rules;
    rules.others.maximumBytes = 1u << 30;
    archive.store->SetRetention(rules);
    archive.tend();
    rules.others = {hour, 0};
    std::thread([&] { archive.store->SetRetention(rules); }).join();
    archive.tend();
    QVERIFY(archive.stored(1).Size() < 4096); // the log
}

void ArchiveStoreTest::damageIsFoundAndMended_data()
{
    QTest::addColumn<QString>("damage");
    QTest::addColumn<QString>("found");
    QTest::addColumn<std::size_t>("left");
    const std::size_t all = 80000;
    const QString chunk = " WHERE id = %1";
    QTest::newRow("bytes of a chunk")
        << "UPDATE blocks SET data = substr(data, 1, 20) || x'5a5a' || substr(data, 23)" + chunk
        << "cannot be read" << all - 4096;
    QTest::newRow("chunk of another signal")
        << "UPDATE blocks SET data = (SELECT data FROM blocks WHERE signal = 2)" + chunk
        << "cannot be read" << all - 4096;
    QTest::newRow("chunk of another time")
        << "UPDATE blocks SET data = (SELECT data FROM blocks WHERE height = 0 AND signal = 1 "
           "ORDER BY first LIMIT 1)" +
               chunk
        << "another span" << all - 4096;
    QTest::newRow("row that lies")
        << "UPDATE blocks SET samples = 5" + chunk << "4096 samples, not 5" << all;
    QTest::newRow("aggregates") << "UPDATE aggregates SET data = x'00' WHERE height = 2"
                                << "cannot be read" << all;
    QTest::newRow("aggregates of others")
        << "UPDATE aggregates SET data = (SELECT data FROM aggregates WHERE height = 1 AND signal "
           "= 1 "
           "ORDER BY first DESC LIMIT 1) WHERE height = 1 AND signal = 1"
        << "is not what the samples below it give" << all;
    QTest::newRow("lost aggregates") << "DELETE FROM aggregates WHERE height = 1"
                                     << "its aggregates are missing" << all;
}

void ArchiveStoreTest::damageIsFoundAndMended()
{
    QFETCH(QString, damage);
    QFETCH(QString, found);
    QFETCH(std::size_t, left);
    ArchiveFixture archive;
    archive.write(1, counting(begin, 80000));
    archive.write(2, counting(begin, 5000));
    const std::int64_t chunk = middleChunk(archive);
    const QString sql = damage.contains("%1") ? damage.arg(chunk) : damage;
    QVERIFY(ask(archive.file(), sql.toStdString()) >= 0);
    const ArchiveFindings findings = archive.findings();
    const auto names = [&](const ArchiveFinding &finding) {
        return QString::fromStdString(finding.text).contains(found) &&
               finding.signal.IsSame(archive.key(1)) && finding.from >= begin &&
               finding.to > finding.from && !finding.place.empty();
    };
    QVERIFY(std::any_of(findings.begin(), findings.end(), names));
    ArchiveFindings done;
    const Result repaired = archive.reader()->Repair(done, archive.never);
    QVERIFY2(repaired.IsSuccess(), repaired.ToString().c_str());
    QVERIFY(!done.empty());
    const ArchiveFindings after = archive.findings();
    QVERIFY2(after.empty(), after.empty() ? "" : (after[0].place + ": " + after[0].text).c_str());
    QCOMPARE(archive.stored(1).Size(), left);
    QCOMPARE(archive.stored(2).Size(), std::size_t(5000));
    archive.write(1, counting(begin, 80001)); // the station went on, and what was lost is imported
    QVERIFY(archive.stored(1) == counting(begin, 80001));
    QVERIFY(archive.findings().empty());
}

void ArchiveStoreTest::damagedChunkIsAGap()
{
    ArchiveFixture archive;
    archive.write(1, counting(begin, 80000));
    const std::int64_t id = middleChunk(archive);
    const Timestamp first =
        ask(archive.file(), "SELECT first FROM blocks WHERE id = " + std::to_string(id));
    QVERIFY(ask(archive.file(),
                "UPDATE blocks SET data = x'00' WHERE id = " + std::to_string(id)) >= 0);
    HistoryColumnBuilder builder(begin, begin + 30 * hour, 0);
    QVERIFY(archive.reader()->Read(archive.key(1), builder, archive.never));
    const HistoryColumn column = builder.Take();
    const auto place = std::find(column.times.begin(), column.times.end(), first);
    QVERIFY(place != column.times.end());
    const auto i = std::size_t(place - column.times.begin());
    QVERIFY(std::isnan(column.numbers[i]) && column.qualities[i] == Quality::Bad);
    QCOMPARE(column.times.size(), std::size_t(80000 - 4096 + 1));
    std::size_t visited = 0;
    const Result result = archive.reader()->Visit(
        archive.key(1), 0, INT64_MAX,
        [&](const SampleRun &run) {
            visited += run.Size();
            return true;
        },
        archive.never);
    QCOMPARE(result.GetType(), Result::StorageError); // an export is not whole
    QCOMPARE(visited, std::size_t(80000 - 4096 + 1));
}

void ArchiveStoreTest::failedWriteChangesNothing_data()
{
    QTest::addColumn<bool>("isFull");
    QTest::newRow("locked by another program") << false;
    QTest::newRow("disk full") << true;
}

void ArchiveStoreTest::failedWriteChangesNothing()
{
    QFETCH(bool, isFull);
    ArchiveFixture archive;
    archive.write(1, noise(begin, 6000));
    SamplePacket packet;
    packet.parts.push_back({archive.key(1), noise(begin + 2 * hour, 6000), false});
    const Records records{archive.record(packet)};
    {
        SqliteDatabase other;
        QVERIFY(other.Open(archive.file(), SqliteDatabase::Mode::ReadWrite));
        QVERIFY(isFull || other.Execute("BEGIN IMMEDIATE"));
        std::optional<FileSizeLimit> limit;
        if (isFull)
            limit.emplace(std::filesystem::file_size(archive.file() + "-wal") + 4096);
        std::vector<std::uint64_t> numbers;
        const Result written = archive.store->Write(records, numbers);
        QCOMPARE(written.GetType(), Result::StorageError);
        QVERIFY2(written.GetDetail().find(archive.file()) == 0, written.GetDetail().c_str());
        QVERIFY(archive.store->IsOpen());
    }
    archive.write(records);
    archive.write(records);
    QCOMPARE(archive.stored(1).Size(), std::size_t(12000));
    QVERIFY(archive.findings().empty());
}

void ArchiveStoreTest::ruinedFileIsSetAside()
{
    ArchiveFixture archive;
    archive.write(1, counting(begin, 5000));
    archive.store->Close();
    QFile file(QString::fromStdString(archive.file()));
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.write(QByteArray(file.size(), 'x')) > 0);
    file.close();
    std::vector<ArchivedSignal> listed;
    const Result read = archive.reader()->ListSignals(listed);
    QCOMPARE(read.GetType(), Result::StorageError);
    archive.open();
    QVERIFY(QFile::exists(QString::fromStdString(archive.setAside)));
    archive.write(1, counting(begin, 10));
    QCOMPARE(archive.stored(1).Size(), std::size_t(10));
}

void ArchiveStoreTest::damagedPagesAreSalvaged()
{
    ArchiveFixture archive;
    archive.write(1, noise(begin, 200000));
    archive.write(2, counting(begin, 10));
    ArchiveFindings done;
    QVERIFY(ask(archive.file(), "PRAGMA wal_checkpoint(TRUNCATE)") >= 0);
    const std::int64_t root =
        ask(archive.file(), "SELECT rootpage FROM sqlite_master WHERE name = 'blocks_place'");
    QFile file(QString::fromStdString(archive.file()));
    const auto ruin = [&](std::int64_t page) {
        QVERIFY(file.open(QIODevice::ReadWrite) && file.seek((page - 1) * 4096));
        QCOMPARE(file.write(QByteArray(4096, '\x5a')), qint64(4096));
        file.close();
    };
    ruin(root);
    for (qint64 page = 100; page < 103; ++page)
        ruin(page); // of samples
    QVERIFY(!archive.findings().empty());
    QCOMPARE(archive.reader()->Repair(done, archive.never).GetType(), Result::Refused); // in use
    archive.store->Close();
    const Result repaired = archive.reader()->Repair(done, archive.never);
    QVERIFY2(repaired.IsSuccess(), repaired.ToString().c_str());
    const ArchiveFindings after = archive.findings();
    QVERIFY2(after.empty(), after.empty() ? "" : (after[0].place + ": " + after[0].text).c_str());
    const SampleRun left = archive.stored(1);
    QVERIFY2(left.Size() > 180000 && left.Size() < 200000,
             qPrintable(QString::number(left.Size())));
    QCOMPARE(archive.stored(2).Size(), std::size_t(10));
    archive.open();
    archive.write(1, noise(begin, 200000));
    QVERIFY(archive.stored(1) == noise(begin, 200000));
}

void ArchiveStoreTest::laterVersionIsRefused()
{
    ArchiveFixture archive;
    archive.write(1, counting(begin, 10));
    archive.store->Close();
    QVERIFY(ask(archive.file(), "PRAGMA user_version = 99") >= 0);
    StoreOpening opening;
    const Result opened = archive.store->Open(opening);
    QCOMPARE(opened.GetType(), Result::StorageError);
    QVERIFY(opened.GetDetail().find("later version") != std::string::npos);
    QVERIFY(opening.setAside.empty());
    std::vector<ArchivedSignal> listed;
    QCOMPARE(archive.reader()->ListSignals(listed).GetType(), Result::StorageError);
    QCOMPARE(ask(archive.file(), "SELECT count(*) FROM log"), std::int64_t(1));
}

void ArchiveStoreTest::othersFilesAreRefused()
{
    ArchiveFixture archive;
    const std::string other = archive.directory.filePath("journal.sqlite").toStdString();
    std::unique_ptr<ArchiveReader> reader;
    QVERIFY(ArchiveReaders().Make(other, reader));
    std::vector<ArchivedSignal> listed;
    QCOMPARE(reader->ListSignals(listed).GetType(), Result::NotFound);
    QCOMPARE(ask(other, "CREATE TABLE events (id)"), std::int64_t(0));
    QVERIFY(reader->ListSignals(listed).GetDetail().find("no archive") != std::string::npos);
}

void ArchiveStoreTest::backupIsOneState()
{
    ArchiveFixture archive;
    archive.write(1, noise(begin, 700000));
    const std::string copy = archive.directory.filePath("copy.sqlite").toStdString();
    int steps = 0;
    const auto writeOn = [&] {
        archive.write(1, counting(begin + (3000000 + steps * 10) * second, 10));
        return ++steps > 0;
    };
    const Result copied = archive.reader()->Backup(copy, writeOn);
    QVERIFY2(copied.IsSuccess(), copied.ToString().c_str());
    QVERIFY(steps > 1);
    std::unique_ptr<ArchiveReader> reader;
    QVERIFY(ArchiveReaders().Make(copy, reader));
    std::vector<ArchivedSignal> listed;
    QVERIFY(reader->ListSignals(listed));
    QCOMPARE(listed[0].samples, std::uint64_t(700000));
    ArchiveFindings found;
    QVERIFY(reader->Verify(found, archive.never));
    QVERIFY(found.empty());
    QCOMPARE(archive.reader()->Backup(copy, [] { return true; }).GetType(), Result::Duplicate);
    const std::string other = copy + "2";
    QCOMPARE(archive.reader()->Backup(other, [] { return false; }).GetType(), Result::Cancelled);
    QVERIFY(!std::filesystem::exists(other));
}

void ArchiveStoreTest::questionsOfNothing_data()
{
    QTest::addColumn<Timestamp>("from");
    QTest::addColumn<Timestamp>("to");
    QTest::addColumn<int>("visited");
    QTest::newRow("to before from") << begin + hour << begin << 0;
    QTest::newRow("before all") << Timestamp(1) << begin - 1 << 0;
    QTest::newRow("behind all") << begin + 10 * hour << begin + 20 * hour << 0;
    QTest::newRow("between two") << begin + 1 << begin + second - 1 << 0;
    QTest::newRow("everything") << std::numeric_limits<Timestamp>::min()
                                << std::numeric_limits<Timestamp>::max() << 5000;
    QTest::newRow("one moment") << begin + second << begin + second << 1;
}

void ArchiveStoreTest::questionsOfNothing()
{
    QFETCH(Timestamp, from);
    QFETCH(Timestamp, to);
    QFETCH(int, visited);
    ArchiveFixture archive;
    archive.write(1, counting(begin, 5000));
    QCOMPARE(int(archive.stored(1, from, to).Size()), visited);
    QVERIFY(archive.stored(2, from, to).IsEmpty());
    std::vector<ArchiveBucket> buckets;
    const auto reader = archive.reader();
    const Result none = reader->ReadBuckets(archive.key(1), to, from, 3, buckets, archive.never);
    QCOMPARE(none.GetType(), from > to ? Result::Success : Result::InvalidArgument);
    HistoryColumnBuilder builder(begin, begin + hour, 100);
    QCOMPARE(reader->Read(archive.key(2), builder, archive.never).GetType(), Result::NotFound);
}

void ArchiveStoreTest::visitEndsWhenAsked()
{
    ArchiveFixture archive;
    archive.write(1, counting(begin, 50000));
    std::atomic<bool> isCancelled{false};
    int portions = 0;
    const auto visit = [&](bool goesOn) {
        return archive.reader()->Visit(
            archive.key(1), 0, INT64_MAX,
            [&](const SampleRun &) {
                isCancelled = ++portions == 3;
                return goesOn;
            },
            isCancelled);
    };
    QVERIFY(visit(false));
    QCOMPARE(portions, 1);
    QCOMPARE(visit(true).GetType(), Result::Cancelled);
    QCOMPARE(portions, 3);
    HistoryColumnBuilder builder(begin, begin + 10 * hour, 100);
    QCOMPARE(archive.reader()->Read(archive.key(1), builder, isCancelled).GetType(),
             Result::Cancelled);
}

QTEST_GUILESS_MAIN(ArchiveStoreTest)
#include "tst_archive_store.moc"
