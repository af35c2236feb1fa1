#include "nodes/CoreFixture.h"
#include "nodes/ManualClock.h"
#include "nodes/archive/FetchValueResponse.h"
#include "nodes/archive/HistoryInquiry.h"
#include "nodes/archive/HistoryService.h"
#include "nodes/archive/HistorySource.h"
#include "nodes/archive/MemoryArchive.h"
#include "nodes/archive/SignalHistoryResponse.h"
#include "nodes/archive/recording/ArchiveRecording.h"
#include "nodes/archive/systemArchiver.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/values/ValueCell.h"
#include "support/PrivateCluster.h"
#include "support/Rows.h"

#include <QtTest>

#include <cmath>
#include <future>
#include <optional>
#include <thread>

using namespace Nodes;

namespace {

using Answer = std::shared_ptr<const HistoryAnswer>;

/// A station with a level that is archived; made again it is the same station, restarted.
struct Station : CoreFixture
{
    explicit Station(const QTemporaryDir &directory, const std::string &location = "memory:")
        : CoreFixture(directory)
    {
        core.SetDataDirectory(directory.path().toStdString());
        level = add<BasicSignal>("memorySignal", root(), "level");
        state = add<BasicSignal>("memorySignal", root(), "state", {{"type", "string"}});
        archiver = add<systemArchiver>("archiver", root(), "archive", {{"location", location}});
        add("archiverSource", root(), "history", {{"signal", idOf(level)}});
        if (!core.Start())
            throw std::logic_error("not started");
    }
    Answer ask(Timestamp from, Timestamp to, std::size_t maxPoints = 0)
    {
        HistoryInquiry inquiry;
        HistoryRequest request;
        request.from = from;
        request.to = to;
        request.nodes = {level->GetNodeLink()};
        request.maxPoints = maxPoints;
        std::promise<Answer> answer;
        const Result asked = inquiry.Ask(core.GetHistory(), request,
                                         [&](const Answer &came) { answer.set_value(came); });
        return asked ? answer.get_future().get() : throw std::logic_error(asked.ToString());
    }
    /// Numbers of what is known of the level, "-" for gaps.
    QString history(Timestamp from = 0)
    {
        QStringList texts;
        const Answer answer = ask(from, 0);
        for (const double number : answer->columns[0]->numbers)
            texts << (std::isnan(number) ? QString("-") : QString::number(number));
        return texts.join(' ');
    }
    void publish(std::initializer_list<int> numbers)
    {
        for (const int number : numbers) {
            level->GetCell()->Publish(number);
            ManualClock::Use().Advance(ManualClock::second);
        }
    }
    void flush()
    {
        if (!archiver->GetRecording()->Flush())
            throw std::logic_error("not flushed");
    }

    BasicSignal *level;
    BasicSignal *state;
    systemArchiver *archiver;
};

} // namespace

class TestArchiveRecording : public QObject
{
    Q_OBJECT

private slots:
    void remembersRunsWithAGapBetween_data()
    {
        const Rows<bool, QString> row("isKilled", "location");
        row("stopped", false, "memory:");
        row("killed", true, "memory:");
        row("stopped, in a file", false, "");
        row("stopped, on a server", false, "server");
    }

    void remembersRunsWithAGapBetween()
    {
        QFETCH(bool, isKilled);
        QFETCH(QString, location);
        std::optional<PrivateCluster> cluster;
        if (location == "server") {
            if (PrivateCluster::Programs().empty())
                QSKIP("no PostgreSQL server is installed");
            location = QString::fromStdString(cluster.emplace().Location());
        }
        MemoryArchive &archive = MemoryArchive::Use();
        ManualClock &clock = ManualClock::Use();
        const QTemporaryDir directory;
        Timestamp lastKnown = 0;
        {
            Station first(directory, location.toStdString());
            first.publish({1, 2, 3});
            first.flush();
            lastKnown = clock.Now() - ManualClock::second;
            archive.setAway(isKilled); // what the stop would write does not get there
            QVERIFY(first.core.Stop());
            archive.setAway(false);
        }
        if (isKilled)
            QVERIFY(QFile::remove(directory.filePath("archive.spill")));
        clock.Advance(3600 * ManualClock::second);
        Station second(directory, location.toStdString());
        second.publish({4, 5});
        QCOMPARE(second.history(clock.Now() - ManualClock::second), QString("4 5"));
        second.flush();
        QCOMPARE(second.history(), QString("1 2 3 - 4 5"));
        const HistoryColumn column = *second.ask(0, 0)->columns[0];
        QVERIFY(column.times[3] > lastKnown &&
                column.times[3] <= lastKnown + 2 * ManualClock::second);
        QVERIFY2(column.result, column.result.ToString().c_str());
    }
};

QTEST_GUILESS_MAIN(TestArchiveRecording)
#include "tst_archive_recording.moc"
