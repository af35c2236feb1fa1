// The station as a process: what it answers to its command line, its project and its end.
#include "nodes/ProjectFixture.h"

#include "nodes/auth/systemAuthentication.h"

#include <QDir>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>

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
    void init();
    void refusesToStart_data();
    void refusesToStart();
    void takesPictures();
    void endsOnSignal_data();
    void endsOnSignal();
    void guardsItsDataDirectory();
    void hashesPasswords_data();
    void hashesPasswords();

private:
    QString write(const QByteArray &text) const;
    void start(QProcess &station, const QStringList &arguments) const;
    void startGood(QProcess &station) const;
    int finish(QProcess &station) const;

    std::unique_ptr<QTemporaryDir> m_directory;
};

void StationTest::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
}

QString StationTest::write(const QByteArray &text) const
{
    QFile file(m_directory->filePath(QStringLiteral("p.xml")));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("cannot write %s", qPrintable(file.fileName()));
    return file.fileName();
}

void StationTest::start(QProcess &station, const QStringList &arguments) const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C")); // as of a bare account
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.insert(QStringLiteral("XDG_DATA_HOME"), m_directory->filePath(QStringLiteral("x")));
    station.setProcessEnvironment(environment);
    station.start(QStringLiteral(STATION_BINARY_DIR "/bin/station"), arguments);
}

void StationTest::startGood(QProcess &station) const
{
    start(station, {write(goodProject), "--data", m_directory->filePath("data")});
    // The journal is opened after the handlers of signals are installed.
    const QString journal = m_directory->filePath("data/journal.sqlite");
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(journal), patience);
}

int StationTest::finish(QProcess &station) const
{
    if (!station.waitForFinished(patience) || station.exitStatus() != QProcess::NormalExit) {
        station.kill();
        station.waitForFinished(patience);
        return -1;
    }
    return station.exitCode();
}

void StationTest::refusesToStart_data()
{
    QTest::addColumn<QByteArray>("project");
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<int>("code");
    QTest::addColumn<QByteArray>("message");
    const auto row = [](const char *name, const char *project, const QStringList &options, int code,
                        const char *message) {
        QTest::newRow(name) << QByteArray(project) << options << code << QByteArray(message);
    };
    row("malformed", "<project format='1' id='1'>\n\n<folder></project>", {}, 1, "p.xml:3");
    row("newer", "\n<project format='99'/>", {}, 1, "p.xml:2");
    row("no frames", "<project format='1' id='1'/>", {}, 1, "no frames");
    row("unknown station", "<project format='1' id='1'><station id='2' name='North'/></project>",
        {"--station", "South"}, 1, "it has \"North\"");
    row("unknown option", goodProject, {"--colour"}, 2, "--colour");
    row("bad define", goodProject, {"--define", "=3"}, 2, "NAME=VALUE");
    row("bad data directory", goodProject, {"--data", "/proc/none"}, 1, "/proc/none");
}

void StationTest::refusesToStart()
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

void StationTest::takesPictures()
{
    const QDir pictures(m_directory->filePath(QStringLiteral("снимки")));
    QProcess station;
    start(station, {write(goodProject), "--screenshots", pictures.path()});
    QCOMPARE(finish(station), 0);
    QCOMPARE(pictures.entryList(QDir::Files), QStringList({"Main-3.png", "Other_window-5.png"}));
    QCOMPARE(QImage(pictures.filePath(QStringLiteral("Other_window-5.png"))).size(),
             QSize(120, 80));
    QCOMPARE(station.readAllStandardOutput().count('\n'), 2);
}

void StationTest::endsOnSignal_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGINT") << SIGINT;
}

void StationTest::endsOnSignal()
{
    QFETCH(int, signal);
    QProcess station;
    startGood(station);
    ::kill(pid_t(station.processId()), signal);
    QCOMPARE(finish(station), 0);
    QVERIFY(!QFile::exists(m_directory->filePath("data/station.lock")));
}

void StationTest::guardsItsDataDirectory()
{
    QProcess first, second;
    startGood(first);
    startGood(second);
    QCOMPARE(finish(second), 1);
    const QByteArray said = second.readAllStandardError();
    QVERIFY2(said.contains("process " + QByteArray::number(first.processId())), said);
    first.terminate();
    QCOMPARE(finish(first), 0);
}

void StationTest::hashesPasswords_data()
{
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("password");
    QTest::newRow("one line") << QByteArray("пароль 1\nmore\n") << 0 << QStringLiteral("пароль 1");
    QTest::newRow("no end of line") << QByteArray("12345") << 0 << QStringLiteral("12345");
    QTest::newRow("empty") << QByteArray("\n") << 2 << QString();
}

void StationTest::hashesPasswords()
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

QTEST_GUILESS_MAIN(StationTest)
#include "tst_station.moc"
