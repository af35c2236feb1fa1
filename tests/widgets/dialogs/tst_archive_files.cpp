#include "support/RuntimeProject.h"

#include "widgets/dialogs/ArchiverDBMgrDialog.h"

#include "nodes/storage/DatabaseFiles.h"
#include "nodes/storage/SqliteDatabase.h"
#include "nodes/storage/SqliteStatement.h"

#include <QAbstractButton>
#include <QFile>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTreeView>

using namespace Widgets;
using Nodes::SqliteDatabase;

namespace {

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
            return -1;
        Nodes::SqliteStatement count(database, "SELECT count(*) FROM t");
        return count.Step() ? int(count.Integer(0)) : -1;
    }

    QTemporaryDir directory;
    SqliteDatabase idle, used;
};

} // namespace

class TestArchiveFiles : public QObject
{
    Q_OBJECT

private slots:
    void lists();
    void deletesOnlyWhatItMay_data();
    void deletesOnlyWhatItMay();
    void copies_data();
    void copies();
    void theDialogAsksBeforeDeleting_data();
    void theDialogAsksBeforeDeleting();
};

void TestArchiveFiles::lists()
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

void TestArchiveFiles::deletesOnlyWhatItMay_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("expected");
    QTest::newRow("idle") << "old/idle.sqlite" << int(Nodes::Result::Success);
    QTest::newRow("in use") << "used.sqlite" << int(Nodes::Result::Refused);
    QTest::newRow("no database") << "notes.txt" << int(Nodes::Result::InvalidArgument);
    QTest::newRow("outside") << "../outside.sqlite" << int(Nodes::Result::InvalidArgument);
    QTest::newRow("log alone") << "used.sqlite-wal" << int(Nodes::Result::InvalidArgument);
    QTest::newRow("not there") << "none.sqlite" << int(Nodes::Result::NotFound);
}

void TestArchiveFiles::deletesOnlyWhatItMay()
{
    QFETCH(QString, file);
    QFETCH(int, expected);
    const Archives archives;
    const bool wasThere = QFile::exists(archives.path("data/" + file));
    const Nodes::Result deleted = archives.files().Delete(file.toStdString());
    QVERIFY2(deleted == Nodes::Result::ResultType(expected), deleted.ToString().c_str());
    QCOMPARE(QFile::exists(archives.path("data/" + file)), wasThere && !deleted);
    QCOMPARE(Archives::rows(archives.path("data/used.sqlite")), 3);
}

void TestArchiveFiles::copies_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<bool>("cancelled");
    QTest::addColumn<int>("expected");
    QTest::addColumn<int>("rows"); // -1: no database
    QTest::newRow("idle") << "old/idle.sqlite" << false << int(Nodes::Result::Success) << 3;
    QTest::newRow("in use") << "used.sqlite" << false << int(Nodes::Result::Success) << 3;
    QTest::newRow("damaged") << "broken.sqlite.damaged" << false << int(Nodes::Result::Success)
                             << -1;
    QTest::newRow("cancelled") << "used.sqlite" << true << int(Nodes::Result::Cancelled) << -1;
}

void TestArchiveFiles::copies()
{
    QFETCH(QString, file);
    QFETCH(bool, cancelled);
    QFETCH(int, expected);
    QFETCH(int, rows);
    const Archives archives;
    const QString target = archives.path("copy");
    const std::atomic<bool> isCancelled{cancelled};
    const auto copy = [&] {
        return archives.files().Copy(file.toStdString(), target.toStdString(), isCancelled);
    };
    const Nodes::Result copied = copy();
    QVERIFY2(copied == Nodes::Result::ResultType(expected), copied.ToString().c_str());
    QCOMPARE(QFile::exists(target), copied.IsSuccess());
    QCOMPARE(Archives::rows(target), rows);
    if (copied)
        QVERIFY(copy() == Nodes::Result::Duplicate);
}

void TestArchiveFiles::theDialogAsksBeforeDeleting_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("isDeleted");
    QTest::newRow("yes") << int(QMessageBox::Yes) << true;
    QTest::newRow("no") << int(QMessageBox::No) << false;
}

void TestArchiveFiles::theDialogAsksBeforeDeleting()
{
    QFETCH(int, answer);
    QFETCH(bool, isDeleted);
    const Archives archives;
    RuntimeProject project(R"(<actionArchiverDBMgr id="10" name="files"/>)");
    project.core.SetDataDirectory(archives.path("data").toStdString());
    ArchiverDBMgrDialog dialog(project.node<Nodes::BasicAction>(10), "ArchiverDBMgrDialog");
    auto *table = dialog.findChild<QTreeView *>();
    QCOMPARE(table->model()->rowCount(), 3);
    table->setCurrentIndex(table->model()->index(1, 0));
    QCOMPARE(dialog.selectedFile(), QString("old/idle.sqlite"));
    QStringList texts;
    QTimer clicker;
    connect(&clicker, &QTimer::timeout, this, [&] {
        if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
            texts << box->text();
            QAbstractButton *chosen = box->button(QMessageBox::StandardButton(answer));
            (chosen ? chosen : box->buttons().first())->click();
        }
    });
    clicker.start(5);
    dialog.deleteSelected();
    QCOMPARE(texts.size(), 1);
    QCOMPARE(QFile::exists(archives.path("data/old/idle.sqlite")), !isDeleted);
    QCOMPARE(table->model()->rowCount(), isDeleted ? 2 : 3);
    table->setCurrentIndex(table->model()->index(table->model()->rowCount() - 1, 0));
    dialog.copySelectedTo(archives.path("copy"));
    QTRY_COMPARE(texts.size(), 2);
    QCOMPARE(Archives::rows(archives.path("copy")), 3);
    dialog.show();
    if (qEnvironmentVariableIsSet("STATION_PICTURES"))
        dialog.grab().save(qEnvironmentVariable("STATION_PICTURES") + "/archive-files.png");
}

QTEST_MAIN(TestArchiveFiles)
#include "tst_archive_files.moc"
