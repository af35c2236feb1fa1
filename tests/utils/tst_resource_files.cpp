#include "utils/files/ResourceFiles.h"

#include "support/Rows.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using Utils::ResourceFiles;

namespace {

/// A project's folder and another one.
struct Folders
{
    Folders() : files(project.path())
    {
        QDir(project.path()).mkdir("images");
        write(project.filePath("images/own.svg"), "own");
        write(other.filePath("own.svg"), "foreign");
        write(other.filePath("same.svg"), "same");
    }
    static void write(const QString &path, const QByteArray &bytes)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    static QByteArray read(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
    }

    QTemporaryDir project;
    QTemporaryDir other;
    ResourceFiles files;
};

} // namespace

class ResourceFilesTest : public QObject
{
    Q_OBJECT

private slots:
    void namesItsOwnFiles()
    {
        const Folders f;
        const auto own = f.files.find(f.project.filePath("images/own.svg"));
        QCOMPARE(own.name, QStringLiteral("images/own.svg"));
        QVERIFY(!own.isForeign && own.error.isEmpty());
        QVERIFY(f.files.find(f.other.filePath("own.svg")).isForeign);
        QVERIFY(!f.files.find(f.project.filePath("images/none.svg")).error.isEmpty());
        QVERIFY(!f.files.find(f.project.filePath("images")).error.isEmpty());
        QVERIFY(!ResourceFiles(QString()).find(f.other.filePath("own.svg")).error.isEmpty());
    }

    void refusesLinksThatLeadOut()
    {
        const Folders f;
        QVERIFY(QFile::link(f.other.filePath("own.svg"), f.project.filePath("images/out.svg")));
        QVERIFY(QFile::link(f.project.filePath("images/own.svg"), f.project.filePath("in.svg")));
        QVERIFY(QFile::link(f.other.path(), f.project.filePath("sounds")));
        QVERIFY(f.files.find(f.project.filePath("images/out.svg")).error.contains("out.svg"));
        QCOMPARE(f.files.find(f.project.filePath("in.svg")).name, QStringLiteral("in.svg"));
        QVERIFY(!f.files.bringIn(f.other.filePath("same.svg"), "sounds").error.isEmpty());
    }

    void refusesWhatIsTooLarge()
    {
        const Folders f;
        QFile large(f.other.filePath("large.png"));
        QVERIFY(large.open(QIODevice::WriteOnly));
        QVERIFY(large.resize(ResourceFiles::MaximumSize));
        QVERIFY(f.files.find(large.fileName()).isForeign);
        QVERIFY(large.resize(ResourceFiles::MaximumSize + 1));
        QVERIFY(f.files.find(large.fileName()).error.contains("50"));
        QVERIFY(!QFile::exists(f.project.filePath("images/large.png")));
    }

    void bringsInWithoutReplacing()
    {
        const Folders f;
        const auto bring = [&](const char *name) {
            return f.files.bringIn(f.other.filePath(name), "images");
        };
        QCOMPARE(bring("same.svg").name, QStringLiteral("images/same.svg"));
        QCOMPARE(bring("same.svg").name, QStringLiteral("images/same.svg")); // has these bytes
        QCOMPARE(bring("own.svg").name, QStringLiteral("images/own-2.svg"));
        QCOMPARE(f.read(f.project.filePath("images/own.svg")), QByteArray("own"));
        QCOMPARE(f.read(f.project.filePath("images/own-2.svg")), QByteArray("foreign"));
        Folders::write(f.other.filePath("own.svg"), "a third one");
        QCOMPARE(bring("own.svg").name, QStringLiteral("images/own-3.svg"));
    }

    void hasAFolderForEachSort_data()
    {
        const Rows<QString, QString> row("file", "folder");
        row("picture", "/a/b.SVG", "images");
        row("sound", "b.wav", "sounds");
        row("report", "b.lrxml", "reports");
        row("other", "b", "files");
    }

    void hasAFolderForEachSort()
    {
        QFETCH(QString, file);
        QFETCH(QString, folder);
        QCOMPARE(ResourceFiles::folderFor(file), folder);
    }
};

QTEST_GUILESS_MAIN(ResourceFilesTest)
#include "tst_resource_files.moc"
