// The station as a process: what it answers to its command line, its project and its end.
#include "nodes/ProjectFixture.h"
#include "support/Rows.h"

#include "nodes/archive/store/ArchiveReader.h"
#include "nodes/auth/systemAuthentication.h"

#include <QDir>
#include <QImage>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int patience = 30000; // ms, on a loaded machine

const QByteArray goodProject = R"(<project format="1" id="1" name="P">
<memorySignal id="2" name="S" initial="1"/>
<window id="3" name="Main" width="200" height="100"><label id="4" name="L" text="t" width="50"/></window>
<window id="5" name="Other window" width="120" height="80"><label id="6" name="L" text="t"/></window>
<frame id="7" name="F" windows="3"/>
</project>)";

} // namespace

class StationTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_directory = std::make_unique<QTemporaryDir>(); }
    void refusesToStart_data()
    {
        QTest::addColumn<QByteArray>("project");
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<int>("code");
        QTest::addColumn<QByteArray>("message");
        const auto row = [](const char *name, const char *project, const QStringList &options,
                            int code, const char *message) {
            QTest::newRow(name) << QByteArray(project) << options << code << QByteArray(message);
        };
        row("malformed", "<project format='1' id='1'>\n\n<folder></project>", {}, 1, "p.xml:3");
        row("newer", "\n<project format='99'/>", {}, 1, "p.xml:2");
        row("no frames", "<project format='1' id='1'/>", {}, 1, "no frames");
        row("unknown station",
            "<project format='1' id='1'><station id='2' name='North'/></project>",
            {"--station", "South"}, 1, "it has \"North\"");
        row("unknown option", goodProject, {"--colour"}, 2, "--colour");
        row("bad define", goodProject, {"--define", "=3"}, 2, "NAME=VALUE");
        row("bad span", goodProject, {"--generate-history", "30"}, 2, "\"30\" is no span");
        row("nothing to fill", goodProject, {"--generate-history", "30d"}, 1, "no archive");
        row("bad size", goodProject, {"--screenshots", "/proc/none", "--screen-size", "6x"}, 2,
            "6x");
        row("bad data directory", goodProject, {"--data", "/proc/none"}, 1, "/proc/none");
    }
    void refusesToStart()
    {
        QFETCH(QByteArray, project);
        QFETCH(QStringList, options);
        QFETCH(QByteArray, message);
        QProcess station;
        start(station, QStringList{write(project)} + options);
        QTEST(finish(station), "code");
        const QByteArray said = station.readAllStandardError();
        QVERIFY2(said.contains(message), said);
    }
    void takesPictures_data()
    {
        const Rows<QByteArray, QStringList, QSize, QSize> row("fit", "options", "inFrame",
                                                              "openedOverIt");
        row("as drawn", QByteArray("asDrawn"), QStringList(), QSize(200, 100), QSize(120, 80));
        row("fitted", QByteArray("fit"), QStringList{"--screen-size", "3000x1000"},
            QSize(2000, 1000), QSize(1200, 800));
    }
    void takesPictures()
    {
        QFETCH(QByteArray, fit);
        QFETCH(QStringList, options);
        const QByteArray project =
            QByteArray(goodProject).replace("<frame", "<frame fit=\"" + fit + '"');
        const QDir pictures(m_directory->filePath(QStringLiteral("снимки")));
        QProcess station;
        start(station, QStringList{write(project), "--screenshots", pictures.path()} + options);
        QCOMPARE(finish(station), 0);
        QCOMPARE(pictures.entryList(QDir::Files),
                 QStringList({"Main-3.png", "Other_window-5.png"}));
        QTEST(QImage(pictures.filePath("Main-3.png")).size(), "inFrame");
        QTEST(QImage(pictures.filePath("Other_window-5.png")).size(), "openedOverIt");
        QCOMPARE(station.readAllStandardOutput().count('\n'), 2);
    }
    void opensTheSamplesLive_data()
    {
        const Rows<QStringList> row("options");
        row("boiler", {"--simulate", "--define", "plant.port=1"});
        row("pumps", {});
    }
    void opensTheSamplesLive()
    {
        QFETCH(QStringList, options);
        const QString project =
            QStringLiteral(STATION_SOURCE_DIR "/projects/") + QTest::currentDataTag();
        QFile file(project + "/project.xml");
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QDir pictures(m_directory->filePath(QStringLiteral("снимки")));
        QProcess station;
        start(station, QStringList{project, "--screenshots", pictures.path()} + options);
        QCOMPARE(finish(station), 0);
        const QString printed = QString::fromUtf8(station.readAllStandardOutput());
        for (const QString &line : printed.split('\n', Qt::SkipEmptyParts))
            QVERIFY2(line.endsWith(" live"), qPrintable(line));
        const QRegularExpression page("<composition [^>]*name=\"([^\"]+)\"");
        auto pages = page.globalMatch(QString::fromUtf8(file.readAll()));
        QVERIFY(pages.hasNext());
        while (pages.hasNext()) {
            const QString name = pages.next().captured(1).replace(' ', '_');
            QVERIFY2(printed.contains('/' + name + '-'), qPrintable(name));
        }
    }
    void endsOnSignal_data()
    {
        const Rows<int> row("signal");
        row("SIGTERM", SIGTERM);
        row("SIGINT", SIGINT);
    }
    void endsOnSignal()
    {
        QFETCH(int, signal);
        QProcess station;
        startGood(station);
        ::kill(pid_t(station.processId()), signal);
        QCOMPARE(finish(station), 0);
        QCOMPARE(QFileInfo(m_directory->filePath("data/station.lock")).size(), 0);
    }
    void keepsMadeUpValuesApart()
    {
        QByteArray project = goodProject;
        project.replace("<memorySignal",
                        "<modbusDriver id=\"30\" name=\"D\" port=\"1\">"
                        "<modbusGroup id=\"31\" name=\"G\"><modbusSignal id=\"32\" "
                        "name=\"T\"/></modbusGroup></modbusDriver><memorySignal");
        const QString data = m_directory->filePath("data");
        QProcess station;
        start(station, {write(project), "--data", data, "--simulate"});
        const QString journal = data + "/simulation/journal.sqlite";
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(journal), patience);
        station.terminate();
        QCOMPARE(finish(station), 0);
        QVERIFY(!QFile::exists(data + "/journal.sqlite"));
        QFile entries(journal);
        QVERIFY(entries.open(QIODevice::ReadOnly));
        const QByteArray told = entries.readAll();
        QVERIFY(told.contains("Работа с имитатором"));
        QVERIFY(!told.contains("потеря")); // of a device that was never looked for
    }
    void makesUpAPastFirst()
    {
        QByteArray project = goodProject;
        project.replace("<window id=\"3\"",
                        "<archiver id=\"20\" name=\"A\"><archiverSource id=\"21\" "
                        "name=\"H\" signal=\"2\"/></archiver><window id=\"3\"");
        const QString data = m_directory->filePath("data");
        QProcess station;
        start(station, {write(project), "--data", data, "--generate-history", "2d"});
        // The core has started, and told its journal, when the archive gets its first live sample.
        std::vector<Nodes::ArchivedSignal> found;
        std::unique_ptr<Nodes::ArchiveReader> archive;
        QVERIFY(Nodes::ArchiveReaders().Make((data + "/archive.sqlite").toStdString(), archive));
        QTRY_VERIFY_WITH_TIMEOUT(archive->ListSignals(found) && found.size() == 1 &&
                                     found[0].last > found[0].generatedTo,
                                 patience);
        station.terminate();
        QCOMPARE(finish(station), 0);
        QVERIFY(station.readAllStandardOutput().contains("samples were generated for 1 signals"));
        const Nodes::Timestamp day = 86400000000;
        QVERIFY(found[0].generatedTo - found[0].generatedFrom > 2 * day - day / 10);
        QFile journal(data + "/journal.sqlite");
        QVERIFY(journal.open(QIODevice::ReadOnly));
        QVERIFY(journal.readAll().contains("История за 2 сут сгенерирована"));
    }
    void guardsItsDataDirectory_data()
    {
        const Rows<bool> row("hasFile");
        row("by its file", true);
        // As on a full disk; a station that finds room later must see this one all the same.
        row("by itself", false);
    }
    void guardsItsDataDirectory()
    {
        QFETCH(bool, hasFile);
        const QString lock = m_directory->filePath("data/station.lock");
        QVERIFY(hasFile || QDir().mkpath(lock));
        QProcess first, second;
        startGood(first);
        QVERIFY(hasFile || QDir().rmdir(lock));
        startGood(second);
        QCOMPARE(finish(second), 1);
        const QByteArray said = second.readAllStandardError();
        const QByteArray holder =
            hasFile ? "process " + QByteArray::number(first.processId()) : "another process";
        QVERIFY2(said.contains("is used by " + holder), said);
        first.terminate();
        QCOMPARE(finish(first), 0);
    }
    void passesOverDeadLocks_data()
    {
        const Rows<QByteArray> row("content");
        row("empty: the disk was full", QByteArray());
        row("garbage", QByteArray("\xff\0\n\n-1", 6));
        row("of a process that lives, but is no station",
            QByteArray::number(QCoreApplication::applicationPid()) + "\ntst\nhere\n");
    }
    void passesOverDeadLocks()
    {
        QFETCH(QByteArray, content);
        QVERIFY(QDir().mkpath(m_directory->filePath("data")));
        QFile lock(m_directory->filePath("data/station.lock"));
        QVERIFY(lock.open(QIODevice::WriteOnly) && lock.write(content) == content.size());
        lock.close();
        QProcess station;
        startGood(station);
        station.terminate();
        QCOMPARE(finish(station), 0);
    }
    void tellsWhatItCouldNotWrite_data()
    {
        const Rows<bool, int> row("hasFallback", "code");
        row("kept elsewhere", true, 0);
        row("lost", false, 4);
    }
    void tellsWhatItCouldNotWrite()
    {
        QFETCH(bool, hasFallback);
        const QString journal = m_directory->filePath("data/journal.sqlite");
        QVERIFY(QDir().mkpath(journal) && QDir().mkpath(journal + ".spill"));
        const QString status = m_directory->filePath("status");
        const QStringList arguments{write(goodProject),
                                    "--data",
                                    m_directory->filePath("data"),
                                    "--fallback",
                                    hasFallback ? m_directory->path() : "/dev/null",
                                    "--status-file",
                                    status};
        const auto field = [&status](const char *name) {
            QFile file(status);
            return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll())
                                                        .object()[QLatin1String(name)]
                                                        .toObject()
                                                  : QJsonObject();
        };
        const auto records = [&field] { return field("records"); };
        const auto count = [&](const char *name) {
            return records()["journal"].toObject()[QLatin1String(name)].toInt();
        };
        QProcess station;
        start(station, arguments);
        QTRY_VERIFY_WITH_TIMEOUT(records()["atRisk"].toBool(), patience);
        QTRY_VERIFY(count(hasFallback ? "aside" : "waiting") > 0);
        station.terminate();
        QTEST(finish(station), "code");
        const QByteArray said = station.readAllStandardError();
        QVERIFY2(said.contains("records are at risk: journal: "), said);
        QVERIFY2(said.contains(hasFallback ? "added at the next start" : "station: lost: "), said);
        const int kept = count("aside");
        QCOMPARE(kept > 0, hasFallback);
        QVERIFY(QDir().rmdir(journal) && QDir().rmdir(journal + ".spill"));
        start(station, arguments);
        QTRY_VERIFY_WITH_TIMEOUT(count("stored") > kept && count("aside") == 0, patience);
        QVERIFY(!records()["atRisk"].toBool());
        QTRY_COMPARE(field("queues").keys(), (QStringList{"actions", "relays"}));
        station.terminate();
        QCOMPARE(finish(station), 0);
    }
    void outlivesTheReaderOfItsLog_data()
    {
        const Rows<bool> row("isGone");
        row("gone", true);
        row("stopped reading", false);
    }
    void outlivesTheReaderOfItsLog()
    {
        QFETCH(bool, isGone);
        int ends[2];
        QVERIFY(::pipe(ends) == 0);
        const int flags = ::fcntl(ends[1], F_GETFL);
        ::fcntl(ends[1], F_SETFL, flags | O_NONBLOCK);
        while (::write(ends[1], &ends, sizeof ends) > 0) {
        }
        ::fcntl(ends[1], F_SETFL, flags);
        if (isGone)
            ::close(ends[0]);
        QProcess station;
        startGood(station, "exec \"$0\" \"$@\" 2>&" + QString::number(ends[1]));
        station.terminate();
        QCOMPARE(finish(station), 0);
        ::close(ends[1]);
        if (!isGone)
            ::close(ends[0]);
    }
    void hashesPasswords_data()
    {
        const Rows<QByteArray, int, QString> row("input", "code", "password");
        row("one line", QByteArray("пароль 1\nmore\n"), 0, QStringLiteral("пароль 1"));
        row("no end of line", QByteArray("12345"), 0, QStringLiteral("12345"));
        row("empty", QByteArray("\n"), 2, QString());
    }
    void hashesPasswords()
    {
        QFETCH(QByteArray, input);
        QFETCH(QString, password);
        QProcess station;
        start(station, {QStringLiteral("--hash-password")});
        station.write(input);
        station.closeWriteChannel();
        QTEST(finish(station), "code");
        const QByteArray printed = station.readAllStandardOutput();
        QCOMPARE(printed.isEmpty(), password.isEmpty());
        if (printed.isEmpty())
            return;
        ProjectFixture project;
        auto *users = static_cast<Nodes::systemAuthentication *>(
            project.add("authentication", project.add("station", project.root())));
        Nodes::ConfigNode *user = project.add("user", users);
        QVERIFY(user->SetPropertyText("passwordHash", printed.trimmed().toStdString()));
        QVERIFY(users->Authenticate(user->GetNodeLink(), password.toStdString()));
    }

private:
    QString write(const QByteArray &text) const
    {
        QFile file(m_directory->filePath(QStringLiteral("p.xml")));
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            qFatal("cannot write %s", qPrintable(file.fileName()));
        return file.fileName();
    }
    /// By a line of the shell, if there is one, which finds program and arguments in $0 and $@.
    void start(QProcess &station, const QStringList &arguments, const QString &shell = {}) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C")); // as of a bare account
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        environment.insert(QStringLiteral("XDG_DATA_HOME"),
                           m_directory->filePath(QStringLiteral("x")));
        station.setProcessEnvironment(environment);
        const QString program = QStringLiteral(STATION_BINARY_DIR "/bin/station");
        if (shell.isEmpty())
            station.start(program, arguments);
        else
            station.start(QStringLiteral("sh"), QStringList{"-c", shell, program} + arguments);
    }
    void startGood(QProcess &station, const QString &shell = {}) const
    {
        start(station, {write(goodProject), "--data", m_directory->filePath("data")}, shell);
        // The journal is opened after the handlers of signals are installed.
        const QString journal = m_directory->filePath("data/journal.sqlite");
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(journal), patience);
    }
    int finish(QProcess &station) const
    {
        if (!station.waitForFinished(patience) || station.exitStatus() != QProcess::NormalExit) {
            station.kill();
            station.waitForFinished(patience);
            return -1;
        }
        return station.exitCode();
    }

    std::unique_ptr<QTemporaryDir> m_directory;
};

QTEST_GUILESS_MAIN(StationTest)
#include "tst_station.moc"
