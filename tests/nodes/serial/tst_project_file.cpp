#include "nodes/FileSizeLimit.h"
#include "nodes/ProjectFixture.h"

#include "nodes/serial/LoadReport.h"
#include "nodes/serial/ProjectReader.h"
#include "nodes/serial/ProjectWriter.h"
#include "nodes/system/systemCore.h"
#include "nodes/values/Uuid.h"
#include "support/Rows.h"

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

#include <filesystem>

using namespace Nodes;

namespace {

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
    void savingKeepsThePreviousVersion()
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

    void identityOutlivesRenamingAndDeletedNodes()
    {
        ProjectFixture f;
        const unsigned long deleted = f.add("folder", f.root())->GetId();
        QVERIFY(f.root()->DeleteNode(deleted, false, false));
        f.root()->SetName("Renamed");
        std::unique_ptr<NodesCollection> read;
        QVERIFY(ProjectReader().ReadBuffer(ProjectWriter::ToText(f.project), "a.xml", read));
        QCOMPARE(read->GetUuid(), f.project.GetUuid());
        QVERIFY(read->NewId() > deleted);
        QVERIFY(NodesCollection().GetUuid() != f.project.GetUuid());
    }

    void identityOfADoubtfulFileIsSteady_data()
    {
        const Rows<QByteArray, int> row("attributes", "complaints");
        row("older file", QByteArray(), 0);
        row("no uuid", QByteArray("uuid=\"котёл\""), 1);
        row("no number", QByteArray("lastId=\"-1\""), 1);
        row("below the nodes", QByteArray("lastId=\"2\""), 0);
    }

    void identityOfADoubtfulFileIsSteady()
    {
        QFETCH(QByteArray, attributes);
        const QByteArray text = "<project id=\"1\" name=\"P\" format=\"1\" " + attributes +
                                "><folder id=\"7\" name=\"F\"/></project>";
        std::unique_ptr<NodesCollection> first, second;
        ProjectReader reader;
        QVERIFY(reader.ReadBuffer(text.toStdString(), "a.xml", first));
        QTEST(int(reader.GetReport().GetMessages().size()), "complaints");
        QVERIFY(first->NewId() > 7);
        QVERIFY(ProjectReader().ReadBuffer(text.toStdString(), "a.xml", second));
        QVERIFY(IsUuid(first->GetUuid()));
        QCOMPARE(second->GetUuid(), first->GetUuid());
    }

    void failedSaveLeavesTheOldFile()
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

    void whatANewerVersionWroteCanBeSaved()
    {
        const std::string text = "<project id=\"1\" name=\"P\" format=\"1\"><futureThing blob=\"" +
                                 std::string(2 << 20, 'x') + "\"/></project>";
        std::unique_ptr<NodesCollection> project;
        QVERIFY(ProjectReader().ReadBuffer(text, "new.xml", project));
        QVERIFY(ProjectWriter::WriteFile(*project, path("new.xml").toStdString()));
        QVERIFY(contentOf(path("new.xml")).size() > 2 << 20);
    }

    void savesInTheWorkingDirectory()
    {
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(m_directory.path()));
        const Result saved = ProjectWriter::WriteFile(ProjectFixture().project, "bare.xml");
        QVERIFY(QDir::setCurrent(before));
        QVERIFY2(saved, saved.ToString().c_str());
    }

    void linkAndPermissionsSurvive()
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

    void unreadablePaths_data()
    {
        const Rows<QString, int> row("path", "result");
        row("missing", path("missing.xml"), Result::NotFound);
        row("directory", m_directory.path(), Result::StorageError);
        row("device", "/dev/zero", Result::StorageError);
        row("below a file", "/etc/passwd/x", Result::NotFound);
    }

    void unreadablePaths()
    {
        QFETCH(QString, path);
        ProjectReader reader;
        std::unique_ptr<NodesCollection> project;
        QTEST(int(reader.ReadFile(path.toStdString(), project).GetType()), "result");
        QCOMPARE(reader.GetReport().GetCount(LoadMessage::Fatal), std::size_t(1));
    }

    void hugeJunkIsRefused_data()
    {
        const Rows<QByteArray, int> row("block", "result");
        QVector<quint32> noise(1 << 18);
        QRandomGenerator(1).fillRange(noise.data(), noise.size());
        const int parse = Result::ParseError;
        row("noise", QByteArray(reinterpret_cast<char *>(noise.data()), 1 << 20), parse);
        row("zeros", QByteArray(1 << 20, '\0'), parse);
        row("opening tags", QByteArray("<a>").repeated(349526), Result::LimitExceeded);
        row("line ends", QByteArray(1 << 20, '\n'), parse);
        row("angle brackets", QByteArray(1 << 20, '<'), Result::LimitExceeded);
    }

    void hugeJunkIsRefused()
    {
        QFETCH(QByteArray, block);
        QFile file(path("junk.xml"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        for (int i = 0; i < 100; ++i)
            QCOMPARE(file.write(block), qint64(block.size()));
        file.close();
        ProjectReader reader;
        std::unique_ptr<NodesCollection> project;
        QTEST(int(reader.ReadFile(file.fileName().toStdString(), project).GetType()), "result");
        QVERIFY(!reader.GetReport().GetMessages().back().text.empty());
        file.remove();
    }

    void whatCannotBeTextIsStillReadable()
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

    void coreLoadsDirectoryAndFileAlike_data()
    {
        const Rows<QString> row("below");
        row("directory", "");
        row("file", "/project.xml");
    }

    void coreLoadsDirectoryAndFileAlike()
    {
        QFETCH(QString, below);
        const QTemporaryDir directory;
        const std::string file = directory.filePath("project.xml").toStdString();
        ProjectFixture f;
        const unsigned long id = f.add("folder", f.root())->GetId();
        QVERIFY(ProjectWriter::WriteFile(f.project, file));
        systemCore core;
        QVERIFY(core.LoadConfig() == Result::NotFound);
        QVERIFY(core.LoadProject((directory.path() + below).toStdString()));
        QCOMPARE(core.GetProjectFile(), file);
        QCOMPARE(core.GetProjectPath(), directory.path().toStdString());
        const NodeLink folder(id);
        QVERIFY(folder.isValid() && folder->GetCore() == &core);
        QVERIFY(core.GetLoadReport().empty());
        // Loading again replaces the project: what refers to the old one resolves to nothing.
        QVERIFY(core.LoadConfig());
        QVERIFY(!folder.isValid());
        QVERIFY(NodeLink(id).isValid());
    }

    void failedLoadKeepsTheCoresProject()
    {
        const QTemporaryDir directory;
        const std::string file = directory.filePath("project.xml").toStdString();
        const ProjectFixture f;
        QVERIFY(ProjectWriter::WriteFile(f.project, file));
        systemCore core;
        QVERIFY(core.LoadConfig(file));
        const NodeLink root(f.root()->GetId());
        QFile damaged(directory.filePath("project.xml"));
        QVERIFY(damaged.open(QIODevice::WriteOnly | QIODevice::Append));
        damaged.write("<");
        damaged.close();
        QVERIFY(core.LoadConfig() == Result::ParseError);
        QCOMPARE(core.GetLoadReport().GetCount(LoadMessage::Fatal), std::size_t(1));
        QVERIFY(root.isValid());
        QVERIFY(core.LoadProject(directory.filePath("none").toStdString()) == Result::NotFound);
        QVERIFY(root.isValid());
        QCOMPARE(core.GetProjectFile(), file);
    }

private:
    QString path(const char *name) const { return m_directory.filePath(name); }

    QTemporaryDir m_directory;
};

QTEST_APPLESS_MAIN(ProjectFile)
#include "tst_project_file.moc"
