#include "support/Mouse.h"
#include "support/RuntimeProject.h"
#include "support/VisibleBoxes.h"

#include "widgets/scene/ProxyLayer.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyView.h"
#include "widgets/scene/ProxyWidget.h"
#include "widgets/scene/editing/Border.h"

#include "nodes/model/KindTable.h"
#include "nodes/visual/BasicWidget.h"
#include "utils/editing/NodeLinkEvent.h"

#include <QMenu>
#include <QScrollBar>

using Widgets::ProxyScene;
using Widgets::ProxyView;

namespace {

constexpr const char *nodes = R"(
<window id="20" name="W" width="900" height="700"><label id="21" name="L"/></window>
<composition id="30" name="C" width="640" height="480">
  <layer id="31" name="low" zOrder="1"><label id="32" name="A"/></layer>
  <layer id="33" name="high" zOrder="2"><label id="34" name="B"/></layer></composition>
<windowComposed id="40" name="Composed" composition="30"/>
<windowComposed id="41" name="Unset"/><folder id="50" name="F"/>)";

/// A view of a node, too small to show all of it.
struct ShownView
{
    explicit ShownView(unsigned long id, Nodes::enWorkMode mode = Nodes::WorkModeEditing)
        : project(nodes, mode),
          view(project.node(id), nullptr),
          scene(view.setScene(project.node(id)))
    {
        view.resize(300, 200);
        view.show();
    }
    int x() const { return view.horizontalScrollBar()->value(); }
    int y() const { return view.verticalScrollBar()->value(); }
    void scrollTo(int place) const
    {
        view.horizontalScrollBar()->setValue(place);
        view.verticalScrollBar()->setValue(place);
    }
    void wheel(QPoint at, int delta, Qt::KeyboardModifiers modifiers) const
    {
        const QPoint angle = modifiers == Qt::AltModifier ? QPoint(delta, 0) : QPoint(0, delta);
        QWheelEvent event(at, view.viewport()->mapToGlobal(at), QPoint(), angle, Qt::NoButton,
                          modifiers, Qt::NoScrollPhase, false);
        QApplication::sendEvent(view.viewport(), &event);
    }
    void mouse(QEvent::Type type, QPoint at, Qt::KeyboardModifiers modifiers = {}) const
    {
        sendMouse(*view.viewport(), type, at, Qt::MiddleButton, modifiers);
    }

    RuntimeProject project;
    ProxyView view;
    ProxyScene *scene;
};

} // namespace

class ProxyViewTest : public QObject
{
    Q_OBJECT

private slots:
    void sceneOfNode_data()
    {
        QTest::addColumn<int>("id");
        QTest::addColumn<QRectF>("rect");
        QTest::addColumn<int>("layers");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QStringList>("messages");
        const QRectF composition(0, 0, 640, 480);
        QTest::newRow("window") << 20 << QRectF(0, 0, 900, 700) << 1 << "ProxyScene: W"
                                << QStringList();
        QTest::newRow("composition") << 30 << composition << 2 << "ProxyScene: C" << QStringList();
        QTest::newRow("layer") << 31 << composition << 1 << "ProxyScene: C" << QStringList();
        QTest::newRow("composed") << 40 << composition << 2 << "ProxyScene: C" << QStringList();
        QTest::newRow("composition not set")
            << 41 << QRectF() << 0 << ""
            << QStringList{"Внимание: Не задана композиция\n\nНе удалось создать сцену"};
        QTest::newRow("other node")
            << 50 << QRectF() << 0 << "" << QStringList{"Внимание: Не удалось создать сцену"};
    }

    void sceneOfNode()
    {
        QFETCH(int, id);
        QFETCH(QStringList, messages);
        const ShownView shown(unsigned(id), Nodes::WorkModeRuntime);
        const ProxyScene *scene = shown.scene;
        QCOMPARE(visibleBoxes(), messages);
        QCOMPARE(scene != nullptr, messages.isEmpty());
        QCOMPARE(shown.view.scene(), scene);
        QTEST(scene ? scene->sceneRect() : QRectF(), "rect");
        QTEST(scene ? scene->getLayers().size() : 0, "layers");
        QTEST(scene ? scene->objectName() : QString(), "name");
    }

    void followsSizeOfNode()
    {
        const ShownView shown(20);
        QVERIFY(shown.project.node(20)->SetPropertyText("width", "500"));
        QCOMPARE(shown.view.sceneRect().width(), 500.0);
        for (QGraphicsItem *item : shown.scene->items()) {
            const auto *border = dynamic_cast<Widgets::Border *>(item);
            QVERIFY(!border || border->parentItem() || border->width() == 499.0);
        }
    }

    void runtimeHasNothingOfTheEditor()
    {
        ShownView shown(20, Nodes::WorkModeRuntime);
        QCOMPARE(shown.view.dragMode(), QGraphicsView::NoDrag);
        QVERIFY(!shown.scene->addWidgetMenu());
        for (const QGraphicsItem *item : shown.scene->items())
            QVERIFY(!dynamic_cast<const Widgets::Border *>(item));
        QVERIFY(shown.view.verticalScrollBar()->maximum() > 0);
        shown.wheel(QPoint(50, 50), -120, Qt::NoModifier);
        shown.wheel(QPoint(50, 50), 120, Qt::ControlModifier);
        QVERIFY(shown.view.transform().isIdentity());
        for (const int key : {Qt::Key_PageDown, Qt::Key_Right, Qt::Key_Down})
            QTest::keyClick(&shown.view, Qt::Key(key));
        shown.view.resize(150, 350);
        QCOMPARE(shown.view.mapToScene(0, 0), QPointF(0, 0));
    }

    void zoomKeepsThePointUnderTheCursor()
    {
        const ShownView shown(20);
        const QPoint at(120, 80);
        const QPointF before = shown.view.mapToScene(at);
        shown.wheel(at, 120, Qt::ControlModifier);
        QCOMPARE(shown.view.transform().m11(), 1.15);
        QVERIFY((shown.view.mapToScene(at) - before).manhattanLength() <= 2);
        shown.wheel(at, -120, Qt::ControlModifier);
        QCOMPARE(shown.view.transform().m11(), 1.15 * 0.8695652173913044);
        shown.wheel(at, 120, Qt::ControlModifier);
        shown.mouse(QEvent::MouseButtonPress, at, Qt::ControlModifier);
        QVERIFY(shown.view.transform().isIdentity());
        QApplication::setOverrideCursor(Qt::WaitCursor); // somebody else's
        shown.mouse(QEvent::MouseButtonRelease, at, Qt::ControlModifier);
        QVERIFY(QApplication::overrideCursor());
        QApplication::restoreOverrideCursor();
    }

    void wheelScrolls()
    {
        const ShownView shown(20);
        const int stepX = shown.view.horizontalScrollBar()->maximum() / 10;
        const int stepY = shown.view.verticalScrollBar()->maximum() / 10;
        shown.scrollTo(100);
        shown.wheel(QPoint(10, 10), -120, Qt::NoModifier);
        QCOMPARE(QPoint(shown.x(), shown.y()), QPoint(100, 100 + stepY));
        shown.wheel(QPoint(10, 10), 120, Qt::AltModifier);
        QCOMPARE(QPoint(shown.x(), shown.y()), QPoint(100 - stepX, 100 + stepY));
        shown.wheel(QPoint(10, 10), 120, Qt::ShiftModifier);
        QCOMPARE(shown.y(), 100 + stepY);
    }

    void middleButtonPans()
    {
        const ShownView shown(20);
        shown.scrollTo(50);
        shown.mouse(QEvent::MouseButtonPress, QPoint(100, 100));
        QVERIFY(!shown.view.isInteractive());
        QCOMPARE(QApplication::overrideCursor()->shape(), Qt::ClosedHandCursor);
        shown.mouse(QEvent::MouseMove, QPoint(90, 120));
        QCOMPARE(QPoint(shown.x(), shown.y()), QPoint(60, 30));
        shown.mouse(QEvent::MouseButtonRelease, QPoint(90, 120));
        QVERIFY(shown.view.isInteractive() && !QApplication::overrideCursor());
        QCOMPARE(shown.view.dragMode(), QGraphicsView::RubberBandDrag);
    }

    void topmostLayerIsEditable()
    {
        const ShownView shown(30);
        const auto layers = shown.scene->getLayers();
        const auto selectable = [](const Widgets::ProxyLayer *layer) {
            return bool(layer->childItems().first()->flags() & QGraphicsItem::ItemIsSelectable);
        };
        QVERIFY(!selectable(layers[0]) && selectable(layers[1]));
        QVERIFY(shown.project.node(31)->SetPropertyText("zOrder", "9")); // now on top
        QVERIFY(selectable(layers[0]) && !selectable(layers[1]));
        QVERIFY(shown.project.node(31)->SetPropertyText("mode", "transparent"));
        QVERIFY(shown.project.node(33)->SetPropertyText("zOrder", "3")); // sorts again
        QVERIFY(selectable(layers[0]) && selectable(layers[1]));
        QVERIFY(shown.scene->sortZOrder().last() == layers[0]);
    }

    void addsElementsFromMenu()
    {
        const ShownView shown(30);
        shown.scene->setPastePosition(QPointF(40, 30));
        QMenu *menu = shown.scene->addWidgetMenu();
        QCOMPARE(menu->title(), QStringLiteral("Добавить виджет"));
        menu->actions().first()->menu()->actions().first()->trigger();
        QCOMPARE(shown.project.node(33)->GetNodeCount(), 2);
        const auto *added =
            dynamic_cast<Nodes::BasicWidget *>(shown.project.node(33)->GetNodeAt(1));
        QCOMPARE(added->GetPosition().x, 40);
        QCOMPARE(shown.scene->selectedItems().size(), 1); // only what was added is selected
        QCOMPARE(shown.scene->selectedItems().first()->pos(), QPointF(40, 30));
    }

    void selectionIsToldOnce()
    {
        const ShownView shown(30);
        struct Counter : QObject
        {
            bool eventFilter(QObject *, QEvent *event) override
            {
                if (event->type() == Utils::NodeLinkEvent::eventType()) {
                    ++count;
                    links = static_cast<Utils::NodeLinkEvent *>(event)->getNodeLinks();
                }
                return false;
            }
            int count = 0;
            Nodes::NodeLinks links;
        } counter;
        qApp->installEventFilter(&counter);
        QGraphicsItem *item = shown.scene->getLayers().last()->childItems().first();
        for (const bool isSelected : {true, false, true})
            item->setSelected(isSelected);
        shown.scene->getLayers().last()->addWidget(Nodes::NodeLink(32ul)); // appears selected
        QTRY_COMPARE(counter.count, 1);
        QTest::qWait(150);
        QCOMPARE(counter.count, 1);
        QCOMPARE(counter.links.size(), std::size_t(2)); // all that is selected
    }
    void layersComeAndGo()
    {
        const ShownView shown(30, Nodes::WorkModeRuntime);
        const auto seen = [&shown] {
            QStringList names;
            for (const Widgets::ProxyLayer *layer : shown.scene->sortZOrder()) {
                for (Widgets::ProxyWidget *host : layer->getWidgets())
                    names << QString::fromStdString(host->getNode()->GetName());
            }
            return names.join(' ');
        };
        auto *composition = shown.project.node(30);
        std::unique_ptr<Nodes::ConfigNode> layer = composition->RemoveNode(31ul);
        QCOMPARE(seen(), QString("B"));
        QVERIFY(composition->AddNode(layer));
        QTRY_COMPARE(seen(), QString("A B"));
        const Nodes::KindTable &kinds = Nodes::KindTable::Instance();
        auto *project = shown.project.core.GetNodesCollection();
        layer = project->CreateDetached(*kinds.FindByKey("layer"));
        auto label = project->CreateDetached(*kinds.FindByKey("label"));
        label->SetName("C");
        QVERIFY(layer->SetPropertyText("zOrder", "3") && layer->AddNode(label));
        QVERIFY(composition->AddNode(layer));
        QTRY_COMPARE(seen(), QString("A B C"));
        QCOMPARE(shown.scene->getLayers().size(), 3);
    }
};

QTEST_MAIN(ProxyViewTest)
#include "tst_proxy_view.moc"
