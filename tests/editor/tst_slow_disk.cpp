#include "editor/project/ProjectSession.h"
#include "editor/project/WriteObstacle.h"
#include "editor/recovery/FileGuard.h"
#include "editor/shell/DiskWait.h"
#include "editor/workspace/Workspace.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/serial/LoadProgress.h"
#include "support/Rows.h"
#include "utils/undo/ChangeTextCommand.h"
#include "utils/undo/IUndo.h"

#include <QPushButton>
#include <QSemaphore>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QThread>
#include <QtTest>

using namespace Editor;
using Utils::ChangeTextCommand;

namespace {

/// A job that ends when it is let go.
struct Held
{
    DiskJob job()
    {
        return {"slow", [gate = gate] { return gate->acquire(), Nodes::Result(); }, progress,
                [this](const Nodes::Result &result) { late << bool(result); }};
    }

    std::shared_ptr<QSemaphore> gate = std::make_shared<QSemaphore>();
    std::shared_ptr<Nodes::LoadProgress> progress;
    QList<bool> late;
};

/// Does something once the wait is told.
void whenTold(const DiskWait &wait, const std::function<void()> &then)
{
    QTimer::singleShot(0, qApp, [&wait, then] {
        if (wait.dialog() && wait.dialog()->isVisible())
            then();
        else
            whenTold(wait, then);
    });
}

/// A project on a disk that answers when it is told to, and whoever edits it.
struct Editing
{
    explicit Editing(const QTemporaryDir &directory)
        : workspace(session, window), guard(workspace, nullptr)
    {
        if (!session.create(directory.filePath("p"), "P"))
            throw std::runtime_error("no project");
        session.setDiskRunner([this](const DiskJob &job) -> std::optional<Nodes::Result> {
            if (!isSlow || !job.late)
                return job.run();
            left = job;
            return std::nullopt;
        });
    }
    void rename(const char *name)
    {
        (void)Utils::IUndo::execute(
            new ChangeTextCommand(Nodes::NodeLink(session.root()), ChangeTextCommand::Name, name));
    }
    QByteArray file() const
    {
        QFile read(session.file());
        return read.open(QIODevice::ReadOnly) ? read.readAll() : QByteArray();
    }

    QWidget window;
    ProjectSession session;
    Workspace workspace;
    FileGuard guard;
    bool isSlow = false;
    DiskJob left; // what nobody waited for
};

} // namespace

class SlowDiskTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        m_wait = std::make_unique<DiskWait>(m_window);
        m_window.show();
    }

    void tellsNothingOfWhatIsQuick()
    {
        const QThread *thread = nullptr;
        const auto done = m_wait->run({"quick",
                                       [&thread] {
                                           thread = QThread::currentThread();
                                           return Nodes::Result(Nodes::Result::ReadOnly, "why");
                                       },
                                       {},
                                       {}});
        QVERIFY(done && *done == Nodes::Result::ReadOnly);
        QVERIFY(thread && thread != QThread::currentThread());
        QVERIFY(!m_wait->dialog());
    }

    void waitsForWhatIsSlow_data()
    {
        const Rows<bool, QString, bool, bool, bool> row("cancellable", "then", "done", "cancelled",
                                                        "late");
        row("done", false, "go", true, false, false);
        row("left", false, "leave", false, false, true);
        row("cancelled", true, "leave", false, true, true);
        row("escape", true, "escape", false, true, true);
        row("space typed before", true, "space", true, false, false);
        row("return typed before", true, "return", true, false, false);
        row("end of the program", false, "quit", false, false, true);
    }

    void waitsForWhatIsSlow()
    {
        QFETCH(bool, cancellable);
        QFETCH(QString, then);
        QFETCH(bool, done);
        QFETCH(bool, cancelled);
        QFETCH(bool, late);
        Held held;
        if (cancellable)
            held.progress = std::make_shared<Nodes::LoadProgress>();
        m_wait->setMoment(0);
        whenTold(*m_wait, [&] {
            QProgressDialog *dialog = m_wait->dialog();
            QVERIFY(!dialog->windowTitle().isEmpty());
            if (then == "leave")
                dialog->findChild<QPushButton *>()->click();
            if (then == "escape")
                QTest::keyClick(dialog, Qt::Key_Escape);
            if (then == "space")
                QTest::keyClick(dialog->windowHandle(), Qt::Key_Space);
            if (then == "return")
                QTest::keyClick(dialog->windowHandle(), Qt::Key_Return);
            if (then == "quit")
                QCoreApplication::quit();
            if (done)
                held.gate->release();
        });
        std::optional<Nodes::Result> result;
        QTimer::singleShot(0, this, [&] {
            result = m_wait->run(held.job());
            QCoreApplication::quit();
        });
        QCoreApplication::exec();
        QCOMPARE(result.has_value(), done);
        QCOMPARE(held.progress && held.progress->IsCancelled(), cancelled);
        QCOMPARE(held.late.size(), 0);
        held.gate->release();
        if (late)
            QTRY_COMPARE(held.late, QList<bool>{true});
        QVERIFY(!m_wait->dialog());
    }

    void saysWhyAFileIsNotWritten_data()
    {
        const Rows<QString, bool, QString> row("file", "isLarge", "told");
        row("nothing known", "project.xml", false, "");
        row("disk full", "project.xml", true, "нет места");
        row("directory gone", "gone/project.xml", false, "больше нет");
        row("gone comes first", "gone/project.xml", true, "больше нет");
    }

    void saysWhyAFileIsNotWritten()
    {
        QFETCH(QString, file);
        QFETCH(bool, isLarge);
        QFETCH(QString, told);
        const QString said = WriteObstacle(m_directory->filePath(file),
                                           isLarge ? std::numeric_limits<qint64>::max() : 1);
        QVERIFY2(told.isEmpty() ? said.isEmpty() : said.contains(told), qPrintable(said));
    }

    // Whoever has not waited for a save goes on meanwhile.
    void endsASaveLate_data()
    {
        const Rows<QString, bool, bool> row("meanwhile", "modified", "written");
        row("nothing", "", false, true);
        row("edited", "edit", true, true);
        row("edited and undone", "edit, undo", true, true);
        row("undone to what was saved before", "undo", true, true);
        row("could not be written", "hinder", true, false);
    }

    void endsASaveLate()
    {
        QFETCH(QString, meanwhile);
        QFETCH(bool, modified);
        QFETCH(bool, written);
        Editing editing(*m_directory);
        editing.rename("Q");
        const QByteArray before = editing.file();
        const QSignalSpy told(&editing.session, &ProjectSession::savedLate);
        editing.isSlow = true;
        QVERIFY(editing.session.save() == Nodes::Result::NotAvailable);
        QVERIFY(editing.session.isModified());
        QVERIFY(editing.session.save() == Nodes::Result::NotAvailable); // in order
        QCOMPARE(editing.file(), before);
        if (meanwhile.contains("edit"))
            editing.rename("R");
        if (meanwhile.contains("undo"))
            editing.session.undoStack().undo();
        if (meanwhile.contains("hinder"))
            QVERIFY(QDir().mkpath(editing.session.file() + ".bak/in the way"));
        editing.left.late(editing.left.run());
        QCOMPARE(told.size(), 1);
        QCOMPARE(editing.session.isModified(), modified);
        QCOMPARE(editing.file().contains("name=\"Q\""), written); // as it was when it was saved
        editing.isSlow = false;
        QCOMPARE(bool(editing.session.save()), written);
        editing.session.abandon();
    }

    void knowsItsOwnLateSave()
    {
        Editing editing(*m_directory);
        editing.rename("Q");
        editing.isSlow = true;
        QVERIFY(editing.session.save() == Nodes::Result::NotAvailable);
        QVERIFY(editing.left.run()); // and is not told of yet
        const QSignalSpy told(&editing.workspace, &Workspace::told);
        editing.guard.watch();
        QTRY_VERIFY(!editing.guard.isLooking());
        QCOMPARE(told.size(), 0);
        editing.session.abandon();
    }

    void leavesAnotherProjectAlone()
    {
        Editing editing(*m_directory);
        editing.rename("Q");
        editing.isSlow = true;
        QVERIFY(editing.session.save() == Nodes::Result::NotAvailable);
        editing.session.abandon();
        QVERIFY(editing.session.create(m_directory->filePath("other"), "O"));
        editing.rename("N");
        editing.left.late(editing.left.run());
        QVERIFY(editing.session.isModified());
        editing.session.abandon();
    }

    // What he had not waited for replaces what he has read since: he has to know before he saves.
    void tellsOfALateSaveIntoWhatWasOpenedAgain()
    {
        Editing editing(*m_directory);
        int asked = 0;
        editing.guard.setAsker([&asked](bool) { return ++asked, FileGuard::Cancel; });
        editing.rename("Q");
        editing.isSlow = true;
        QVERIFY(editing.session.save() == Nodes::Result::NotAvailable);
        editing.session.abandon();
        QVERIFY(editing.session.open(editing.session.file()));
        QCOMPARE(editing.session.name(), QString("P"));
        editing.left.late(editing.left.run());
        QVERIFY(!editing.session.isModified());
        const QSignalSpy told(&editing.workspace, &Workspace::told);
        editing.guard.watch();
        QTRY_COMPARE(told.size(), 1);
        editing.isSlow = false;
        editing.rename("R");
        QVERIFY(!editing.session.save());
        QCOMPARE(asked, 1);
        QVERIFY(editing.file().contains("name=\"Q\""));
        editing.session.abandon();
    }

    // The older text must not come last.
    void savesElsewhereOneAfterTheOther()
    {
        Editing editing(*m_directory);
        const QString elsewhere = m_directory->filePath("elsewhere");
        editing.rename("Q");
        editing.isSlow = true;
        QVERIFY(editing.session.saveAs(elsewhere) == Nodes::Result::NotAvailable);
        editing.isSlow = false;
        editing.rename("R");
        QVERIFY(editing.session.saveAs(elsewhere) == Nodes::Result::NotAvailable);
        QVERIFY(!QFileInfo::exists(elsewhere));
        QVERIFY(editing.session.save()); // that is another disk
        editing.left.late(editing.left.run());
        QVERIFY(editing.session.saveAs(elsewhere) == Nodes::Result::Duplicate);
        QCOMPARE(editing.session.name(), QString("R"));
    }

    void asksNothingWhileADiskIsWaitedFor()
    {
        Editing editing(*m_directory);
        int asked = 0;
        editing.guard.setAsker([&asked](bool) { return ++asked, FileGuard::KeepMine; });
        QFile theirs(editing.session.file());
        QVERIFY(theirs.open(QIODevice::Append) && theirs.write("\n") == 1);
        theirs.close();
        const QSignalSpy told(&editing.workspace, &Workspace::told);
        const Nodes::Result done = editing.session.onDisk(
            {"slow",
             [&] {
                 editing.guard.look();
                 (void)QTest::qWaitFor([&] { return !editing.guard.isLooking(); });
                 return Nodes::Result();
             },
             {},
             {}});
        QVERIFY(done);
        QCOMPARE(told.size(), 1);
        QCOMPARE(asked, 0);
        editing.guard.look();
        QTRY_COMPARE(asked, 1);
    }

private:
    std::unique_ptr<QTemporaryDir> m_directory;
    QWidget m_window;
    std::unique_ptr<DiskWait> m_wait;
};

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    qRegisterMetaType<Workspace::Level>();
    SlowDiskTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_slow_disk.moc"
