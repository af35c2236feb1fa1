#include "nodes/project/FileStamp.h"
#include "nodes/project/ProjectHold.h"
#include "support/Rows.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <array>
#include <csignal>
#include <filesystem>
#include <fstream>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Nodes;
using std::chrono::milliseconds;

namespace {

/// A process of its own that holds a project until it is killed.
class Holder
{
public:
    explicit Holder(const std::string &project)
    {
        std::array<int, 2> ends{};
        if (::pipe(ends.data()) != 0)
            throw std::runtime_error("pipe");
        m_process = ::fork();
        if (m_process == 0) {
            ProjectHold hold;
            const char taken = hold.Take(project) ? 1 : 0;
            (void)!::write(ends[1], &taken, 1);
            for (;;)
                ::pause();
        }
        ::close(ends[1]);
        isHolding = ::read(ends[0], &isHolding, 1) == 1 && isHolding;
        ::close(ends[0]);
    }
    ~Holder() { kill(); }
    void kill()
    {
        if (m_process > 0) {
            ::kill(m_process, SIGKILL);
            ::waitpid(m_process, nullptr, 0);
        }
        m_process = -1;
    }
    long process() const { return m_process; }

    bool isHolding = false;

private:
    pid_t m_process = -1;
};

} // namespace

class HoldOfProjects : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        m_project = m_directory->filePath("project.xml").toStdString();
        m_lock = ProjectHold::FileOf(m_project);
    }

    void isForOneProcess()
    {
        Holder other(m_project);
        QVERIFY(other.isHolding);
        ProjectHold mine;
        QVERIFY(mine.Take(m_project) == Result::Refused);
        QVERIFY(!mine.IsHeld());
        QCOMPARE(mine.GetHolder().process, other.process());
        QCOMPARE(mine.GetHolder().user, ProjectHolder::Myself().user);
        QVERIFY(mine.GetHolder().ToWords().find(mine.GetHolder().host) != std::string::npos);
        QVERIFY(std::filesystem::exists(m_lock)); // still the other's
        other.kill();
        QVERIFY(std::filesystem::exists(m_lock)); // left behind
        QVERIFY(mine.Take(m_project));
        mine.Release();
        QVERIFY(!std::filesystem::exists(m_lock));
    }

    void ofOtherMachines_data()
    {
        const Rows<std::string, int, bool> row("text", "beats", "isFree");
        const std::string signature = "operator station project hold 1\n";
        row("at work", signature + "ivanov\nws-12\n77\n1000000\n", 1, false);
        row("long gone", signature + "ivanov\nws-12\n77\n1000000\n", 7, true);
        row("cut off", signature.substr(0, 9), 0, true);
        row("of another program", "77\n", 0, true);
        row("no words at all", std::string("\0\1\2", 3), 0, true);
    }

    void ofOtherMachines()
    {
        QFETCH(std::string, text);
        QFETCH(int, beats);
        QFETCH(bool, isFree);
        std::ofstream(m_lock) << text;
        const auto renewed =
            std::filesystem::file_time_type::clock::now() - beats * std::chrono::seconds(10);
        std::filesystem::last_write_time(m_lock, renewed);
        for (int attempt = 0; attempt < 2; ++attempt) { // asking does not renew it
            ProjectHold hold;
            QCOMPARE(bool(hold.Take(m_project)), isFree);
            QCOMPARE(hold.GetHolder().user, std::string(isFree ? "" : "ivanov"));
            if (!isFree)
                QCOMPARE(std::filesystem::last_write_time(m_lock), renewed);
        }
    }

    // The file of a machine that is gone, from when the clock of the disk was ahead.
    void takesOverWhatIsOfTheFuture()
    {
        std::ofstream(m_lock) << "operator station project hold 1\nivanov\nws-12\n77\n1000000\n";
        std::filesystem::last_write_time(m_lock, std::filesystem::file_time_type::clock::now() +
                                                     std::chrono::hours(9000));
        ProjectHold hold(milliseconds(20));
        QVERIFY(hold.Take(m_project) == Result::Refused);
        QTRY_VERIFY(hold.Take(m_project));
    }

    void tellsOthersThatItIsAtWork()
    {
        ProjectHold hold(milliseconds(5));
        QVERIFY(hold.Take(m_project));
        const auto old = std::filesystem::file_time_type::clock::now() - std::chrono::hours(1);
        std::filesystem::last_write_time(m_lock, old);
        QTRY_VERIFY(std::filesystem::last_write_time(m_lock) > old + std::chrono::minutes(50));
        QVERIFY(!hold.IsLost());
    }

    // Somebody cleaned up, or another machine believed this one to be dead.
    void noticesThatItIsLost_data()
    {
        const Rows<bool> row("isTaken");
        row("removed", false);
        row("taken over", true);
    }

    void noticesThatItIsLost()
    {
        QFETCH(bool, isTaken);
        ProjectHold hold(milliseconds(5));
        QVERIFY(hold.Take(m_project));
        std::filesystem::remove(m_lock);
        if (isTaken)
            std::ofstream(m_lock) << "operator station project hold 1\npetrov\nws-13\n5\n1\n";
        QTRY_VERIFY(hold.IsLost());
        hold.Release();
        QCOMPARE(std::filesystem::exists(m_lock), isTaken); // not mine to remove
    }

    void saysWhyThereIsNoFile()
    {
        ProjectHold hold;
        QVERIFY(hold.Take("/nowhere/project.xml") == Result::StorageError);
        std::filesystem::create_symlink("/etc/hostname", m_lock);
        QVERIFY(hold.Take(m_project) == Result::StorageError);
    }

    void stampOfAFile_data()
    {
        const Rows<QByteArray, bool, int> row("now", "isRenamed", "state");
        row("untouched", "old", false, FileStamp::Same);
        row("written again", "old", true, FileStamp::Same);
        row("same length", "new", false, FileStamp::Changed);
        row("by a rename", "new", true, FileStamp::Changed);
        row("emptied", "", false, FileStamp::Changed);
        row("gone", QByteArray(), true, FileStamp::Gone);
    }

    void stampOfAFile()
    {
        QFETCH(QByteArray, now);
        QFETCH(bool, isRenamed);
        QFETCH(int, state);
        write("old", m_project);
        const FileStamp stamp = FileStamp::Of(m_project);
        if (isRenamed)
            std::filesystem::remove(m_project);
        if (!now.isNull() && (isRenamed || now != "old"))
            write(now, m_project);
        QCOMPARE(int(stamp.Compare(m_project)), state);
        QCOMPARE(int(stamp.Compare(m_project)), state); // and again
        QCOMPARE(int(FileStamp().Compare(m_project)),
                 int(state == FileStamp::Gone ? FileStamp::Same : FileStamp::Changed));
    }

private:
    static void write(const QByteArray &bytes, const std::string &path)
    {
        std::ofstream(path, std::ios::binary) << bytes.toStdString();
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::string m_project;
    std::string m_lock;
};

QTEST_APPLESS_MAIN(HoldOfProjects)
#include "tst_project_hold.moc"
