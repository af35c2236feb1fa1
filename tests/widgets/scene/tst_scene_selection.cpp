#include "support/Rows.h"
#include "support/ShownEditor.h"

#include "widgets/scene/editing/DragAdjuster.h"
#include "widgets/scene/editing/EditOverlay.h"

#include "nodes/model/properties/PropertyProxy.h"
#include "utils/undo/MoveNodesCommand.h"

namespace {

// 34 covers 33, which covers 32; 36 lies on the upper layer, 35 cannot be picked.
constexpr const char *nodes = R"(
<composition id="30" name="C" width="640" height="480">
  <layer id="31" name="low" zOrder="1">
    <label id="32" name="A" x="10" y="10" width="100" height="30"/>
    <label id="33" name="B" x="20" y="20" width="100" height="30"/>
    <label id="34" name="D" x="30" y="30" width="100" height="30"/>
    <label id="35" name="E" x="300" y="10" width="100" height="30" selectable="false"/></layer>
  <layer id="37" name="top" zOrder="2" mode="transparent">
    <label id="36" name="G" x="300" y="200" width="100" height="30"/></layer></composition>)";

struct Editor : ShownEditor
{
    Editor() : ShownEditor(nodes) {}
    unsigned long key() const
    {
        const Widgets::ProxyWidget *key = editor().selection().key();
        return key ? key->getNodeLink().GetNodeId() : 0;
    }
    using ShownEditor::key;
};

/// Sticks to every tenth pixel.
class Tens : public Widgets::DragAdjuster
{
public:
    QPointF adjust(const QRectF &moved, QPointF delta, Qt::Edges movingEdges,
                   Widgets::Guides *shown) override
    {
        edges = movingEdges;
        const double x = qRound(moved.x() / 10) * 10;
        shown->lines.append(QLineF(x, 0, x, 480));
        return {delta.x() + x - moved.x(), delta.y()};
    }
    void end() override { ++ends; }

    Qt::Edges edges;
    int ends = 0;
};

} // namespace

class SceneSelectionTest : public QObject
{
    Q_OBJECT

private slots:
    void keepsTheOrder()
    {
        Editor editor;
        editor.select({34, 36, 32});
        QCOMPARE(editor.selected(), QString("34 36 32"));
        QCOMPARE(editor.key(), 32ul);
        editor.press({40, 50}); // D, which is selected
        QCOMPARE(editor.key(), 34ul);
        editor.host(34)->setSelected(false);
        QCOMPARE(editor.key(), 32ul);
        editor.stack.push(
            new Utils::MoveNodesCommand({Nodes::NodeLink(32ul)}, Nodes::NodeLink(37ul)));
        QCOMPARE(editor.selected().section(' ', 0, 0), QString("36")); // 32 came anew
        editor.scene->clearSelection();
        QCOMPARE(editor.key(), 0ul);
    }

    void tellsTheApplicationOfTheKeyElementFirst()
    {
        const Editor editor;
        editor.select({36, 34, 32});
        const Nodes::NodesArray &told = editor.scene->getSelectedItemsProxy()->GetNodes();
        QStringList ids;
        for (const Nodes::NodeLink &link : told)
            ids << QString::number(link.GetNodeId());
        QCOMPARE(ids.join(' '), QString("32 36 34"));
    }

    void movesUpAndDown()
    {
        const Editor editor;
        editor.select({32, 34});
        editor.scene->upZValue();
        editor.scene->upZValue();
        editor.scene->downZValue();
        QCOMPARE(editor.host(32)->zValue(), 1.0);
        QCOMPARE(editor.host(33)->zValue(), 0.0);
        QCOMPARE(editor.host(34)->zValue(), 1.0);
        QCOMPARE(editor.stack.count(), 3);
    }

    void keysSelect_data()
    {
        const Rows<QString, int, QString> row("from", "key", "selected");
        row("first", "", Qt::Key_Tab, "32");
        row("next", "33", Qt::Key_Tab, "34");
        row("past what cannot be picked", "34", Qt::Key_Tab, "36");
        row("around", "36", Qt::Key_Tab, "32");
        row("last", "", Qt::Key_Backtab, "36");
        row("back", "33", Qt::Key_Backtab, "32");
        row("back around", "32", Qt::Key_Backtab, "36");
        row("none", "36", Qt::Key_Escape, "");
    }

    void keysSelect()
    {
        QFETCH(QString, from);
        QFETCH(int, key);
        const Editor editor;
        if (!from.isEmpty())
            editor.select({from.toULong()});
        editor.key(key, key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
        QTEST(editor.selected(), "selected");
    }

    void selectsAll()
    {
        const Editor editor;
        QSignalSpy changed(&editor.editor().selection(), &Widgets::SceneSelection::changed);
        editor.key(Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(editor.selected(), QString("32 33 34 36"));
        QCOMPARE(changed.count(), 1);
    }

    void altPicksBelow()
    {
        Editor editor;
        const QPointF at(50, 35); // on all three
        const auto pick = [&] {
            editor.press(at, Qt::AltModifier);
            editor.release(at, Qt::AltModifier);
            return editor.selected();
        };
        QCOMPARE(pick(), QString("34"));
        QCOMPARE(pick(), QString("33"));
        QCOMPARE(pick(), QString("32"));
        QCOMPARE(pick(), QString("34"));
        QCOMPARE(editor.stack.count(), 0);
        editor.drag(at, at + QPointF(7, 0), Qt::AltModifier);
        QCOMPARE(editor.place(33).x(), 27); // what was picked is dragged, not what covers it
        QCOMPARE(editor.stack.count(), 1);
    }

    void rubberBand_data()
    {
        const Rows<Qt::KeyboardModifiers, QString> row("modifiers", "selected");
        row("anew", Qt::NoModifier, "32 33 34");
        row("Ctrl adds", Qt::ControlModifier, "36 32 33 34");
        row("Shift adds", Qt::ShiftModifier, "36 32 33 34");
    }

    void rubberBand()
    {
        QFETCH(Qt::KeyboardModifiers, modifiers);
        Editor editor;
        editor.select({36});
        editor.drag({200, 100}, {5, 5}, modifiers);
        QStringList selected = editor.selected().split(' ');
        std::sort(selected.begin() + (selected.first() == "36" ? 1 : 0), selected.end());
        QTEST(selected.join(' '), "selected");
        QCOMPARE(editor.stack.count(), 0);
    }

    void pressSelectsAndDrags()
    {
        Editor editor;
        editor.select({32});
        editor.drag({350, 215}, {361, 220});
        QCOMPARE(editor.selected(), QString("36"));
        QCOMPARE(editor.place(36).topLeft(), QPoint(311, 205));
        QCOMPARE(editor.place(32).topLeft(), QPoint(10, 10));
        QCOMPARE(editor.stack.count(), 1);
        editor.drag({361, 220}, {361, 220}); // a click
        editor.drag({361, 220}, {400, 220}, Qt::ControlModifier);
        QCOMPARE(editor.place(36).topLeft(), QPoint(311, 205));
        QCOMPARE(editor.stack.count(), 1);
    }

    void dragsAllThatIsSelected()
    {
        Editor editor;
        editor.project.set(33, "movable", "false");
        editor.select({33, 36, 32});
        editor.drag({15, 15}, {45, 25});
        QCOMPARE(editor.place(32).topLeft(), QPoint(40, 20));
        QCOMPARE(editor.place(36).topLeft(), QPoint(330, 210));
        QCOMPARE(editor.place(33).topLeft(), QPoint(20, 20));
        QCOMPARE(editor.stack.count(), 1);
        QCOMPARE(editor.stack.text(0), QStringLiteral("Изменение координат виджетов"));
        editor.stack.undo();
        QCOMPARE(editor.host(36)->pos(), QPointF(300, 200));
    }

    void adjusterDecides()
    {
        Editor editor;
        Tens tens;
        editor.editor().drag().addAdjuster(tens);
        editor.press({350, 215});
        editor.move({357, 216});
        QCOMPARE(editor.host(36)->pos(), QPointF(310, 201));
        QCOMPARE(tens.edges, Qt::Edges(0xF));
        QCOMPARE(editor.editor().overlay().guides().lines,
                 QVector<QLineF>{QLineF(310, 0, 310, 480)});
        editor.release({357, 216});
        QCOMPARE(editor.place(36).topLeft(), QPoint(310, 201));
        QCOMPARE(tens.ends, 1);
        QVERIFY(editor.editor().overlay().guides().isEmpty());
    }

    void lostDragGoesBack_data()
    {
        const Rows<bool> row("byEscape");
        row("Escape", true);
        row("focus", false);
    }

    void lostDragGoesBack()
    {
        QFETCH(bool, byEscape);
        Editor editor;
        editor.press({350, 215});
        editor.move({390, 225});
        QCOMPARE(editor.host(36)->pos(), QPointF(340, 210));
        if (byEscape) {
            editor.key(Qt::Key_Escape);
        } else {
            QFocusEvent out(QEvent::FocusOut);
            QApplication::sendEvent(editor.scene, &out);
        }
        QCOMPARE(editor.host(36)->pos(), QPointF(300, 200));
        editor.release({390, 225});
        QCOMPARE(editor.place(36).topLeft(), QPoint(300, 200));
        QCOMPARE(editor.stack.count(), 0);
    }

    void arrowHeldWhileFocusIsLostIsCommitted()
    {
        const Editor editor;
        editor.select({36});
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Left, Qt::NoModifier);
        QApplication::sendEvent(editor.scene, &press);
        QFocusEvent out(QEvent::FocusOut);
        QApplication::sendEvent(editor.scene, &out);
        QCOMPARE(editor.place(36).x(), 299);
        QCOMPARE(editor.stack.count(), 1);
    }

    void arrowsWaitForTheMouse()
    {
        Editor editor;
        editor.press({350, 215});
        editor.move({390, 225});
        editor.key(Qt::Key_Left);
        QCOMPARE(editor.stack.count(), 0);
        editor.move({360, 225});
        editor.release({360, 225});
        QCOMPARE(editor.place(36).topLeft(), QPoint(310, 210));
        QCOMPARE(editor.stack.count(), 1);
    }

    void removedWhileDragged()
    {
        Editor editor;
        editor.press({350, 215});
        editor.move({390, 225});
        editor.project.node(37)->RemoveNode(Nodes::NodeLink(36ul));
        editor.move({391, 226});
        editor.release({391, 226});
        QCOMPARE(editor.selected(), QString());
        QCOMPARE(editor.stack.count(), 0);
    }
};

QTEST_MAIN(SceneSelectionTest)
#include "tst_scene_selection.moc"
