#include "nodes/journal/EventJournal.h"
#include "nodes/storage/SqliteDatabase.h"
#include "tests/support/Rows.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace {

constexpr int patience = 60000; // ms, on a loaded machine
constexpr Nodes::Timestamp second = 1000000;
constexpr Nodes::Timestamp march = 1772323200 * second; // 2026-03-01 UTC
constexpr int rowCount = 400;

// Proves a table as somebody else would, from what the documentation says.
constexpr const char *proof = R"(
import csv, datetime, hashlib, sys
def pack(value):
    if isinstance(value, int):
        if 0 <= value < 128: return bytes([value])
        if -32 <= value < 0: return bytes([value & 0xff])
        for code, size in ((0xcc, 1), (0xcd, 2), (0xce, 4), (0xcf, 8)):
            if 0 <= value < 1 << 8 * size: return bytes([code]) + value.to_bytes(size, 'big')
        for code, size in ((0xd0, 1), (0xd1, 2), (0xd2, 4), (0xd3, 8)):
            if value >= -1 << 8 * size - 1: return bytes([code]) + value.to_bytes(size, 'big', signed=True)
    data = value.encode()
    size = len(data)
    if size < 32: return bytes([0xa0 | size]) + data
    for code, width in ((0xd9, 1), (0xda, 2), (0xdb, 4)):
        if size < 1 << 8 * width: return bytes([code]) + size.to_bytes(width, 'big') + data
epoch = datetime.datetime(1970, 1, 1, tzinfo=datetime.timezone.utc)
before = None
for row in csv.DictReader(sys.stdin):
    time = datetime.datetime.fromisoformat(row['time'].replace('Z', '+00:00')) - epoch
    fields = [time // datetime.timedelta(microseconds=1), int(row['level']), int(row['type']), row['text'],
              row['project'], int(row['station']), row['station_name'], int(row['node']), row['source'],
              row['user'], row['old'], row['new'], int(row['state']), int(row['priority']), int(row['occurrence'])]
    packed = bytes([0x90 | len(fields)]) + b''.join(map(pack, fields))
    numbers = int(row['row']).to_bytes(8, 'little') + int(row['key']).to_bytes(8, 'little')
    made = hashlib.blake2b(bytes.fromhex(row['previous']) + numbers + packed, digest_size=32).hexdigest()
    if made != row['hash'] or before not in (None, row['previous']):
        sys.exit('row ' + row['row'])
    before = row['hash']
print(before)
)";

struct Answer
{
    int code = -1;
    QByteArray out, err;
};

Answer run(const QString &program, const QStringList &arguments, const QByteArray &input = {})
{
    QProcess process;
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(patience))
        process.kill();
    const bool isOver = process.exitStatus() == QProcess::NormalExit;
    return {isOver ? process.exitCode() : -1, process.readAllStandardOutput(),
            process.readAllStandardError()};
}

Answer journal(const QStringList &arguments)
{
    return run(QStringLiteral(STATION_BINARY_DIR "/bin/records"),
               QStringList{"journal"} + arguments);
}

} // namespace

class RecordsJournalTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        m_journal = std::make_unique<Nodes::EventJournal>();
        QVERIFY(m_journal->Open(file().toStdString()));
        append(0, rowCount);
    }
    void cleanup() // a journal that closes later would keep its directory
    {
        m_journal.reset();
        m_directory.reset();
    }

    void printsReceiptsThatHoldLater()
    {
        const QString receipt = head();
        QVERIFY(receipt.startsWith(QString::number(rowCount) + ':'));
        append(rowCount, 50);
        const Answer sound = journal({"verify", store(), "--receipt", receipt});
        QVERIFY2(sound.code == 0, sound.out + sound.err);
        QCOMPARE(sound.out, "sound: rows 1 to " + head().toUtf8() + "\n");
    }

    void refusesReceiptsOfAnotherJournal_data()
    {
        const Rows<QString, QString, int, QByteArray> row("from", "to", "code", "told");
        row("another hash", ":(.)", ":0\\1", 2, "no receipt");
        row("a changed digit", "^(.*)[0-9a-f]{2}$", "\\1zz", 2, "no receipt");
        row("of another row", "^[0-9]+", "7", 1, "row 7: the receipt has another hash");
        row("of a row that was cut off", "^[0-9]+", "100000", 1, "row 100000 of the receipt");
    }
    void refusesReceiptsOfAnotherJournal()
    {
        QFETCH(QString, from);
        QFETCH(QString, to);
        QFETCH(QByteArray, told);
        const QString forged = head().replace(QRegularExpression(from), to);
        const Answer answer = journal({"verify", store(), "--receipt", forged});
        QTEST(answer.code, "code");
        QVERIFY2((answer.out + answer.err).contains(told), answer.out + answer.err);
    }

    void namesTheFirstBadRow_data()
    {
        const Rows<QByteArray, QByteArray> row("harm", "told");
        row("changed text", "UPDATE events SET text = 'all is well' WHERE id IN (123, 200)",
            "row 123\n");
        row("changed priority", "UPDATE events SET priority = 4 WHERE id = 77", "row 77\n");
        row("another source", "UPDATE sources SET name = 'X'", "row 1\n");
        row("removed row", "DELETE FROM events WHERE id = 300", "row 301\n");
        row("cut end", "DELETE FROM events WHERE id > 390", "the end: rows behind row 390\n");
        row("cut beginning", "DELETE FROM events WHERE id < 5", "row 5\n");
        row("cut beginning with a forged anchor",
            "INSERT INTO anchor SELECT 1, id, hash, 4, 0, '', 0 FROM events WHERE id = 4; DELETE "
            "FROM events WHERE id < 5",
            "the beginning: rows up to row 4 are gone");
    }
    void namesTheFirstBadRow()
    {
        QFETCH(QByteArray, harm);
        QFETCH(QByteArray, told);
        m_journal->Close();
        Nodes::SqliteDatabase database;
        QVERIFY(database.Open(file().toStdString(), Nodes::SqliteDatabase::Mode::ReadWrite));
        QVERIFY(database.Execute(harm.constData()));
        database.Close();
        const Answer answer = journal({"verify", store()});
        QCOMPARE(answer.code, 1);
        QVERIFY2(answer.out.startsWith("journal chain broken at " + told), answer.out);
    }

    void namesTheRowBehindWhichNothingCanBeRead_data()
    {
        const Rows<bool> row("isTruncated");
        row("overwritten", false);
        row("truncated", true);
    }
    // Pages of the middle are overwritten, or those behind it are gone: what is before is still
    // proved.
    void namesTheRowBehindWhichNothingCanBeRead()
    {
        QFETCH(bool, isTruncated);
        append(rowCount, 5000);
        m_journal->Close();
        QFile damaged(file());
        QVERIFY(damaged.open(QIODevice::ReadWrite));
        const qint64 page = damaged.size() / 2 / 4096 * 4096;
        QVERIFY(damaged.seek(page));
        if (isTruncated)
            QVERIFY(damaged.resize(page));
        else
            damaged.write(QByteArray(3 * 4096, '\x5a'));
        damaged.close();
        const Answer answer = journal({"verify", store()});
        QCOMPARE(answer.code, 1);
        const auto match = QRegularExpression("broken at row (\\d+)").match(answer.out);
        QVERIFY2(match.hasMatch(), answer.out + answer.err);
        const int row = match.captured(1).toInt();
        QVERIFY2(row > 1 && row < rowCount + 5000, answer.out);
    }

    void exportsWhatProvesItself_data()
    {
        const Rows<QStringList, int> row("options", "rows");
        row("all", {}, rowCount);
        row("a time", {"--from", "2026-03-01T00:01:40Z", "--to", "2026-03-01T00:03:19Z"}, 100);
        row("nothing", {"--from", "2026-04-01"}, 0);
    }
    void exportsWhatProvesItself()
    {
        QFETCH(QStringList, options);
        QFETCH(int, rows);
        const Answer table = journal(QStringList{"export", store()} + options);
        QVERIFY2(table.code == 0, table.err);
        const Answer proved = run("python3", {"-c", proof}, table.out);
        QVERIFY2(proved.code == 0, proved.err);
        QCOMPARE(table.out.count("Насос «Н1»"), rows);
        if (options.isEmpty())
            QVERIFY(head().endsWith(proved.out.trimmed()));
        QByteArray forged = table.out;
        forged.replace("00:01:45", "00:01:46");
        const bool isChanged = forged != table.out;
        QCOMPARE(run("python3", {"-c", proof}, forged).code, isChanged ? 1 : 0);
    }

    // The clock was set back: the chain goes through, and what does not belong is told.
    void exportsWhatLiesBetween()
    {
        append(50, 20);
        append(rowCount, 1);
        const Answer table = journal({"export", store(), "--from", "2026-03-01T00:06:00Z"});
        QVERIFY2(table.code == 0, table.err);
        QCOMPARE(table.out.count("Насос «Н1»"), rowCount - 360 + 20 + 1);
        QVERIFY2(table.err.contains("20 rows between"), table.err);
        QCOMPARE(run("python3", {"-c", proof}, table.out).code, 0);
    }

    void tellsOfWhatCannotBeRead_data()
    {
        const Rows<QStringList, QByteArray> row("arguments", "told");
        row("no journal", {"verify", "/proc/none"}, "there is no journal \"/proc/none\"");
        row("no place", {"export", "STORE", "-o", "/proc/none/x"}, "/proc/none/x");
        row("an empty directory", {"head", "/tmp/"}, "there is no journal \"/tmp/journal.sqlite\"");
    }
    void tellsOfWhatCannotBeRead()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, told);
        const Answer answer = journal(arguments.replaceInStrings("STORE", store()));
        QCOMPARE(answer.code, 1);
        QVERIFY2(answer.err.contains(told), answer.err);
    }

private:
    QString file() const { return m_directory->filePath("journal.sqlite"); }
    QString store() const { return m_directory->path(); }
    QString head() const { return QString::fromUtf8(journal({"head", store()}).out).trimmed(); }
    /// Entries a second apart, the first of them `begin` seconds after midnight.
    void append(int begin, int count)
    {
        for (int i = begin; i < begin + count; ++i) {
            Nodes::BasicEvent event;
            event.time = march + i * second;
            event.text =
                "Запись \"" + std::to_string(i) + "\",\n" + std::string(std::size_t(i), '-');
            event.source = "Насос «Н1»";
            event.user = i % 2 == 0 ? "" : "Иванов";
            event.oldValue = std::to_string(-i);
            event.priority = i % 5;
            event.occurrence = static_cast<unsigned long>(i) << (i % 40);
            QVERIFY(m_journal->Append(event));
        }
        QVERIFY(m_journal->Flush());
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<Nodes::EventJournal> m_journal;
};

QTEST_GUILESS_MAIN(RecordsJournalTest)
#include "tst_records_journal.moc"
