// An archive whose writers are killed at moments they do not choose, or are several.
#include "nodes/archive/CountedSamples.h"
#include "support/PrivateCluster.h"
#include "support/Rows.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QThread>
#include <QtTest>

#include <memory>

using namespace Nodes;

namespace {

/// What a killed process had sent is still being committed.
constexpr const char *untilWritersEnd = R"(
DO $$ BEGIN
    WHILE EXISTS (SELECT FROM pg_stat_activity WHERE application_name LIKE 'station archive %') LOOP
        PERFORM pg_sleep(0.005), pg_stat_clear_snapshot();
    END LOOP;
END $$)";

/// The process that is killed: tells each group on its output once it is stored.
int write(const std::string &location, const std::string &spill, std::uint64_t group)
{
    const auto recorder = CountedSamples::MakeRecorder();
    if (const Result opened = CountedSamples::Open(*recorder, location, spill); !opened) {
        std::fprintf(stderr, "%s\n", opened.ToString().c_str());
        return 1;
    }
    for (;; ++group) {
        if (!recorder->Append(CountedSamples::Packet(group)) || !recorder->Flush())
            return 1;
        std::printf("%llu\n", static_cast<unsigned long long>(group + 1));
        std::fflush(stdout);
    }
}

} // namespace

class TestArchiveWriters : public QObject
{
    Q_OBJECT

private slots:
    void severalWriters_data()
    {
        const Rows<bool> row("isServer");
        row("file", false);
        row("server", true);
    }

    // What one writes the other takes in before it writes itself: packed, late and in the log.
    void severalWriters()
    {
        QFETCH(bool, isServer);
        if (isServer && !canServe())
            QSKIP("no PostgreSQL server is installed");
        const QTemporaryDir directory;
        const std::string location = locationOf(isServer, directory);
        std::unique_ptr<ArchiveStore> first;
        std::unique_ptr<ArchiveStore> second;
        QVERIFY(ArchiveStores().Make(location, first) && ArchiveStores().Make(location, second));
        StoreOpening opening;
        QVERIFY(first->Open(opening) && second->Open(opening));
        std::vector<std::uint64_t> numbers;
        for (std::uint64_t group = 0; group < 120; ++group) {
            ArchiveStore &writer = group % 3 == 0 ? *first : *second;
            const Record record{group + 1, 1, CountedSamples::Packet(group)};
            QVERIFY(writer.Write({record}, numbers));
            QVERIFY(numbers[0] > 0);
            if (group % 20 == 0) {
                QVERIFY(second->Write({record}, numbers));
                QCOMPARE(numbers[0], std::uint64_t(0));
            }
        }
        QCOMPARE(CountedSamples::Stored(location), std::uint64_t(120));
    }

    void killed_data()
    {
        const Rows<bool, int> row("isServer", "times");
        row("file", false, 100);
        row("server", true, 10);
    }

    // What the process told to be stored is there, of what came after it a whole group or nothing.
    void killed()
    {
        QFETCH(bool, isServer);
        QFETCH(int, times);
        if (isServer && !canServe())
            QSKIP("no PostgreSQL server is installed");
        const QTemporaryDir directory;
        const std::string location = locationOf(isServer, directory);
        const QString spill = directory.filePath("archive.spill");
        quint32 seed = QRandomGenerator::global()->generate();
        if (qEnvironmentVariableIsSet("STATION_TEST_SEED"))
            seed = qEnvironmentVariable("STATION_TEST_SEED").toUInt();
        QRandomGenerator random(seed);
        std::uint64_t stored = 0;
        for (int i = 0; i < times; ++i) {
            QProcess writer;
            writer.setProcessChannelMode(QProcess::ForwardedErrorChannel);
            writer.start(
                QCoreApplication::applicationFilePath(),
                {"--write", QString::fromStdString(location), spill, QString::number(stored)});
            QVERIFY(writer.waitForStarted());
            // Every third one may fall while it starts, but for the first, which makes the file.
            QVERIFY((i > 0 && i % 3 == 0) || writer.waitForReadyRead());
            QThread::usleep(random.bounded(25000u));
            writer.kill();
            QVERIFY(writer.waitForFinished());
            QCOMPARE(writer.exitStatus(), QProcess::CrashExit);
            if (isServer)
                m_cluster->Sql(untilWritersEnd);
            const QByteArray output = writer.readAllStandardOutput().trimmed();
            const std::uint64_t told =
                output.isEmpty() ? stored : output.split('\n').last().toULongLong();
            try {
                stored = CountedSamples::Stored(location);
            } catch (const std::exception &error) {
                QFAIL(
                    qPrintable(QString("%1, seed %2, kill %3").arg(error.what()).arg(seed).arg(i)));
            }
            QVERIFY(stored == told || stored == told + 1);
        }
        QVERIFY(stored > std::uint64_t(times));
    }

    void cleanupTestCase() { m_cluster.reset(); }

private:
    bool canServe()
    {
        if (!m_cluster && !PrivateCluster::Programs().empty())
            m_cluster = std::make_unique<PrivateCluster>();
        return m_cluster != nullptr;
    }
    std::string locationOf(bool isServer, const QTemporaryDir &directory)
    {
        return isServer ? m_cluster->Location("base" + std::to_string(++m_count))
                        : directory.filePath("archive.sqlite").toStdString();
    }

    std::unique_ptr<PrivateCluster> m_cluster;
    int m_count = 0;
};

int main(int count, char **words)
{
    if (count == 5 && std::string(words[1]) == "--write")
        return write(words[2], words[3], std::stoull(words[4]));
    const QCoreApplication application(count, words);
    TestArchiveWriters test;
    return QTest::qExec(&test, count, words);
}

#include "tst_archive_writers.moc"
