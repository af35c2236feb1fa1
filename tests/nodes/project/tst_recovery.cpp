#include "nodes/FileSizeLimit.h"
#include "nodes/ProjectFixture.h"

#include "nodes/project/HexDigest.h"
#include "nodes/project/RecoveryFile.h"
#include "nodes/project/RecoveryWriter.h"
#include "nodes/serial/AtomicFile.h"
#include "nodes/serial/ProjectReader.h"
#include "nodes/serial/ProjectWriter.h"
#include "support/Rows.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>
#include <filesystem>
#include <functional>

#include <sys/wait.h>
#include <unistd.h>

using namespace Nodes;
namespace fs = std::filesystem;

using Spoil = std::function<void(QByteArray &)>;
Q_DECLARE_METATYPE(Spoil)

namespace {

QByteArray bytesOf(const std::string &path)
{
    QFile file(QString::fromStdString(path));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const std::string &path, const QByteArray &bytes)
{
    QFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        throw std::runtime_error("not written");
}

bool isProject(const std::string &path)
{
    ProjectReader reader;
    std::unique_ptr<NodesCollection> project;
    return bool(reader.ReadFile(path, project)) && reader.GetReport().empty();
}

/// A project of some size, so that saving takes a moment.
struct LargeProject : ProjectFixture
{
    explicit LargeProject(int nodes = 3000)
    {
        for (int i = 0; i < nodes; ++i)
            add("folder", root())->SetDescription("node of a project");
    }
};

} // namespace

class Recovery : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        m_states = m_directory->filePath("states").toStdString();
        m_project = m_directory->filePath("project.xml").toStdString();
    }

    void comesBackWhole()
    {
        RecoveryInfo info = fresh();
        info.name = "Котельная\nвторая";
        info.base = "abc";
        info.saved = 1234567;
        QVERIFY(RecoveryFile::Write(info, "<project/>\n"));
        RecoveryInfo read;
        std::string text;
        QVERIFY(RecoveryFile::Read(info.file, read, text));
        QCOMPARE(text, std::string("<project/>\n"));
        QCOMPARE(read.project, m_project);
        QCOMPARE(read.name, std::string("Котельная вторая"));
        QCOMPARE(read.base, info.base);
        QCOMPARE(read.saved, info.saved);
        const auto rights = fs::status(m_states).permissions();
        QVERIFY((rights & fs::perms::others_write) == fs::perms::none);
    }

    void knowsDamage_data()
    {
        const Rows<Spoil> row("spoil");
        row("cut off", [](QByteArray &bytes) { bytes.chop(1); });
        row("half of it", [](QByteArray &bytes) { bytes.truncate(bytes.size() / 2); });
        row("a bit",
            [](QByteArray &bytes) { bytes[bytes.size() - 3] = bytes[bytes.size() - 3] ^ 1; });
        row("the time", [](QByteArray &bytes) { bytes.replace("\n42\n", "\n43\n"); });
        row("empty", [](QByteArray &bytes) { bytes.clear(); });
        row("zeros", [](QByteArray &bytes) { bytes.fill('\0'); });
        row("something else", [](QByteArray &bytes) { bytes = "<project format=\"1\"/>"; });
    }

    void knowsDamage()
    {
        QFETCH(Spoil, spoil);
        RecoveryInfo info = fresh();
        info.saved = 42;
        QVERIFY(RecoveryFile::Write(info, "<project/>\n"));
        QByteArray bytes = bytesOf(info.file);
        spoil(bytes);
        write(info.file, bytes);
        std::string text = "kept";
        QVERIFY(RecoveryFile::Read(info.file, info, text) == Result::ParseError);
        QCOMPARE(text, std::string("kept"));
        QVERIFY(!info.damage.empty());
        QCOMPARE(RecoveryFile::List(m_states, m_project).size(), std::size_t(1)); // not hidden
    }

    void fallsBackToTheWriteBefore()
    {
        RecoveryInfo info = fresh();
        for (const int time : {5, 6}) {
            info.saved = time;
            QVERIFY(RecoveryFile::Write(info, "text of " + std::to_string(time)));
        }
        write(info.file, "spoilt");
        const auto found = RecoveryFile::List(m_states, m_project);
        QCOMPARE(found.size(), std::size_t(1));
        QCOMPARE(found[0].saved, Timestamp(5));
        QCOMPARE(found[0].file, info.file);
        std::string text;
        QVERIFY(RecoveryFile::Read(found[0].earlier, info, text));
        QCOMPARE(text, std::string("text of 5"));
        RecoveryFile::Remove(found[0].file);
        QVERIFY(fs::is_empty(m_states));
    }

    void listsTheLatestFirst()
    {
        for (const int time : {5, 9, 7}) {
            RecoveryInfo info = fresh();
            info.saved = time;
            QVERIFY(RecoveryFile::Write(info, "x"));
        }
        RecoveryInfo other = fresh();
        other.project = "/other/project.xml";
        other.file = RecoveryFile::FreeName(m_states, other.project);
        QVERIFY(RecoveryFile::Write(other, "y"));
        const auto mine = RecoveryFile::List(m_states, m_project);
        QCOMPARE(mine.size(), std::size_t(3));
        QCOMPARE(mine[0].saved, Timestamp(9));
        QCOMPARE(mine[2].saved, Timestamp(5));
        QCOMPARE(RecoveryFile::List(m_states).size(), std::size_t(4));
        RecoveryFile::Remove(mine[0].file);
        QCOMPARE(RecoveryFile::List(m_states, m_project).size(), std::size_t(2));
        QVERIFY(RecoveryFile::List("/nowhere").empty());
    }

    void isOfTheMoment()
    {
        LargeProject f;
        const std::string before = ProjectWriter::ToText(f.project);
        RecoveryWriter writer;
        const RecoveryInfo info = fresh();
        QVERIFY(writer.Start(f.project, info));
        f.root()->SetName("later");
        QVERIFY(writer.IsRunning());
        QVERIFY(writer.Start(f.project, info) == Result::NotAvailable);
        QVERIFY(writer.Finish());
        RecoveryInfo read;
        std::string text;
        QVERIFY(RecoveryFile::Read(info.file, read, text));
        QCOMPARE(text, before);
        QVERIFY(writer.Finish() == Result::NotAvailable);
    }

    void saysWhyItCannotBeKept()
    {
        ProjectFixture f;
        RecoveryWriter writer;
        RecoveryInfo info = fresh();
        write(m_project, "x");
        info.file = m_project + "/below-a-file/x.recovery";
        QVERIFY(writer.Start(f.project, info));
        const Result result = writer.Finish();
        QVERIFY(!result);
        QVERIFY(!result.GetDetail().empty());
    }

    void isOverOnceItIsSaved_data()
    {
        const Rows<QString, bool> row("what", "isLeft");
        row("saved, and killed before it could be removed", "saved", false);
        row("killed before the save", "not saved", true);
        row("edited on after a save", "kept again", true);
        row("saved by somebody else since", "other", true);
        row("the note is cut off", "cut", true);
        row("damaged", "damaged", true);
    }

    void isOverOnceItIsSaved()
    {
        QFETCH(QString, what);
        QFETCH(bool, isLeft);
        const RecoveryInfo info = fresh();
        QVERIFY(RecoveryFile::Write(info, "work"));
        write(m_project, "old");
        const std::string digest = HexDigest("new");
        RecoveryFile::NoteSave(info.file, what == "cut" ? digest.substr(0, 9) : digest);
        if (what != "not saved")
            write(m_project, what == "other" ? "other" : "new");
        if (what == "kept again")
            RecoveryFile::NoteSave(info.file, {});
        if (what == "damaged")
            write(info.file, "x");
        RecoveryFile::Tidy(m_states);
        QCOMPARE(!RecoveryFile::List(m_states).empty(), isLeft);
        QCOMPARE(!fs::is_empty(m_states), isLeft);
    }

    void becomesAProjectOfItsOwn()
    {
        const RecoveryInfo info = fresh();
        QVERIFY(RecoveryFile::Write(info, "work"));
        write(m_project, "theirs");
        QVERIFY(RecoveryFile::MoveTo(info, m_project) == Result::Duplicate);
        QVERIFY(RecoveryFile::MoveTo(info, "/nowhere/project.xml") == Result::StorageError);
        QCOMPARE(RecoveryFile::List(m_states).size(), std::size_t(1)); // nothing is lost
        fs::remove(m_project);
        QVERIFY(RecoveryFile::MoveTo(info, m_project));
        QCOMPARE(bytesOf(m_project), QByteArray("work"));
        QVERIFY(fs::is_empty(m_states));
    }

    void leftoversGo_data()
    {
        const Rows<QString, bool> row("name", "isLeft");
        row("of a killed save", "project.xml.aB3xYz.saving", false);
        row("half of the version before", "project.xml.bak.new", false);
        row("the version before", "project.xml.bak", true);
        row("a copy made by hand", "project.xml.backup", true);
        row("another one", "project.xml.of-all.saving", true);
        row("of another file", "project.xml2.aB3xYz.saving", true);
    }

    void leftoversGo()
    {
        QFETCH(QString, name);
        QFETCH(bool, isLeft);
        const std::string path = m_directory->filePath(name).toStdString();
        write(path, "x");
        QVERIFY(RemoveLeftovers(m_project));
        QCOMPARE(fs::exists(path), isLeft);
    }

    void leavesWhatIsBeingWritten()
    {
        LargeProject f;
        const pid_t child = ::fork();
        if (child == 0) {
            for (;;)
                (void)ProjectWriter::WriteFile(f.project, m_project);
        }
        QTRY_VERIFY_WITH_TIMEOUT(!RemoveLeftovers(m_project), 60000);
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        QVERIFY(RemoveLeftovers(m_project));
        QCOMPARE(QDir(m_directory->path()).entryList({"*.saving"}, QDir::Files), QStringList());
    }

    void endsWithItsWriter()
    {
        LargeProject f;
        const RecoveryInfo info = fresh();
        {
            RecoveryWriter writer;
            QVERIFY(writer.Start(f.project, info));
        }
        QCOMPARE(::waitpid(-1, nullptr, WNOHANG), pid_t(-1)); // nobody is left
        std::error_code error;
        QVERIFY(!fs::exists(info.file, error) || RecoveryFile::List(m_states)[0].damage.empty());
        QCOMPARE(QDir(QString::fromStdString(m_states)).entryList({"*.saving"}), QStringList());
    }

    // Whenever it strikes, the project and the version before it are whole.
    void killedWhileSaving()
    {
        LargeProject f;
        QVERIFY(ProjectWriter::WriteFile(f.project, m_project));
        QVERIFY(ProjectWriter::WriteFile(f.project, m_project));
        for (int i = 0; i < 25; ++i) {
            const pid_t child = ::fork();
            if (child == 0) {
                for (;;)
                    (void)ProjectWriter::WriteFile(f.project, m_project);
            }
            ::usleep(useconds_t(1000 + 2711 * i)); // spread over the steps of a save
            ::kill(child, SIGKILL);
            ::waitpid(child, nullptr, 0);
            QVERIFY(isProject(m_project));
            QVERIFY(isProject(m_project + ".bak"));
        }
    }

    void failedSave_data()
    {
        const Rows<QString> row("what");
        row("the disk is full", "full");
        row("the directory is gone", "gone");
        row("a directory stands there", "directory");
    }

    void failedSave()
    {
        QFETCH(QString, what);
        LargeProject f;
        std::string path = m_directory->filePath("plant").toStdString();
        fs::create_directory(path);
        path += "/project.xml";
        QVERIFY(ProjectWriter::WriteFile(f.project, path));
        QVERIFY(ProjectWriter::WriteFile(f.project, path));
        const QByteArray before = bytesOf(path);
        f.root()->SetName("changed");
        std::unique_ptr<FileSizeLimit> limit;
        if (what == "full")
            limit = std::make_unique<FileSizeLimit>(4096);
        else
            fs::rename(fs::path(path).parent_path(), m_directory->filePath("away").toStdString());
        if (what == "directory")
            fs::create_directories(path + "/x");
        const Result result = ProjectWriter::WriteFile(f.project, path);
        limit.reset();
        QVERIFY(result == Result::StorageError);
        QVERIFY(!result.GetDetail().empty());
        const std::string kept =
            what == "full" ? path : m_directory->filePath("away/project.xml").toStdString();
        QCOMPARE(bytesOf(kept), before);
        QVERIFY(isProject(kept + ".bak"));
        QCOMPARE(QDir(QFileInfo(QString::fromStdString(kept)).path())
                     .entryList(QDir::Files | QDir::Hidden),
                 (QStringList{"project.xml", "project.xml.bak"})); // nothing half-written
    }

private:
    RecoveryInfo fresh() const
    {
        RecoveryInfo info;
        info.project = m_project;
        info.file = RecoveryFile::FreeName(m_states, m_project);
        return info;
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::string m_states;
    std::string m_project;
};

QTEST_APPLESS_MAIN(Recovery)
#include "tst_recovery.moc"
