#include "nodes/ProjectFixture.h"

#include "nodes/serial/ProjectReader.h"
#include "nodes/serial/ProjectWriter.h"

#include <QTemporaryDir>
#include <QtTest>

#include <csignal>
#include <filesystem>

#include <sys/resource.h>

using namespace Nodes;

namespace {

/// Lets writes fail beyond a size, as a full disk does; restores on destruction.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_old);
        const rlimit small{bytes, m_old.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &m_old); }

private:
    rlimit m_old{};
};

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
}

} // namespace

class ProjectFile : public QObject
{
    Q_OBJECT

private slots:
    void savingKeepsThePreviousVersion();
    void failedSaveLeavesTheOldFile();
    void linkAndPermissionsSurvive();
    void unreadablePaths_data();
    void unreadablePaths();
    void hugeJunkIsRefused_data();
    void hugeJunkIsRefused();
    void whatCannotBeTextIsStillReadable();

private:
    QString path(const char *name) const { return m_directory.filePath(name); }

    QTemporaryDir m_directory;
};

void ProjectFile::savingKeepsThePreviousVersion()
{
    ProjectFixture f;
    const std::string file = path("a.xml").toStdString();
    QVERIFY(ProjectWriter::WriteFile(f.project, file));
    QVERIFY(!QFile::exists(path("a.xml.bak")));
    const QByteArray first = contentOf(path("a.xml"));
    f.add("folder", f.root());
    QVERIFY(ProjectWriter::WriteFile(f.project, file));
    QCOMPARE(contentOf(path("a.xml.bak")), first);
    QCOMPARE(contentOf(path("a.xml")).toStdString(), ProjectWriter::ToText(f.project));
    std::unique_ptr<NodesCollection> read;
    ProjectReader reader;
    QVERIFY(reader.ReadFile(file, read));
    QCOMPARE(read->GetDirectory(), m_directory.path().toStdString());
    QCOMPARE(ProjectWriter::ToText(*read), ProjectWriter::ToText(f.project));
}

void ProjectFile::failedSaveLeavesTheOldFile()
{
    ProjectFixture f;
    const std::string file = path("b.xml").toStdString();
    QVERIFY(ProjectWriter::WriteFile(f.project, file));
    const QByteArray first = contentOf(path("b.xml"));
    f.root()->SetDescription(std::string(100000, 'x'));
    {
        const FileSizeLimit limit(5000);
        const Result saved = ProjectWriter::WriteFile(f.project, file);
        QVERIFY(saved == Result::StorageError);
        QVERIFY(saved.GetDetail().find(file) != std::string::npos);
    }
    QCOMPARE(contentOf(path("b.xml")), first);
    QCOMPARE(QDir(m_directory.path()).entryList({"b.xml*"}), QStringList{"b.xml"});
    f.root()->SetDescription(std::string(2 << 20, 'x'));
    QVERIFY(ProjectWriter::WriteFile(f.project, file) == Result::LimitExceeded);
    QCOMPARE(contentOf(path("b.xml")), first);
    f.root()->SetDescription({});
    const std::string nowhere = path("none/c.xml").toStdString();
    QVERIFY(ProjectWriter::WriteFile(f.project, nowhere) == Result::StorageError);
}

void ProjectFile::linkAndPermissionsSurvive()
{
    ProjectFixture f;
    const std::string file = path("real.xml").toStdString();
    QVERIFY(ProjectWriter::WriteFile(f.project, file));
    namespace fs = std::filesystem;
    fs::permissions(file, fs::perms::owner_read | fs::perms::owner_write);
    const std::string link = path("link.xml").toStdString();
    fs::create_symlink(file, link);
    f.add("folder", f.root());
    QVERIFY(ProjectWriter::WriteFile(f.project, link));
    QVERIFY(fs::is_symlink(link));
    QCOMPARE(contentOf(path("real.xml")).toStdString(), ProjectWriter::ToText(f.project));
    QCOMPARE(int(fs::status(file).permissions()), 0600);
}

void ProjectFile::unreadablePaths_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("result");
    QTest::newRow("missing") << path("missing.xml") << int(Result::NotFound);
    QTest::newRow("directory") << m_directory.path() << int(Result::StorageError);
    QTest::newRow("device") << "/dev/zero" << int(Result::StorageError);
    QTest::newRow("below a file") << "/etc/passwd/x" << int(Result::NotFound);
}

void ProjectFile::unreadablePaths()
{
    QFETCH(QString, path);
    QFETCH(int, result);
    ProjectReader reader;
    std::unique_ptr<NodesCollection> project;
    QCOMPARE(int(reader.ReadFile(path.toStdString(), project).GetType()), result);
    QCOMPARE(reader.GetReport().GetCount(LoadMessage::Fatal), std::size_t(1));
}

void ProjectFile::hugeJunkIsRefused_data()
{
    QTest::addColumn<QByteArray>("block");
    QTest::addColumn<int>("result");
    QByteArray noise(1 << 20, '\0');
    quint32 state = 1;
    for (char &byte : noise) {
        state = state * 1664525u + 1013904223u;
        byte = char(state >> 24);
    }
    const int parse = Result::ParseError;
    QTest::newRow("noise") << noise << parse;
    QTest::newRow("zeros") << QByteArray(1 << 20, '\0') << parse;
    QTest::newRow("text") << QByteArray("junk and more junk\n").repeated(55189) << parse;
    QTest::newRow("opening tags") << QByteArray("<a>").repeated(349526)
                                  << int(Result::LimitExceeded);
    QTest::newRow("line ends") << QByteArray(1 << 20, '\n') << parse;
    QTest::newRow("angle brackets") << QByteArray(1 << 20, '<') << int(Result::LimitExceeded);
}

void ProjectFile::hugeJunkIsRefused()
{
    QFETCH(QByteArray, block);
    QFETCH(int, result);
    QFile file(path("junk.xml"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    for (int i = 0; i < 100; ++i)
        QCOMPARE(file.write(block), qint64(block.size()));
    file.close();
    ProjectReader reader;
    std::unique_ptr<NodesCollection> project;
    QCOMPARE(int(reader.ReadFile(file.fileName().toStdString(), project).GetType()), result);
    QVERIFY(!reader.GetReport().GetMessages().back().text.empty());
    file.remove();
}

void ProjectFile::whatCannotBeTextIsStillReadable()
{
    ProjectFixture f;
    f.root()->SetName("\xFF\xC3 \x01 ok");
    f.root()->SetDescription("\xED\xA0\x80");
    f.root()->AddForeignAttribute("#comment", "a -- b --");
    std::unique_ptr<NodesCollection> read;
    ProjectReader reader;
    QVERIFY(reader.ReadBuffer(ProjectWriter::ToText(f.project), "x.xml", read));
    QCOMPARE(read->GetRoot()->GetName(), std::string("\uFFFD\uFFFD \x01 ok"));
}

QTEST_APPLESS_MAIN(ProjectFile)
#include "tst_project_file.moc"
