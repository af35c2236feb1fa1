#include "nodes/journal/EventJournal.h"
#include "nodes/journal/JournalReader.h"
#include "nodes/journal/JournalSelection.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/storage/SqliteDatabase.h"
#include "nodes/storage/SqliteStatement.h"
#include "nodes/values/Clock.h"
#include "support/Rows.h"

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <atomic>
#include <thread>

using namespace Nodes;

Q_DECLARE_METATYPE(Nodes::JournalQuery)

namespace {

constexpr Timestamp second = 1000000;
constexpr Timestamp day = 86400 * second;
const RecordHome home{"one", 5, "Котельная"};

/// Written by the first version: rows of a table, and what it had spilled when it was killed after
/// the first of both records was stored.
constexpr const char *firstVersion = R"(
CREATE TABLE events (
    id INTEGER PRIMARY KEY, key INTEGER NOT NULL UNIQUE, time INTEGER NOT NULL,
    level INTEGER NOT NULL, type INTEGER NOT NULL, text TEXT NOT NULL, source TEXT NOT NULL,
    node INTEGER NOT NULL, user TEXT NOT NULL, old_value TEXT NOT NULL, new_value TEXT NOT NULL,
    alarm_state INTEGER NOT NULL, priority INTEGER NOT NULL, occurrence INTEGER NOT NULL,
    hash BLOB NOT NULL);
CREATE INDEX events_time ON events (time);
CREATE TABLE head (
    one INTEGER PRIMARY KEY CHECK (one = 1), id INTEGER NOT NULL, hash BLOB NOT NULL);
INSERT INTO events VALUES (1,1634921565107020256,10000000,2,1,'0','Насос',77,'оператор','','1.5',
    0,0,7,X'8DBE450E05BEE7709150C36410D9A8B506C61692F40E494A0BBD76E921784AA8');
INSERT INTO events VALUES (2,1634921565107020257,20000000,2,1,'1','Насос',77,'оператор','','1.5',
    0,0,7,X'9A224927AD4A4CB53B59A24FA1FBB17B965E67C24600B9C91E6255081FECB3DE');
INSERT INTO head VALUES (1,2,X'9A224927AD4A4CB53B59A24FA1FBB17B965E67C24600B9C91E6255081FECB3DE');
PRAGMA user_version = 1)";
constexpr const char *firstSpill =
    "38000000b43a64bc8236b04e572a2fb790c6a1019dcf16b0688053d461e1ce01312d000201a131aad09dd0b0d181d0"
    "bed1814db0d0bed0bfd0b5d180d0b0d182d0bed180a0a3312e3500000738000000df6b1c0b72562dc446cfd51aae3d"
    "537f9dcf16b0688053d461e2ce01c9c3800201a132aad09dd0b0d181d0bed1814db0d0bed0bfd0b5d180d0b0d182d0"
    "bed180a0a3312e35000007";

} // namespace

class TestJournalHistory : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        m_file = m_directory->filePath("journal.sqlite").toStdString();
        open({});
    }

    void pages_data()
    {
        QTest::addColumn<JournalQuery>("query");
        const auto row = [](const char *name, auto edit) {
            JournalQuery query;
            edit(query);
            QTest::newRow(name) << query;
        };
        row("all", [](auto &) {});
        row("newest first", [](auto &q) { q.order = JournalQuery::NewestFirst; });
        row("interval", [](auto &q) {
            q.begin = 100 * second;
            q.end = 400 * second;
        });
        row("level", [](auto &q) { q.maximumLevel = LevelAlarm; });
        row("some levels and types", [](auto &q) {
            q.levels = {LevelAlarm, LevelSecurity};
            q.types = {TypeAlarmActive, TypeSecurityEvent};
        });
        row("users, the system among them", [](auto &q) { q.users = {"", "О'Нил \"2\""}; });
        row("node", [](auto &q) { q.nodes = {{home, 3, {}}, {home, 4, {}}}; });
        row("source, newest first", [](auto &q) {
            q.source = "Насос 3";
            q.order = JournalQuery::NewestFirst;
        });
        row("source and text", [](auto &q) {
            q.source = "Насос 3";
            q.text = "7";
        });
        row("more nodes than are worth a seek each", [](auto &q) {
            for (unsigned long node = 1; node <= 40; ++node)
                q.nodes.push_back({home, node, {}});
        });
    }

    // Times come in any order, and many at once.
    void pages()
    {
        QFETCH(JournalQuery, query);
        fill();
        const std::unique_ptr<JournalReader> reader = m_journal->OpenReader();
        query.limit = 1000000;
        std::vector<BasicEvent> whole;
        QVERIFY(reader->Query(query, whole));
        QVERIFY(whole.size() > 400);
        QCOMPARE(whole.size(),
                 std::size_t(std::count_if(m_all.begin(), m_all.end(), [&](const BasicEvent &e) {
                     return matches(query, e);
                 })));
        const bool isReversed = query.order == JournalQuery::NewestFirst;
        QVERIFY(std::is_sorted(whole.begin(), whole.end(), [&](const auto &a, const auto &b) {
            const auto &first = isReversed ? b : a;
            const auto &then = isReversed ? a : b;
            return std::tie(first.time, first.id) < std::tie(then.time, then.id);
        }));
        query.limit = query.source.empty() ? 997 : 97;
        std::vector<BasicEvent> paged;
        for (std::vector<BasicEvent> page(query.limit); page.size() == query.limit;) {
            QVERIFY(reader->Query(query, page));
            paged.insert(paged.end(), page.begin(), page.end());
            if (!page.empty())
                query.after = JournalKey::Of(page.back());
        }
        QVERIFY(paged == whole);
    }

    void pagesAreSought_data() { pages_data(); }

    // No page reads what stands before it, nor sorts what follows.
    void pagesAreSought()
    {
        QFETCH(JournalQuery, query);
        query.text.clear(); // no matter for the plan
        query.after = JournalKey{200 * second, 1000};
        JournalSelection::Origins origins;
        for (std::size_t i = 0; i < query.nodes.size(); ++i)
            origins.numbers.push_back(std::int64_t(i) + 1);
        if (!query.source.empty())
            origins = {{1, 2}, 100};
        SqliteDatabase database;
        QVERIFY(database.Open(m_file, SqliteDatabase::Mode::ReadOnly));
        SqliteStatement plan(database,
                             "EXPLAIN QUERY PLAN " + JournalSelection(query, origins).GetSql());
        int searches = 0;
        while (plan.Step()) {
            const QString step = QString::fromStdString(plan.Bytes(3));
            QVERIFY2(!step.contains("SCAN") && !step.contains("TEMP B-TREE"), qPrintable(step));
            searches += step.contains("(time,id)>") || step.contains("(time,rowid)>") ||
                        step.contains("time>");
        }
        QVERIFY(plan.GetResult());
        QVERIFY(searches > 0);
    }

    void cancelled()
    {
        fill();
        const std::unique_ptr<JournalReader> reader = m_journal->OpenReader();
        std::atomic<bool> isEnded{false};
        std::thread canceller([&] {
            while (!isEnded)
                reader->Cancel();
        });
        JournalQuery query;
        query.text = "is nowhere";
        std::vector<BasicEvent> events(1);
        QCOMPARE(reader->Query(query, events).GetType(), Result::Cancelled);
        QVERIFY(events.empty());
        isEnded = true;
        canceller.join();
        query.text = "99999";
        QVERIFY(reader->Query(query, events));
        QCOMPARE(events.size(), std::size_t(1));
    }

    void firstVersion_data()
    {
        const Rows<std::string, std::string> row("tampering", "place");
        row("whole", "", "");
        row("row of the first version", "UPDATE events SET node = 78 WHERE id = 1", "row 1");
        row("row of its spill file", "UPDATE sources SET node = 78 WHERE project = ''", "row 3");
        row("behind the border", "UPDATE events SET text = 'x' WHERE id = 4", "row 4");
    }

    void firstVersion()
    {
        QFETCH(std::string, tampering);
        QFETCH(std::string, place);
        m_journal.reset();
        QVERIFY(QFile::remove(QString::fromStdString(m_file)));
        execute(::firstVersion);
        QFile spill(QString::fromStdString(m_file + ".spill"));
        QVERIFY(spill.open(QIODevice::WriteOnly) && spill.write(QByteArray::fromHex(firstSpill)));
        spill.close();
        open({});
        BasicEvent now;
        now.text = "3";
        now.source = "Насос";
        now.time = 40 * second;
        now.sourceNode = NodeLink(77, &m_project);
        QVERIFY(m_journal->Append(now) && m_journal->Flush());
        QTRY_VERIFY(!spill.exists());
        JournalQuery query;
        query.source = "Насос";
        std::vector<BasicEvent> events;
        QVERIFY(m_journal->Query(query, events));
        QCOMPARE(events.size(), std::size_t(4));
        for (int i = 0; i < 4; ++i) {
            QCOMPARE(events[i].text, std::to_string(i));
            QCOMPARE(events[i].source, std::string("Насос"));
            // Nobody knows of which project the number was.
            QCOMPARE(events[i].sourceNode, i < 3 ? NodeLink() : now.sourceNode);
        }
        QCOMPARE(events[2].user, std::string("оператор"));
        if (!tampering.empty())
            execute(tampering);
        const Result verified = m_journal->Verify();
        QCOMPARE(verified.GetDetail(),
                 place.empty() ? std::string() : "journal chain broken at " + place);
    }

    void retention_data()
    {
        const Rows<std::string, std::string> row("tampering", "place");
        row("whole", "", "");
        row("row that is left", "UPDATE events SET text = 'x' WHERE id = 4000", "row 4000");
        row("one more cut off", "DELETE FROM events WHERE id = 3001", "row 3002");
        row("cut off with a forged anchor",
            "UPDATE anchor SET id = 3001, hash = (SELECT hash FROM events WHERE id = 3001); "
            "DELETE FROM events WHERE id = 3001",
            "the beginning: rows up to row 3001 are gone, and no entry tells why");
        row("anchor removed", "DELETE FROM anchor", "row 3001");
    }

    void retention()
    {
        QFETCH(std::string, tampering);
        QFETCH(std::string, place);
        const Timestamp now = Clock::Current().Now();
        // From a clock that was set wrong, it does not hold up those behind it.
        append(3000, [now](int i) { return i == 10 ? now + 1000 * day : now - 100 * day + i; });
        append(2000, [now](int i) { return now - 50 * day + i; });
        open({60 * day, 0});
        QTRY_COMPARE(firstId(), 3001ul);
        JournalQuery told;
        told.text = "удаляются записи с 1 по 3000, всего 3000: старше 60 дн.";
        std::vector<BasicEvent> events;
        QVERIFY(m_journal->Query(told, events));
        QCOMPARE(events.size(), std::size_t(1));
        if (!tampering.empty())
            execute(tampering);
        const Result verified = m_journal->Verify();
        QCOMPARE(verified.GetDetail(),
                 place.empty() ? std::string() : "journal chain broken at " + place);
    }

    // Entries that retention has to take, but somebody has touched, stay as evidence.
    void tamperedRowsStay()
    {
        const Timestamp old = Clock::Current().Now() - 100 * day;
        append(3000, [old](int i) { return old + i; });
        execute("UPDATE events SET text = 'x' WHERE id = 700");
        open({day, 0});
        QTRY_COMPARE(firstId(), 501ul);
        JournalQuery told;
        told.maximumLevel = LevelCritical;
        told.text = "не удалены";
        std::vector<BasicEvent> events;
        QTRY_VERIFY(m_journal->Query(told, events) && events.size() == 1);
        QVERIFY(m_journal->Verify().GetDetail().find("row 700") != std::string::npos);
    }

    void retentionBySize()
    {
        const std::string text(1000, 'x');
        append(
            20000, [](int i) { return Timestamp(i); }, text);
        const std::uint64_t limit = 10 << 20;
        QVERIFY(used() > 2 * limit);
        open({0, limit});
        // The pages that somebody reads meanwhile lack nothing that is still there.
        JournalQuery query;
        query.order = JournalQuery::NewestFirst;
        query.limit = 100;
        unsigned long last = 0;
        for (std::vector<BasicEvent> page(100); page.size() == 100;) {
            QVERIFY(m_journal->Query(query, page));
            for (const BasicEvent &event : page) {
                if (event.time < 20000)
                    QVERIFY(last == 0 || event.id + 1 == last);
                last = event.time < 20000 ? event.id : last;
            }
            if (!page.empty())
                query.after = JournalKey::Of(page.back());
        }
        QTRY_VERIFY(used() < limit);
        QVERIFY(used() > limit / 2);
        QVERIFY(m_journal->Verify());
    }

private:
    void open(const JournalRetention &retention)
    {
        m_journal = std::make_unique<EventJournal>();
        m_journal->SetHome(home, &m_project);
        m_journal->SetRetention(retention);
        const Result opened = m_journal->Open(m_file);
        QVERIFY2(opened, opened.ToString().c_str());
    }
    template <class TimeOf> void append(int count, TimeOf timeOf, const std::string &text = "entry")
    {
        for (int i = 0; i < count; ++i) {
            BasicEvent event;
            event.text = text;
            event.time = timeOf(i) + 1;
            QVERIFY(m_journal->Append(event));
        }
        QVERIFY(m_journal->Flush());
    }
    void fill()
    {
        m_all.clear();
        for (int i = 0; i < 100000; ++i) {
            BasicEvent event;
            event.time = (i * 7919 % 1000 + 1) * second;
            event.text = std::to_string(i);
            event.level = i % 10 == 0 ? LevelAlarm : LevelInformation;
            event.type = i % 4 == 0 ? TypeAlarmActive : TypeMessage;
            event.user = i % 3 == 0 ? "" : i % 3 == 1 ? "О'Нил \"2\"" : "Иванов";
            event.source = "Насос " + std::to_string(i % 50);
            event.sourceNode = NodeLink(1ul + i % 50, &m_project);
            m_all.push_back(event);
            QVERIFY(m_journal->Append(event));
            if (i % 20000 == 0)
                QVERIFY(m_journal->Flush());
        }
        QVERIFY(m_journal->Flush());
    }
    template <class Value, class Wanted>
    static bool isAmong(const std::vector<Wanted> &wanted, const Value &value)
    {
        return wanted.empty() || std::find(wanted.begin(), wanted.end(), value) != wanted.end();
    }
    static bool matches(const JournalQuery &query, const BasicEvent &event)
    {
        const bool isOfNode =
            query.nodes.empty() ||
            std::any_of(query.nodes.begin(), query.nodes.end(), [&](const RecordSource &node) {
                return node.node == event.sourceNode.GetNodeId();
            });
        return event.time >= query.begin && (query.end == 0 || event.time < query.end) &&
               event.level <= query.maximumLevel.value_or(LevelDebug) && isOfNode &&
               (query.source.empty() || query.source == event.source) &&
               isAmong(query.levels, event.level) && isAmong(query.types, event.type) &&
               isAmong(query.users, event.user) && event.text.find(query.text) != std::string::npos;
    }
    unsigned long firstId() const { return number("SELECT min(id) FROM events"); }
    std::uint64_t used() const
    {
        return 4096 * (number("PRAGMA page_count") - number("PRAGMA freelist_count"));
    }
    unsigned long number(const char *sql) const
    {
        SqliteDatabase database;
        if (!database.Open(m_file, SqliteDatabase::Mode::ReadOnly))
            return 0;
        SqliteStatement statement(database, sql);
        return statement.Step() ? static_cast<unsigned long>(statement.Integer(0)) : 0;
    }
    void execute(const std::string &sql) const
    {
        SqliteDatabase database;
        QVERIFY(database.Open(m_file, SqliteDatabase::Mode::ReadWrite));
        const Result done = database.Execute(sql.c_str());
        QVERIFY2(done, done.ToString().c_str());
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::string m_file;
    const NodesCollection m_project;
    std::unique_ptr<EventJournal> m_journal;
    std::vector<BasicEvent> m_all;
};

QTEST_APPLESS_MAIN(TestJournalHistory)
#include "tst_journal_history.moc"
