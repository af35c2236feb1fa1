#include "PropertyFixture.h"

#include "editor/project/ProjectSession.h"
#include "editor/properties/PropertyPanel.h"
#include "editor/properties/PropertyView.h"
#include "editor/workspace/Workspace.h"

#include <QDataStream>
#include <QMimeData>
#include <QTemporaryDir>
#include <QWindow>
#include <QtTest>

using Editor::ProjectSession;
using Editor::PropertyModel;

namespace {

/// The panel in a window, on a project with a label and a signal.
struct Panel
{
    Panel()
    {
        if (!session.create(directory.filePath("p"), "P"))
            throw std::logic_error("no project");
        Nodes::NodesCollection &project = *session.project();
        const auto add = [&](const char *key, Nodes::ConfigNode *parent) {
            return project.CreateNode(ProjectFixture::kind(key).type, parent);
        };
        label = add("label", add("layer", add("composition", session.root())));
        signal = add("memorySignal", session.root());
        panel.resize(320, 600);
        panel.show();
    }
    QString key(const char *name)
    {
        return panel.view().properties().find(name).siblingAtColumn(1).data().toString();
    }

    QTemporaryDir directory;
    ProjectSession session;
    QWidget window;
    Editor::Workspace workspace{session, window};
    Editor::PropertyPanel panel{workspace, nullptr};
    Nodes::ConfigNode *label = nullptr;
    Nodes::ConfigNode *signal = nullptr;
};

} // namespace

class PropertyPanelTest : public QObject
{
    Q_OBJECT

private slots:
    void followsTheSelection()
    {
        Panel p;
        QVERIFY(!p.panel.view().isVisible());
        p.workspace.selection().select({p.label}, &p.window);
        QCOMPARE(p.key("#kind"), QStringLiteral("Надпись"));
        QVERIFY(p.panel.view().isVisible());
        p.session.close();
        QVERIFY(!p.panel.view().isVisible());
    }

    void aRefusalIsToldOnce()
    {
        Panel p;
        const QSignalSpy told(&p.workspace, &Editor::Workspace::told);
        p.workspace.selection().select({p.label}, &p.window);
        PropertyModel &properties = p.panel.view().properties();
        const auto set = [&](const char *text) {
            return properties.setData(properties.find("#name").siblingAtColumn(1), text);
        };
        QVERIFY(!set("")); // refused by the node
        QVERIFY(!properties.find("#name").data(Qt::ToolTipRole).toString().isEmpty());
        QCOMPARE(told.count(), 0);
        QVERIFY(set("Другое"));
    }

    void waitsWhileTheButtonIsHeld()
    {
        Panel p;
        p.workspace.selection().select({p.label}, &p.window);
        QVERIFY(QTest::qWaitForWindowExposed(&p.panel));
        QWindow *window = p.panel.windowHandle();
        QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, {10, 590});
        p.workspace.selection().select({p.signal}, &p.window); // pressed in a tree
        QCOMPARE(p.key("#kind"), QStringLiteral("Надпись"));
        p.workspace.selection().select({p.session.root()}, &p.workspace); // a scene's answer
        QCOMPARE(p.key("#kind"), QStringLiteral("Надпись"));
        p.workspace.selection().select({p.signal}, &p.window);
        QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, {10, 590});
        QTRY_VERIFY(p.key("#kind") != QStringLiteral("Надпись"));
    }

    void keepsWhatWasDroppedOn()
    {
        Panel p;
        p.workspace.selection().select({p.label}, &p.window);
        QVERIFY(QTest::qWaitForWindowExposed(&p.panel));
        QWindow *window = p.panel.windowHandle();
        QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, {10, 590});
        p.workspace.selection().select({p.signal}, &p.window);
        QByteArray bytes;
        QDataStream stream(&bytes, QIODevice::WriteOnly);
        stream << QString::number(p.signal->GetId());
        QMimeData mime;
        mime.setData("application/nodelink", bytes);
        PropertyModel &model = p.panel.view().properties();
        QVERIFY(model.dropMimeData(&mime, Qt::CopyAction, -1, -1, model.find("signal")));
        QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, {10, 590});
        QCOMPARE(textOf(*p.label, "signal"), idOf(p.signal));
        QCOMPARE(p.workspace.selection().nodes(), Nodes::NodeLinks{p.label});
        QCOMPARE(p.key("#kind"), QStringLiteral("Надпись"));
        p.session.undoStack().undo();
        QTRY_COMPARE(p.key("signal"), QStringLiteral("нет"));
    }

    void saysWhyNothingCanBeEdited()
    {
        Panel p;
        p.workspace.selection().select({p.label}, &p.window);
        p.session.setReadOnly(QStringLiteral("проект занят"));
        PropertyModel &model = p.panel.view().properties();
        QVERIFY(!model.setData(model.find("x").siblingAtColumn(1), "5"));
        QCOMPARE(textOf(*p.label, "x"), std::string("0"));
        p.session.setReadOnly(QString());
        QVERIFY(model.setData(model.find("x").siblingAtColumn(1), "5"));
    }
};

QTEST_MAIN(PropertyPanelTest)
#include "tst_property_panel.moc"
