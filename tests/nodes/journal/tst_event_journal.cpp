#include "nodes/FileSizeLimit.h"
#include "nodes/journal/EventJournal.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/storage/SqliteDatabase.h"
#include "support/Rows.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <future>
#include <thread>

using namespace Nodes;
using namespace std::chrono_literals;

Q_DECLARE_METATYPE(Nodes::JournalQuery)

namespace {

constexpr Timestamp second = 1000000;
const RecordHome home{"one", 5, "Котельная"};

BasicEvent entry(const std::string &text, Timestamp time = 0, EventLevel level = LevelInformation,
                 const std::string &source = "Котёл 1")
{
    BasicEvent made;
    made.text = text;
    made.time = time;
    made.level = level;
    made.source = source;
    return made;
}

QStringList numbered(int count)
{
    QStringList list;
    for (int i = 0; i < count; ++i)
        list << QString::number(i);
    return list;
}

} // namespace

class TestEventJournal : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        restart();
        m_directory = std::make_unique<QTemporaryDir>();
        m_file = m_directory->filePath("data/journal.sqlite").toStdString();
    }

    void query_data()
    {
        QTest::addColumn<JournalQuery>("query");
        QTest::addColumn<QStringList>("expected");
        const QStringList all{"Пуск НАСОСА", "Ёлка", "Pump 50% off", "насос стоит"};
        const auto row = [](const char *name, QStringList expected, auto edit) {
            JournalQuery query;
            edit(query);
            QTest::newRow(name) << query << expected;
        };
        row("all", all, [](auto &) {});
        row("begin is inclusive", all.mid(1), [](auto &q) { q.begin = 20 * second; });
        row("end is exclusive", all.mid(0, 1), [](auto &q) { q.end = 20 * second; });
        row("graver levels", {all[0], all[2]}, [](auto &q) { q.maximumLevel = LevelWarning; });
        row("source", {all[3]}, [](auto &q) { q.source = "Насос"; });
        row("Cyrillic, any case", {all[0], all[3]}, [](auto &q) { q.text = "Насос"; });
        row("letter outside the alphabet's block", {all[1]}, [](auto &q) { q.text = "ёЛ"; });
        row("Latin, wildcards are plain", {all[2]}, [](auto &q) { q.text = "50% OFF"; });
        row("no match", {}, [](auto &q) { q.text = "50_"; });
        row("page", all.mid(1, 2), [](auto &q) {
            q.after = JournalKey{10 * second, 1};
            q.limit = 2;
        });
        row("newest first, behind the last page", {all[1], all[0]}, [](auto &q) {
            q.order = JournalQuery::NewestFirst;
            q.after = JournalKey{30 * second, 3};
            q.end = 40 * second;
        });
        row("before the interval the page is its beginning", all.mid(2), [](auto &q) {
            q.begin = 30 * second;
            q.after = JournalKey{10 * second, 1};
        });
    }

    void query()
    {
        QFETCH(JournalQuery, query);
        open();
        QVERIFY(m_journal->Append(entry("Пуск НАСОСА", 10 * second, LevelAlarm)));
        QVERIFY(m_journal->Append(entry("Ёлка", 20 * second)));
        QVERIFY(m_journal->Append(entry("Pump 50% off", 30 * second, LevelWarning)));
        QVERIFY(m_journal->Append(entry("насос стоит", 40 * second, LevelSecurity, "Насос")));
        QVERIFY(m_journal->Flush());
        QTEST(texts(query), "expected");
    }

    void keepsEveryField()
    {
        BasicEvent full = entry("текст", 5 * second, LevelAlarm);
        full.type = TypeAcknowledgement;
        full.sourceNode = NodeLink(77, &m_project);
        full.user = "оператор";
        full.oldValue = "1.5";
        full.newValue = std::string("a\0b", 3);
        full.alarmState = AlarmState::ActiveAcked;
        full.priority = 2;
        full.occurrence = 1700000000123;
        open();
        BasicEvent announced;
        const Nodes::ScopedConnection connection =
            m_journal->ConnectAppended([&](const BasicEvent &stored) { announced = stored; });
        QVERIFY(m_journal->Append(full));
        m_journal->Close();
        open();
        std::vector<BasicEvent> events;
        QVERIFY(m_journal->Query({}, events));
        full.id = 1;
        QVERIFY(events.size() == 1 && events[0] == full);
        QVERIFY(announced == full);
        QVERIFY(m_journal->Verify());
    }

    void sources_data()
    {
        const Rows<std::string, unsigned, std::string, bool> row("project", "station",
                                                                 "stationName", "isOurs");
        row("the same", "one", 5, "Котельная", true);
        row("station renamed", "one", 5, "Котельная 1", true);
        row("another station", "one", 6, "Котельная", false);
        row("another project", "two", 5, "Котельная", false);
        row("project unknown", "", 5, "Котельная", false);
    }

    // The same number is another node in another project.
    void sources()
    {
        QFETCH(std::string, project);
        QFETCH(unsigned, station);
        QFETCH(std::string, stationName);
        QFETCH(bool, isOurs);
        BasicEvent event = entry("0");
        event.sourceNode = NodeLink(77, &m_project);
        open();
        QVERIFY(m_journal->Append(event));
        m_journal->Close();
        m_journal->SetHome({project, station, stationName}, &m_project);
        open();
        QVERIFY(m_journal->Append(event));
        QVERIFY(m_journal->Flush());
        std::vector<BasicEvent> events;
        QVERIFY(m_journal->Query({}, events) && events.size() == 2);
        QCOMPARE(events[0].source, std::string("Котёл 1"));
        QCOMPARE(events[0].sourceNode, isOurs ? event.sourceNode : NodeLink());
        QCOMPARE(events[1].sourceNode, project.empty() ? NodeLink() : event.sourceNode);
        JournalQuery ofNode;
        ofNode.nodes = {m_journal->SourceOf(event.sourceNode)};
        QCOMPARE(texts(ofNode).size(), isOurs ? 2 : int(!project.empty()));
        ofNode.nodes = {{home, 77, {}}, {home, 78, {}}};
        QCOMPARE(texts(ofNode).size(), isOurs ? 2 : 1);
        QVERIFY(m_journal->Verify());
    }

    void concurrentAppends()
    {
        constexpr int each = 500;
        std::vector<unsigned long> announced;
        const Nodes::ScopedConnection connection = m_journal->ConnectAppended(
            [&](const BasicEvent &stored) { announced.push_back(stored.id); });
        open();
        std::vector<std::thread> threads;
        for (int t = 0; t < 4; ++t) {
            threads.emplace_back([this, t] {
                for (int i = 0; i < each; ++i)
                    (void)m_journal->Append(
                        entry(std::to_string(i), 0, LevelDebug, std::to_string(t)));
            });
        }
        std::vector<BasicEvent> meanwhile;
        QVERIFY(m_journal->Query({}, meanwhile));
        for (std::thread &thread : threads)
            thread.join();
        QVERIFY(m_journal->Flush());
        for (int t = 0; t < 4; ++t) {
            JournalQuery own;
            own.source = std::to_string(t);
            QCOMPARE(texts(own), numbered(each));
        }
        QVERIFY(m_journal->Verify());
        m_journal->Close();
        QCOMPARE(announced.size(), std::size_t(4 * each));
        QVERIFY(std::is_sorted(announced.begin(), announced.end()));
    }

    void waitsBeforeOpen()
    {
        QVERIFY(m_journal->Append(entry("0")));
        QCOMPARE(m_journal->Flush().GetType(), Result::NotAvailable);
        QCOMPARE(m_journal->Verify().GetType(), Result::NotAvailable);
        open();
        QVERIFY(m_journal->Append(entry("1")));
        QCOMPARE(m_journal->Open(m_file).GetType(), Result::Refused);
        m_journal->Close();
        QVERIFY(m_journal->Append(entry("2")));
        open();
        QVERIFY(m_journal->Flush());
        QCOMPARE(texts(), numbered(3));
    }

    void overflowIsCounted()
    {
        constexpr int capacity = 3000;
        restart({capacity});
        for (int i = 0; i < capacity; ++i)
            QVERIFY(m_journal->Append(entry("x")));
        QCOMPARE(m_journal->Append(entry("y")).GetType(), Result::LimitExceeded);
        QCOMPARE(m_journal->GetHealth().lost, 1u);
        open();
        QVERIFY(m_journal->Flush());
        const QStringList told = criticalTexts();
        QCOMPARE(told.size(), 1);
        QVERIFY(told[0].endsWith(": 1; не пишутся ни база, ни файл рядом с ней"));
        QCOMPARE(texts({}, "Котёл 1").size(), capacity);
    }

    void tampering_data()
    {
        const Rows<std::string, std::string> row("sql", "place");
        row("text", "UPDATE events SET text = 'x' WHERE id = 3", "row 3");
        row("user", "UPDATE events SET user = 'x' WHERE id = 1", "row 1");
        row("removed", "DELETE FROM events WHERE id = 2", "row 3");
        row("removed, closed up",
            "DELETE FROM events WHERE id = 2; "
            "UPDATE events SET id = id - 1 WHERE id > 2",
            "row 2");
        row("end cut off", "DELETE FROM events WHERE id > 3", "the end: rows behind row 3");
        row("emptied", "DELETE FROM events", "the end: rows behind row 0");
        row("forged",
            "INSERT INTO events SELECT 6, 1, time, level, type, text,"
            " source, node, user, old_value, new_value, alarm_state,"
            " priority, occurrence, hash, version, origin FROM events WHERE id = 5",
            "row 6");
        row("source", "UPDATE sources SET name = 'x'", "row 1");
        row("project", "UPDATE sources SET project = 'x'", "row 1");
        row("said to be of the first version", "UPDATE events SET version = 1", "row 1");
    }

    void tampering()
    {
        QFETCH(std::string, sql);
        QFETCH(std::string, place);
        store(5);
        execute(sql);
        open();
        const Result verified = m_journal->Verify();
        QCOMPARE(verified.GetType(), Result::Failed);
        QCOMPARE(verified.GetDetail(), "journal chain broken at " + place);
    }

    void outage_data()
    {
        const Rows<bool> row("isDiskFull");
        row("locked by another process", false);
        row("disk full", true);
    }

    void outage()
    {
        QFETCH(bool, isDiskFull);
        open();
        append({"0"});
        std::optional<FileSizeLimit> full;
        std::unique_ptr<SqliteDatabase> lock;
        if (isDiskFull)
            full.emplace(rlim_t(QFileInfo(path("-wal")).size()));
        else
            lock = execute("BEGIN IMMEDIATE");
        append({"1"});
        append({"2"});
        QCOMPARE(texts(), numbered(1));
        QVERIFY(QFile::exists(path(".spill")));
        full.reset();
        lock.reset();
        QVERIFY(m_journal->Append(entry("3")));
        QTRY_COMPARE(texts(), numbered(4));
        QVERIFY(m_journal->Verify());
        QVERIFY(!QFile::exists(path(".spill")));
    }

    void openFails_data()
    {
        const Rows<bool> row("isSpilled");
        row("kept beside the database", true);
        row("nothing can be written", false);
    }

    void openFails()
    {
        QFETCH(bool, isSpilled);
        QVERIFY(QDir().mkpath(path("")) && (isSpilled || QDir().mkpath(path(".spill"))));
        const Result opened = m_journal->Open(m_file);
        QCOMPARE(opened.GetType(), Result::StorageError);
        QVERIFY(opened.GetDetail().find(m_file) != std::string::npos);
        QVERIFY(!m_journal->IsOpen());
        QVERIFY(m_journal->Append(entry("0")));
        QCOMPARE(m_journal->Flush().GetType(), isSpilled ? Result::Success : Result::StorageError);
        if (isSpilled)
            restart();
        QVERIFY(m_journal->Append(entry("1")));
        QVERIFY(QDir().rmdir(path("")) && (isSpilled || QDir().rmdir(path(".spill"))));
        if (isSpilled)
            open();
        QVERIFY(m_journal->Flush());
        QTRY_COMPARE(texts(), numbered(2));
        QVERIFY(m_journal->IsOpen());
    }

    void keptOnAnotherDisk()
    {
        restartWithFallback();
        open();
        append({"0"});
        auto lock = execute("BEGIN IMMEDIATE");
        append({"1"});
        QVERIFY(QFile::exists(path(".spill")));
        {
            const FileSizeLimit full(rlim_t(QFileInfo(path(".spill")).size()));
            append({"2"});
        }
        // What follows stays behind it, though there is room again beside the journal.
        append({"3"});
        QCOMPARE(aside(), 3);
        QVERIFY(!m_journal->GetHealth().isWell());
        QCOMPARE(m_journal->GetFallbackFiles().size(), std::size_t(1));
        restartWithFallback();
        lock.reset();
        open();
        append({"4"});
        QTRY_COMPARE(texts(), numbered(5));
        QVERIFY(m_journal->Verify());
        QTRY_COMPARE(aside(), 0);
        QVERIFY(m_journal->GetHealth().isWell());
        QCOMPARE(m_journal->GetHealth().stored, 4u);
        QVERIFY(QDir(fallback()).isEmpty());
    }

    // Nothing beside the journal can be written: batch after batch goes to the other disk.
    void nothingWaitsWhileAnotherDiskTakesIt()
    {
        restartWithFallback();
        open();
        append({"0"});
        QVERIFY(QDir().mkpath(path(".spill")));
        auto lock = execute("BEGIN IMMEDIATE");
        for (int i = 1; i <= 3; ++i) {
            QVERIFY(m_journal->Append(entry(std::to_string(i))));
            QTRY_COMPARE(aside(), i);
        }
        lock.reset();
        QTRY_COMPARE(texts(), numbered(4));
    }

    void trustsOnlyItsOwnFallback()
    {
        QVERIFY(QDir().mkpath(fallback()));
        QVERIFY(QFile(fallback()).setPermissions(QFileDevice::Permissions(0x7777)));
        restartWithFallback();
        open();
        QTRY_VERIFY(criticalTexts().value(0).contains("not a directory of this user alone"));
        QVERIFY(QDir().mkpath(path(".spill")));
        const auto lock = execute("BEGIN IMMEDIATE");
        QVERIFY(m_journal->Append(entry("1")));
        QCOMPARE(m_journal->Flush().GetType(), Result::StorageError);
        QVERIFY(QDir(fallback()).isEmpty());
    }

    void hangingDisk_data()
    {
        const Rows<bool, bool> row("isEnded", "hasFallback");
        row("answers late", false, true);
        row("answers after the end", true, true);
        row("no other disk", false, false);
    }

    // A listener that does not return holds the writer as a disk does.
    void hangingDisk()
    {
        QFETCH(bool, isEnded);
        QFETCH(bool, hasFallback);
        const EventJournal::Limits tight{4, 100ms, 200ms, 100ms};
        restart(tight);
        if (hasFallback)
            restartWithFallback(tight);
        open();
        std::promise<void> answer;
        const std::shared_future<void> answered = answer.get_future().share();
        Connection held =
            m_journal->ConnectAppended([answered](const BasicEvent &) { answered.wait(); });
        QVERIFY(m_journal->Append(entry("0")));
        QTRY_VERIFY(!m_journal->GetHealth().isWell());
        for (int i = 1; i <= 3; ++i)
            QVERIFY(m_journal->Append(entry(std::to_string(i))));
        if (hasFallback)
            QTRY_COMPARE(aside(), 3);
        for (int i = 4; i <= 6; ++i)
            QCOMPARE(bool(m_journal->Append(entry(std::to_string(i)))), hasFallback);
        QCOMPARE(m_journal->GetHealth().lost, hasFallback ? 0u : 3u);
        QCOMPARE(m_journal->Flush().GetType(), Result::StorageError);
        if (isEnded)
            m_journal->Close();
        if (isEnded)
            QCOMPARE(m_journal->GetHealth().waiting, std::size_t(0));
        held.Disconnect();
        answer.set_value();
        if (isEnded) {
            restartWithFallback();
            open();
        }
        QTRY_COMPARE(texts({}, "Котёл 1"), numbered(hasFallback ? 7 : 4));
        QVERIFY(m_journal->Verify());
        QCOMPARE(criticalTexts().size(), hasFallback ? 0 : 1);
    }

    // While the writer waits for the lock, what comes after its entry is kept elsewhere; then its
    // entry, which cannot be kept beside the journal either, has to wait in front of that.
    void hangsAndFails()
    {
        restartWithFallback({100, 100ms, 2000ms, 2000ms});
        open();
        append({"0"});
        QVERIFY(QDir().mkpath(path(".spill")));
        auto lock = execute("BEGIN IMMEDIATE");
        QVERIFY(m_journal->Append(entry("1")));
        QTRY_VERIFY(!m_journal->GetHealth().isWell());
        QVERIFY(m_journal->Append(entry("2")));
        QTRY_COMPARE(aside(), 1);
        QTRY_COMPARE(m_journal->Flush().GetType(), Result::StorageError);
        QCOMPARE(m_journal->GetHealth().waiting, std::size_t(1));
        lock.reset();
        QTRY_COMPARE(texts(), numbered(3));
        QVERIFY(m_journal->Verify());
    }

    void removedWhileRunning_data()
    {
        const Rows<bool> row("isSpilled");
        row("directory", false);
        row("directory with a spill file", true);
    }

    void removedWhileRunning()
    {
        QFETCH(bool, isSpilled);
        open();
        append({"0", "1"});
        auto lock = isSpilled ? execute("BEGIN IMMEDIATE") : nullptr;
        if (isSpilled)
            append({"2"});
        QVERIFY(QDir(QFileInfo(path("")).path()).removeRecursively());
        lock.reset();
        QVERIFY(m_journal->Append(entry(isSpilled ? "3" : "2")));
        QTRY_COMPARE(texts({}, "Котёл 1"), numbered(isSpilled ? 4 : 3));
        QVERIFY(m_journal->Verify());
        const auto told = [this] { return criticalTexts().join('\n'); };
        QTRY_VERIFY(told().contains("удалён или заменён"));
        QTRY_VERIFY(told().contains("Журнал восстановлен"));
        QTRY_VERIFY(m_journal->GetHealth().isWell());
    }

    void replacedWhileRunning()
    {
        store(2);
        QVERIFY(QFile::copy(path(""), path(".other")));
        open();
        append({"lost with the old file"});
        for (const char *log : {"-wal", "-shm"})
            QVERIFY(QFile::remove(path(log)));
        QVERIFY(std::rename(qPrintable(path(".other")), m_file.c_str()) == 0);
        append({"2"});
        QTRY_COMPARE(texts({}, "Котёл 1"), numbered(3));
        QVERIFY(m_journal->Verify());
        QVERIFY(criticalTexts().last().startsWith("На месте журнала другой файл"));
    }

    void replayedTwice()
    {
        spill({"1", "2"});
        QVERIFY(QFile::copy(path(".spill"), path(".kept")));
        for (int run = 0; run < 2; ++run) {
            open();
            QTRY_VERIFY(!QFile::exists(path(".spill")));
            QCOMPARE(texts(), numbered(3));
            QVERIFY(m_journal->Verify());
            restart();
            // As if the machine had stopped between the transaction and the removal of the file.
            QVERIFY(QFile::copy(path(".kept"), path(".spill")));
        }
    }

    void longestTextsAreSpilled()
    {
        const auto endless = [](const char *letter) {
            return QString(letter).repeated(20000000).toStdString();
        };
        spill({endless("я"), endless("2"), "last"});
        open();
        QTRY_COMPARE(texts().size(), 4);
        QCOMPARE(texts()[3], QString("last"));
        QVERIFY(texts()[1].endsWith("яя…"));
        QVERIFY(damagedSpills().isEmpty());
    }

    void tornSpill()
    {
        spill({"1", "torn"});
        QFile torn(path(".spill"));
        QVERIFY(torn.resize(torn.size() - 1));
        for (int year = 2001; year <= 2010; ++year) {
            QFile kept(path(".spill.damaged-") + QString::number(year));
            QVERIFY(kept.open(QIODevice::WriteOnly));
            const QDateTime time({year, 1, 1}, {});
            QVERIFY(kept.setFileTime(time, QFileDevice::FileModificationTime));
        }
        open();
        QTRY_COMPARE(texts().size(), 3);
        QCOMPARE(texts({}, "Котёл 1"), numbered(2));
        QCOMPARE(damagedSpills().size(), 10);
        QVERIFY(criticalTexts().value(0).contains(damagedSpills().last()));
        QVERIFY(criticalTexts().value(0).contains(".spill.damaged-2001"));
    }

    void damaged_data()
    {
        const Rows<int> row("from");
        row("no database at all", 0);
        row("a table's pages, seen when writing", 4096);
    }

    void damaged()
    {
        QFETCH(int, from);
        store(100);
        QFile file(path(""));
        QVERIFY(file.open(QIODevice::ReadWrite) && file.seek(from));
        const qint64 size = file.size() - from;
        QVERIFY(size > 0 && file.write(QByteArray(int(size), 'x')) == size);
        file.close();

        open();
        append({"new"});
        QTRY_COMPARE(texts().size(), 2);
        QVERIFY(m_journal->Verify());
        const QStringList kept =
            QFileInfo(path("")).dir().entryList({"journal.sqlite.damaged-*Z"}, QDir::Files);
        QCOMPARE(kept.size(), 1);
        QVERIFY(criticalTexts().value(0).contains(kept[0]));
        QCOMPARE(texts({}, "Котёл 1"), QStringList{"new"});
    }

    void laterVersion()
    {
        store(1);
        execute("PRAGMA user_version = 99");
        QCOMPARE(m_journal->Open(m_file).GetType(), Result::StorageError);
        append({"1"});
        QCOMPARE(texts(), numbered(1));
        QVERIFY(QFile::exists(path(".spill")));
    }

private:
    void restart(const EventJournal::Limits &limits = {})
    {
        m_journal.reset();
        m_journal = std::make_unique<EventJournal>(limits);
        m_journal->SetHome(home, &m_project);
    }
    /// The same with a place on another disk.
    void restartWithFallback(const EventJournal::Limits &limits = {})
    {
        restart(limits);
        m_journal->SetFallbacks({fallback().toStdString()});
    }
    QString fallback() const { return m_directory->filePath("not made yet/other/place"); }
    int aside() const { return int(m_journal->GetHealth().aside); }
    void open()
    {
        const Result opened = m_journal->Open(m_file);
        QVERIFY2(opened, opened.ToString().c_str());
    }
    /// The connection: it keeps a lock that the statement takes.
    std::unique_ptr<SqliteDatabase> execute(const std::string &sql) const
    {
        auto database = std::make_unique<SqliteDatabase>();
        if (!database->Open(m_file, SqliteDatabase::Mode::ReadWrite) ||
            !database->Execute(sql.c_str()))
            qFatal("cannot execute %s", sql.c_str());
        return database;
    }
    void append(const std::vector<std::string> &texts)
    {
        for (const std::string &text : texts)
            QVERIFY(m_journal->Append(entry(text)));
        QVERIFY(m_journal->Flush());
    }
    void store(int count)
    {
        open();
        for (int i = 0; i < count; ++i)
            QVERIFY(m_journal->Append(entry(std::to_string(i))));
        restart();
    }
    /// Leaves entry 0 in the database and the texts in the file beside it.
    void spill(const std::vector<std::string> &texts)
    {
        store(1);
        open();
        const auto lock = execute("BEGIN IMMEDIATE");
        append(texts);
        restart();
    }
    QStringList texts(JournalQuery query = {}, const char *source = "") const
    {
        if (*source)
            query.source = source;
        std::vector<BasicEvent> events;
        const Result result = m_journal->Query(query, events);
        QStringList list;
        for (const BasicEvent &e : events)
            list << QString::fromStdString(e.text);
        return result ? list : QStringList{QString::fromStdString(result.ToString())};
    }
    QStringList criticalTexts() const
    {
        JournalQuery critical;
        critical.maximumLevel = LevelCritical;
        return texts(critical);
    }
    QStringList damagedSpills() const
    {
        return QFileInfo(path("")).dir().entryList({"*.spill.damaged-*"});
    }
    QString path(const char *suffix) const { return QString::fromStdString(m_file + suffix); }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::string m_file;
    const NodesCollection m_project;
    std::unique_ptr<EventJournal> m_journal;
};

QTEST_APPLESS_MAIN(TestEventJournal)
#include "tst_event_journal.moc"
