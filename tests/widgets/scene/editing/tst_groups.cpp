// Groups of elements in an edited scene: picking, going in and out, moving, scaling, copying.
#include "support/Rows.h"
#include "support/ShownEditor.h"

#include "utils/undo/MoveNodesCommand.h"
#include "widgets/scene/editing/CornerGrabber.h"
#include "widgets/scene/editing/arrange/SceneEditTable.h"

#include <QClipboard>

using Widgets::CornerGrabber;

namespace {

// A and B are the group p, in q stand D alone and E, F as the group q/r; G is in none. H is of
// another layer.
constexpr const char *nodes = R"(
<composition id="30" name="C" width="640" height="480">
  <layer id="31" name="low" zOrder="1">
    <label id="32" name="A" x="10" y="10" width="50" height="20" elementGroup="p"/>
    <label id="33" name="B" x="110" y="50" width="50" height="20" elementGroup="p"/>
    <label id="34" name="D" x="10" y="200" width="50" height="20" elementGroup="q"/>
    <label id="35" name="E" x="110" y="200" width="50" height="20" elementGroup="q/r"/>
    <label id="36" name="F" x="210" y="200" width="50" height="20" elementGroup="q/r"/>
    <label id="37" name="G" x="400" y="100" width="50" height="20"/></layer>
  <layer id="38" name="top" zOrder="2" mode="transparent">
    <label id="39" name="H" x="400" y="300" width="50" height="20" elementGroup="p"/></layer>
</composition>)";

const QPointF a(20, 20), b(120, 60), d(20, 210), e(120, 210), g(410, 110);

struct Editor : ShownEditor
{
    Editor() : ShownEditor(nodes) {}

    void click(QPointF at, Qt::KeyboardModifiers modifiers = {})
    {
        press(at, modifiers);
        release(at, modifiers);
        editor().settleSelection();
    }
    void doubleClick(QPointF at)
    {
        click(at);
        mouse(QEvent::MouseButtonDblClick, at);
        release(at);
        editor().settleSelection();
    }
    QString sorted() const
    {
        QStringList ids = selected().split(' ');
        ids.sort();
        return ids.join(' ');
    }
    void run(const char *id) const
    {
        editor().tableEdits().run(*Widgets::SceneEditTable::find(id));
        editor().settleSelection();
    }
    QString groupOf(unsigned long id) const
    {
        return QString::fromStdString(project.node<Nodes::BasicWidget>(id)->GetGroup());
    }
    QString groups() const
    {
        QStringList all;
        for (unsigned long id = 32; id < 38; ++id)
            all << groupOf(id);
        return all.join(' ');
    }
    /// Of what was added below that layer.
    QStringList groupsOfNew(unsigned long layer) const
    {
        QStringList all;
        for (const auto &child : project.node(layer)->Children()) {
            if (child->GetId() > 39)
                all << groupOf(child->GetId());
        }
        return all;
    }
    QVector<QRectF> frames() const { return editor().groups().frames(); }
};

} // namespace

class GroupsTest : public QObject
{
    Q_OBJECT

private slots:
    void picksWhatBelongsTogether()
    {
        Editor editor;
        editor.click(a);
        QCOMPARE(editor.sorted(), QString("32 33"));
        QCOMPARE(editor.frames(), QVector<QRectF>{QRectF(10, 10, 150, 60)});
        editor.click(d);
        QCOMPARE(editor.sorted(), QString("34 35 36"));
        editor.click(b, Qt::ControlModifier);
        QCOMPARE(editor.sorted(), QString("32 33 34 35 36"));
        QCOMPARE(editor.frames().size(), 2);
        editor.click(e, Qt::ControlModifier);
        QCOMPARE(editor.sorted(), QString("32 33"));
        editor.click(g);
        QCOMPARE(editor.sorted(), QString("37"));
        QVERIFY(editor.frames().isEmpty());
    }

    void rubberBandTakesWholeGroups()
    {
        Editor editor;
        editor.drag({5, 190}, {70, 230}); // D only
        QCOMPARE(editor.sorted(), QString("34 35 36"));
        editor.drag({500, 400}, {520, 420});
        QCOMPARE(editor.sorted(), QString(""));
    }

    void goesInAndOut()
    {
        Editor editor;
        editor.doubleClick(e);
        QCOMPARE(editor.sorted(), QString("35 36"));
        editor.click(d);
        QCOMPARE(editor.sorted(), QString("34")); // still inside
        editor.doubleClick(e);
        QCOMPARE(editor.sorted(), QString("35"));
        QCOMPARE(editor.frames().size(), 1); // the one that was entered
        const auto escape = [&editor] {
            editor.key(Qt::Key_Escape);
            editor.editor().settleSelection();
            return editor.sorted();
        };
        QCOMPARE(escape(), QString("35 36"));
        QCOMPARE(escape(), QString("34 35 36"));
        QCOMPARE(escape(), QString(""));
        editor.doubleClick(a);
        editor.click(e); // another group: comes out of this one
        QCOMPARE(editor.sorted(), QString("34 35 36"));
        editor.doubleClick(a);
        editor.click({500, 400});
        editor.click(a);
        QCOMPARE(editor.sorted(), QString("32 33"));
    }

    void altPicksOneOfAGroup()
    {
        Editor editor;
        editor.click(e);
        editor.click(e, Qt::AltModifier);
        QCOMPARE(editor.sorted(), QString("35"));
        editor.drag(e, e + QPointF(7, 0));
        QCOMPARE(editor.place(35).x(), 117);
        QCOMPARE(editor.place(36).x(), 210);
    }

    void tabGoesFromOneToTheNext()
    {
        Editor editor;
        QStringList visited;
        for (int i = 0; i < 5; ++i) {
            editor.key(Qt::Key_Tab);
            editor.editor().settleSelection();
            visited << editor.sorted();
        }
        QCOMPARE(visited, (QStringList{"32 33", "34 35 36", "37", "39", "32 33"}));
        editor.doubleClick(e);
        editor.key(Qt::Key_Tab);
        QCOMPARE(editor.sorted(), QString("34")); // around, inside of q
    }

    // What was selected elsewhere is what is dragged.
    void selectedAloneIsDraggedAlone()
    {
        Editor editor;
        editor.select({32});
        editor.drag(a, a + QPointF(5, 5));
        QCOMPARE(editor.place(32).topLeft(), QPoint(15, 15));
        QCOMPARE(editor.place(33).topLeft(), QPoint(110, 50));
    }

    void movesAsOneStep()
    {
        Editor editor;
        editor.drag(a, a + QPointF(30, 0));
        QCOMPARE(editor.place(33).x(), 140);
        QCOMPARE(editor.stack.count(), 1);
        editor.stack.undo();
        QCOMPARE(editor.place(32).x(), 10);
    }

    void scales_data()
    {
        const Rows<int, QPoint, QRect, QRect> row("corner", "by", "first", "second");
        row("larger", Widgets::BottomRight, {150, 60}, {10, 10, 100, 40}, {210, 90, 100, 40});
        row("from the left", Widgets::LeftMiddle, {75, 0}, {85, 10, 25, 20}, {135, 50, 25, 20});
        row("to nothing", Widgets::RightMiddle, {-400, 0}, {10, 10, 1, 20}, {10, 50, 1, 20});
    }

    void scales()
    {
        QFETCH(int, corner);
        QFETCH(QPoint, by);
        Editor editor;
        editor.click(a);
        CornerGrabber *held = nullptr;
        for (QGraphicsItem *item : editor.scene->items()) {
            auto *grabber = qgraphicsitem_cast<CornerGrabber *>(item);
            QVERIFY(!grabber || !editor.host(32)->isAncestorOf(grabber));
            if (grabber && grabber->corner() == corner)
                held = grabber;
        }
        QVERIFY(held);
        const QPointF from = held->sceneBoundingRect().center();
        editor.view.setBackgroundBrush(Qt::yellow);
        const QImage picture = editor.view.viewport()->grab().toImage();
        QCOMPARE(picture.pixelColor(editor.view.mapFromScene(from)), QColor(Qt::white));
        editor.drag(from, from + by);
        QTEST(editor.place(32), "first");
        QTEST(editor.place(33), "second");
        QCOMPARE(editor.stack.count(), 1);
        editor.stack.undo();
        QCOMPARE(editor.host(33)->geometry(), QRectF(110, 50, 50, 20));
        QCOMPARE(editor.frames().first(), QRectF(10, 10, 150, 60)); // the marks follow
    }

    void groupsAndUngroups()
    {
        Editor editor;
        const QString before = editor.groups();
        editor.click(a);
        editor.click(g, Qt::ControlModifier);
        editor.run("group");
        QCOMPARE(editor.groups(), QString("Группа/p Группа/p q q/r q/r Группа"));
        editor.click({500, 400});
        editor.click(g);
        QCOMPARE(editor.sorted(), QString("32 33 37"));
        editor.run("ungroup");
        QCOMPARE(editor.groups(), before);
        QCOMPARE(editor.stack.count(), 2);
        editor.stack.undo();
        editor.stack.undo();
        QCOMPARE(editor.groups(), before);
    }

    // Without a new selection, also when the tree or the table is what changes it.
    void marksFollowTheProperty()
    {
        Editor editor;
        editor.click(g);
        editor.click(a, Qt::ControlModifier);
        QCOMPARE(editor.frames(), QVector<QRectF>{QRectF(10, 10, 150, 60)});
        editor.editor().tableEdits().run(*Widgets::SceneEditTable::find("group"));
        QTRY_COMPARE(editor.frames(), QVector<QRectF>{QRectF(10, 10, 440, 110)});
        editor.stack.undo();
        QTRY_COMPARE(editor.frames(), QVector<QRectF>{QRectF(10, 10, 150, 60)});
        editor.click({500, 400});
        editor.select({37, 32, 33, 39});
        editor.run("group"); // H is alone on its layer
        QCOMPARE(editor.groupOf(37), QString("Группа"));
        QCOMPARE(editor.groupOf(39), QString("p"));
    }

    void ungroupedKeepApart()
    {
        Editor editor;
        (void)editor.project.node(37)->SetProperty(Nodes::BasicWidget::Prop::Group,
                                                   std::string("r"));
        editor.click(d);
        editor.run("ungroup");
        QCOMPARE(editor.groups(), QString("p p  r 2 r 2 r"));
    }

    void nothingToGroup_data()
    {
        const Rows<QVector<int>, bool, bool> row("selected", "canGroup", "canUngroup");
        row("one group", {32, 33}, false, true);
        row("one element", {37}, false, false);
        row("two layers", {37, 39}, false, true);
        row("group and element", {32, 33, 37}, true, true);
    }

    void nothingToGroup()
    {
        QFETCH(QVector<int>, selected);
        const Editor editor;
        for (const int id : selected)
            editor.host(static_cast<unsigned long>(id))->setSelected(true);
        const auto edited = editor.editor().tableEdits().edited();
        const auto can = [&edited](const char *id) {
            return Widgets::SceneEditTable::isPossible(*Widgets::SceneEditTable::find(id), edited);
        };
        QTEST(can("group"), "canGroup");
        QTEST(can("ungroup"), "canUngroup");
    }

    void arrangesGroupsAsOne()
    {
        Editor editor;
        editor.click(g);
        editor.click(a, Qt::ControlModifier);
        editor.editor().selection().setKey(*editor.host(37));
        editor.run("alignLeft");
        QCOMPARE(editor.place(32).x(), 400);
        QCOMPARE(editor.place(33).x(), 500); // as far from A as it was
        editor.stack.undo();
        editor.run("sameWidth");
        QCOMPARE(editor.place(32), QRect(10, 10, 17, 20));
        QCOMPARE(editor.place(33), QRect(43, 50, 17, 20));
        editor.stack.undo();
        (void)editor.project.node(33)->SetProperty(Nodes::BasicWidget::Prop::Movable, false);
        editor.run("alignLeft");
        QCOMPARE(editor.place(32).x(), 10); // it would be torn
    }

    void copiesAreGroupsOfTheirOwn()
    {
        Editor editor;
        editor.click(d);
        editor.run("duplicate");
        QCOMPARE(editor.groupsOfNew(31), (QStringList{"q 2", "q 2/r", "q 2/r"}));
        editor.stack.undo();
        editor.click({500, 400});
        editor.click(a);
        editor.scene->onCopyToBuffer();
        editor.scene->onPasteFromBuffer({100, 300});
        QCOMPARE(editor.groupsOfNew(38), (QStringList{"p 2", "p 2"})); // H has the name there
    }

    void groupsOfOneNameStayTwo()
    {
        Editor editor;
        editor.stack.push(
            new Utils::MoveNodesCommand({Nodes::NodeLink(37ul)}, Nodes::NodeLink(38ul), {}));
        (void)editor.project.node(37)->SetProperty(Nodes::BasicWidget::Prop::Group,
                                                   std::string("p/s"));
        editor.select({32, 33, 37, 39, 34, 35, 36});
        editor.scene->onCopyToBuffer();
        editor.scene->onPasteFromBuffer({100, 300});
        QStringList pasted = editor.groupsOfNew(38);
        pasted.sort();
        QCOMPARE(pasted, (QStringList{"p 2", "p 2", "p 3", "p 3/s", "q", "q/r", "q/r"}));
    }

    void copiesOutOfAGroup()
    {
        Editor editor;
        editor.doubleClick(e);
        editor.run("duplicate");
        QCOMPARE(editor.groupsOfNew(31), (QStringList{"q/r 2", "q/r 2"}));
        editor.stack.undo();
        editor.click(d);
        editor.scene->onCopyToBuffer();
        editor.scene->onPasteFromBuffer({100, 300});
        QCOMPARE(editor.groupsOfNew(38), QStringList{""});
    }

    void keepsApartOnAnotherLayer()
    {
        Editor editor;
        editor.click(a);
        editor.run("layerUp");
        QCOMPARE(editor.groupOf(32), QString("p 2"));
        QCOMPARE(editor.groupOf(33), QString("p 2"));
        QCOMPARE(editor.groupOf(39), QString("p"));
        QCOMPARE(editor.stack.count(), 1);
        editor.stack.undo();
        QCOMPARE(editor.groupOf(32), QString("p"));
    }
};

QTEST_MAIN(GroupsTest)
#include "tst_groups.moc"
