#include "nodes/journal/EventJournal.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <cstdio>
#include <set>

using namespace Nodes;

namespace {

constexpr int groupSize = 20;
constexpr int times = 100;

/// Goes on appending groups, from that number on, and tells of each that is safe.
int write(const std::string &location, std::uint64_t group)
{
    EventJournal journal;
    if (!journal.Open(location))
        return 1;
    for (;; ++group) {
        for (int i = 0; i < groupSize; ++i) {
            BasicEvent event;
            event.text = std::to_string(group * groupSize + static_cast<unsigned>(i));
            event.source = "Насос " + std::to_string(i % 7);
            if (!journal.Append(event))
                return 2;
        }
        if (!journal.Flush())
            return 3;
        std::printf("%llu\n", static_cast<unsigned long long>(group + 1));
        std::fflush(stdout);
    }
}

} // namespace

class TestJournalKilled : public QObject
{
    Q_OBJECT

private slots:
    // What was told to be stored is there once and in order, and the chain is whole.
    void keepsWhatWasStored()
    {
        const QTemporaryDir directory;
        const QString location = directory.filePath("journal.sqlite");
        quint32 seed = QRandomGenerator::global()->generate();
        if (qEnvironmentVariableIsSet("STATION_TEST_SEED"))
            seed = qEnvironmentVariable("STATION_TEST_SEED").toUInt();
        QRandomGenerator random(seed);
        std::uint64_t begun = 0; // groups that a killed process may have stored
        std::uint64_t stored = 0;
        for (int i = 0; i < times; ++i) {
            QProcess writer;
            writer.setProcessChannelMode(QProcess::ForwardedErrorChannel);
            writer.start(QCoreApplication::applicationFilePath(),
                         {"--write", location, QString::number(begun)});
            QVERIFY(writer.waitForStarted());
            // Every third one may fall while it starts.
            QVERIFY(i % 3 == 0 || writer.waitForReadyRead());
            QThread::usleep(random.bounded(20000u));
            writer.kill();
            QVERIFY(writer.waitForFinished());
            QCOMPARE(writer.exitStatus(), QProcess::CrashExit);
            const QByteArray output = writer.readAllStandardOutput().trimmed();
            if (!output.isEmpty()) {
                const std::uint64_t told = output.split('\n').last().toULongLong();
                for (; begun < told; ++begun)
                    m_told.insert(begun);
                stored += 1;
            }
            ++begun; // one more may be there, or a part of it
            const QByteArray context = QString("seed %1, kill %2").arg(seed).arg(i).toUtf8();
            check(location.toStdString(), context);
            if (QTest::currentTestFailed())
                return;
        }
        QVERIFY(stored > times / 2);
    }

private:
    void check(const std::string &location, const QByteArray &context)
    {
        EventJournal journal;
        QVERIFY2(journal.Open(location) && journal.Flush(), context);
        const Result verified = journal.Verify();
        QVERIFY2(verified, context + ": " + verified.GetDetail().c_str());
        JournalQuery all;
        all.limit = SIZE_MAX;
        std::vector<BasicEvent> events;
        QVERIFY2(journal.Query(all, events), context);
        std::set<std::uint64_t> numbers;
        for (const BasicEvent &event : events) {
            if (event.source.rfind("Насос", 0) == 0)
                QVERIFY2(numbers.insert(std::stoull(event.text)).second, context + ": twice");
        }
        for (const std::uint64_t group : m_told) {
            for (unsigned i = 0; i < groupSize; ++i)
                QVERIFY2(numbers.count(group * groupSize + i) == 1, context + ": lost");
        }
    }

    std::set<std::uint64_t> m_told; // groups
};

int main(int count, char **words)
{
    if (count == 4 && std::string(words[1]) == "--write")
        return write(words[2], std::stoull(words[3]));
    const QCoreApplication application(count, words);
    TestJournalKilled test;
    return QTest::qExec(&test, count, words);
}

#include "tst_journal_killed.moc"
