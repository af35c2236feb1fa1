#include "nodes/journal/EventJournal.h"
#include "nodes/journal/JournalReader.h"
#include "nodes/model/NodesCollection.h"
#include "support/PrivateCluster.h"
#include "support/Rows.h"

#include <QRandomGenerator>
#include <QTemporaryDir>

#include <memory>

using namespace Nodes;

Q_DECLARE_METATYPE(JournalQuery)

namespace {

constexpr Timestamp second = 1000000;
constexpr int patience = 60000; // ms, on a loaded machine

/// Whatever an entry may hold, texts that no server keeps in a column among them.
BasicEvent someEvent(QRandomGenerator &random, const NodesCollection &project)
{
    static const std::string texts[] = {"Насос ВКЛЮЧЁН",         std::string("a\0b", 3),
                                        "\xff\xfe нет",          std::string(20000, 'x'),
                                        "it's \"quoted\" \\ %_", ""};
    static const std::string users[] = {"", "Иванов", "O'Neil", std::string("\xc3")};
    BasicEvent event;
    event.time = random.bounded(1, 500) * second;
    event.level = EventLevel(random.bounded(1, 9));
    event.type = EventType(random.bounded(1, 8));
    event.text = texts[random.bounded(6)] + std::to_string(random.bounded(100));
    event.source = "Насос " + std::to_string(random.bounded(20));
    event.sourceNode = NodeLink(static_cast<unsigned long>(random.bounded(1, 60)), &project);
    event.user = users[random.bounded(4)];
    event.newValue = texts[random.bounded(6)];
    event.occurrence = random.generate64();
    return event;
}

} // namespace

class TestPostgresJournal : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (PrivateCluster::Programs().empty())
            QSKIP("no PostgreSQL server is installed");
        m_cluster = std::make_unique<PrivateCluster>();
    }
    void cleanupTestCase() { m_cluster.reset(); }
    void init() { m_location = m_cluster->Location("d" + std::to_string(++m_count)); }

    void answersAsTheFileDoes_data()
    {
        QTest::addColumn<JournalQuery>("query");
        const auto row = [](const char *name, auto edit) {
            JournalQuery query;
            edit(query);
            QTest::newRow(name) << query;
        };
        row("all", [](auto &) {});
        row("newest first, an interval", [](auto &q) {
            q.order = JournalQuery::NewestFirst;
            q.begin = 100 * second;
            q.end = 400 * second;
        });
        row("levels and types", [](auto &q) {
            q.maximumLevel = LevelAction;
            q.levels = {LevelAlarm, LevelWarning, LevelDebug};
            q.types = {TypeAlarmActive, TypeSecurityEvent, TypeMessage};
        });
        row("users", [](auto &q) { q.users = {"", "O'Neil"}; });
        row("text without regard to case", [](auto &q) { q.text = "насос включён1"; });
        row("text that is no pattern", [](auto &q) { q.text = "\\ %_"; });
        row("nodes", [](auto &q) { q.nodes = {{home, 3, {}}, {home, 4, {}}}; });
        row("nodes of nobody", [](auto &q) { q.nodes = {{{}, 3, {}}}; });
        row("source and node", [](auto &q) {
            q.source = "Насос 3";
            q.nodes = {{home, 5, {}}, {home, 3, {}}};
        });
        row("source", [](auto &q) { q.source = "Насос 3"; });
    }
    void answersAsTheFileDoes()
    {
        QFETCH(JournalQuery, query);
        const QTemporaryDir directory;
        EventJournal file;
        EventJournal server;
        open(file, directory.filePath("j.sqlite").toStdString(), directory, "f");
        open(server, m_location, directory, "s");
        QRandomGenerator random(7);
        for (int i = 0; i < 2000; ++i) {
            const BasicEvent event = someEvent(random, m_project);
            QVERIFY(file.Append(event) && server.Append(event));
        }
        QVERIFY(file.Flush() && server.Flush());
        QVERIFY(server.Verify());
        query.limit = 70;
        const auto fromFile = file.OpenReader();
        const auto fromServer = server.OpenReader();
        std::size_t count = 0;
        for (std::size_t size = query.limit; size == query.limit; count += size) {
            std::vector<BasicEvent> expected;
            std::vector<BasicEvent> found;
            QVERIFY(fromFile->Query(query, expected));
            const Result result = fromServer->Query(query, found);
            QVERIFY2(result, result.GetDetail().c_str());
            QVERIFY(found == expected);
            size = found.size();
            if (size > 0)
                query.after = JournalKey::Of(found.back());
        }
        const bool isOfNobody = !query.nodes.empty() && query.nodes[0].home.project.empty();
        QCOMPARE(count > 0, !isOfNobody);
    }

    void showsWhatWasTamperedWith_data()
    {
        const Rows<std::string, QByteArray> row("harm", "told");
        row("bytes", "UPDATE journal.events SET packed = packed || '\\x00' WHERE id = 7", "row 7");
        row("a column to find it by", "UPDATE journal.events SET level = 8 WHERE id = 9", "row 9");
        row("a hash", "UPDATE journal.events SET hash = '\\x00' WHERE id = 3", "row 3");
        row("a row", "DELETE FROM journal.events WHERE id = 20", "row 21");
        row("the end", "DELETE FROM journal.events WHERE id > 45", "behind row 45");
        row("the beginning", "DELETE FROM journal.events WHERE id < 5", "row 5");
    }
    void showsWhatWasTamperedWith()
    {
        QFETCH(std::string, harm);
        QFETCH(QByteArray, told);
        const QTemporaryDir directory;
        EventJournal journal;
        open(journal, m_location, directory, "s");
        QRandomGenerator random(1);
        for (int i = 0; i < 50; ++i) {
            BasicEvent event = someEvent(random, m_project);
            event.level = LevelAlarm;
            QVERIFY(journal.Append(event));
        }
        QVERIFY(journal.Flush() && journal.Verify());
        m_cluster->Sql(harm, "d" + std::to_string(m_count));
        const Result verified = journal.Verify();
        QVERIFY2(verified == Result::Failed &&
                     verified.GetDetail().find(told.toStdString()) != std::string::npos,
                 verified.GetDetail().c_str());
    }

    // What retention takes is told of, and the rest is still proved.
    void takesWhatIsOld()
    {
        const QTemporaryDir directory;
        EventJournal journal;
        open(journal, m_location, directory, "s");
        for (int i = 0; i < 3000; ++i) {
            BasicEvent event;
            event.time = (i + 1) * second;
            event.text = std::to_string(i);
            QVERIFY(journal.Append(event));
        }
        QVERIFY(journal.Flush());
        journal.Close();
        JournalRetention retention;
        retention.maximumAge = 86400 * second;
        journal.SetRetention(retention);
        open(journal, m_location, directory, "s");
        JournalQuery all;
        all.limit = SIZE_MAX;
        std::vector<BasicEvent> events;
        // The newest thousand stay, and the entry about those that went.
        Result asked;
        const auto isTrimmed = [&] {
            asked = journal.Query(all, events);
            return asked && events.size() <= 1001;
        };
        const bool isDone = QTest::qWaitFor(isTrimmed, patience);
        QVERIFY2(isDone, qPrintable(QString("%1 entries; %2; %3")
                                        .arg(events.size())
                                        .arg(asked.GetDetail().c_str())
                                        .arg(journal.GetHealth().trouble.c_str())));
        QVERIFY(events.size() >= 1000);
        const Result verified = journal.Verify();
        QVERIFY2(verified, verified.GetDetail().c_str());
    }

    // The server goes while entries come: they wait in the spill file, and follow in order, once.
    void losesNothingWhenTheServerIsAway()
    {
        const QTemporaryDir directory;
        EventJournal journal;
        open(journal, m_location, directory, "s");
        constexpr int count = 300;
        for (int i = 0; i < count; ++i) {
            if (i == count / 3)
                m_cluster->Kill();
            BasicEvent event;
            event.time = (i + 1) * second;
            event.text = std::to_string(i);
            QVERIFY(journal.Append(event));
        }
        QTRY_VERIFY_WITH_TIMEOUT(journal.GetHealth().aside > 0, patience);
        m_cluster->Start();
        JournalQuery all;
        std::vector<BasicEvent> events;
        QTRY_VERIFY_WITH_TIMEOUT(journal.Flush() && journal.GetHealth().aside == 0, patience);
        QVERIFY(journal.Query(all, events));
        std::vector<std::string> texts;
        for (const BasicEvent &event : events) {
            if (event.time <= count * second)
                texts.push_back(event.text);
        }
        QCOMPARE(texts.size(), std::size_t(count));
        for (int i = 0; i < count; ++i)
            QCOMPARE(texts[std::size_t(i)], std::to_string(i));
        QVERIFY(journal.Verify());
    }

private:
    static const RecordHome home;

    void open(EventJournal &journal, const std::string &location, const QTemporaryDir &directory,
              const char *name)
    {
        journal.SetHome(home, &m_project);
        const Result opened =
            journal.Open(location, directory.filePath(name).toStdString() + ".spill");
        QVERIFY2(opened, opened.GetDetail().c_str());
    }

    std::unique_ptr<PrivateCluster> m_cluster;
    std::string m_location;
    NodesCollection m_project;
    int m_count = 0;
};

const RecordHome TestPostgresJournal::home{"c282ed5a-d3b1-4ef8-b237-fa7e491ebe62", 2, "Пост"};

QTEST_GUILESS_MAIN(TestPostgresJournal)
#include "tst_postgres_journal.moc"
