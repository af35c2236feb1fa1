#include "nodes/FileSizeLimit.h"
#include "nodes/journal/EventJournal.h"
#include "nodes/storage/SqliteDatabase.h"
#include "support/Rows.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <thread>

using namespace Nodes;

Q_DECLARE_METATYPE(Nodes::JournalQuery)

namespace {

constexpr Timestamp second = 1000000;

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

QStringList texts(const EventJournal &journal, const JournalQuery &query = {})
{
    std::vector<BasicEvent> events;
    const Result result = journal.Query(query, events);
    QStringList list;
    for (const BasicEvent &e : events)
        list << QString::fromStdString(e.text);
    return result ? list : QStringList{QString::fromStdString(result.ToString())};
}

QStringList numbered(int count)
{
    QStringList list;
    for (int i = 0; i < count; ++i)
        list << QString::number(i);
    return list;
}

QStringList criticalTexts(const EventJournal &journal)
{
    JournalQuery critical;
    critical.maximumLevel = LevelCritical;
    return texts(journal, critical);
}

class LockedByOther
{
public:
    explicit LockedByOther(const std::string &file)
    {
        if (!m_other.Open(file, SqliteDatabase::Mode::ReadWrite) ||
            !m_other.Execute("BEGIN IMMEDIATE"))
            qFatal("cannot lock");
    }

private:
    SqliteDatabase m_other;
};

} // namespace

class TestEventJournal : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
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
        row("all", all, [](JournalQuery &) {});
        row("begin is inclusive", all.mid(1), [](JournalQuery &q) { q.begin = 20 * second; });
        row("end is exclusive", all.mid(0, 1), [](JournalQuery &q) { q.end = 20 * second; });
        row("graver levels", {all[0], all[2]},
            [](JournalQuery &q) { q.maximumLevel = LevelWarning; });
        row("source", {all[3]}, [](JournalQuery &q) { q.source = "Насос"; });
        row("Cyrillic, any case", {all[0], all[3]}, [](JournalQuery &q) { q.text = "Насос"; });
        row("letter outside the alphabet's block", {all[1]},
            [](JournalQuery &q) { q.text = "ёЛ"; });
        row("Latin, wildcards are plain", {all[2]}, [](JournalQuery &q) { q.text = "50% OFF"; });
        row("no match", {}, [](JournalQuery &q) { q.text = "50_"; });
        row("page", all.mid(1, 2), [](JournalQuery &q) {
            q.afterId = 1;
            q.limit = 2;
        });
        row("rest of an interval", all.mid(2), [](JournalQuery &q) {
            q.begin = 1;
            q.afterId = 2;
        });
    }

    void query()
    {
        QFETCH(JournalQuery, query);
        EventJournal journal;
        open(journal);
        QVERIFY(journal.Append(entry("Пуск НАСОСА", 10 * second, LevelAlarm)));
        QVERIFY(journal.Append(entry("Ёлка", 20 * second)));
        QVERIFY(journal.Append(entry("Pump 50% off", 30 * second, LevelWarning)));
        QVERIFY(journal.Append(entry("насос стоит", 40 * second, LevelSecurity, "Насос")));
        QVERIFY(journal.Flush());
        QTEST(texts(journal, query), "expected");
    }

    void keepsEveryField()
    {
        BasicEvent full = entry("текст", 5 * second, LevelAlarm);
        full.type = TypeAcknowledgement;
        full.sourceNode = NodeLink(77);
        full.user = "оператор";
        full.oldValue = "1.5";
        full.newValue = std::string("a\0b", 3);
        full.alarmState = AlarmState::ActiveAcked;
        full.priority = 2;
        full.occurrence = 1700000000123;
        EventJournal journal;
        open(journal);
        BasicEvent announced;
        const auto connection =
            journal.ConnectAppended([&](const BasicEvent &stored) { announced = stored; });
        QVERIFY(journal.Append(full));
        journal.Close();
        open(journal);
        std::vector<BasicEvent> events;
        QVERIFY(journal.Query({}, events));
        full.id = 1;
        QVERIFY(events.size() == 1 && events[0] == full);
        QVERIFY(announced == full);
        QVERIFY(journal.Verify());
    }

    void concurrentAppends()
    {
        constexpr int each = 500;
        EventJournal journal;
        std::vector<unsigned long> announced;
        const auto connection = journal.ConnectAppended(
            [&](const BasicEvent &stored) { announced.push_back(stored.id); });
        open(journal);
        std::vector<std::thread> threads;
        for (int t = 0; t < 4; ++t) {
            threads.emplace_back([&journal, t] {
                for (int i = 0; i < each; ++i)
                    (void)journal.Append(
                        entry(std::to_string(i), 0, LevelDebug, std::to_string(t)));
            });
        }
        std::vector<BasicEvent> meanwhile;
        QVERIFY(journal.Query({}, meanwhile));
        for (std::thread &thread : threads)
            thread.join();
        QVERIFY(journal.Flush());
        for (int t = 0; t < 4; ++t) {
            JournalQuery own;
            own.source = std::to_string(t);
            QCOMPARE(texts(journal, own), numbered(each));
        }
        QVERIFY(journal.Verify());
        journal.Close();
        QCOMPARE(announced.size(), std::size_t(4 * each));
        QVERIFY(std::is_sorted(announced.begin(), announced.end()));
    }

    void waitsBeforeOpen()
    {
        EventJournal journal;
        QVERIFY(journal.Append(entry("0")));
        QCOMPARE(journal.Flush().GetType(), Result::NotAvailable);
        QCOMPARE(journal.Verify().GetType(), Result::NotAvailable);
        open(journal);
        QVERIFY(journal.Append(entry("1")));
        QCOMPARE(journal.Open(m_file).GetType(), Result::Refused);
        journal.Close();
        QVERIFY(journal.Append(entry("2")));
        open(journal);
        QVERIFY(journal.Flush());
        QCOMPARE(texts(journal), numbered(3));
    }

    void overflowIsCounted()
    {
        constexpr int capacity = 100000;
        EventJournal journal;
        for (int i = 0; i < capacity; ++i)
            QVERIFY(journal.Append(entry("x")));
        QCOMPARE(journal.Append(entry("y")).GetType(), Result::LimitExceeded);
        open(journal);
        QVERIFY(journal.Flush());
        const QStringList told = criticalTexts(journal);
        QCOMPARE(told.size(), 1);
        QVERIFY(told[0].endsWith(": 1; не пишутся ни база, ни файл рядом с ней"));
        JournalQuery last;
        last.afterId = capacity;
        QCOMPARE(texts(journal, last), QStringList{"x"});
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
            " priority, occurrence, hash FROM events WHERE id = 5",
            "row 6");
    }

    void tampering()
    {
        QFETCH(std::string, sql);
        QFETCH(std::string, place);
        store(5);
        execute(sql);
        EventJournal journal;
        open(journal);
        const Result verified = journal.Verify();
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
        EventJournal journal;
        open(journal);
        append(journal, {"0"});
        std::optional<FileSizeLimit> full;
        std::optional<LockedByOther> lock;
        if (isDiskFull)
            full.emplace(rlim_t(QFileInfo(path("-wal")).size()));
        else
            lock.emplace(m_file);
        append(journal, {"1"});
        append(journal, {"2"});
        QCOMPARE(texts(journal), numbered(1));
        QVERIFY(QFile::exists(path(".spill")));
        full.reset();
        lock.reset();
        QVERIFY(journal.Append(entry("3")));
        QTRY_COMPARE(texts(journal), numbered(4));
        QVERIFY(journal.Verify());
        QVERIFY(!QFile::exists(path(".spill")));
    }

    void openFails()
    {
        QVERIFY(QDir().mkpath(path("")));
        {
            EventJournal journal;
            const Result opened = journal.Open(m_file);
            QCOMPARE(opened.GetType(), Result::StorageError);
            QVERIFY(opened.GetDetail().find(m_file) != std::string::npos);
            QVERIFY(!journal.IsOpen());
            append(journal, {"0"});
        }
        QVERIFY(QDir().rmdir(path("")));
        EventJournal journal;
        QVERIFY(journal.Append(entry("1")));
        open(journal);
        QVERIFY(journal.Flush());
        QTRY_COMPARE(texts(journal), numbered(2));
    }

    void nothingCanBeWritten()
    {
        QVERIFY(QDir().mkpath(path("")));
        QVERIFY(QDir().mkpath(path(".spill")));
        EventJournal journal;
        QVERIFY(!journal.Open(m_file));
        QVERIFY(journal.Append(entry("0")));
        QCOMPARE(journal.Flush().GetType(), Result::StorageError);
        QVERIFY(journal.Append(entry("1")));
        QVERIFY(QDir().rmdir(path("")) && QDir().rmdir(path(".spill")));
        QVERIFY(journal.Flush());
        QTRY_COMPARE(texts(journal), numbered(2));
        QVERIFY(journal.IsOpen());
    }

    void replayedTwice()
    {
        spill({"1", "2"});
        QVERIFY(QFile::copy(path(".spill"), path(".kept")));
        for (int run = 0; run < 2; ++run) {
            EventJournal journal;
            open(journal);
            QTRY_VERIFY(!QFile::exists(path(".spill")));
            QCOMPARE(texts(journal), numbered(3));
            QVERIFY(journal.Verify());
            journal.Close();
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
        EventJournal journal;
        open(journal);
        QTRY_COMPARE(texts(journal).size(), 4);
        QCOMPARE(texts(journal)[3], QString("last"));
        QVERIFY(texts(journal)[1].endsWith("яя…"));
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
        EventJournal journal;
        open(journal);
        QTRY_COMPARE(texts(journal).size(), 3);
        QCOMPARE(texts(journal).mid(0, 1) + texts(journal).mid(2), numbered(2));
        QCOMPARE(damagedSpills().size(), 10);
        QVERIFY(criticalTexts(journal).value(0).contains(damagedSpills().last()));
        QVERIFY(criticalTexts(journal).value(0).contains(".spill.damaged-2001"));
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

        EventJournal journal;
        open(journal);
        append(journal, {"new"});
        QTRY_COMPARE(texts(journal).size(), 2);
        QVERIFY(journal.Verify());
        const QStringList kept =
            QFileInfo(path("")).dir().entryList({"journal.sqlite.damaged-*Z"}, QDir::Files);
        QCOMPARE(kept.size(), 1);
        QVERIFY(criticalTexts(journal).value(0).contains(kept[0]));
        QCOMPARE(texts(journal).last(), QString("new"));
    }

    void laterVersion()
    {
        store(1);
        execute("PRAGMA user_version = 2");
        EventJournal journal;
        QCOMPARE(journal.Open(m_file).GetType(), Result::StorageError);
        append(journal, {"1"});
        QCOMPARE(texts(journal), numbered(1));
        QVERIFY(QFile::exists(path(".spill")));
    }

private:
    void open(EventJournal &journal) const
    {
        const Result opened = journal.Open(m_file);
        QVERIFY2(opened, opened.ToString().c_str());
    }
    void execute(const std::string &sql) const
    {
        SqliteDatabase database;
        QVERIFY(database.Open(m_file, SqliteDatabase::Mode::ReadWrite));
        const Result result = database.Execute(sql.c_str());
        QVERIFY2(result, result.ToString().c_str());
    }
    static void append(EventJournal &journal, const std::vector<std::string> &texts)
    {
        for (const std::string &text : texts)
            QVERIFY(journal.Append(entry(text)));
        QVERIFY(journal.Flush());
    }
    void store(int count) const
    {
        EventJournal journal;
        open(journal);
        for (int i = 0; i < count; ++i)
            QVERIFY(journal.Append(entry(std::to_string(i))));
    }
    /// Leaves entry 0 in the database and the texts in the file beside it.
    void spill(const std::vector<std::string> &texts) const
    {
        store(1);
        EventJournal journal;
        open(journal);
        const LockedByOther lock(m_file);
        append(journal, texts);
        journal.Close();
    }
    QStringList damagedSpills() const
    {
        return QFileInfo(path("")).dir().entryList({"*.spill.damaged-*"});
    }
    QString path(const char *suffix) const { return QString::fromStdString(m_file + suffix); }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::string m_file;
};

QTEST_APPLESS_MAIN(TestEventJournal)
#include "tst_event_journal.moc"
