#include "support/MessageBoxes.h"
#include "support/Rows.h"
#include "support/RuntimeProject.h"

#include "widgets/dialogs/ArchiverDBMgrDialog.h"

#include "nodes/storage/DatabaseFiles.h"
#include "nodes/storage/SqliteDatabase.h"
#include "nodes/storage/SqliteStatement.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTreeView>

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
        const QString target = archives.path("copy");
        const std::atomic<bool> isCancelled{cancelled};
        const auto copy = [&] {
            return archives.files().Copy(file.toStdString(), target.toStdString(), isCancelled);
        };
        const Result copied = copy();
        QVERIFY2(copied == Result::ResultType(expected), copied.ToString().c_str());
        QCOMPARE(QFile::exists(target), copied.IsSuccess());
        QTEST(Archives::rows(target), "rows");
        if (copied)
            QVERIFY(copy() == Result::Duplicate);
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
        RuntimeProject project(R"(<actionArchiverDBMgr id="10" name="files"/>)");
        project.core.SetDataDirectory(archives.path("data").toStdString());
        ArchiverDBMgrDialog dialog(project.node<Nodes::BasicAction>(10), "ArchiverDBMgrDialog");
        auto *table = dialog.findChild<QTreeView *>();
        const auto select = [table](int row) {
            table->setCurrentIndex(table->model()->index(row, 0));
        };
        QCOMPARE(table->model()->rowCount(), 3);
        select(1);
        QCOMPARE(dialog.selectedFile(), QString("old/idle.sqlite"));
        const MessageBoxes asked{QMessageBox::StandardButton(answer)};
        dialog.deleteSelected();
        QTRY_COMPARE(asked.captions.size(), 1);
        QTRY_VERIFY(!QApplication::activeModalWidget());
        QCOMPARE(QFile::exists(archives.path("data/old/idle.sqlite")), left == 3);
        QCOMPARE(table->model()->rowCount(), left);
        select(left - 1);
        dialog.copySelectedTo(archives.path("copy"));
        QTRY_COMPARE(asked.shown.size(), 2);
        QCOMPARE(Archives::rows(archives.path("copy")), 3);
    }
    void theDialogOutlivesNodeAndProject_data()
    {
        const Rows<bool, int> row("isProject", "files");
        row("node", false, 3);
        row("project", true, 0);
    }
    void theDialogOutlivesNodeAndProject()
    {
        QFETCH(bool, isProject);
        const Archives archives;
        auto project =
            std::make_unique<RuntimeProject>(R"(<actionArchiverDBMgr id="10" name="f"/>)");
        project->core.SetDataDirectory(archives.path("data").toStdString());
        ArchiverDBMgrDialog dialog(project->node<Nodes::BasicAction>(10), "d");
        auto *table = dialog.findChild<QTreeView *>();
        table->setCurrentIndex(table->model()->index(1, 0));
        if (isProject)
            project.reset();
        else
            QVERIFY(project->node(1)->RemoveNode(10));
        const MessageBoxes asked;
        dialog.deleteSelected();
        QTRY_VERIFY(!QApplication::activeModalWidget());
        QCOMPARE(QFile::exists(archives.path("data/old/idle.sqlite")), isProject);
        dialog.refresh();
        QTEST(table->model()->rowCount() + (isProject ? 0 : 1), "files");
    }
};

QTEST_MAIN(TestArchiveFiles)
#include "tst_archive_files.moc"
