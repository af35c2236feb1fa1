#include "utils/undo/ChangePropertyCommand.h"
#include "utils/undo/DocumentUndo.h"
#include "utils/undo/IUndo.h"
#include "utils/undo/RemoveNodeLinkGroup.h"
#include "utils/undo/UndoGroup.h"

#include "nodes/ProjectFixture.h"

#include <QSignalSpy>
#include <QtTest>

using namespace Nodes;
using namespace Utils;

namespace {

class Editor : public IUndo
{
public:
    Editor() : IUndo(nullptr) {}
    QString getNameUndo() override { return {}; }
};

/// Two compositions with a layer and a label each, the tree and the first one open.
struct Documents : ProjectFixture
{
    Documents()
    {
        for (int i = 0; i < 2; ++i) {
            layer[i] = addLayer();
            label[i] = add("label", layer[i]);
        }
        group.open(root());
        group.open(composition(0));
    }
    NodeLink composition(int i) const { return NodeLink(layer[i]->GetParent()); }
    void move(int i, int x)
    {
        editor.pushToUndoStack(new ChangePropertyCommand(label[i], 11001, x));
    }
    int count(const NodeLink &node) const { return group.find(node)->count(); }

    ConfigNode *layer[2];
    ConfigNode *label[2];
    UndoGroup group;
    Editor editor;
};

} // namespace

class UndoGroupTest : public QObject
{
    Q_OBJECT

private slots:
    void editsGoToTheActiveDocument()
    {
        Documents f;
        f.move(0, 5);
        QCOMPARE(f.count(f.root()), 1);
        QVERIFY(f.group.activate(f.composition(0)));
        QVERIFY(!f.group.activate(f.composition(1)));
        f.move(0, 6);
        f.move(0, 7);
        QCOMPARE(f.count(f.composition(0)), 2);
        QCOMPARE(IUndo::undoStack(), f.group.activeStack());
        f.group.undo();
        QCOMPARE(textOf(*f.label[0], "x"), std::string("6"));
        QCOMPARE(f.count(f.root()), 1);
        QCOMPARE(&f.group.open(f.composition(0)), f.group.find(f.composition(0)));
        QCOMPARE(f.group.documentOf(f.label[0]), f.group.find(f.composition(0)));
        QCOMPARE(f.group.documentOf(f.label[1]), f.group.find(f.root()));
    }

    void closingTakesTheStackAndWhatItHolds()
    {
        Documents f;
        f.group.activate(f.composition(0));
        const NodeLink label(f.label[0]);
        f.editor.pushToUndoStack(new RemoveNodeLinkGroup(f.layer[0], {label}));
        const std::size_t count = f.project.GetNodeCount();
        f.group.close(f.composition(0));
        QCOMPARE(f.project.GetNodeCount(), count);
        QVERIFY(!f.group.find(f.composition(0)));
        QCOMPARE(f.group.activeStack(), f.group.find(f.root()));
        f.move(1, 4);
        QCOMPARE(f.count(f.root()), 1);
    }

    void knowsWhatIsNotSaved()
    {
        Documents f;
        QSignalSpy spy(&f.group, &UndoGroup::modifiedChanged);
        f.group.activate(f.composition(0));
        f.move(0, 5);
        QVERIFY(f.group.isModified());
        f.group.undo();
        QVERIFY(!f.group.isModified());
        f.move(0, 6);
        f.group.close(f.composition(0));
        QVERIFY(f.group.isModified()); // nothing can take it back any more
        f.group.setSaved();
        QVERIFY(!f.group.isModified());
        QCOMPARE(spy.count(), 4);
    }

    void oneStackIsEnoughForAHost()
    {
        QUndoStack only;
        IUndo::setUndoStack(&only);
        {
            Documents f;
            f.move(0, 5);
            QCOMPARE(only.count(), 0);
        }
        ProjectFixture f;
        Editor editor;
        const NodeLink label(f.add("label", f.addLayer()));
        editor.pushToUndoStack(new ChangePropertyCommand(label, 11001, 5));
        QCOMPARE(only.count(), 1);
        IUndo::setUndoStack(nullptr);
        editor.pushToUndoStack(new ChangePropertyCommand(label, 11001, 6));
        QCOMPARE(textOf(*label.GetNode(), "x"), std::string("6"));
    }
};

QTEST_MAIN(UndoGroupTest)
#include "tst_undo_group.moc"
