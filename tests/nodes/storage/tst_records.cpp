#include "nodes/storage/records/Recorder.h"
#include "support/Rows.h"

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <atomic>
#include <set>

using namespace Nodes;
using namespace std::chrono_literals;

namespace {

RecordFormat format(std::uint32_t version, const char *owner = "archive")
{
    return {owner, "sample", version, {}};
}

Records records(std::uint32_t version, std::initializer_list<const char *> texts)
{
    Records made;
    for (const char *text : texts)
        made.push_back({made.size() + 1, version, text});
    return made;
}

/// What a place beside all journals and databases may look like: it fails as it is told.
class MemoryStore : public RecordStore
{
public:
    struct Kept
    {
        std::mutex mutex;
        std::vector<std::string> texts;
        std::set<std::uint64_t> keys;
        std::atomic<int> isAway{0};      // Open and Write fail
        std::atomic<int> answersLost{0}; // so many batches are kept, and said not to be
        std::atomic<int> unflushed{0};   // so many are said to be, and lost with the connection
    };
    explicit MemoryStore(std::shared_ptr<Kept> kept) : m_kept(std::move(kept)) {}

    const std::string &GetLocation() const override { return m_location; }
    Result Open(StoreOpening &) override
    {
        m_isOpen = !m_kept->isAway;
        return m_isOpen ? Result() : Result(Result::StorageError, "away");
    }
    void Close() override { m_isOpen = false; }
    bool IsOpen() const override { return m_isOpen; }
    bool NoticeMove() override { return false; }
    Result Write(const Records &records, std::vector<std::uint64_t> &numbers) override
    {
        const std::lock_guard lock(m_kept->mutex);
        m_isOpen = !m_kept->isAway;
        if (!m_isOpen)
            return Result(Result::StorageError, "away");
        m_isLost = m_kept->unflushed > 0;
        if (m_isLost)
            return Result();
        for (const Record &record : records) {
            const bool isNew = m_kept->keys.insert(record.key).second;
            if (isNew)
                m_kept->texts.push_back(record.bytes);
            numbers.push_back(isNew ? m_kept->texts.size() : 0);
        }
        if (m_kept->answersLost == 0)
            return Result();
        --m_kept->answersLost;
        return Result(Result::StorageError, "no answer");
    }
    Result Flush() override
    {
        if (!m_isLost)
            return Result();
        --m_kept->unflushed;
        return Result(Result::StorageError, "connection lost");
    }

private:
    const std::string m_location = "memory:";
    const std::shared_ptr<Kept> m_kept;
    bool m_isOpen = false;
    bool m_isLost = false;
};

} // namespace

class TestRecords : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_directory = std::make_unique<QTemporaryDir>(); }

    void spillIsOnlyReadAsWhatItIs_data()
    {
        const Rows<std::string, unsigned, bool> row("owner", "version", "isRead");
        row("the same", "archive", 2, true);
        row("a later program", "archive", 3, true);
        row("an earlier program", "archive", 1, false);
        row("another owner", "journal", 2, false);
    }

    void spillIsOnlyReadAsWhatItIs()
    {
        QFETCH(std::string, owner);
        QFETCH(unsigned, version);
        QFETCH(bool, isRead);
        write(format(2), records(2, {"a", ""}));
        const QByteArray before = bytes();
        RecordFindings findings;
        RecordSpill spill(format(version, owner.c_str()));
        QCOMPARE(spill.Open(file(), findings).GetType(),
                 isRead ? Result::Success : Result::Refused);
        QCOMPARE(bool(spill.Append(records(version, {"new"}))), isRead);
        QCOMPARE(bytes() == before, !isRead);
        QVERIFY(findings.empty());
        std::size_t offset = 0;
        Records read;
        QVERIFY(spill.Read(offset, 10, read));
        QCOMPARE(read.size(), std::size_t(isRead ? 3 : 0));
        if (!isRead)
            return;
        QVERIFY(read[0].version == 2 && read[0].key == 1 && read[0].bytes == "a");
        QVERIFY(read[1].version == 2 && read[1].bytes.empty());
        QVERIFY(read[2].version == version && read[2].bytes == "new");
    }

    // Wherever the power was lost, the whole records before that place are there, and more follow.
    void tornAnywhere()
    {
        write(format(2), records(2, {"first", "second"}));
        const QByteArray whole = bytes();
        QVector<int> counts;
        for (int size = whole.size(); size > 0; --size) {
            QFile torn(QString::fromStdString(file()));
            QVERIFY(torn.open(QIODevice::WriteOnly) && torn.write(whole.left(size)) == size);
            torn.close();
            RecordFindings findings;
            RecordSpill spill(format(2));
            QVERIFY(spill.Open(file(), findings));
            const int count = int(spill.Count());
            QVERIFY(counts.isEmpty() || count <= counts.last());
            counts << count;
            QCOMPARE(findings.size(), std::size_t(size < whole.size() && bytes().size() < size));
            QVERIFY(spill.Append(records(2, {"third"})));
            std::size_t offset = 0;
            Records read;
            QVERIFY(spill.Read(offset, 10, read));
            QCOMPARE(int(read.size()), count + 1);
            QCOMPARE(read.back().bytes, std::string("third"));
        }
        QVERIFY(counts.first() == 2 && counts.contains(1) && counts.last() == 0);
    }

    void storeTroubles_data()
    {
        // how the store fails, how often
        const Rows<int, int, int> row("isAway", "answersLost", "unflushed");
        row("away and back", 1, 0, 0);
        row("stored, but the answer was lost", 0, 2, 0);
        row("lost before it was flushed", 0, 0, 2);
    }

    void storeTroubles()
    {
        QFETCH(int, isAway);
        QFETCH(int, answersLost);
        QFETCH(int, unflushed);
        const auto kept = std::make_shared<MemoryStore::Kept>();
        std::atomic<int> told{0};
        Recorder::Limits limits;
        limits.transaction.usual = {3, 1000};
        const auto recorder = std::make_shared<Recorder>(
            format(2), limits,
            RecordHooks{[&](const Records &, const std::vector<std::uint64_t> &numbers) {
                            told +=
                                int(numbers.size() -
                                    std::size_t(std::count(numbers.begin(), numbers.end(), 0u)));
                        },
                        [](const RecordFinding &) { return std::string(); }});
        kept->isAway = isAway;
        QCOMPARE(bool(recorder->Open(std::make_unique<MemoryStore>(kept), file())), !isAway);
        kept->answersLost = answersLost;
        kept->unflushed = unflushed;
        std::vector<std::string> expected;
        for (int i = 0; i < 20; ++i) {
            expected.push_back(std::to_string(i));
            QVERIFY(recorder->Append(expected.back()));
            if (i % 5 == 0)
                QVERIFY(recorder->Flush());
        }
        kept->isAway = 0;
        QTRY_VERIFY_WITH_TIMEOUT(
            [&] {
                const std::lock_guard lock(kept->mutex);
                return kept->texts == expected;
            }(),
            15000);
        QTRY_VERIFY(!QFile::exists(QString::fromStdString(file())));
        recorder->Close();
        QVERIFY(kept->texts == expected);
        QVERIFY(told <= 20 && (answersLost > 0 || told == 20));
    }

    void portions_data()
    {
        // transactions as {records, milliseconds}, what the next one may take
        const Rows<QVector<QPair<int, int>>, int> row("transactions", "next");
        row("few wait", {{1, 5}, {99, 5}}, 100);
        row("many wait", {{100, 5}, {200, 9}}, 400);
        row("bounded", {{100, 5}, {200, 5}, {400, 5}, {500, 5}, {500, 5}}, 500);
        row("a larger one might take too long", {{100, 11}}, 100);
        row("slow", {{100, 5}, {200, 5}, {400, 30}}, 200);
        row("slow with few of many allowed", {{100, 5}, {200, 5}, {40, 30}}, 100);
        row("never below the usual", {{100, 30}, {100, 30}}, 100);
    }

    void portions()
    {
        using Transactions = QVector<QPair<int, int>>;
        QFETCH(Transactions, transactions);
        QFETCH(int, next);
        RecordPortion portion({{100, 1000}, 500, 20ms});
        for (const auto &[records, taken] : transactions)
            portion.Learn(std::size_t(records), std::chrono::milliseconds(taken));
        QCOMPARE(int(portion.Now().records), next);
        QCOMPARE(portion.Now().bytes, std::size_t(1000));
    }

    // A spill file could not be read behind such a record.
    void tooLongForASpillFile()
    {
        const auto kept = std::make_shared<MemoryStore::Kept>();
        kept->isAway = 1;
        const auto recorder =
            std::make_shared<Recorder>(format(2), Recorder::Limits(), RecordHooks());
        QVERIFY(!recorder->Open(std::make_unique<MemoryStore>(kept), file()));
        const std::string longest(Recorder::LongestRecord, 'x');
        QVERIFY(recorder->Append(longest));
        QVERIFY(!recorder->Append(longest + 'x'));
        QVERIFY(recorder->Append("next") && recorder->Flush());
        QCOMPARE(recorder->GetHealth().lost, 1u);
        kept->isAway = 0;
        const std::vector<std::string> expected{longest, "next"};
        QTRY_VERIFY(!QFile::exists(QString::fromStdString(file())));
        recorder->Close();
        QVERIFY(kept->texts == expected);
    }

    void boundedByBytes()
    {
        Recorder::Limits limits;
        limits.waiting = {100, 10};
        const auto recorder = std::make_shared<Recorder>(format(2), limits, RecordHooks{});
        QVERIFY(recorder->Append("12345678"));
        QVERIFY(!recorder->Append("123"));
        QVERIFY(recorder->Append("12"));
        QCOMPARE(recorder->GetHealth().lost, 1u);
        QCOMPARE(recorder->Waiting(), std::size_t(2));
    }

private:
    std::string file() const { return m_directory->filePath("records.spill").toStdString(); }
    void write(const RecordFormat &of, const Records &records) const
    {
        RecordFindings findings;
        RecordSpill spill(of);
        QVERIFY(spill.Open(file(), findings));
        QVERIFY(spill.Append(records));
    }
    QByteArray bytes() const
    {
        QFile opened(QString::fromStdString(file()));
        return opened.open(QIODevice::ReadOnly) ? opened.readAll() : QByteArray();
    }

    std::unique_ptr<QTemporaryDir> m_directory;
};

QTEST_APPLESS_MAIN(TestRecords)
#include "tst_records.moc"
