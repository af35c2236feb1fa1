// The command records as a process, on archives in files and in a database server.
#include "nodes/archive/store/ArchiveStore.h"
#include "nodes/archive/store/SamplePacket.h"
#include "nodes/storage/SqliteDatabase.h"

#include "support/PrivateCluster.h"
#include "support/Rows.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QSet>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <random>
#include <thread>

namespace {

constexpr int patience = 60000;              // ms, on a loaded machine
constexpr int livePacket = 500;              // samples of a signal
constexpr std::chrono::milliseconds pace(2); // of a station, hurried
const QByteArray header = "time,signal,value,quality\n";
const QByteArray bucketHeader = "begin,end,signal,min,max,first,last,mean,count,quality\n";

// Everything that a value can be, as it is written.
const QByteArray everything = header + R"(2026-01-01T00:00:00.000000Z,1,0.1,good
2026-01-01T00:00:00.000000Z,2,true,good
2026-01-01T00:00:00.000001Z,1,-1e-300,uncertain
2026-01-01T00:00:00.500000Z,3,"he said ""on"", and
left",good
2026-01-01T00:00:01.000000Z,1,,bad
2026-01-01T00:00:01.000000Z,2,false,bad
2026-01-01T00:00:01.000000Z,3,"12.5",good
2026-01-01T00:00:02.000000Z,1,95.1,stale
2026-01-01T00:00:02.000000Z,2,,stale
2026-01-01T00:00:02.000000Z,3,"",good
2026-01-01T00:00:03.000000Z,1,1.7976931348623157e+308,good
2026-01-01T00:00:03.000000Z,3,"Насос «Н1» включён",uncertain
)";

struct Answer
{
    int code = -1;
    QByteArray out, err;
};

Answer records(const QStringList &arguments, const QByteArray &input = {})
{
    QProcess process;
    process.start(QStringLiteral(STATION_BINARY_DIR "/bin/records"),
                  QStringList{"archive"} + arguments);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(patience))
        process.kill();
    const bool isOver = process.exitStatus() == QProcess::NormalExit;
    return {isOver ? process.exitCode() : -1, process.readAllStandardOutput(),
            process.readAllStandardError()};
}

/// A table of `count` rows of five signals in the order of time.
QByteArrayList manyRows(int count)
{
    QByteArrayList rows;
    for (int i = 0; i < count; ++i)
        rows << QStringLiteral("2026-01-01T%1:%2:%3.000000Z,%4,%5,good\n")
                    .arg(i / 5 / 3600, 2, 10, QChar('0'))
                    .arg(i / 5 / 60 % 60, 2, 10, QChar('0'))
                    .arg(i / 5 % 60, 2, 10, QChar('0'))
                    .arg(i % 5 + 1)
                    .arg(i % 977 * 0.25)
                    .toUtf8();
    return rows;
}

} // namespace

class RecordsTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_directory = std::make_unique<QTemporaryDir>(); }
    void cleanupTestCase() { m_cluster.reset(); }

    void carriesTablesInAndOut_data()
    {
        const Rows<QByteArray> row("place");
        row("a data directory", "directory");
        row("a file", "file");
        row("a database", "database");
    }
    void carriesTablesInAndOut()
    {
        QFETCH(QByteArray, place);
        if (place == "database" && PrivateCluster::Programs().empty())
            QSKIP("no PostgreSQL server on this machine");
        const QString store = storeAt(place);
        // Nothing may depend on the order of the rows.
        QByteArrayList rows = manyRows(20000);
        const QByteArray ordered = header + rows.join();
        std::shuffle(rows.begin(), rows.end(), std::mt19937(3));
        for (int i = 0; i < 2; ++i) {
            const Answer taken = records({"import", store, "-"}, header + rows.join());
            QVERIFY2(taken.code == 0, taken.err);
        }
        QCOMPARE(records({"export", store}).out, ordered);
        const Answer sound = records({"verify", store});
        QVERIFY2(sound.code == 0 && sound.out.contains("20000 samples of 5 signals"), sound.out);
    }

    void keepsEveryKindOfValue()
    {
        QCOMPARE(records({"import", file(), "-"}, everything).code, 0);
        QCOMPARE(records({"export", file()}).out, everything);
        // The first of each time stays.
        QByteArray others = everything;
        others.replace("95.1", "96").replace("true", "false").replace(",,bad", ",7,good");
        QCOMPARE(records({"import", file(), "-"}, others).code, 0);
        QCOMPARE(records({"export", file()}).out, everything);
    }

    void keepsWhateverTextsHold_data()
    {
        const Rows<int> row("seed");
        for (int seed = 1; seed <= 4; ++seed)
            row(qPrintable(QStringLiteral("seed %1").arg(seed)), seed);
    }
    void keepsWhateverTextsHold()
    {
        QFETCH(int, seed);
        std::mt19937 chance{unsigned(seed)};
        const QByteArrayList pieces{"\"\"", ",", "\n", "\r", ";", " ", "ы", "true", "1", "\t", "'"};
        QByteArray table = header;
        for (int i = 0; i < 500; ++i) {
            QByteArray text;
            for (std::size_t k = chance() % 12; k > 0; --k)
                text += pieces[int(chance() % unsigned(pieces.size()))];
            table +=
                QStringLiteral("2026-01-01T00:00:00.%1Z,1,\"").arg(i, 6, 10, QChar('0')).toUtf8() +
                text + "\",good\n";
        }
        const Answer taken = records({"import", file(), "-"}, table);
        QVERIFY2(taken.code == 0, taken.err);
        QCOMPARE(records({"export", file()}).out, table);
    }

    void knowsTheProject()
    {
        const QString project = m_directory->filePath("project.xml");
        QFile written(project);
        QVERIFY(written.open(QIODevice::WriteOnly));
        written.write(
            R"(<project format="1" id="1" name="P" uuid="11111111-1111-4111-8111-111111111111">
<station id="2" name="S"><memorySignal id="10" name="T" unit="°C"/></station></project>)");
        written.close();
        const QByteArray table = header + "2026-01-01T00:00:00.000000Z,10,1,good\n"
                                          "2026-01-01T00:00:00.000000Z,11,1,good\n";
        const Answer refused = records({"import", file(), "-", "--project", project}, table);
        QCOMPARE(refused.code, 1);
        QVERIFY2(refused.err.contains("standard input:3: neither the project nor"), refused.err);
        const Answer told = records({"info", file()});
        QVERIFY2(told.out.contains("station 2 \"S\"") && told.out.contains("S/T"), told.out);
        QVERIFY2(told.out.contains("1 signals, 1 samples"), told.out);
        // What was deleted since is kept, and said to be.
        QCOMPARE(records({"import", file(), "-"}, table).code, 0);
        const Answer deleted = records({"info", file(), "--project", project});
        QCOMPARE(deleted.out.count("not in the project"), 1);
    }

    void readsWhatOthersWrite_data()
    {
        const Rows<QByteArray, QByteArray> row("table", "read");
        const QByteArray nine = "2026-11-22T09:00:00.000000Z,5,";
        row("CR LF and a mark",
            "\xef\xbb\xbftime,signal,value,quality\r\n2026-11-22T09:00:00Z,5,1,good\r\n",
            nine + "1,good\n");
        row("no line end", header + "2026-11-22 12:00:00.0+03:00,5,1.50,Good", nine + "1.5,good\n");
        row("other offsets", header + "2026-11-22T04:30:00-0430,5,1,good\n", nine + "1,good\n");
        row("nanoseconds", header + "2026-11-22T09:00:00.000000000Z,5,1,good\n", nine + "1,good\n");
        row("semicolons", "time;signal;value;quality\n2026-11-22T09:00:00Z;5;1,5;good\n",
            nine + "1.5,good\n");
        row("all in quotes",
            "\"time\",\"signal\",\"value\",\"quality\"\n"
            "\"2026-11-22T09:00:00Z\",\"5\",\"1e3\",\"good\"\n"
            "\"2026-11-22T09:00:01Z\",\"5\",\"on\",\"good\"\n"
            "\"2026-11-22T09:00:02Z\",\"5\",\"\",\"bad\"\n",
            nine + "1000,good\n2026-11-22T09:00:01.000000Z,5,\"on\",good\n"
                   "2026-11-22T09:00:02.000000Z,5,,bad\n");
        row("blanks and empty lines", header + "\n 2026-11-22T09:00Z , 5 , TRUE , good \n\n",
            nine + "true,good\n");
    }
    void readsWhatOthersWrite()
    {
        QFETCH(QByteArray, table);
        QFETCH(QByteArray, read);
        const Answer taken = records({"import", file(), "-"}, table);
        QVERIFY2(taken.code == 0, taken.err);
        QCOMPARE(records({"export", file()}).out, header + read);
    }

    void namesBadLines_data()
    {
        const Rows<QByteArray, QByteArray> row("line", "told");
        row("no offset", "2026-11-22T09:00:00,1,2,good", ":3:1: \"2026-11-22T09:00:00\" does not");
        row("no such day", "2026-02-29T09:00:00Z,1,2,good", ":3:1: ");
        row("too fine", "2026-11-22T09:00:00.0000001Z,1,2,good", ":3:1: ");
        row("no id", "2026-11-22T09:00:00Z,K1,2,good", ":3:22: \"K1\" is no id");
        row("a bare text", "2026-11-22T09:00:00Z,1,on,good", ":3:24: \"on\" is neither");
        row("no value", "2026-11-22T09:00:00Z,1,,good", ":3:24: the value is missing");
        row("not finite", "2026-11-22T09:00:00Z,1,inf,good", ":3:24: ");
        row("no quality", "2026-11-22T09:00:00Z,1,2,", ":3:26: \"\" is no quality");
        row("a decimal comma", "2026-11-22T09:00:00Z,1,2,5,good", ":3:28: a row has 4 fields");
        row("a stray quote", "2026-11-22T09:00:00Z,1,\"on\"e,good", ":3:28: ");
        row("never closed", "2026-11-22T09:00:00Z,1,\"on,good",
            ":3:24: the quote that begins here");
        row("no UTF-8", "2026-11-22T09:00:00Z,1,\"\xff\",good", ":3:24: the text is no UTF-8");
    }
    void namesBadLines()
    {
        QFETCH(QByteArray, line);
        QFETCH(QByteArray, told);
        const QByteArray first = "2026-11-22T08:00:00.000000Z,1,1,good\n";
        const QByteArray last = "2026-11-22T10:00:00.000000Z,1,3,good\n";
        QFile table(m_directory->filePath("table.csv"));
        QVERIFY(table.open(QIODevice::WriteOnly));
        table.write(header + first + line + '\n' + last);
        table.close();
        const Answer stopped = records({"import", file(), table.fileName()});
        QCOMPARE(stopped.code, 1);
        QVERIFY2(stopped.err.contains(table.fileName().toUtf8() + told), stopped.err);
        QVERIFY2(stopped.err.contains("1 samples are in the archive, of lines 2 to 2"),
                 stopped.err);
        QCOMPARE(records({"export", file()}).out, header + first);
        const Answer passed = records({"import", file(), table.fileName(), "--skip-bad"});
        QCOMPARE(passed.code, 1);
        QVERIFY2(passed.err.contains("1 lines were passed over"), passed.err);
        const bool swallowsTheRest = told.contains("never closed") || told.contains("begins here");
        QCOMPARE(records({"export", file()}).out, header + first + (swallowsTheRest ? "" : last));
    }

    void exportsSpans_data()
    {
        const Rows<QStringList, QByteArray> row("options", "table");
        const auto sample = [](int i) { return manyRows(100)[i]; };
        row("both ends",
            {"--signal", "2", "--from", "2026-01-01T00:00:03Z", "--to",
             "2026-01-01T03:00:04+03:00"},
            header + sample(16) + sample(21));
        row("two signals", {"--signal", "5", "--signal", "1", "--to", "2026-01-01T00:00:00Z"},
            header + sample(0) + sample(4));
        row("nothing there", {"--from", "2027-01-01"}, header);
        row("buckets",
            {"--signal", "1", "--from", "2026-01-01T00:00:02Z", "--to", "2026-01-01T00:00:06Z",
             "--points", "2"},
            bucketHeader +
                "2026-01-01T00:00:02.000000Z,2026-01-01T00:00:04.000000Z,1,2.5,3.75,2.5,3.75,"
                "3.125,2,good\n"
                "2026-01-01T00:00:04.000000Z,2026-01-01T00:00:06.000000Z,1,5,6.25,5,6.25,5.625,2,"
                "good\n");
        row("an empty bucket",
            {"--signal", "1", "--from", "2025-01-01", "--to", "2025-01-02", "--points", "1"},
            bucketHeader +
                "2025-01-01T00:00:00.000000Z,2025-01-02T00:00:00.000000Z,1,,,,,,0,bad\n");
    }
    void exportsSpans()
    {
        QFETCH(QStringList, options);
        QFETCH(QByteArray, table);
        QCOMPARE(records({"import", file(), "-"}, header + manyRows(100).join()).code, 0);
        const Answer exported = records(QStringList{"export", file()} + options);
        QCOMPARE(exported.out, table);
        QCOMPARE(exported.code, 0);
    }

    void keepsFilesWholeAndTellsOfFailures()
    {
        QCOMPARE(records({"import", file(), "-"}, header + manyRows(20000).join()).code, 0);
        const Answer full = records({"export", file(), "-o", "/dev/full"});
        QCOMPARE(full.code, 1);
        QVERIFY2(full.err.contains("/dev/full") && full.err.contains("No space"), full.err);
        QProcess process;
        process.start("bash", {"-c",
                               "set -o pipefail; " STATION_BINARY_DIR
                               "/bin/records archive export \"$0\" | head -1",
                               file()});
        QVERIFY(process.waitForFinished(patience));
        QCOMPARE(process.readAllStandardOutput(), header);
        QCOMPARE(process.exitCode(), 1);
        QVERIFY(process.readAllStandardError().contains("went away"));

        const QString table = m_directory->filePath("table.csv");
        QCOMPARE(records({"export", file(), "-o", table, "--to", "2026-01-01"}).code, 0);
        QCOMPARE(records({"export", file(), "-o", table, "--signal", "77"}).code, 1);
        QFile kept(table);
        QVERIFY(kept.open(QIODevice::ReadOnly));
        QCOMPARE(kept.readAll(), header + manyRows(5).join());
        QCOMPARE(QDir(m_directory->path()).entryList({"table*"}).size(), 1);
    }

    void asksWhoseSamplesAreMeant()
    {
        const QString one = "11111111-1111-4111-8111-111111111111";
        const QString other = "22222222-2222-4222-8222-222222222222";
        const QByteArray rows = manyRows(5).join();
        for (const QString &project : {one, other})
            QCOMPARE(records({"import", file(), "-", "--project", project, "--station", "2"},
                             header + rows)
                         .code,
                     0);
        const Answer unclear = records({"export", file()});
        QCOMPARE(unclear.code, 1);
        QVERIFY2(unclear.err.contains(one.toUtf8()) && unclear.err.contains(other.toUtf8()),
                 unclear.err);
        QCOMPARE(records({"import", file(), "-"}, header + rows).code, 1);
        QCOMPARE(records({"export", file(), "--project", other}).out, header + rows);
        QCOMPARE(records({"export", file(), "--project", other, "--station", "3"}).out, header);
    }

    void worksBesideARunningStation_data() { carriesTablesInAndOut_data(); }
    void worksBesideARunningStation()
    {
        QFETCH(QByteArray, place);
        if (place == "database" && PrivateCluster::Programs().empty())
            QSKIP("no PostgreSQL server on this machine");
        const QString store = storeAt(place);
        // The archive knows whose samples they are.
        QCOMPARE(records({"import", store, "-"}, header + manyRows(5).join()).code, 0);
        std::atomic<bool> isEnding{false};
        std::atomic<int> live{0};
        std::thread station([&] { record(place, isEnding, live); });
        const QByteArray table = header + manyRows(100000).join();
        const Answer taken = records({"import", store, "-"}, table);
        isEnding = true;
        station.join();
        QVERIFY2(taken.code == 0, taken.err);
        QVERIFY(live > 0);
        const QStringList old{"export", store, "--to", "2026-02-01"};
        QVERIFY(records(old).out == table);
        QCOMPARE(records({"export", store, "--from", "2026-02-01"}).out.count('\n'),
                 1 + 2 * live * livePacket);
        const Answer sound = records({"verify", store});
        QVERIFY2(sound.code == 0, sound.out);
    }

    void findsAndRepairsDamage_data()
    {
        const Rows<QByteArray, QByteArray, int> row("harm", "found", "lost");
        row("a chunk",
            "UPDATE blocks SET data = zeroblob(100) WHERE id = (SELECT id FROM blocks "
            "WHERE height = 0 AND signal = 2 ORDER BY first LIMIT 1 OFFSET 1)",
            "signal 2 \"", 4096);
        row("a chunk of another signal",
            "UPDATE blocks SET data = (SELECT data FROM blocks WHERE height = 0 AND signal = 1) "
            "WHERE id = (SELECT min(id) FROM blocks WHERE height = 0 AND signal = 3)",
            "signal 3 \"", 4096);
        row("aggregates", "UPDATE aggregates SET data = x'0102' WHERE height = 1", "height 1", 0);
        row("a row is gone", "DELETE FROM aggregates WHERE height = 1 AND signal = 5",
            "signal 5 \"", 0);
    }
    void findsAndRepairsDamage()
    {
        QFETCH(QByteArray, harm);
        QFETCH(QByteArray, found);
        QFETCH(int, lost);
        const QByteArrayList rows = manyRows(5 * 16384);
        QCOMPARE(records({"import", file(), "-"}, header + rows.join()).code, 0);
        {
            Nodes::SqliteDatabase database;
            QVERIFY(database.Open(file().toStdString(), Nodes::SqliteDatabase::Mode::ReadWrite));
            QVERIFY(database.Execute(harm.constData()));
        }
        const Answer harmed = records({"verify", file()});
        QCOMPARE(harmed.code, 1);
        QVERIFY2(harmed.out.contains(found), harmed.out);
        const Answer repaired = records({"repair", file()});
        QVERIFY2(repaired.code == 0, repaired.out + repaired.err);
        QCOMPARE(records({"verify", file()}).code, 0);
        const QByteArray exported = records({"export", file()}).out;
        QCOMPARE(exported.count('\n'), 1 + rows.size() - lost);
        const QSet<QByteArray> known(rows.begin(), rows.end());
        for (const QByteArray &line : exported.mid(header.size()).split('\n'))
            QVERIFY2(line.isEmpty() || known.contains(line + '\n'), line);
        // What it was is still there.
        const QStringList kept = QDir(m_directory->path()).entryList({"*.damaged-*"});
        QVERIFY(!kept.isEmpty());
        QCOMPARE(records({"verify", m_directory->filePath(kept.front())}).code, 1);
    }

    void savesWhatIsLeftOfAFileThatWasCut()
    {
        QByteArrayList rows = manyRows(5 * 16384);
        std::mt19937 random(3); // what takes room
        for (QByteArray &row : rows)
            row.replace(row.indexOf("Z,") + 4, row.lastIndexOf(',') - row.indexOf("Z,") - 4,
                        QByteArray::number(uint(random() % 100000)));
        QCOMPARE(records({"import", file(), "-"}, header + rows.join()).code, 0);
        QVERIFY(QFile::resize(file(), QFileInfo(file()).size() * 9 / 10 / 4096 * 4096));
        QCOMPARE(records({"verify", file()}).code, 1);
        const Answer repaired = records({"repair", file()});
        QVERIFY2(repaired.code == 0, repaired.out + repaired.err);
        const QByteArray saved = records({"export", file()}).out;
        QVERIFY2(saved.count('\n') > rows.size() / 4, repaired.out);
        const QSet<QByteArray> known(rows.begin(), rows.end());
        for (const QByteArray &line : saved.mid(header.size()).split('\n'))
            QVERIFY2(line.isEmpty() || known.contains(line + '\n'), line);
    }

    void savesWhatIsReadableOfABrokenFile()
    {
        const QByteArrayList rows = manyRows(5 * 16384);
        QCOMPARE(records({"import", file(), "-"}, header + rows.join()).code, 0);
        QFile broken(file());
        QVERIFY(broken.open(QIODevice::ReadWrite));
        for (qint64 place = broken.size() / 4; place < broken.size() * 3 / 4; place += 4096) {
            broken.seek(place);
            broken.write(QByteArray(3000, '\xa5'));
        }
        broken.close();
        QCOMPARE(records({"verify", file()}).code, 1);
        const Answer repaired = records({"repair", file()});
        QVERIFY2(repaired.code == 0, repaired.out + repaired.err);
        QCOMPARE(records({"verify", file()}).code, 0);
        const int saved = records({"export", file()}).out.count('\n');
        QVERIFY2(saved > rows.size() / 4 && saved <= 1 + rows.size(),
                 qPrintable(QString::number(saved)));

        QVERIFY(broken.open(QIODevice::WriteOnly | QIODevice::Truncate));
        broken.write(header);
        broken.close();
        const Answer hopeless = records({"repair", file()});
        QCOMPARE(hopeless.code, 1);
        QVERIFY2(hopeless.err.contains("nothing can be read of it"), hopeless.err);
        // Whatever it is: it may have been named by mistake.
        QCOMPARE(records({"import", file(), "-"}, header + rows.front()).code, 1);
        QVERIFY(broken.open(QIODevice::ReadOnly));
        QCOMPARE(broken.readAll(), header);
    }

    void leavesWhatALaterVersionWrote()
    {
        QCOMPARE(records({"import", file(), "-"}, header + manyRows(10).join()).code, 0);
        {
            Nodes::SqliteDatabase database;
            QVERIFY(database.Open(file().toStdString(), Nodes::SqliteDatabase::Mode::ReadWrite));
            QVERIFY(database.Execute("PRAGMA user_version = 99"));
        }
        for (const char *command : {"verify", "repair", "export"})
            QCOMPARE(records({command, file()}).code, 1);
        QCOMPARE(QDir(m_directory->path()).entryList({"*.damaged*", "some.sqlite"}),
                 QStringList("some.sqlite"));
    }

    void makesUpAPast_data() { carriesTablesInAndOut_data(); }
    void makesUpAPast()
    {
        QFETCH(QByteArray, place);
        if (place == "database" && PrivateCluster::Programs().empty())
            QSKIP("no PostgreSQL server on this machine");
        const QString store = storeAt(place);
        const QString project = m_directory->filePath("project.xml");
        QFile written(project);
        QVERIFY(written.open(QIODevice::WriteOnly));
        written.write(
            R"(<project format="1" id="1" name="P" uuid="11111111-1111-4111-8111-111111111111">
<station id="2" name="S"><archiver id="3" name="A"><archiverSource id="4" name="T" signal="10"/>
<archiverSource id="5" name="R" signal="11"/></archiver>
<memorySignal id="10" name="Temp" unit="°C" minimum="0" maximum="100"/>
<memorySignal id="11" name="Pump2.Running" type="bool"/><memorySignal id="12" name="Other"/>
</station></project>)");
        written.close();
        const QStringList wish{"--project", project, "--span", "3d", "--to", "2026-03-04"};
        const QByteArray real = header + "2026-03-02T00:00:00.000000Z,10,55.5,good\n"
                                         "2026-03-03T12:00:00.000000Z,10,55,good\n";
        QCOMPARE(records({"import", store, "-", "--project", project}, real).code, 0);
        const Answer made = records(QStringList{"generate", store} + wish);
        QVERIFY2(made.code == 0, made.err);
        const QByteArray all = records({"export", store}).out;
        QCOMPARE(records({"export", store, "--signal", "10", "--from", "2026-03-02"}).out, real);
        const QByteArray before = records({"export", store, "--signal", "10"}).out;
        QVERIFY(before.startsWith(header + "2026-03-01T00:00:00.000000Z,10,"));
        QVERIFY(before.count('\n') > 1000 && before.endsWith(real.mid(header.size())));
        for (const QByteArray &line : before.split('\n').mid(1, 1000)) {
            const double value = line.split(',')[2].toDouble();
            QVERIFY2((value > 40 && value < 100) || line.contains(",,bad"), line);
        }
        const QByteArray pump = records({"export", store, "--signal", "11"}).out;
        QVERIFY(pump.contains(",true,") && pump.contains(",false,"));
        // It does not get more, nor other.
        QCOMPARE(records(QStringList{"generate", store} + wish).code, 0);
        QCOMPARE(records({"export", store}).out, all);

        const Answer told = records({"info", store, "--project", project, "--json"});
        const QJsonArray known = QJsonDocument::fromJson(told.out).object()["signals"].toArray();
        QCOMPARE(known.size(), 2);
        QCOMPARE(known[0].toObject()["generatedFrom"].toString(), "2026-03-01T00:00:00.000000Z");
        QVERIFY(known[0].toObject()["generatedTo"].toString() < "2026-03-02");
        QCOMPARE(known[0].toObject()["last"].toString(), "2026-03-03T12:00:00.000000Z");
        QCOMPARE(known[1].toObject()["name"].toString(), "S/Pump2.Running");
    }

    void repairsADatabase()
    {
        if (PrivateCluster::Programs().empty())
            QSKIP("no PostgreSQL server on this machine");
        storeAt("database");
        const QString store = QString::fromStdString(m_cluster->Location());
        QCOMPARE(records({"import", store, "-"}, header + manyRows(5 * 16384).join()).code, 0);
        m_cluster->Sql("UPDATE archive.blocks SET bytes = '\\x0102' WHERE id IN (SELECT id FROM "
                       "archive.blocks WHERE height = 0 AND signal = 2 LIMIT 2)");
        const Answer harmed = records({"verify", store});
        QVERIFY2(harmed.code == 1 && harmed.out.contains("signal 2"), harmed.out + harmed.err);
        const Answer repaired = records({"repair", store});
        QVERIFY2(repaired.code == 0, repaired.out + repaired.err);
        QCOMPARE(records({"verify", store}).code, 0);
        QCOMPARE(records({"export", store}).out.count('\n'), 1 + 4 * 16384 + 2 * 4096);
    }

    void endsInOrderWhenStopped()
    {
        QProcess process;
        process.start(QStringLiteral(STATION_BINARY_DIR "/bin/records"),
                      {"archive", "import", file(), "-"});
        process.write(header + manyRows(5).join());
        QVERIFY(process.waitForStarted(patience));
        QVERIFY(process.waitForBytesWritten(patience));
        // It goes on to the rows when the archive is there.
        QTRY_VERIFY_WITH_TIMEOUT(QFileInfo(file()).size() > 0, patience);
        process.terminate();
        QVERIFY(process.waitForFinished(patience));
        QCOMPARE(process.exitCode(), 1);
        // Whatever it had come to, that is what it tells.
        const QByteArray told = process.readAllStandardError();
        const QByteArray stored = records({"export", file()}).out;
        if (told.contains("no samples were imported"))
            QCOMPARE(stored, header);
        else
            QCOMPARE(stored, header + manyRows(5).join());
        QVERIFY2(told.contains("stopped") &&
                     (stored == header || told.contains("5 samples are in the archive, of "
                                                        "lines 2 to 6")),
                 told);
    }

    void refusesWrongCommandLines_data()
    {
        const Rows<QStringList, int> row("arguments", "code");
        row("no command", {}, 2);
        row("no store", {"info"}, 2);
        row("a time that is none", {"export", "x", "--from", "yesterday"}, 2);
        row("a span that is none", {"generate", "x", "--project", "x", "--span", "30"}, 2);
        row("an id that is none", {"export", "x", "--signal", "-1"}, 2);
        row("no archive there", {"info", "/proc/none"}, 1);
        row("no table there", {"import", "/tmp/never/made", "/proc/none"}, 1);
        row("help", {"export", "--help"}, 0);
    }
    void refusesWrongCommandLines()
    {
        QFETCH(QStringList, arguments);
        const Answer answer = records(arguments);
        QTEST(answer.code, "code");
        QVERIFY(!answer.err.isEmpty() || answer.code == 0);
    }

private:
    QString file() const { return m_directory->filePath("some.sqlite"); }
    QString storeAt(const QByteArray &place)
    {
        if (place == "file")
            return file();
        if (place == "directory")
            return m_directory->path();
        if (!m_cluster)
            m_cluster = std::make_unique<PrivateCluster>();
        return QString::fromStdString(m_cluster->Location("d" + std::to_string(++m_databases)));
    }
    std::string locationAt(const QByteArray &place) const
    {
        if (place == "database")
            return m_cluster->Location("d" + std::to_string(m_databases));
        const QString path = place == "file" ? file() : m_directory->filePath("archive.sqlite");
        return path.toStdString();
    }
    /// As a station does: a sample each of two signals, again and again.
    void record(const QByteArray &place, const std::atomic<bool> &isEnding, std::atomic<int> &count)
    {
        std::unique_ptr<Nodes::ArchiveStore> store;
        Nodes::StoreOpening opening;
        if (!Nodes::ArchiveStores().Make(locationAt(place), store) || !store->Open(opening))
            return;
        constexpr Nodes::Timestamp march = 1772323200000000;
        for (std::uint64_t key = 1; !isEnding || count == 0; ++key) {
            Nodes::SamplePacket packet;
            // So many that both pack chunks of the same signal.
            for (const unsigned long signal : {1ul, 9ul}) {
                packet.parts.emplace_back().signal.source.node = signal;
                for (int i = 0; i < livePacket; ++i)
                    packet.parts.back().run.Add(march + Nodes::Timestamp(key) * livePacket + i, 1,
                                                Nodes::Quality::Good);
            }
            const Nodes::Records written{
                {key, Nodes::SamplePacket::Format().version, packet.Pack()}};
            std::vector<std::uint64_t> numbers;
            while (!store->Write(written, numbers) && store->IsOpen())
                std::this_thread::yield();
            ++count;
            std::this_thread::sleep_for(pace);
        }
        store->Close();
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<PrivateCluster> m_cluster;
    int m_databases = 0;
};

QTEST_GUILESS_MAIN(RecordsTest)
#include "tst_records_command.moc"
