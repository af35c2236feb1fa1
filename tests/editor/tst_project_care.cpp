#include "editor/project/ProjectSession.h"
#include "editor/project/ReadProject.h"
#include "editor/recovery/AutoSave.h"
#include "editor/recovery/FileGuard.h"
#include "editor/recovery/HoldKeeper.h"
#include "editor/recovery/RecoveryOffer.h"
#include "editor/recovery/UnsavedProject.h"
#include "editor/shell/ProjectFiles.h"
#include "editor/shell/StartPage.h"
#include "editor/workspace/Workspace.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/project/RecoveryFile.h"
#include "nodes/values/Result.h"
#include "support/Rows.h"
#include "utils/undo/ChangeTextCommand.h"
#include "utils/undo/IUndo.h"

#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QToolButton>
#include <QtTest>

#include <cstdio>
#include <random>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Editor;
using Nodes::RecoveryFile::List;
using Utils::ChangeTextCommand;

Q_DECLARE_METATYPE(FileGuard::enAnswer)

namespace {

/// Whoever edits a project, with what looks after it.
struct Editing
{
    explicit Editing(const QString &directory)
        : workspace(session, window), autoSave(session, nullptr), file(directory + "/p")
    {
        autoSave.setDirectory(directory + "/states");
        autoSave.setPeriod(0);
    }
    explicit Editing(const QTemporaryDir &directory) : Editing(directory.path()) {}
    /// Makes the project when it is not there yet.
    void open()
    {
        Nodes::Result done = session.create(file, "P");
        if (!done)
            done = session.open(file);
        if (!done)
            throw std::runtime_error(done.ToString());
    }
    void rename(const QString &name)
    {
        (void)Utils::IUndo::execute(new ChangeTextCommand(
            Nodes::NodeLink(session.root()), ChangeTextCommand::Name, name.toStdString()));
    }
    std::vector<Nodes::RecoveryInfo> kept() const
    {
        return List(autoSave.directory().toStdString());
    }

    QWidget window;
    ProjectSession session;
    Workspace workspace;
    AutoSave autoSave;
    QString file;
};

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        throw std::runtime_error("not written");
}

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// What is unsaved, as the file has it.
QString keptName(const std::vector<Nodes::RecoveryInfo> &kept)
{
    Nodes::RecoveryInfo info;
    std::string text;
    if (kept.size() != 1 || !Nodes::RecoveryFile::Read(kept[0].file, info, text))
        return QStringLiteral("%1 files").arg(kept.size());
    return QString::fromStdString(info.name);
}

} // namespace

class ProjectCareTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_directory = std::make_unique<QTemporaryDir>(); }

    void keepsWhatIsUnsaved_data()
    {
        const Rows<QString, QString> row("then", "left");
        row("undone", "undo", "0 files");
        row("saved", "save", "0 files");
        row("given up", "abandon", "0 files");
        row("edited again", "edit", "R");
        row("ended from outside", "end", "Q");
        row("edited and ended at once", "edit and end", "R");
        row("given up but edited on", "abandon, edit and end", "R");
        row("given up, but stayed", "abandon, stay and end", "Q");
    }

    void keepsWhatIsUnsaved()
    {
        QFETCH(QString, then);
        QFETCH(QString, left);
        auto editing = std::make_unique<Editing>(*m_directory);
        editing->open();
        const QByteArray file = bytesOf(editing->session.file());
        const QSignalSpy kept(&editing->autoSave, &AutoSave::kept);
        editing->rename("Q");
        QTRY_COMPARE(kept.size(), 1);
        QCOMPARE(keptName(editing->kept()), QString("Q"));
        QCOMPARE(bytesOf(editing->session.file()), file); // never touched
        if (then == "undo")
            editing->session.undoStack().undo();
        if (then == "save")
            QVERIFY(editing->session.save());
        if (then.contains("abandon"))
            editing->session.abandon();
        if (then.contains("stay"))
            editing->session.keepOn();
        if (then.contains("edit"))
            editing->rename("R");
        if (then == "edit")
            QTRY_COMPARE(kept.size(), 2);
        else if (then == "abandon")
            editing->session.close();
        const QString states = editing->autoSave.directory();
        if (then.contains("end"))
            editing.reset();
        QCOMPARE(keptName(List(states.toStdString())), left);
    }

    // Killed at any moment of editing, keeping and saving, started again and killed again: the file
    // is of a save that was told or the one under way, and what was kept since is offered.
    void survivesKills()
    {
        const QString project = m_directory->filePath("x/p");
        const QString states = m_directory->filePath("states");
        bool isNumber = false;
        const int given = qEnvironmentVariableIntValue("STATION_TEST_KILLS", &isNumber);
        std::mt19937 random{std::random_device()()};
        const int kills = isNumber ? given : 12;
        for (int i = 0; i <= kills; ++i) {
            // The last one with unsaved work for certain, the others at any moment.
            const bool isLast = i == kills;
            const int patience = std::uniform_int_distribution<int>(1, 150)(random);
            const Told told = isLast ? killWithUnsavedWork() : editUntilKilled(patience);
            const int onDisk = numberIn(project + "/project.xml");
            QVERIFY2(onDisk == told.saved || onDisk == told.saving,
                     qPrintable(QString("%1 after %2 ms").arg(onDisk).arg(patience)));
            // What the killed editor had begun to keep goes on being written by a process of its
            // own.
            int kept = 0;
            const auto isTidy = [&] {
                Nodes::RecoveryFile::Tidy(states.toStdString());
                const auto left = List(states.toStdString());
                kept = left.empty() ? 0 : keptName(left).toInt();
                return left.empty() || kept > onDisk;
            };
            QVERIFY2(QTest::qWaitFor(isTidy), qPrintable(QString::number(kept)));
            QVERIFY2(kept >= told.kept || onDisk >= told.kept, qPrintable(QString::number(kept)));
            QVERIFY(!isLast || kept > onDisk);
        }
        Editing editing(*m_directory);
        editing.file = project;
        const HoldKeeper hold(editing.workspace, nullptr);
        editing.open();
        QCOMPARE(QDir(project).entryList(QDir::Files | QDir::Hidden, QDir::Name),
                 (QStringList{"project.xml", "project.xml.bak", "project.xml.lock"}));
    }

    void tellsOnceThatItCannotKeep()
    {
        Editing editing(*m_directory);
        editing.open();
        write(m_directory->filePath("states"), "a file where the directory would be");
        const QSignalSpy failed(&editing.autoSave, &AutoSave::failed);
        editing.rename("Q");
        QTRY_COMPARE(failed.size(), 1);
        QVERIFY(QFile::remove(m_directory->filePath("states")));
        QTRY_COMPARE(keptName(editing.kept()), QString("Q")); // tried again by itself
        QCOMPARE(failed.size(), 1);
    }

    void offersWhatWasLeft_data()
    {
        const Rows<QString, QString, QString> row("button", "name", "left");
        row("restored", "Восстановить", "Q", "Q");
        row("removed", "Удалить её", "P", "0 files");
        row("put off", "Решить позже", "P", "Q");
        row("damaged", "Удалить повреждённый файл", "P", "0 files");
    }

    void offersWhatWasLeft()
    {
        QFETCH(QString, button);
        QFETCH(QString, name);
        QFETCH(QString, left);
        {
            Editing crashed(*m_directory);
            crashed.open();
            crashed.rename("Q");
        }
        Editing editing(*m_directory);
        if (button.contains("повреждённый"))
            write(QString::fromStdString(editing.kept()[0].file), "operator station recovery 1\nx");
        RecoveryOffer offer(editing.workspace, editing.autoSave, nullptr);
        editing.window.show();
        editing.open();
        QTRY_VERIFY(offer.question());
        if (name != "P" || left == "Q")
            QVERIFY(offer.question()->informativeText().contains("изменено: 1"));
        for (QAbstractButton *choice : offer.question()->buttons()) {
            if (choice->text() == button)
                choice->click();
        }
        QCOMPARE(editing.session.name(), name);
        QCOMPARE(editing.session.isModified(), name == "Q");
        QCOMPARE(keptName(editing.kept()), left);
        QTRY_VERIFY(!offer.question());
        if (name == "Q") {
            QVERIFY(editing.session.save());
            QCOMPARE(keptName(editing.kept()), QString("0 files"));
        }
        editing.session.abandon();
    }

    void offersNoWorkOnAnotherProjectOfThePlace()
    {
        QString file;
        {
            Editing crashed(*m_directory);
            crashed.open();
            crashed.rename("Q");
            file = crashed.session.file();
        }
        const Nodes::RecoveryInfo old = Editing(*m_directory).kept().at(0);
        QVERIFY(!IsReplaced(old));
        QVERIFY(QFile::remove(file));
        {
            Editing fresh(*m_directory);
            const RecoveryOffer offer(fresh.workspace, fresh.autoSave, nullptr);
            fresh.open();
            QCoreApplication::processEvents(); // it looks behind the opening
            QVERIFY(!offer.question());
            QVERIFY(IsReplaced(old));
            fresh.rename("R");
        }
        Editing editing(*m_directory);
        const RecoveryOffer offer(editing.workspace, editing.autoSave, nullptr);
        editing.window.show();
        editing.open();
        QTRY_VERIFY(offer.question());
        QVERIFY(offer.question()->text().contains("«R»"));
        for (QAbstractButton *choice : offer.question()->buttons()) {
            if (choice->text() == "Удалить её")
                choice->click();
        }
        QCoreApplication::processEvents();
        QVERIFY(!offer.question());
        QCOMPARE(keptName(editing.kept()), QString("Q")); // it may still be wanted
    }

    // Whoever starts again may not know any more which project it was.
    void listsWhatWasLeft_data()
    {
        const Rows<QString, int> row("then", "links");
        row("crashed", "", 1);
        row("saved, then killed", "save", 0);
        row("another window edits it", "held", 0);
    }

    void listsWhatWasLeft()
    {
        QFETCH(QString, then);
        QFETCH(int, links);
        QString states;
        {
            Editing crashed(*m_directory);
            crashed.open();
            crashed.rename("Q");
            states = crashed.autoSave.directory();
        }
        Editing editing(*m_directory);
        if (then == "save")
            Nodes::RecoveryFile::NoteSave(
                editing.kept()[0].file,
                Nodes::FileStamp::Of(editing.kept()[0].project).GetDigest());
        QProcess holder;
        if (then == "held") {
            holder.start(QCoreApplication::applicationFilePath(), {"--hold", editing.file});
            QVERIFY(holder.waitForReadyRead());
        }
        ProjectFiles files(editing.workspace, nullptr);
        StartPage page(files, states, nullptr);
        page.show();
        QList<QToolButton *> found;
        for (QToolButton *button : page.findChildren<QToolButton *>()) {
            if (button->text().startsWith("Q "))
                found << button;
        }
        QCOMPARE(found.size(), links);
        holder.kill();
        holder.waitForFinished();
        if (links == 0)
            return;
        found[0]->click();
        QCOMPARE(editing.session.name(), QString("P")); // what was left is offered there
        QCOMPARE(editing.session.directory(), editing.file);
    }

    void isForOneEditor()
    {
        Editing first(*m_directory);
        const HoldKeeper firstHold(first.workspace, nullptr);
        first.open();
        Editing second(*m_directory);
        HoldKeeper secondHold(second.workspace, nullptr);
        const QSignalSpy told(&second.workspace, &Workspace::told);
        second.open();
        QVERIFY(!first.session.isReadOnly());
        QVERIFY(second.session.readOnlyReason().contains(
            QString::fromStdString(Nodes::ProjectHolder::Myself().user)));
        secondHold.look();
        QVERIFY(told.empty());
        first.session.close();
        secondHold.look();
        secondHold.look();
        QCOMPARE(told.size(), 1); // it is free now, but what is shown may be old
        QVERIFY(second.session.isReadOnly());
        QVERIFY(!second.session.readOnlyReason().contains( // and is not said to be held any more
            QString::fromStdString(Nodes::ProjectHolder::Myself().user)));
        second.open();
        QVERIFY(!second.session.isReadOnly());
    }

    void noticesOtherPrograms_data()
    {
        const Rows<bool, FileGuard::enAnswer, QString, QString> row("isSaving", "answer", "open",
                                                                    "onDisk");
        row("seen, kept", false, FileGuard::KeepMine, "Q", "theirs");
        row("seen, read again", false, FileGuard::Reload, "theirs", "theirs");
        row("saving, cancelled", true, FileGuard::Cancel, "Q", "theirs");
        row("saving over it", true, FileGuard::KeepMine, "Q", "Q");
        row("saving, read again instead", true, FileGuard::Reload, "theirs", "theirs");
    }

    void noticesOtherPrograms()
    {
        QFETCH(bool, isSaving);
        QFETCH(FileGuard::enAnswer, answer);
        QFETCH(QString, open);
        QFETCH(QString, onDisk);
        Editing editing(*m_directory);
        FileGuard guard(editing.workspace, nullptr);
        std::vector<bool> asked;
        guard.setAsker([&](bool isAboutToSave) {
            asked.push_back(isAboutToSave);
            return answer;
        });
        editing.open();
        editing.rename("Q");
        guard.look(); // untouched
        QTRY_VERIFY(!guard.isLooking());
        QVERIFY(asked.empty());
        QByteArray theirs = bytesOf(editing.session.file());
        theirs.replace("name=\"P\"", "name=\"theirs\"");
        write(editing.session.file(), theirs);
        if (isSaving)
            QCOMPARE(bool(editing.session.save()), answer == FileGuard::KeepMine);
        else
            guard.look();
        QTRY_COMPARE(asked, std::vector<bool>{isSaving});
        QTRY_COMPARE(editing.session.name(), open);
        QVERIFY(bytesOf(editing.session.file())
                    .contains(QStringLiteral("name=\"%1\"").arg(onDisk).toUtf8()));
        guard.look(); // of the same change once
        QTRY_VERIFY(!guard.isLooking());
        QCOMPARE(asked.size(), std::size_t(1));
        editing.session.abandon();
    }

    void goesOnWithoutItsFile()
    {
        Editing editing(*m_directory);
        FileGuard guard(editing.workspace, nullptr);
        editing.open();
        editing.rename("Q");
        const QSignalSpy told(&editing.workspace, &Workspace::told);
        QVERIFY(QDir(editing.file).removeRecursively());
        guard.look();
        QTRY_COMPARE(told.size(), 1);
        guard.look();
        QTRY_VERIFY(!guard.isLooking());
        QCOMPARE(told.size(), 1);
        QVERIFY(!editing.session.save());
        QVERIFY(editing.session.isModified());
        QVERIFY(editing.session.saveAs(m_directory->filePath("elsewhere")));
        QCOMPARE(editing.session.name(), QString("Q"));
    }

    // Whoever is at work is told only, and asked when he comes back to the window.
    void asksNobodyInTheMiddleOfHisWork()
    {
        Editing editing(*m_directory);
        FileGuard guard(editing.workspace, nullptr);
        int asked = 0;
        guard.setAsker([&asked](bool) { return ++asked, FileGuard::KeepMine; });
        editing.open();
        const QSignalSpy told(&editing.workspace, &Workspace::told);
        write(editing.session.file(), bytesOf(editing.session.file()) + "\n");
        guard.watch();
        QTRY_COMPARE(told.size(), 1);
        guard.watch();
        QTRY_VERIFY(!guard.isLooking());
        QCOMPARE(told.size(), 1);
        QDialog other;
        other.open();
        guard.look();
        QTRY_VERIFY(!guard.isLooking());
        QCOMPARE(asked, 0);
        other.close();
        guard.look();
        QTRY_COMPARE(asked, 1);
        QCOMPARE(told.size(), 1);
    }

    // As a server that is away: reading waits, and neither the window nor a save does.
    void waitsForNoDisk()
    {
        Editing editing(*m_directory);
        FileGuard guard(editing.workspace, nullptr);
        guard.setPatience(20);
        editing.open();
        editing.rename("Q");
        const QSignalSpy told(&editing.workspace, &Workspace::told);
        const QString file = editing.session.file();
        QVERIFY(QFile::remove(file));
        QCOMPARE(::mkfifo(qPrintable(file), 0600), 0);
        guard.watch();
        QTRY_COMPARE(told.size(), 1);
        QVERIFY(guard.isLooking());
        QVERIFY(editing.session.save() == Nodes::Result::NotAvailable);
        QTRY_COMPARE(keptName(editing.kept()), QString("Q"));
        const auto answer = [&file] { ::close(::open(qPrintable(file), O_WRONLY | O_NONBLOCK)); };
        QVERIFY(editing.session.saveAs(m_directory->filePath("sound")));
        editing.rename("R");
        QVERIFY(editing.session.save()); // this disk answers
        answer();                        // to who does not wait any more
    }

    void onlyShowsWhatANewerProgramWrote()
    {
        Editing editing(*m_directory);
        editing.open();
        QByteArray newer = bytesOf(editing.session.file());
        newer.replace("format=\"1\"", "format=\"9\"");
        write(editing.session.file(), newer);
        editing.open();
        QVERIFY(editing.session.isReadOnly());
        QVERIFY(editing.session.saveAs(m_directory->filePath("q")) == Nodes::Result::ReadOnly);
        editing.session.setReadOnly({});
        QVERIFY(editing.session.save() == Nodes::Result::ReadOnly);
        QCOMPARE(bytesOf(editing.session.file()), newer);
    }

private:
    /// What an editor has told before it was killed.
    struct Told
    {
        int kept = 0;
        int saving = 0;
        int saved = 0;
    };

    Told editUntilKilled(int milliseconds) const
    {
        QProcess editor;
        start(editor, "--edit");
        QElapsedTimer time;
        time.start();
        while (time.elapsed() < milliseconds && editor.state() == QProcess::Running)
            editor.waitForReadyRead(1);
        return kill(editor);
    }
    /// Once it has kept something; it saves nothing any more then.
    Told killWithUnsavedWork() const
    {
        QProcess editor;
        start(editor, "--edit-once");
        QByteArray said;
        while (!said.contains("kept ") && editor.waitForReadyRead())
            said += editor.peek(editor.bytesAvailable());
        return kill(editor);
    }
    void start(QProcess &editor, const char *option) const
    {
        editor.start(QCoreApplication::applicationFilePath(), {option, m_directory->path()});
        if (!editor.waitForReadyRead())
            throw std::runtime_error("it does not edit");
    }
    static Told kill(QProcess &editor)
    {
        editor.kill();
        editor.waitForFinished();
        Told told;
        for (const QByteArray &line : editor.readAllStandardOutput().split('\n')) {
            const QList<QByteArray> words = line.split(' ');
            if (words.size() != 2)
                continue;
            int &number = words[0] == "kept"     ? told.kept
                          : words[0] == "saving" ? told.saving
                                                 : told.saved;
            number = words[1].toInt();
        }
        return told;
    }
    /// The name of a project that is a number; -1 unless its file is whole.
    static int numberIn(const QString &file)
    {
        ReadProject found;
        return found.read(file) && found.report.empty()
                   ? QString::fromStdString(found.project->GetRoot()->GetName()).toInt()
                   : -1;
    }

    std::unique_ptr<QTemporaryDir> m_directory;
};

namespace {

void say(const char *what, const QString &number)
{
    std::printf("%s %s\n", what, qPrintable(number));
    std::fflush(stdout);
}

/// Takes up what was left, then edits and saves without end and tells what is safe, until it is
/// killed. Once: until something unsaved is safe.
int edit(const QString &path, bool isOnce)
{
    Editing editing(path + "/x");
    const HoldKeeper hold(editing.workspace, nullptr);
    const RecoveryOffer offer(editing.workspace, editing.autoSave, nullptr);
    editing.autoSave.setDirectory(path + "/states");
    editing.autoSave.setPeriod(3);
    editing.open();
    QCoreApplication::processEvents();
    const QString onDisk = editing.session.name();
    if (offer.question())
        offer.question()->defaultButton()->click();
    say("saved", QString::number(onDisk.toInt())); // a new one has no number
    int count = editing.session.name().toInt();
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        editing.rename(QString::number(++count));
        if (count % 8 != 0)
            return;
        say("saving", editing.session.name());
        if (editing.session.save())
            say("saved", editing.session.name());
    });
    QObject::connect(&editing.autoSave, &AutoSave::kept, &timer, [&] {
        if (isOnce)
            timer.stop();
        say("kept", keptName(editing.kept()));
    });
    timer.start(2);
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    qRegisterMetaType<Workspace::Level>();
    if (argc == 3 && QByteArray(argv[1]) == "--hold") {
        Nodes::ProjectHold hold;
        say("held", QString::number(bool(hold.Take(std::string(argv[2]) + "/project.xml"))));
        return QCoreApplication::exec();
    }
    if (argc == 3 && QByteArray(argv[1]).startsWith("--edit"))
        return edit(QString::fromLocal8Bit(argv[2]), QByteArray(argv[1]) == "--edit-once");
    ProjectCareTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_project_care.moc"
