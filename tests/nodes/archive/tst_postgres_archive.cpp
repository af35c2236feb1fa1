#include "nodes/archive/CountedSamples.h"
#include "support/PrivateCluster.h"
#include "support/Rows.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <atomic>
#include <chrono>
#include <memory>
#include <thread>

using namespace Nodes;
using namespace std::chrono_literals;

namespace {

/// What is disturbed, and how its victims are.
struct Scene
{
    PrivateCluster &cluster;
    const std::string database;
    const Recorder &recorder;

    void WaitTroubled() const
    {
        while (recorder.GetHealth().isWell())
            std::this_thread::sleep_for(10ms);
    }
};

using Disturbance = void (*)(const Scene &);

/// So that a server which hangs is given up soon.
constexpr const char *impatient =
    "?connect_timeout=2&options=-c%20statement_timeout%3D400%20-c%20lock_timeout%3D300";

void restart(const Scene &scene)
{
    for (int i = 0; i < 2; ++i)
        scene.cluster.Restart();
}

void crash(const Scene &scene)
{
    for (int i = 0; i < 2; ++i) {
        scene.cluster.Kill();
        scene.cluster.Start();
    }
}

void freeze(const Scene &scene)
{
    scene.cluster.Freeze(true);
    scene.WaitTroubled();
    scene.cluster.Freeze(false);
}

void lock(const Scene &scene)
{
    scene.cluster.Sql("BEGIN; LOCK TABLE archive.turn; SELECT pg_sleep(1)", scene.database);
}

void refuseWrites(const Scene &scene)
{
    scene.cluster.Sql("ALTER SYSTEM SET default_transaction_read_only = on");
    scene.cluster.Sql("SELECT pg_reload_conf()");
    scene.WaitTroubled();
    scene.cluster.Sql("ALTER SYSTEM RESET default_transaction_read_only");
    scene.cluster.Sql("SELECT pg_reload_conf()");
}

void endSessions(const Scene &scene)
{
    for (int i = 0; i < 8; ++i)
        scene.cluster.Sql("SELECT pg_terminate_backend(pid) FROM pg_stat_activity "
                          "WHERE application_name LIKE 'station%'");
}

std::unique_ptr<ArchiveStore> makeStore(const std::string &location)
{
    std::unique_ptr<ArchiveStore> store;
    const Result made = ArchiveStores().Make(location, store);
    return made ? std::move(store) : throw std::logic_error(made.ToString());
}

} // namespace

Q_DECLARE_METATYPE(Disturbance)

class TestPostgresArchive : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        if (PrivateCluster::Programs().empty())
            QSKIP("no PostgreSQL server is installed");
        m_cluster = std::make_unique<PrivateCluster>();
        m_cluster->Sql("CREATE ROLE writer LOGIN PASSWORD 'geheim'");
        m_cluster->Sql("CREATE ROLE reader LOGIN PASSWORD 'geheim'");
    }
    void init()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        m_location = m_cluster->Location("base" + std::to_string(++m_count));
    }

    void disturbed_data()
    {
        const Rows<Disturbance> row("disturb");
        row("server restarted", &restart);
        row("server killed", &crash);
        row("server hangs", &freeze);
        row("tables locked", &lock);
        row("server refuses to write", &refuseWrites);
        row("sessions ended", &endSessions);
    }

    // Groups go on coming all the while: each is stored once in the end, and none waits for long.
    void disturbed()
    {
        QFETCH(Disturbance, disturb);
        const auto recorder = CountedSamples::MakeRecorder();
        QVERIFY(CountedSamples::Open(*recorder, m_location + impatient, spill()));
        QTRY_VERIFY(recorder->IsStoreOpen());
        std::uint64_t groups = 0;
        std::atomic<bool> isOver{false};
        std::thread other([&] {
            disturb({*m_cluster, base(), *recorder});
            isOver = true;
        });
        while (!isOver || groups < 200) {
            QVERIFY(recorder->Append(CountedSamples::Packet(groups++)));
            if (groups % 10 == 0)
                QVERIFY(recorder->Flush());
        }
        other.join();
        QTRY_VERIFY_WITH_TIMEOUT(recorder->GetHealth().isWell() && !QFile::exists(spillFile()) &&
                                     recorder->Waiting() == 0,
                                 20000);
        QCOMPARE(recorder->GetHealth().lost, 0u);
        recorder->Close();
        QCOMPARE(stored(), QString::number(groups));
    }

    // Whoever starts a station does not wait for its server.
    void startsWithoutServer()
    {
        m_cluster->Freeze(true);
        const auto recorder = CountedSamples::MakeRecorder();
        const Result opened = CountedSamples::Open(*recorder, m_location + impatient, spill());
        const bool isStored = recorder->IsStoreOpen();
        const bool isTaken = recorder->Append(CountedSamples::Packet(0)) && recorder->Flush();
        m_cluster->Freeze(false);
        QVERIFY(opened && !isStored && isTaken);
        QTRY_VERIFY_WITH_TIMEOUT(recorder->IsStoreOpen() && recorder->GetHealth().aside == 0,
                                 20000);
        recorder->Close();
        QCOMPARE(stored(), QString("1"));
    }

    void refused_data()
    {
        const Rows<std::string, std::string, std::string> row("sql", "location", "told");
        row("later version",
            "CREATE SCHEMA archive CREATE TABLE version (version integer, product text); "
            "INSERT INTO archive.version VALUES (99, 'operator station: archive')",
            "", "written by a later version of the program");
        row("schema of somebody else", "CREATE SCHEMA archive CREATE TABLE orders (id integer)", "",
            "holds something else");
        row("schema's name", "", "?schema=Archive;", "the name of the schema");
        row("no right to make it", "", "writer:geheim@", "permission denied for database");
        row("wrong password", "", "writer:topsecret@", "password authentication failed");
        row("not understood", "", "writer:topsecret%@", "no connection string");
        row("unknown option", "", "?topsecret=1", "no connection string");
    }

    // The reason is told, the password never, and what is there stays as it is.
    void refused()
    {
        QFETCH(std::string, sql);
        QFETCH(std::string, location);
        QFETCH(std::string, told);
        if (!sql.empty())
            sqlIn(sql);
        const std::string user = "postgres@";
        std::string full = m_location + (location[0] == '?' ? location : std::string());
        if (location.find('@') != std::string::npos)
            full.replace(full.find(user), user.size(), location);
        const auto store = makeStore(full);
        StoreOpening opening;
        const Result opened = store->Open(opening);
        QVERIFY(!opened);
        const QString text = QString::fromStdString(opened.GetDetail() + store->GetLocation());
        QVERIFY2(text.contains(told.c_str()), qPrintable(text));
        QVERIFY2(!text.contains("geheim") && !text.contains("topsecret"), qPrintable(text));
        QVERIFY(!store->IsOpen());
        sqlIn("DO $$ BEGIN ASSERT to_regclass('archive.blocks') IS NULL; END $$");
    }

    // One user writes into the schema that was made for it, another may only read.
    void rights()
    {
        sqlIn("CREATE SCHEMA plant AUTHORIZATION writer; ALTER DEFAULT PRIVILEGES FOR ROLE writer "
              "GRANT SELECT ON TABLES TO reader; GRANT USAGE ON SCHEMA plant TO reader");
        const std::string address = " host=127.0.0.1 port=" + m_cluster->Port() + " dbname=base" +
                                    std::to_string(m_count) + " password=geheim schema=plant";
        const auto store = makeStore("postgresql:user=writer" + address);
        StoreOpening opening;
        const Result opened = store->Open(opening);
        QVERIFY2(opened, opened.GetDetail().c_str());
        std::vector<std::uint64_t> numbers;
        for (std::uint64_t group = 0; group < 5; ++group)
            QVERIFY(store->Write({{group + 1, 1, CountedSamples::Packet(group)}}, numbers));
        m_location = "postgresql:user=reader" + address;
        QCOMPARE(stored(), QString("5"));
        const auto other = makeStore(m_location);
        QVERIFY(other->Open(opening));
        const Result written = other->Write({{9, 1, CountedSamples::Packet(5)}}, numbers);
        QVERIFY(written.GetDetail().find("permission denied") != std::string::npos);
    }

    void backup_data()
    {
        const Rows<bool> row("isServer");
        row("into a file", false);
        row("into another schema", true);
    }

    void backup()
    {
        QFETCH(bool, isServer);
        const auto store = makeStore(m_location);
        StoreOpening opening;
        std::vector<std::uint64_t> numbers;
        QVERIFY(store->Open(opening));
        for (std::uint64_t group = 0; group < 50; ++group)
            QVERIFY(store->Write({{group + 1, 1, CountedSamples::Packet(group)}}, numbers));
        SamplePacket made;
        made.parts.push_back({CountedSamples::Key(9), {}, true});
        for (int i = 0; i < 3; ++i)
            made.parts[0].run.AddText(1000 + i, "проба", Quality::Uncertain);
        QVERIFY(store->Write({{99, 1, made.Pack()}}, numbers));
        const std::string to =
            isServer ? m_location + "?schema=copy" : m_directory->filePath("copy.db").toStdString();
        const auto from = CountedSamples::Reader(m_location);
        QCOMPARE(from->Backup(to, [] { return false; }).GetType(), Result::Cancelled);
        const Result copied = from->Backup(to, [] { return true; });
        QVERIFY2(copied, copied.GetDetail().c_str());
        QCOMPARE(from->Backup(to, [] { return true; }).GetType(), Result::Duplicate);
        QCOMPARE(CountedSamples::Stored(to), std::uint64_t(50));
        const auto copy = CountedSamples::Reader(to);
        std::vector<ArchivedSignal> listed;
        QVERIFY(copy->ListSignals(listed));
        QCOMPARE(listed.size(), std::size_t(CountedSamples::Signals + 1));
        QVERIFY(listed.back().generatedFrom == 1000 && listed.back().generatedTo == 1002);
        QVERIFY(!listed.front().IsGenerated());
        SampleRun texts;
        const auto take = [&](const SampleRun &run) {
            texts.Append(run);
            return true;
        };
        const std::atomic<bool> never{false};
        QVERIFY(copy->Visit(listed.back().key, 0, 2000, take, never));
        QVERIFY(texts == made.parts[0].run);
    }

    void damage_data()
    {
        const Rows<std::string, bool> row("sql", "isReadable");
        row("chunk's bytes",
            "UPDATE blocks SET bytes = set_byte(bytes, 40, 77) WHERE height = 0 "
            "AND id = (SELECT min(id) FROM blocks WHERE height = 0)",
            false);
        row("chunk of another signal",
            "UPDATE blocks SET bytes = (SELECT bytes FROM blocks WHERE "
            "height = 0 AND signal = 2 ORDER BY id LIMIT 1) WHERE id = "
            "(SELECT min(id) FROM blocks WHERE height = 0 AND signal = 1)",
            false);
        row("aggregates", "UPDATE blocks SET bytes = '\\x00' WHERE height = 1", true);
        row("aggregates are missing", "DELETE FROM blocks WHERE height = 1", true);
    }

    // It is found, mended beside the one who writes, and that one goes on.
    void damage()
    {
        QFETCH(std::string, sql);
        QFETCH(bool, isReadable);
        const auto store = makeStore(m_location);
        StoreOpening opening;
        std::vector<std::uint64_t> numbers;
        QVERIFY(store->Open(opening));
        for (std::uint64_t group = 0; group < 50; ++group)
            QVERIFY(store->Write({{group + 1, 1, CountedSamples::Packet(group)}}, numbers));
        sqlIn("SET search_path = archive; " + sql);
        const auto reader = CountedSamples::Reader(m_location);
        const std::atomic<bool> never{false};
        ArchiveFindings findings;
        QVERIFY(reader->Verify(findings, never));
        QVERIFY(!findings.empty());
        QVERIFY(!findings[0].place.empty() && !findings[0].text.empty());
        findings.clear();
        const Result mended = reader->Repair(findings, never);
        QVERIFY2(mended, mended.GetDetail().c_str());
        QVERIFY(!findings.empty());
        QVERIFY(store->Write({{51, 1, CountedSamples::Packet(50)}}, numbers));
        QCOMPARE(stored() == "51", isReadable);
        findings.clear();
        QVERIFY(reader->Verify(findings, never));
        QVERIFY2(findings.empty(), findings.empty() ? "" : findings[0].text.c_str());
    }

    void cleanupTestCase() { m_cluster.reset(); }

private:
    std::string base() const { return "base" + std::to_string(m_count); }
    QString spillFile() const { return m_directory->filePath("spill"); }
    std::string spill() const { return spillFile().toStdString(); }
    void sqlIn(const std::string &sql) const { m_cluster->Sql(sql, base()); }
    /// Whole groups in the archive, or what is wrong with it.
    QString stored() const
    {
        try {
            return QString::number(CountedSamples::Stored(m_location));
        } catch (const std::exception &error) {
            return error.what();
        }
    }

    std::unique_ptr<PrivateCluster> m_cluster;
    std::unique_ptr<QTemporaryDir> m_directory;
    std::string m_location;
    int m_count = 0;
};

QTEST_GUILESS_MAIN(TestPostgresArchive)
#include "tst_postgres_archive.moc"
