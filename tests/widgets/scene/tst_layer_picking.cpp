#include "support/Rows.h"
#include "support/ShownEditor.h"

namespace {

constexpr const char *nodes = R"(
<composition id="30" name="C" width="640" height="480">
  <layer id="31" name="low" zOrder="1"><label id="32" name="A" x="10" y="20"/>
    <label id="33" name="F" y="200" movable="false"/></layer>
  <layer id="36" name="top" zOrder="2"><label id="37" name="T" x="400" y="400"/></layer>
</composition>)";

struct Editor : ShownEditor
{
    Editor() : ShownEditor(nodes) {}

    bool isPickable(unsigned long id) const
    {
        return host(id)->flags() & QGraphicsItem::ItemIsSelectable;
    }
    bool isMovable(unsigned long id) const
    {
        return host(id)->flags() & QGraphicsItem::ItemIsMovable;
    }
};

} // namespace

class LayerPickingTest : public QObject
{
    Q_OBJECT

private slots:
    void layerAboveUncovers_data()
    {
        const Rows<QByteArray, QByteArray, QByteArray> row("property", "open", "closed");
        row("transparent", "mode", "transparent", "opaque");
        row("hidden", "visible", "false", "true");
        row("below", "zOrder", "0", "2");
    }

    void layerAboveUncovers()
    {
        QFETCH(QByteArray, property);
        QFETCH(QByteArray, open);
        QFETCH(QByteArray, closed);
        const Editor editor;
        QVERIFY(!editor.isPickable(32) && editor.isPickable(37));
        editor.project.set(36, property.data(), open.data());
        QTRY_VERIFY(editor.isPickable(32));
        editor.project.set(36, property.data(), closed.data());
        QTRY_VERIFY(!editor.isPickable(32));
    }

    void coveredElementsStayOutOfReach()
    {
        Editor editor;
        editor.project.set(32, "movable", "false");
        editor.project.set(32, "movable", "true");
        QVERIFY(!editor.isMovable(32));
        editor.project.set(36, "zOrder", "0");
        editor.select({32});
        editor.key(Qt::Key_Delete);
        QVERIFY(!editor.host(32));
        editor.project.set(36, "zOrder", "2");
        editor.stack.undo();
        QVERIFY(editor.host(32) && !editor.isPickable(32));
        editor.scene->setEditingMode(false); // shown as at run time
        QVERIFY(editor.isPickable(32));
    }

    void orderOfLayersLeavesTheSelection()
    {
        const Editor editor;
        editor.project.set(36, "mode", "transparent");
        editor.select({32, 37});
        editor.project.set(31, "zOrder", "0");
        QCOMPARE(editor.selected(), QString("32 37"));
        editor.project.set(36, "mode", "opaque");
        QCOMPARE(editor.selected(), QString("37"));
    }

    void pasteGoesIntoALayerThatIsThere()
    {
        Editor editor;
        editor.select({37});
        editor.key(Qt::Key_C, Qt::ControlModifier);
        const auto taken = editor.project.node(30)->RemoveNode(Nodes::NodeLink(36ul));
        editor.scene->onPasteFromBuffer({5, 6});
        QCOMPARE(editor.stack.count(), 1);
        QCOMPARE(editor.hosts().size(), 3);
        QCOMPARE(editor.hosts().last()->pos(), QPointF(5, 6));
    }

    void rightPressKeepsTheSelection_data()
    {
        const Rows<QPointF, QString> row("at", "selected");
        row("movable", {50, 30}, "32 33");
        row("locked", {50, 210}, "32 33");
        row("canvas", {500, 300}, "");
    }

    void rightPressKeepsTheSelection()
    {
        QFETCH(QPointF, at);
        Editor editor;
        editor.project.set(36, "zOrder", "0");
        editor.select({32, 33});
        sendMouse(*editor.view.viewport(), QEvent::MouseButtonPress, editor.view.mapFromScene(at),
                  Qt::RightButton);
        QTEST(editor.selected(), "selected");
    }
};

QTEST_MAIN(LayerPickingTest)
#include "tst_layer_picking.moc"
