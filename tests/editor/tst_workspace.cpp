#include "editor/project/NewProject.h"
#include "editor/project/ProjectSession.h"
#include "editor/workspace/Workspace.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/serial/ProjectWriter.h"
#include "utils/editing/NodeLinkEvent.h"
#include "utils/undo/ChangeTextCommand.h"
#include "utils/undo/IUndo.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

using Editor::ProjectSession;
using Utils::ChangeTextCommand;

namespace {

ChangeTextCommand *rename(const ProjectSession &session, const char *name)
{
    return new ChangeTextCommand(Nodes::NodeLink(session.root()), ChangeTextCommand::Name, name);
}

} // namespace

class WorkspaceTest : public QObject
{
    Q_OBJECT

private slots:
    void makesSavesAndOpens()
    {
        const QTemporaryDir directory;
        const QString place = directory.filePath(QStringLiteral("Насосная"));
        ProjectSession session;
        QVERIFY(session.create(place, QStringLiteral("Насосная")));
        QCOMPARE(session.name(), QStringLiteral("Насосная"));
        QVERIFY(session.report().empty());
        QVERIFY(!session.isModified());
        const std::string uuid = session.project()->GetUuid();

        QVERIFY(Utils::IUndo::execute(rename(session, "Другая")));
        QVERIFY(session.isModified());
        QVERIFY(session.save());
        QVERIFY(!session.isModified());

        ProjectSession second;
        QVERIFY(second.open(place));
        QCOMPARE(second.name(), QStringLiteral("Другая"));
        QCOMPARE(second.project()->GetUuid(), uuid);
        QCOMPARE(second.create(place, QStringLiteral("X")).GetType(), Nodes::Result::Duplicate);
    }

    void readsOnly()
    {
        const QTemporaryDir directory;
        ProjectSession session;
        QVERIFY(session.create(directory.filePath("p"), "P"));
        session.setReadOnly(QStringLiteral("занят"));
        const QSignalSpy told(&session, &ProjectSession::refused);
        QVERIFY(!Utils::IUndo::execute(rename(session, "Q")));
        QCOMPARE(session.name(), QStringLiteral("P"));
        QCOMPARE(told.size(), 1);
        QCOMPARE(session.save().GetType(), Nodes::Result::ReadOnly);
        QVERIFY(session.saveAs(directory.filePath("q"))); // a copy of one's own can be edited
        QVERIFY(Utils::IUndo::execute(rename(session, "Q")));
        QVERIFY(session.file().endsWith(QLatin1String("q/project.xml")));
    }

    void tellsRefusals()
    {
        const QTemporaryDir directory;
        ProjectSession session;
        QVERIFY(session.create(directory.filePath("p"), "P"));
        const QSignalSpy told(&session, &ProjectSession::refused);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("not done"));
        (void)Utils::IUndo::execute(rename(session, "a/b"));
        QCOMPARE(told.size(), 1);
        QVERIFY(!session.isModified());
    }

    void letsNoSceneTakeBackWhatOthersSelected()
    {
        const QTemporaryDir directory;
        ProjectSession session;
        QVERIFY(session.create(directory.filePath("p"), "P"));
        QWidget window;
        Editor::Workspace workspace(session, window);
        QObject scene;
        QObject tree;
        const Nodes::NodeLinks element{session.root()->GetNodes().front()};
        const Nodes::NodeLinks signal{Nodes::NodeLink(session.root())};
        const auto tell = [&scene](const Nodes::NodeLinks &nodes) {
            Utils::NodeLinkEvent event(nodes, &scene);
            QCoreApplication::sendEvent(QCoreApplication::instance(), &event);
        };
        tell(element);
        QCOMPARE(workspace.selection().nodes(), element);
        workspace.selection().select(signal, &tree);
        tell({}); // the scene lets go of its element, a moment later
        QCOMPARE(workspace.selection().nodes(), signal);
        workspace.selection().select(element, &tree);
        tell(element); // it follows: the selection is its own now
        tell({});
        QVERIFY(workspace.selection().nodes().empty());
    }

    void failuresLeaveTheOpenProject_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("damaged") << QByteArray("<project");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("something else") << QByteArray("<html/>");
    }
    void failuresLeaveTheOpenProject()
    {
        QFETCH(QByteArray, text);
        const QTemporaryDir directory;
        ProjectSession session;
        QVERIFY(session.create(directory.filePath("p"), "P"));
        QFile broken(directory.filePath("broken.xml"));
        QVERIFY(broken.open(QIODevice::WriteOnly));
        broken.write(text);
        broken.close();
        QVERIFY(!session.open(broken.fileName()));
        QCOMPARE(session.name(), QStringLiteral("P"));
        QVERIFY(session.isOpen());
    }

    void takesResourcesAlong()
    {
        const QTemporaryDir directory;
        ProjectSession session;
        QVERIFY(session.create(directory.filePath("p"), "P"));
        QVERIFY(QDir(directory.path()).mkpath("p/images"));
        QFile picture(directory.filePath("p/images/a.svg"));
        QVERIFY(picture.open(QIODevice::WriteOnly));
        picture.close();
        QVERIFY(QFile::link("/etc/hostname", directory.filePath("p/outside")));
        QVERIFY(QFile::link("images/a.svg", directory.filePath("p/same.svg")));
        QVERIFY(session.saveAs(directory.filePath("p/copy"))); // also inside itself
        QVERIFY(QFile::exists(directory.filePath("p/copy/images/a.svg")));
        QVERIFY(QFile::exists(directory.filePath("p/copy/same.svg")));
        QVERIFY(!QFile::exists(directory.filePath("p/copy/outside")));
        QVERIFY(!QFile::exists(directory.filePath("p/copy/copy")));
        QVERIFY(QDir(directory.path()).mkpath("q/images"));
        QFile other(directory.filePath("q/images/a.svg"));
        QVERIFY(other.open(QIODevice::WriteOnly) && other.write("another") > 0);
        other.close();
        QVERIFY(session.saveAs(directory.filePath("q")) == Nodes::Result::Duplicate);
        QCOMPARE(QFileInfo(other).size(), qint64(7));
        QVERIFY(!QFile::exists(directory.filePath("q/same.svg"))); // nor any other
        QCOMPARE(session.directory(), directory.filePath("p/copy"));
    }
};

QTEST_MAIN(WorkspaceTest)
#include "tst_workspace.moc"
