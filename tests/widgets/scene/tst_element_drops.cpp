#include "support/MessageBoxes.h"
#include "support/Rows.h"
#include "support/ShownEditor.h"

#include "widgets/scene/editing/DragAndDropItem.h"
#include "widgets/scene/editing/NewElements.h"

#include "nodes/charts/widgetChart.h"
#include "nodes/charts/widgetChartGroup.h"
#include "nodes/charts/widgetChartTimeAxis.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/NodesContainer.h"
#include "utils/undo/IUndo.h"

#include <QGraphicsSceneDragDropEvent>

namespace {

constexpr const char *nodes = R"(
<folder id="10" name="S"><memorySignal id="11" name="T"/><memorySignal id="12" name="P"/>
  <folder id="13" name="None"/></folder>
<composition id="30" name="C" width="640" height="480">
  <layer id="31" name="L" zOrder="1">
    <label id="33" name="Below" width="300" height="200"/>
    <label id="32" name="A" x="10" y="20" width="100" height="30" signal="12"/></layer>
</composition>)";

constexpr const char *noLayers = R"(<composition id="30" name="C" width="640" height="480"/>)";

enum Shown { Nothing, Red, Green };

struct Editor : ShownEditor
{
    Editor() : ShownEditor(nodes) {}

    Shown shown(unsigned long id = 32) const
    {
        for (QGraphicsItem *child : host(id)->childItems()) {
            if (const auto *item = dynamic_cast<const Widgets::DragAndDropItem *>(child))
                return item->isAcceptable() ? Green : Red;
        }
        return Nothing;
    }
    unsigned long signal() const
    {
        return project.node<Nodes::BasicWidget>(32)->GetSignalLink().GetNodeId();
    }
    bool send(QEvent::Type type, const QMimeData &data, Qt::KeyboardModifiers modifiers = {}) const
    {
        QGraphicsSceneDragDropEvent event(type);
        event.setMimeData(&data);
        event.setScenePos({20, 30});
        event.setModifiers(modifiers);
        event.setPossibleActions(Qt::CopyAction);
        event.setProposedAction(Qt::CopyAction);
        event.setDropAction(Qt::CopyAction);
        event.ignore();
        scene->sendEvent(host(32), &event);
        return event.isAccepted();
    }
};

struct Steps : Utils::IUndo
{
    using IUndo::IUndo;
    QString getNameUndo() override { return QStringLiteral("C"); }
};

constexpr const char *ids = "application/nodelink";
constexpr const char *paths = "application/nodelinkpath";

} // namespace

class ElementDropsTest : public QObject
{
    Q_OBJECT

private slots:
    void aNewChartHasItsAxes_data()
    {
        const Rows<int, QString> row("kind", "axes");
        row("trend", Nodes::NodeType::SubtypeChartHistory, "timeX Y");
        row("corridor", Nodes::NodeType::SubtypeChartCorridor, "timeX Y");
        row("signal over signal", Nodes::NodeType::SubtypeChartXY, "X Y");
    }

    // One step adds it whole, and takes it back whole.
    void aNewChartHasItsAxes()
    {
        QFETCH(int, kind);
        Editor editor;
        Steps steps(editor.scene);
        Widgets::NewElements elements(steps);
        auto *layer = editor.project.node<Nodes::ConfigNode>(31);
        const std::size_t before = layer->GetNodesCollection()->GetNodeCount();
        QVERIFY(elements.add(Nodes::NodeType(Nodes::NodeType::enNodeSubtype(kind)), layer, {0, 0},
                             false));
        const auto check = [&] {
            const auto *chart = dynamic_cast<Nodes::widgetChart *>(layer->Children().back().get());
            QVERIFY(chart && chart->GetGroups().size() == 1);
            const auto *group =
                dynamic_cast<Nodes::widgetChartGroup *>(chart->GetGroups()[0].GetNode());
            QVERIFY(group && group->GetXAxes().size() == 1 && group->GetYAxes().size() == 1);
            const Nodes::BasicNode *x = group->GetXAxes().begin()->GetNode();
            const bool isTime = dynamic_cast<const Nodes::widgetChartTimeAxis *>(x);
            QTEST(QString(isTime ? "timeX Y" : "X Y"), "axes");
        };
        check();
        editor.stack.undo();
        QCOMPARE(layer->GetNodesCollection()->GetNodeCount(), before);
        editor.stack.redo();
        check();
    }

    void reads_data()
    {
        const Rows<QByteArray, QStringList, int> row("format", "texts", "first");
        row("id", ids, {"11"}, 11);
        row("absent ids are passed over", ids, {"999", "12", "x"}, 12);
        row("path", paths, {"S/T"}, 11);
        row("absent path", paths, {"S/Nobody"}, 0);
        row("no nodes", "text/plain", {"11"}, 0);
    }

    void reads()
    {
        QFETCH(QByteArray, format);
        QFETCH(QStringList, texts);
        QFETCH(int, first);
        const Editor editor;
        const auto data = draggedTexts(format, texts);
        const Nodes::NodesArray read = editor.host(32)->getNaFromMineDate(data.get());
        QCOMPARE(read.empty() ? 0 : int(read[0].GetNodeId()), first);
    }

    void binds_data()
    {
        // Entering looks at Ctrl and dropping at Shift.
        const Rows<QStringList, Qt::KeyboardModifiers, Qt::KeyboardModifiers, int, int> row(
            "ids", "entered", "dropped", "shown", "signal");
        row("signal", {"11"}, {}, {}, Green, 11);
        row("copy of a signal", {"11"}, Qt::ControlModifier, {}, Red, 12);
        row("Ctrl only when dropped", {"11"}, {}, Qt::ControlModifier, Green, 11);
        row("Shift only when entered", {"11"}, Qt::ShiftModifier, {}, Green, 11);
        row("Shift when dropped", {"11"}, {}, Qt::ShiftModifier, Green, 12);
        row("folder", {"13"}, {}, {}, Red, 12);
        row("one of two", {"11", "13"}, {}, {}, Red, 12);
        row("nothing", {"999"}, {}, {}, Red, 12);
        row("the same", {"12"}, {}, {}, Green, 12);
    }

    void binds()
    {
        QFETCH(QStringList, ids);
        QFETCH(Qt::KeyboardModifiers, entered);
        QFETCH(Qt::KeyboardModifiers, dropped);
        QFETCH(int, shown);
        QFETCH(int, signal);
        Editor editor;
        const auto data = draggedTexts(::ids, ids);
        QCOMPARE(editor.send(QEvent::GraphicsSceneDragEnter, *data, entered), shown == Green);
        QCOMPARE(int(editor.shown()), shown);
        if (dropped == Qt::ShiftModifier)
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression("not done: .*not allowed"));
        editor.send(QEvent::GraphicsSceneDrop, *data, dropped);
        QCOMPARE(editor.shown(), Nothing);
        QCOMPARE(int(editor.signal()), signal);
        QCOMPARE(editor.stack.count(), signal == 12 ? 0 : 1);
        if (signal == 12)
            return;
        QCOMPARE(editor.stack.text(0), QStringLiteral("Привязка к виджету A"));
        editor.stack.undo();
        QCOMPARE(editor.signal(), 12ul);
        editor.stack.redo();
        QCOMPARE(int(editor.signal()), signal);
    }

    void leavingHidesIt()
    {
        const Editor editor;
        const auto data = draggedTexts(ids, {"11"});
        editor.send(QEvent::GraphicsSceneDragEnter, *data);
        editor.send(QEvent::GraphicsSceneDragLeave, *data);
        QCOMPARE(editor.shown(), Nothing);
        editor.send(QEvent::GraphicsSceneDrop, *data); // entered nowhere
        QCOMPARE(editor.signal(), 12ul);
    }

    void whatIsRefusedIsMarkedWhileThePointerIsThere_data()
    {
        const Rows<QString, bool> row("id", "isTaken");
        row("taken", "11", true);
        row("refused", "13", false);
    }

    void whatIsRefusedIsMarkedWhileThePointerIsThere()
    {
        QFETCH(QString, id);
        QFETCH(bool, isTaken);
        const Editor editor;
        const auto data = draggedTexts(ids, {id});
        const auto moveTo = [&](QPointF at) {
            QGraphicsSceneDragDropEvent event(QEvent::GraphicsSceneDragMove);
            event.setMimeData(data.get());
            event.setScenePos(at);
            event.setWidget(editor.view.viewport());
            event.setScreenPos(editor.view.viewport()->mapToGlobal(editor.view.mapFromScene(at)));
            event.setPossibleActions(Qt::CopyAction);
            event.setProposedAction(Qt::CopyAction);
            QApplication::sendEvent(editor.scene, &event);
        };
        moveTo({20, 30});
        QCOMPARE(editor.shown(), isTaken ? Green : Red);
        moveTo({40, 30});
        QCOMPARE(editor.shown(), isTaken ? Green : Red);
        QCOMPARE(editor.shown(33), Nothing);
        moveTo({200, 150});
        QCOMPARE(editor.shown(), Nothing);
        QCOMPARE(editor.shown(33), isTaken ? Green : Red);
        moveTo({400, 300});
        QCOMPARE(editor.shown(), Nothing);
    }

    void undoAfterTheSignalIsGone()
    {
        Editor editor;
        const auto data = draggedTexts(ids, {"11"});
        editor.send(QEvent::GraphicsSceneDragEnter, *data);
        editor.send(QEvent::GraphicsSceneDrop, *data);
        QVERIFY(editor.project.node(10)->DeleteNode(12));
        editor.stack.undo();
        QVERIFY(editor.signal() != 11); // and nothing it could show instead
        QVERIFY(!editor.project.node<Nodes::BasicWidget>(32)->GetSignal());
        editor.stack.redo();
        QCOMPARE(editor.signal(), 11ul);
    }

    void whatCannotBeAddedSaysWhy_data()
    {
        const Rows<int, QString, QString> row("parent", "kind", "shown");
        row("no layer", 0, "label", "Внимание: Коллекция не найдена");
        row("no place for elements", 10, "label", "Внимание: Узел не создан");
        row("no element", 31, "folder", "Внимание: Узел не создан");
    }

    void whatCannotBeAddedSaysWhy()
    {
        QFETCH(int, parent);
        QFETCH(QString, kind);
        const Editor editor;
        Steps steps(editor.scene);
        Widgets::NewElements elements(steps);
        const std::size_t before = editor.project.core.GetNodesCollection()->GetNodeCount();
        MessageBoxes boxes;
        QVERIFY(!elements.add(Nodes::NodeType(kind.toStdString()),
                              editor.project.node(static_cast<unsigned long>(parent)), {}, false));
        QTEST(boxes.shown.join(' '), "shown");
        QCOMPARE(editor.stack.count(), 0);
        QCOMPARE(editor.project.core.GetNodesCollection()->GetNodeCount(), before); // nothing kept
    }

    void panelNeedsALayer()
    {
        ShownEditor editor(noLayers);
        const auto data = draggedTexts("application/nodetype", {"label"});
        QGraphicsSceneDragDropEvent event(QEvent::GraphicsSceneDrop);
        event.setMimeData(data.get());
        MessageBoxes boxes;
        QApplication::sendEvent(editor.scene, &event);
        QCOMPARE(boxes.shown, QStringList{QStringLiteral("Внимание: Отсутствуют слои")});
        QCOMPARE(editor.stack.count(), 0);
    }
};

QTEST_MAIN(ElementDropsTest)
#include "tst_element_drops.moc"
