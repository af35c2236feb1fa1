#include "nodes/ProjectFixture.h"

#include "nodes/serial/LoadReport.h"
#include "nodes/serial/ProjectWriter.h"
#include "nodes/system/systemCore.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace Nodes;

class CoreLoad : public QObject
{
    Q_OBJECT

private slots:
    void directoryAndFileLoadTheSame_data();
    void directoryAndFileLoadTheSame();
    void failedLoadKeepsTheProject();
};

void CoreLoad::directoryAndFileLoadTheSame_data()
{
    QTest::addColumn<QString>("below");
    QTest::newRow("directory") << "";
    QTest::newRow("file") << "/project.xml";
}

void CoreLoad::directoryAndFileLoadTheSame()
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

void CoreLoad::failedLoadKeepsTheProject()
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

QTEST_APPLESS_MAIN(CoreLoad)
#include "tst_core_load.moc"
