#include "support/Rows.h"
#include "support/ShownEditor.h"

#include "widgets/scene/editing/Locker.h"

#include "nodes/model/NodeNotifications.h"
#include "utils/undo/MoveNodesCommand.h"

#include <QClipboard>
#include <QGraphicsSceneContextMenuEvent>
#include <QGraphicsSceneDragDropEvent>
#include <QMenu>
#include <QMimeData>

#include <thread>

using Widgets::ProxyScene;
using Widgets::ProxyWidget;

namespace {

constexpr const char *nodes = R"(
<composition id="30" name="C" width="640" height="480">
  <layer id="31" name="low" zOrder="1"><label id="32" name="A" x="10" y="20"/>
    <label id="33" name="B" x="200" y="80"/><label id="34" name="F" y="200" movable="false"/></layer>
  <layer id="36" name="top" zOrder="2" mode="transparent"/></composition>)";

struct Editor : ShownEditor
{
    Editor() : ShownEditor(nodes) {}
};

} // namespace

class SceneEditingTest : public QObject
{
    Q_OBJECT

private slots:
    void arrowsMakeOneStep()
    {
        Editor editor;
        editor.select({32, 33, 34});
        editor.key(Qt::Key_Right, {}, 3);
        QCOMPARE(editor.stack.count(), 1);
        QCOMPARE(editor.stack.text(0), QStringLiteral("Изменение координат виджетов"));
        QCOMPARE(editor.stack.command(0)->childCount(), 2); // F does not move
        QCOMPARE(editor.place(32), QRect(13, 20, 100, 30));
        editor.stack.undo();
        QCOMPARE(editor.place(33).topLeft(), QPoint(200, 80));
        QCOMPARE(editor.hosts().first()->pos(), QPointF(10, 20));
        editor.select({32});
        editor.key(Qt::Key_Right, {}, 3); // where it was before the undo
        QCOMPARE(editor.stack.text(0), QStringLiteral("Изменение координат виджета A"));
        QCOMPARE(editor.place(32).topLeft(), QPoint(13, 20));
        editor.key(Qt::Key_Down, {}, 0); // nothing changed
        QCOMPARE(editor.stack.count(), 1);
    }

    void aHeldArrowIsOneStep_data()
    {
        // Presses by key and time, each with a release 20 ms before the next one or at its time.
        using Keys = QVector<QPair<int, int>>;
        const Rows<Keys, QVector<int>, int> row("pressed", "released", "steps");
        row("repeated, but not marked so",
            {{Qt::Key_Right, 100}, {Qt::Key_Right, 700}, {Qt::Key_Right, 740}}, {700, 740, 790}, 1);
        row("pressed again", {{Qt::Key_Right, 100}, {Qt::Key_Right, 200}}, {180, 250}, 2);
        row("another one at once", {{Qt::Key_Right, 100}, {Qt::Key_Down, 180}}, {180, 250}, 2);
        row("held twice",
            {{Qt::Key_Up, 100}, {Qt::Key_Up, 700}, {Qt::Key_Up, 900}, {Qt::Key_Up, 1500}},
            {700, 800, 1500, 1600}, 2);
    }

    void aHeldArrowIsOneStep()
    {
        using Keys = QVector<QPair<int, int>>;
        QFETCH(Keys, pressed);
        QFETCH(QVector<int>, released);
        Editor editor;
        editor.select({32, 33});
        for (int i = 0; i < pressed.size(); ++i) {
            QKeyEvent press(QEvent::KeyPress, pressed[i].first, {});
            press.setTimestamp(static_cast<unsigned long>(pressed[i].second));
            QApplication::sendEvent(editor.scene, &press);
            QKeyEvent release(QEvent::KeyRelease, pressed[i].first, {});
            release.setTimestamp(static_cast<unsigned long>(released[i]));
            QApplication::sendEvent(editor.scene, &release);
        }
        QTEST(editor.stack.count(), "steps");
        while (editor.stack.canUndo())
            editor.stack.undo();
        QCOMPARE(editor.place(33).topLeft(), QPoint(200, 80));
        while (editor.stack.canRedo())
            editor.stack.redo();
        const auto moved = [&pressed](int back, int forth) {
            int by = 0;
            for (const auto &press : qAsConst(pressed))
                by += press.first == forth ? 1 : press.first == back ? -1 : 0;
            return by;
        };
        QCOMPARE(editor.place(33).topLeft(),
                 QPoint(200, 80) +
                     QPoint(moved(Qt::Key_Left, Qt::Key_Right), moved(Qt::Key_Up, Qt::Key_Down)));
    }

    void eachStepRefreshesOnce()
    {
        const Editor editor;
        int told = 0;
        const Nodes::ScopedConnection connection = editor.project.node(32)->ConnectPropertyChanged(
            [&](Nodes::BasicProperty *) { ++told; });
        editor.select({32});
        editor.key(Qt::Key_Right, Qt::ShiftModifier);
        QCOMPARE(told, 1); // one property
        editor.hosts().first()->setGeometry({5, 6, 70, 80});
        editor.scene->onMoveFinished();
        QCOMPARE(told, 2); // all four
        QCOMPARE(editor.place(32), QRect(5, 6, 70, 80));
        QCOMPARE(editor.hosts().first()->geometry(), QRectF(5, 6, 70, 80));
    }

    void hiddenElementsStandWhereTheirNodesAre()
    {
        const Editor editor;
        editor.project.set(32, "visible", "false");
        QTRY_VERIFY(!editor.host(32)->isVisible());
        editor.project.set(32, "x", "40");
        QCOMPARE(editor.host(32)->geometry(), QRectF(40, 20, 100, 30));
        std::thread([&editor] { // all is told at once
            editor.project.set(32, "x", "50");
            editor.project.set(32, "width", "70");
        })
            .join();
        QTRY_COMPARE(editor.host(32)->geometry(), QRectF(50, 20, 70, 30));
        editor.project.set(32, "visible", "true");
        QTRY_VERIFY(editor.host(32)->isVisible());
        QCOMPARE(editor.host(32)->geometry(), QRectF(50, 20, 70, 30));
        QCOMPARE(editor.host(32)->widget()->size(), QSize(70, 30));
    }

    void escapeTakesAMoveBack()
    {
        const Editor editor;
        editor.select({32, 33});
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Right, Qt::NoModifier);
        QApplication::sendEvent(editor.scene, &press);
        QCOMPARE(editor.hosts().first()->pos(), QPointF(11, 20));
        editor.key(Qt::Key_Escape);
        QCOMPARE(editor.hosts().first()->pos(), QPointF(10, 20));
        QCOMPARE(editor.scene->selectedItems().size(), 2);
        editor.key(Qt::Key_Right, {}, 0); // the arrow is let go
        QCOMPARE(editor.stack.count(), 0);
        editor.key(Qt::Key_Escape);
        QVERIFY(editor.scene->selectedItems().isEmpty());
    }

    void refusedMoveReturns()
    {
        const Editor editor;
        editor.project.set(32, "x", "32767");
        editor.select({32, 33});
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("not done: .*out of range"));
        editor.key(Qt::Key_Right);
        QCOMPARE(editor.stack.count(), 0);
        QCOMPARE(editor.hosts()[0]->pos(), QPointF(32767, 20));
        QCOMPARE(editor.hosts()[1]->pos(), QPointF(200, 80)); // moved together or not at all
    }

    void followsTheOrderOfTheNodes()
    {
        Editor editor;
        const Nodes::NodeLink layer(31ul);
        const auto order = [&editor] {
            QStringList names;
            for (const ProxyWidget *host : editor.hosts())
                names << QString::fromStdString(host->getNode()->GetName());
            return names.join(' ');
        };
        editor.stack.push(new Utils::MoveNodesCommand({Nodes::NodeLink(32ul)}, layer));
        QTRY_COMPARE(order(), QString("B F A"));
        editor.stack.undo();
        QTRY_COMPARE(order(), QString("A B F"));
        editor.select({33});
        editor.key(Qt::Key_Delete);
        editor.stack.undo();
        QTRY_COMPARE(order(), QString("A B F"));
    }

    void layerThatMovesAwayIsShownThere()
    {
        Editor editor;
        Nodes::ConfigNode *root = editor.project.node(1);
        const Nodes::NodeLink other(editor.project.core.GetNodesCollection()->CreateNode(
            Nodes::NodeType(Nodes::NodeType::SubtypeComposition), root));
        Widgets::ProxyView view(other.GetNode(), nullptr);
        const ProxyScene *there = view.setScene(other.GetNode());
        editor.stack.push(new Utils::MoveNodesCommand({Nodes::NodeLink(31ul)}, other));
        QTRY_COMPARE(there->getLayers().size(), 1);
        QCOMPARE(there->getLayers().first()->getWidgets().size(), 3);
        QCoreApplication::processEvents();
        QVERIFY(editor.hosts().isEmpty());
        editor.stack.undo();
        QTRY_COMPARE(editor.hosts().size(), 3);
        QTRY_VERIFY(there->getLayers().first()->getWidgets().isEmpty());
    }

    void titleFollowsTheName()
    {
        const Editor editor;
        QCOMPARE(editor.view.windowTitle(), QString("C"));
        QVERIFY(editor.project.node(30)->Rename("Котельная"));
        QCOMPARE(editor.view.windowTitle(), QStringLiteral("Котельная"));
    }

    void whatIsNotMovableOnlyGrows()
    {
        const Editor editor;
        editor.select({34});
        editor.key(Qt::Key_Left);
        QCOMPARE(editor.stack.count(), 0);
        editor.key(Qt::Key_Left, Qt::ShiftModifier);
        QCOMPARE(editor.place(34), QRect(0, 200, 99, 30));
    }

    void deletes_data()
    {
        const Rows<bool, QString> row("isGroup", "text");
        row("one", false, "Удаление виджета A");
        row("two", true, "Удаление группы виджетов");
    }

    void deletes()
    {
        QFETCH(bool, isGroup);
        Editor editor;
        editor.select(isGroup ? std::initializer_list<unsigned long>{32, 33}
                              : std::initializer_list<unsigned long>{32});
        editor.key(Qt::Key_Delete);
        QCOMPARE(editor.hosts().size(), isGroup ? 1 : 2);
        QTEST(editor.stack.text(0), "text");
        editor.stack.undo();
        QCOMPARE(editor.hosts().size(), 3);
        QVERIFY(editor.project.node(32));
    }

    void deletesWhatTheApplicationAllows()
    {
        const Editor editor;
        connect(editor.scene, &ProxyScene::signalCheckLink, this,
                [&](std::vector<Nodes::NodeLink> &links) {
                    QCOMPARE(links.size(), std::size_t(2));
                    editor.scene->slotWidgetDelete({Nodes::NodeLink(33ul), Nodes::NodeLink(34ul)});
                });
        editor.select({32, 33});
        editor.scene->removeWidget();
        QVERIFY(editor.project.node(32) && !editor.project.node(33));
        QVERIFY(editor.project.node(34)); // not selected
    }

    // As between the parts of one step; the old item is still there.
    void whoWaitsForDeletionHearsNothing()
    {
        Editor editor;
        editor.select({32});
        const QPointer<Widgets::ProxyWidget> old = editor.host(32);
        const QSignalSpy heard(old, &Widgets::ProxyWidget::propertyUpdated);
        (void)editor.project.node(32)->SetProperty(Nodes::BasicWidget::Prop::X, 15);
        QCOMPARE(heard.count(), 1);
        editor.scene->slotWidgetDelete({Nodes::NodeLink(32ul)});
        editor.stack.undo();
        (void)editor.project.node(32)->SetProperty(Nodes::BasicWidget::Prop::X, 25);
        QVERIFY(old && old != editor.host(32));
        QCOMPARE(heard.count(), 1);
        QCOMPARE(editor.host(32)->pos(), QPointF(25, 20));
    }

    void copiesIntoTheTopLayer()
    {
        Editor editor;
        editor.select({32, 33});
        editor.key(Qt::Key_C, Qt::ControlModifier);
        const std::size_t before = editor.project.core.GetNodesCollection()->GetNodeCount();
        editor.scene->onPasteFromBuffer({50, 60});
        QCOMPARE(editor.stack.text(0), QStringLiteral("Копирование группы виджетов"));
        const auto pasted = editor.scene->getLayers().last()->getWidgets();
        QCOMPARE(pasted.size(), 2);
        QCOMPARE(pasted[0]->pos(), QPointF(50, 60));
        QCOMPARE(pasted[1]->pos(), QPointF(240, 120));
        QCOMPARE(editor.scene->selectedItems().size(), 2);
        editor.stack.undo();
        QVERIFY(editor.scene->getLayers().last()->getWidgets().isEmpty());
        QCOMPARE(editor.project.core.GetNodesCollection()->GetNodeCount(), before); // nothing kept
    }

    void foreignClipboardPastesNothing_data()
    {
        const Rows<QString> row("text");
        row("empty", QString());
        row("prose", "Насос 1");
        row("hexadecimal", "deadbeef");
    }

    void foreignClipboardPastesNothing()
    {
        QFETCH(QString, text);
        const Editor editor;
        QApplication::clipboard()->setText(text);
        editor.key(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(editor.stack.count(), 0);
    }

    void locksAndOrders()
    {
        Editor editor;
        ProxyWidget *host = editor.hosts().first();
        auto *node = editor.project.node<Nodes::BasicWidget>(32);
        QVERIFY(!host->locker()->isVisible());
        host->locker()->setLock(true);
        QVERIFY(!node->isMovable() && host->locker()->isVisible());
        QCOMPARE(editor.stack.text(0), QStringLiteral("Изменение свойства Перемещаемый виджета A"));
        editor.stack.undo();
        QVERIFY(node->isMovable() && !host->locker()->isLocked());
        QVERIFY(node->SetPropertyText("movable", "false") && node->SetPropertyText("width", "49"));
        QVERIFY(!host->locker()->isVisible()); // no room for it
    }

    void contextMenuOffers_data()
    {
        const Rows<QPointF, QStringList> row("at", "titles");
        const QStringList selection{"Копировать",
                                    "Удалить",
                                    "Переместить выше",
                                    "Переместить ниже",
                                    "Выделить узел в дереве проекта",
                                    "Настройки",
                                    "Размещение",
                                    "C/low/A"};
        row("element", {15, 25}, selection);
        row("canvas", {500, 400}, {"Добавить виджет", "Вставить"});
    }

    void contextMenuOffers()
    {
        QFETCH(QPointF, at);
        Editor editor;
        QGraphicsSceneContextMenuEvent event(QEvent::GraphicsSceneContextMenu);
        event.setScenePos(at);
        event.setWidget(editor.view.viewport());
        QApplication::sendEvent(editor.scene, &event);
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        QVERIFY(menu);
        QStringList titles;
        for (QAction *action : menu->actions()) {
            if (!action->isSeparator())
                titles << action->text();
            if (action->text() == QStringLiteral("Переместить выше"))
                action->trigger();
        }
        menu->close();
        QTEST(titles, "titles");
        QCOMPARE(editor.project.node<Nodes::BasicWidget>(32)->GetZOrder(), editor.stack.count());
    }

    void dropsFromThePanel()
    {
        Editor editor;
        QStringList changes; // nothing but whole elements may enter
        const Nodes::ScopedConnection connection =
            editor.project.core.GetNodesCollection()->ConnectChanged(
                [&](const Nodes::NodeChange &change) {
                    changes << QString::number(change.what) + change.child.GetLinkName().c_str();
                });
        QByteArray bytes;
        QDataStream stream(&bytes, QIODevice::WriteOnly);
        stream << QStringLiteral("label") << QStringLiteral("folder") << QStringLiteral("chartXY");
        QMimeData mime;
        mime.setData("application/nodetype", bytes);
        QGraphicsSceneDragDropEvent event(QEvent::GraphicsSceneDrop);
        event.setMimeData(&mime);
        event.setScenePos({200, 100});
        QSignalSpy added(editor.scene, &ProxyScene::addWidgetFromPanel);
        editor.select({32});
        QApplication::sendEvent(editor.scene, &event);
        QCOMPARE(added.count(), 2);
        QCOMPARE(editor.stack.count(), 2);
        const auto hosts = editor.scene->getLayers().last()->getWidgets();
        QCOMPARE(hosts.size(), 2);
        QCOMPARE(hosts.first()->geometry().center(), QPointF(200, 100));
        QCOMPARE(hosts.last()->geometry(), QRectF(-40, -40, 480, 280)); // legible from the start
        QCOMPARE(editor.editor().selection().hosts(), hosts);
        const QString in = QString::number(Nodes::NodeChange::ChildAdded);
        for (const ProxyWidget *host : hosts)
            QCOMPARE(changes.takeFirst(), in + host->getNode()->GetName().c_str());
        QVERIFY(changes.isEmpty());
        editor.stack.undo();
        editor.stack.undo();
        QVERIFY(editor.scene->getLayers().last()->getWidgets().isEmpty());
    }
};

QTEST_MAIN(SceneEditingTest)
#include "tst_scene_editing.moc"
