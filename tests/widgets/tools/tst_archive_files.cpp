#include "nodes/FileSizeLimit.h"
#include "support/MessageBoxes.h"
#include "support/Rows.h"
#include "support/RuntimeProject.h"

#include "widgets/tools/ArchiverDBMgrDialog.h"

#include "widgets/tools/UniversalTableView.h"

#include "nodes/journal/EventJournal.h"
#include "nodes/storage/DatabaseCopy.h"
#include "nodes/storage/DatabaseFiles.h"
#include "nodes/storage/SqliteDatabase.h"
#include "nodes/storage/SqliteStatement.h"

#include <QFile>
#include <QMenu>
#include <QPushButton>
#include <QTemporaryDir>
#include <QThread>

#include <algorithm>

using namespace Widgets;
using Nodes::Result;
using Nodes::SqliteDatabase;

namespace {

constexpr int noDatabase = -1;

/// A data directory with an idle archive, one in use, one that is damaged, and other files.
struct Archives
{
    Archives()
    {
        QDir(directory.path()).mkpath("data/old");
        fill(idle, "old/idle.sqlite");
        idle.Close();
        fill(used, "used.sqlite");
        write("data/broken.sqlite.damaged", QByteArray(5000, 'x'));
        write("data/notes.txt", "n");
        write("outside.sqlite", "o");
    }
    QString path(const QString &name) const { return directory.filePath(name); }
    void write(const char *name, const QByteArray &bytes) const
    {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    void fill(SqliteDatabase &database, const char *name) const
    {
        const std::string file = path(QString("data/") + name).toStdString();
        QVERIFY(database.Open(file, SqliteDatabase::Mode::ReadWrite));
        QVERIFY(database.Execute("CREATE TABLE t(x); INSERT INTO t VALUES(1),(2),(3)"));
    }
    Nodes::DatabaseFiles files() const { return Nodes::DatabaseFiles(path("data").toStdString()); }
    static int rows(const QString &file)
    {
        SqliteDatabase database;
        if (!database.Open(file.toStdString(), SqliteDatabase::Mode::ReadOnly))
            return noDatabase;
        Nodes::SqliteStatement count(database, "SELECT count(*) FROM t");
        return count.Step() ? int(count.Integer(0)) : noDatabase;
    }

    QTemporaryDir directory;
    SqliteDatabase idle, used;
};

} // namespace

class TestArchiveFiles : public QObject
{
    Q_OBJECT

private slots:
    void lists()
    {
        const Archives archives;
        QStringList listed;
        for (const auto &file : archives.files().List()) {
            listed << QString::fromStdString(file.path) + (file.isInUse ? "*" : "");
            QVERIFY(file.size > 4000 && file.changed > 0);
        }
        QCOMPARE(listed.join(' '), QString("broken.sqlite.damaged old/idle.sqlite used.sqlite*"));
        QVERIFY(Nodes::DatabaseFiles("").List().empty());
    }
    void deletesOnlyWhatItMay_data()
    {
        const Rows<QString, int> row("file", "expected");
        row("idle", "old/idle.sqlite", Result::Success);
        row("in use", "used.sqlite", Result::Refused);
        row("no database", "notes.txt", Result::InvalidArgument);
        row("outside", "../outside.sqlite", Result::InvalidArgument);
        row("log alone", "used.sqlite-wal", Result::InvalidArgument);
        row("not there", "none.sqlite", Result::NotFound);
    }
    void deletesOnlyWhatItMay()
    {
        QFETCH(QString, file);
        QFETCH(int, expected);
        const Archives archives;
        const bool wasThere = QFile::exists(archives.path("data/" + file));
        const Result deleted = archives.files().Delete(file.toStdString());
        QVERIFY2(deleted == Result::ResultType(expected), deleted.ToString().c_str());
        QCOMPARE(QFile::exists(archives.path("data/" + file)), wasThere && !deleted);
        QCOMPARE(Archives::rows(archives.path("data/used.sqlite")), 3);
    }
    void copies_data()
    {
        const Rows<QString, bool, int, int> row("file", "cancelled", "expected", "rows");
        row("idle", "old/idle.sqlite", false, Result::Success, 3);
        row("in use", "used.sqlite", false, Result::Success, 3);
        row("damaged", "broken.sqlite.damaged", false, Result::Success, noDatabase);
        row("cancelled", "used.sqlite", true, Result::Cancelled, noDatabase);
    }
    void copies()
    {
        QFETCH(QString, file);
        QFETCH(bool, cancelled);
        QFETCH(int, expected);
        const Archives archives;
        const auto copy = [&] {
            std::unique_ptr<Nodes::DatabaseCopy> made;
            const Result resolved = archives.files().MakeCopy(
                file.toStdString(), archives.path("copy").toStdString(), made);
            if (resolved && cancelled)
                made->Cancel();
            return resolved ? made->Run() : resolved;
        };
        const Result copied = copy();
        QVERIFY2(copied == Result::ResultType(expected), copied.ToString().c_str());
        QCOMPARE(QDir(archives.directory.path()).entryList({"copy*"}).size(), copied ? 1 : 0);
        QTEST(Archives::rows(archives.path("copy")), "rows");
        if (copied)
            QVERIFY(copy() == Result::Duplicate);
    }
    // What another process commits meanwhile is in the copy wholly or not at all.
    void copiesOneMoment()
    {
        Archives archives;
        QVERIFY(archives.used.Execute("CREATE TABLE big(x); BEGIN"));
        for (int i = 0; i < 3000; ++i)
            QVERIFY(archives.used.Execute("INSERT INTO big VALUES(randomblob(4000))"));
        QVERIFY(archives.used.Execute("COMMIT"));
        std::unique_ptr<Nodes::DatabaseCopy> copy;
        const std::string target = archives.path("copy").toStdString();
        QVERIFY(archives.files().MakeCopy("used.sqlite", target, copy));
        std::atomic<bool> isOver{false};
        const std::unique_ptr<QThread> writer(QThread::create([&] {
            while (!isOver)
                (void)archives.used.Execute("INSERT INTO t SELECT 4; DELETE FROM t WHERE x = 4");
        }));
        writer->start();
        const Result copied = copy->Run();
        isOver = true;
        QVERIFY(writer->wait());
        QVERIFY2(copied, copied.ToString().c_str());
        QVERIFY(!copy->GetDigest().empty());
        const int rows = Archives::rows(archives.path("copy"));
        QVERIFY(rows == 3 || rows == 4);
    }
    void leavesNothingOfACopyThatFailed()
    {
        const Archives archives;
        std::unique_ptr<Nodes::DatabaseCopy> copy;
        const std::string target = archives.path("copy").toStdString();
        QVERIFY(archives.files().MakeCopy("old/idle.sqlite", target, copy));
        const FileSizeLimit limit(4096);
        QVERIFY(copy->Run() == Result::StorageError);
        QCOMPARE(QDir(archives.directory.path()).entryList({"copy*"}), QStringList());
    }
    void partsFilesByTheirOwners()
    {
        const Archives archives;
        archives.write("data/archive.sqlite", "a");
        archives.write("data/archive.sqlite.damaged-1", "a");
        const auto project = open(archives, R"(<archiver id="11" name="Архив"/>)");
        ArchiverDBMgrDialog dialog(project->node<Nodes::BasicAction>(10), "d");
        QCOMPARE(dialog.archivers().model()->rowCount(), 2);
        QCOMPARE(names(dialog), QStringList({"archive.sqlite", "archive.sqlite.damaged-1"}));
        QTest::keyClick(&dialog.archivers(), Qt::Key_Up);
        QCOMPARE(names(dialog),
                 QStringList({"broken.sqlite.damaged", "old/idle.sqlite", "used.sqlite"}));
    }
    void theDialogAsksBeforeDeleting_data()
    {
        const Rows<int, int> row("answer", "left");
        row("yes", QMessageBox::Ok, 2);
        row("no", QMessageBox::Cancel, 3);
    }
    void theDialogAsksBeforeDeleting()
    {
        QFETCH(int, answer);
        QFETCH(int, left);
        const Archives archives;
        const auto project = open(archives);
        ArchiverDBMgrDialog dialog(project->node<Nodes::BasicAction>(10), "ArchiverDBMgrDialog");
        QCOMPARE(names(dialog).size(), 3);
        dialog.files().selectRow(1);
        const MessageBoxes asked{QMessageBox::StandardButton(answer)};
        dialog.deleteFiles();
        QTRY_COMPARE(asked.captions.size(), 1);
        QTRY_VERIFY(!QApplication::activeModalWidget());
        QCOMPARE(QFile::exists(archives.path("data/old/idle.sqlite")), left == 3);
        QCOMPARE(names(dialog).size(), left);
    }
    void buttonsFollowTheListAfterTheMenuMadeItAnew()
    {
        const Archives archives;
        const auto project = open(archives);
        ArchiverDBMgrDialog dialog(project->node<Nodes::BasicAction>(10), "d");
        const std::unique_ptr<QMenu> menu(dialog.files().makeMenu());
        menu->actions().first()->trigger();
        const QList<QPushButton *> buttons = dialog.findChildren<QPushButton *>();
        const auto deletion =
            std::find_if(buttons.begin(), buttons.end(), [](const QPushButton *button) {
                return button->text() == QStringLiteral("Удалить…");
            });
        QVERIFY(deletion != buttons.end() && !(*deletion)->isEnabled());
        dialog.files().selectRow(1);
        QVERIFY((*deletion)->isEnabled());
    }
    void theDialogCopiesWhatIsSelected()
    {
        const Archives archives;
        const auto project = open(archives);
        ArchiverDBMgrDialog dialog(project->node<Nodes::BasicAction>(10), "d");
        QVERIFY(project->core.GetJournal().Open(archives.path("journal.sqlite").toStdString()));
        QDir(archives.directory.path()).mkpath("stick");
        dialog.files().selectAll();
        QVERIFY(!dialog.hasCopyTarget());
        dialog.copyFiles(); // nowhere to
        dialog.setCopyTarget(archives.path("stick"));
        for (int times = 1; times <= 2; ++times) {
            const MessageBoxes told;
            dialog.files().selectAll();
            dialog.copyFiles();
            QTRY_COMPARE(told.shown.size(), 1);
            QTRY_VERIFY(!QApplication::activeModalWidget());
            QCOMPARE(QDir(archives.path("stick")).entryList(QDir::Files).size(), 3 * times);
        }
        QCOMPARE(Archives::rows(archives.path("stick/used.sqlite")), 3);
        std::vector<Nodes::BasicEvent> entries;
        QVERIFY(project->core.GetJournal().Flush());
        Nodes::JournalQuery copies;
        copies.text = "Файл архива скопирован";
        QVERIFY(project->core.GetJournal().Query(copies, entries));
        QCOMPARE(entries.size(), std::size_t(6));
    }
    void theMenuOffersWhatCanBeDone_data()
    {
        const Rows<int, bool, QStringList> row("selected", "hasTarget", "texts");
        const QString refresh("Обновить список файлов");
        row("nothing", 0, false, {refresh});
        row("one", 1, false, {refresh, "Удалить файл broken.sqlite.damaged"});
        row("several", 2, false, {refresh, "Удалить выбранные файлы"});
        row("a target", 1, true,
            {refresh, "Копировать в \"/tmp\"", "Удалить файл broken.sqlite.damaged"});
    }
    void theMenuOffersWhatCanBeDone()
    {
        QFETCH(int, selected);
        QFETCH(bool, hasTarget);
        const Archives archives;
        const auto project = open(archives);
        ArchiverDBMgrDialog dialog(project->node<Nodes::BasicAction>(10), "d");
        if (hasTarget)
            dialog.setCopyTarget("/tmp");
        dialog.files().setSelectionMode(QTableView::MultiSelection);
        for (int row = 0; row < selected; ++row)
            dialog.files().selectRow(row);
        const std::unique_ptr<QMenu> menu(dialog.files().makeMenu());
        QStringList texts;
        for (const QAction *action : menu->actions())
            texts << action->text();
        QTEST(texts, "texts");
        QVERIFY(!dialog.archivers().makeMenu());
    }
    void theDialogOutlivesNodeAndProject_data()
    {
        const Rows<bool, int> row("isProject", "files");
        row("node", false, 2);
        row("project", true, 0);
    }
    void theDialogOutlivesNodeAndProject()
    {
        QFETCH(bool, isProject);
        const Archives archives;
        auto project = open(archives);
        ArchiverDBMgrDialog dialog(project->node<Nodes::BasicAction>(10), "d");
        dialog.files().selectRow(1);
        if (isProject)
            project.reset();
        else
            QVERIFY(project->node(1)->RemoveNode(10));
        const MessageBoxes asked;
        dialog.deleteFiles();
        QTRY_VERIFY(!QApplication::activeModalWidget());
        QCOMPARE(QFile::exists(archives.path("data/old/idle.sqlite")), isProject);
        dialog.refresh();
        QTEST(names(dialog).size(), "files");
    }

private:
    static std::unique_ptr<RuntimeProject> open(const Archives &archives, const char *more = "")
    {
        const QByteArray station =
            QByteArray(R"(<station id="9" name="St">)") + more + "</station>";
        auto project = std::make_unique<RuntimeProject>(
            R"(<actionArchiverDBMgr id="10" name="files"/>)" + station);
        project->core.SetDataDirectory(archives.path("data").toStdString());
        return project;
    }
    static QStringList names(const ArchiverDBMgrDialog &dialog)
    {
        QStringList names;
        const QAbstractItemModel *model = dialog.files().model();
        for (int row = 0; row < model->rowCount(); ++row)
            names << model->index(row, 1).data().toString();
        return names;
    }
};

QTEST_MAIN(TestArchiveFiles)
#include "tst_archive_files.moc"
