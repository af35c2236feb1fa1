#include "nodes/journal/EventJournal.h"
#include "nodes/storage/SqliteDatabase.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>
#include <mutex>
#include <thread>

#include <sys/resource.h>

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

/// Something that keeps a journal file from being written, ended by destruction.
class Outage
{
public:
    virtual ~Outage() = default;
};

class LockedByOther : public Outage
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

class DiskFull : public Outage
{
public:
    explicit DiskFull(const std::string &file)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        rlimit tight = m_before;
        tight.rlim_cur = static_cast<rlim_t>(QFileInfo((file + "-wal").c_str()).size());
        setrlimit(RLIMIT_FSIZE, &tight);
    }
    ~DiskFull() override { setrlimit(RLIMIT_FSIZE, &m_before); }

private:
    rlimit m_before{};
};

} // namespace

class TestEventJournal : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void query_data();
    void query();
    void keepsEveryField();
    void concurrentAppends();
    void waitsBeforeOpen();
    void overflowIsCounted();
    void tampering_data();
    void tampering();
    void outage_data();
    void outage();
    void openFails();
    void nothingCanBeWritten();
    void replayedTwice();
    void longestTextsAreSpilled();
    void tornSpill();
    void damaged_data();
    void damaged();
    void laterVersion();

private:
    void open(EventJournal &journal) const
    {
        const Result opened = journal.Open(m_file);
        QVERIFY2(opened, opened.ToString().c_str());
    }
    void execute(const char *sql) const
    {
        SqliteDatabase database;
        QVERIFY(database.Open(m_file, SqliteDatabase::Mode::ReadWrite));
        const Result result = database.Execute(sql);
        QVERIFY2(result, result.ToString().c_str());
    }
    void store(int count) const
    {
        EventJournal journal;
        open(journal);
        for (int i = 0; i < count; ++i)
            QVERIFY(journal.Append(entry(std::to_string(i))));
    }
    QString path(const char *suffix) const { return QString::fromStdString(m_file + suffix); }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::string m_file;
};

void TestEventJournal::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    m_file = m_directory->filePath("data/journal.sqlite").toStdString();
}

void TestEventJournal::query_data()
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
    row("graver levels", {all[0], all[2]}, [](JournalQuery &q) { q.maximumLevel = LevelWarning; });
    row("source", {all[3]}, [](JournalQuery &q) { q.source = "Насос"; });
    row("Cyrillic, any case", {all[0], all[3]}, [](JournalQuery &q) { q.text = "Насос"; });
    row("letter outside the alphabet's block", {all[1]}, [](JournalQuery &q) { q.text = "ёЛ"; });
    row("Latin, wildcards are plain", {all[2]}, [](JournalQuery &q) { q.text = "50% OFF"; });
    row("no match", {}, [](JournalQuery &q) { q.text = "50_"; });
    row("page", all.mid(1, 2), [](JournalQuery &q) {
        q.afterId = 1;
        q.limit = 2;
    });
    row("page in an interval", all.mid(2, 1), [](JournalQuery &q) {
        q.begin = 1;
        q.afterId = 2;
        q.limit = 1;
    });
}

void TestEventJournal::query()
{
    QFETCH(JournalQuery, query);
    QFETCH(QStringList, expected);
    EventJournal journal;
    open(journal);
    QVERIFY(journal.Append(entry("Пуск НАСОСА", 10 * second, LevelAlarm)));
    QVERIFY(journal.Append(entry("Ёлка", 20 * second)));
    QVERIFY(journal.Append(entry("Pump 50% off", 30 * second, LevelWarning)));
    QVERIFY(journal.Append(entry("насос стоит", 40 * second, LevelSecurity, "Насос")));
    QVERIFY(journal.Flush());
    QCOMPARE(texts(journal, query), expected);
}

void TestEventJournal::keepsEveryField()
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

void TestEventJournal::concurrentAppends()
{
    constexpr int each = 500;
    EventJournal journal;
    std::vector<unsigned long> announced;
    const auto connection =
        journal.ConnectAppended([&](const BasicEvent &stored) { announced.push_back(stored.id); });
    open(journal);
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&journal, t] {
            for (int i = 0; i < each; ++i)
                (void)journal.Append(entry(std::to_string(i), 0, LevelDebug, std::to_string(t)));
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

void TestEventJournal::waitsBeforeOpen()
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

void TestEventJournal::overflowIsCounted()
{
    constexpr int capacity = 100000;
    EventJournal journal;
    for (int i = 0; i < capacity; ++i)
        QVERIFY(journal.Append(entry("x")));
    QCOMPARE(journal.Append(entry("y")).GetType(), Result::LimitExceeded);
    open(journal);
    QVERIFY(journal.Flush());
    JournalQuery critical;
    critical.maximumLevel = LevelCritical;
    QCOMPARE(texts(journal, critical).size(), 1);
    QVERIFY(
        texts(journal, critical).first().endsWith(": 1; не пишутся ни база, ни файл рядом с ней"));
    JournalQuery last;
    last.afterId = capacity;
    QCOMPARE(texts(journal, last), QStringList{"x"});
}

void TestEventJournal::tampering_data()
{
    QTest::addColumn<QByteArray>("sql");
    QTest::addColumn<QByteArray>("place");
    QTest::newRow("text") << QByteArray("UPDATE events SET text = 'x' WHERE id = 3")
                          << QByteArray("row 3");
    QTest::newRow("user") << QByteArray("UPDATE events SET user = 'x' WHERE id = 1")
                          << QByteArray("row 1");
    QTest::newRow("removed") << QByteArray("DELETE FROM events WHERE id = 2")
                             << QByteArray("row 3");
    QTest::newRow("removed, closed up") << QByteArray("DELETE FROM events WHERE id = 2; "
                                                      "UPDATE events SET id = id - 1 WHERE id > 2")
                                        << QByteArray("row 2");
    QTest::newRow("end cut off") << QByteArray("DELETE FROM events WHERE id > 3")
                                 << QByteArray("the end: rows behind row 3");
    QTest::newRow("emptied") << QByteArray("DELETE FROM events")
                             << QByteArray("the end: rows behind row 0");
    QTest::newRow("forged") << QByteArray("INSERT INTO events SELECT 6, 1, time, level, type, text,"
                                          " source, node, user, old_value, new_value, alarm_state,"
                                          " priority, occurrence, hash FROM events WHERE id = 5")
                            << QByteArray("row 6");
}

void TestEventJournal::tampering()
{
    QFETCH(QByteArray, sql);
    QFETCH(QByteArray, place);
    store(5);
    execute(sql.constData());
    EventJournal journal;
    open(journal);
    const Result verified = journal.Verify();
    QCOMPARE(verified.GetType(), Result::Failed);
    QCOMPARE(QByteArray::fromStdString(verified.GetDetail()), "journal chain broken at " + place);
}

void TestEventJournal::outage_data()
{
    QTest::addColumn<bool>("isDiskFull");
    QTest::newRow("locked by another process") << false;
    QTest::newRow("disk full") << true;
}

void TestEventJournal::outage()
{
    QFETCH(bool, isDiskFull);
    EventJournal journal;
    open(journal);
    QVERIFY(journal.Append(entry("0")));
    QVERIFY(journal.Flush());
    std::unique_ptr<Outage> trouble;
    if (isDiskFull)
        trouble = std::make_unique<DiskFull>(m_file);
    else
        trouble = std::make_unique<LockedByOther>(m_file);
    for (const char *text : {"1", "2"}) {
        QVERIFY(journal.Append(entry(text)));
        QVERIFY(journal.Flush());
    }
    QCOMPARE(texts(journal), numbered(1));
    QVERIFY(QFile::exists(path(".spill")));
    trouble.reset();
    QVERIFY(journal.Append(entry("3")));
    QTRY_COMPARE(texts(journal), numbered(4));
    QVERIFY(journal.Verify());
    QVERIFY(!QFile::exists(path(".spill")));
}

void TestEventJournal::openFails()
{
    QVERIFY(QDir().mkpath(path("")));
    {
        EventJournal journal;
        const Result opened = journal.Open(m_file);
        QCOMPARE(opened.GetType(), Result::StorageError);
        QVERIFY(QByteArray::fromStdString(opened.GetDetail()).contains(m_file.c_str()));
        QVERIFY(!journal.IsOpen());
        QVERIFY(journal.Append(entry("0")));
        QVERIFY(journal.Flush());
    }
    QVERIFY(QDir().rmdir(path("")));
    EventJournal journal;
    QVERIFY(journal.Append(entry("1")));
    open(journal);
    QVERIFY(journal.Flush());
    QTRY_COMPARE(texts(journal), numbered(2));
}

void TestEventJournal::nothingCanBeWritten()
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

void TestEventJournal::replayedTwice()
{
    store(1);
    {
        EventJournal journal;
        open(journal);
        const LockedByOther lock(m_file);
        for (const char *text : {"1", "2"})
            QVERIFY(journal.Append(entry(text)));
        QVERIFY(journal.Flush());
        QVERIFY(QFile::copy(path(".spill"), path(".kept")));
    }
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

void TestEventJournal::longestTextsAreSpilled()
{
    store(1);
    {
        EventJournal journal;
        open(journal);
        const LockedByOther lock(m_file);
        for (const char *letter : {"я", "2"})
            QVERIFY(journal.Append(entry(QString(letter).repeated(20000000).toStdString())));
        QVERIFY(journal.Append(entry("last")));
        journal.Close();
    }
    EventJournal journal;
    open(journal);
    QTRY_COMPARE(texts(journal).size(), 4);
    QCOMPARE(texts(journal)[3], QString("last"));
    QVERIFY(texts(journal)[1].endsWith("яя…"));
    QVERIFY(!QFile::exists(path(".spill.damaged")));
}

void TestEventJournal::tornSpill()
{
    store(1);
    {
        EventJournal journal;
        open(journal);
        const LockedByOther lock(m_file);
        for (const char *text : {"1", "torn"})
            QVERIFY(journal.Append(entry(text)));
        journal.Close();
    }
    QFile spill(path(".spill"));
    QVERIFY(spill.resize(spill.size() - 1));
    EventJournal journal;
    open(journal);
    QTRY_COMPARE(texts(journal).size(), 3);
    QCOMPARE(texts(journal).first(), QString("0"));
    QCOMPARE(texts(journal).last(), QString("1"));
    JournalQuery critical;
    critical.maximumLevel = LevelCritical;
    QVERIFY(texts(journal, critical).value(0).contains(path(".spill.damaged")));
    QVERIFY(QFile::exists(path(".spill.damaged")));
}

void TestEventJournal::damaged_data()
{
    QTest::addColumn<int>("from");
    QTest::newRow("no database at all") << 0;
    QTest::newRow("a table's pages, seen when writing") << 4096;
}

void TestEventJournal::damaged()
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
    QVERIFY(journal.Append(entry("new")));
    QVERIFY(journal.Flush());
    QTRY_COMPARE(texts(journal).size(), 2);
    QVERIFY(journal.Verify());
    JournalQuery critical;
    critical.maximumLevel = LevelCritical;
    const QStringList kept =
        QFileInfo(path("")).dir().entryList({"journal.sqlite.damaged-*Z"}, QDir::Files);
    QCOMPARE(kept.size(), 1);
    QVERIFY(texts(journal, critical).value(0).contains(kept[0]));
    QCOMPARE(texts(journal).last(), QString("new"));
}

void TestEventJournal::laterVersion()
{
    store(1);
    execute("PRAGMA user_version = 2");
    EventJournal journal;
    const Result opened = journal.Open(m_file);
    QCOMPARE(opened.GetType(), Result::StorageError);
    QVERIFY(journal.Append(entry("1")));
    QVERIFY(journal.Flush());
    QCOMPARE(texts(journal), numbered(1));
    QVERIFY(QFile::exists(path(".spill")));
}

QTEST_APPLESS_MAIN(TestEventJournal)
#include "tst_event_journal.moc"
