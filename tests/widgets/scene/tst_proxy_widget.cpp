#include "support/Rows.h"
#include "support/RuntimeProject.h"

#include "widgets/elements/IWidget.h"
#include "widgets/elements/qwidgetLabel.h"
#include "widgets/scene/ElementFactory.h"
#include "widgets/scene/ProxyLayer.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyView.h"
#include "widgets/scene/ProxyWidget.h"
#include "widgets/scene/editing/Border.h"

#include "nodes/visual/BasicWidget.h"
#include "nodes/visual/windows/BasicLayer.h"

#include <QHelpEvent>
#include <QKeyEvent>

#include <thread>

using Widgets::ProxyLayer;
using Widgets::ProxyWidget;

namespace {

constexpr const char *nodes = R"(
<composition id="30" name="C">
  <layer id="31" name="One" zOrder="3"><label id="32" name="A" x="10" y="20" width="90" height="40"
    zOrder="5" disabled="true"/><label id="33" name="B"/></layer>
  <layer id="35" name="Two" zOrder="3" mode="transparent" visible="false"/></composition>
<folder id="40" name="F"/>)";

/// A project with one of its layers in a scene.
struct Layer : RuntimeProject
{
    explicit Layer(Nodes::enWorkMode mode = Nodes::WorkModeRuntime, unsigned long id = 31)
        : RuntimeProject(nodes, mode), item(new ProxyLayer(node<Nodes::BasicLayer>(id)))
    {
        scene.addItem(item);
    }
    ProxyWidget *host(unsigned long id) const
    {
        for (ProxyWidget *host : item->getWidgets()) {
            if (host->getNodeLink().GetNodeId() == id)
                return host;
        }
        return nullptr;
    }
    QGraphicsScene scene;
    ProxyLayer *item;
};

} // namespace

class ProxyWidgetTest : public QObject
{
    Q_OBJECT

private slots:
    void takesEverythingFromTheNode()
    {
        const Layer layer;
        const ProxyWidget *host = layer.host(32);
        QCOMPARE(host->geometry(), QRectF(10, 20, 90, 40));
        QCOMPARE(host->zValue(), 5.0);
        QCOMPARE(host->objectName(), QStringLiteral("C/One/A"));
        QVERIFY(host->element()->isActive());
        QVERIFY(!host->widget()->isEnabled());
        QCOMPARE(host->widget()->objectName(),
                 QStringLiteral("node id: 32 parent: One parent id: 31"));
        layer.node<Nodes::BasicWidget>(32)->SetPosition(-7, 8);
        layer.set(32, "width", "11");
        layer.set(32, "height", "3");
        layer.set(32, "zOrder", "-2");
        QCOMPARE(host->geometry(), QRectF(-7, 8, 11, 3));
        QCOMPARE(host->zValue(), -2.0);
    }

    // Layouts of some kinds ask for more.
    void sizeIsThatOfTheNode()
    {
        const Layer layer;
        Nodes::ConfigNode *parent = layer.node(31);
        for (const Nodes::NodeType &type : parent->GetAvailableChildNodes()) {
            const Nodes::NodeLink made(layer.core.GetNodesCollection()->CreateNode(type, parent));
            QTRY_VERIFY(layer.host(made.GetNodeId()));
            const ProxyWidget *host = layer.host(made.GetNodeId());
            for (const char *size : {"100", "20", "3"}) {
                QVERIFY(made->SetPropertyText("width", size));
                QVERIFY(made->SetPropertyText("height", size));
                QCoreApplication::processEvents();
                const QSize expected(atoi(size), atoi(size));
                QVERIFY2(host->size() == expected, type.ToString().c_str());
                QVERIFY2(!host->widget() || host->widget()->size() == expected,
                         type.ToString().c_str());
            }
        }
    }

    void emptyHosts()
    {
        const Layer layer;
        for (const unsigned long id : {999ul, 40ul}) { // no node; no element
            const Nodes::NodeLink link(id);
            QVERIFY(!layer.item->addWidget(link));
            ProxyWidget host(link);
            QVERIFY(!host.widget() && !host.element());
            host.start();
        }
    }

    void elementsWorkAtRunTimeOnly_data()
    {
        const Rows<int, bool> row("mode", "works");
        row("runtime", Nodes::WorkModeRuntime, true);
        row("editing", Nodes::WorkModeEditing, false);
    }

    void elementsWorkAtRunTimeOnly()
    {
        QFETCH(int, mode);
        QFETCH(bool, works);
        struct KeyCounter : QObject
        {
            bool eventFilter(QObject *, QEvent *event) override
            {
                count += event->type() == QEvent::KeyPress ? 1 : 0;
                return false;
            }
            int count = 0;
        } counter;
        Layer layer{Nodes::enWorkMode(mode)};
        QWidget *element = layer.host(33)->widget();
        element->installEventFilter(&counter);
        QKeyEvent press(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier);
        layer.scene.sendEvent(layer.host(33), &press);
        QCOMPARE(counter.count, works ? 1 : 0);
        QCOMPARE(layer.host(32)->widget()->isEnabled(), !works); // configured as disabled
        layer.set(33, "disabled", "true");
        QCOMPARE(element->isEnabled(), !works);
        layer.set(33, "disabled", "false");
        QVERIFY(element->isEnabled());
    }

    void visibilitySettles()
    {
        const Layer layer;
        const ProxyWidget *host = layer.host(32);
        const QSignalSpy spy(host, &QGraphicsObject::visibleChanged);
        for (const char *text : {"false", "true", "false"})
            layer.set(32, "visible", text);
        QVERIFY(host->isVisible());
        QTRY_VERIFY(!host->isVisible());
        QTest::qWait(50);
        QCOMPARE(spy.count(), 1);
    }

    void dragCommitsToTheNode()
    {
        RuntimeProject project(nodes, Nodes::WorkModeEditing);
        auto *node = project.node(30);
        Widgets::ProxyView view(node, nullptr);
        view.setScene(node);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        const QPoint from = view.mapFromScene(30, 40);
        QTest::mousePress(view.viewport(), Qt::LeftButton, {}, from);
        for (const QPoint step : {QPoint(10, 4), QPoint(25, 12)}) {
            QMouseEvent move(QEvent::MouseMove, from + step, Qt::NoButton, Qt::LeftButton, {});
            QCoreApplication::sendEvent(view.viewport(), &move);
        }
        QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, from + QPoint(25, 12));
        const Nodes::NPoint place = project.node<Nodes::BasicWidget>(32)->GetPosition();
        QCOMPARE(QPoint(place.x, place.y), QPoint(35, 32));
    }

    void borderFollowsFrameType_data()
    {
        const Rows<int, QRectF, bool> row("type", "rect", "outline");
        row("inside", 0, {0.5, 0.5, 89, 39}, true);
        row("outside", 1, {-0.5, -0.5, 91, 41}, true);
        row("none", 5, {0.5, 0.5, 89, 39}, false);
    }

    void borderFollowsFrameType()
    {
        QFETCH(int, type);
        const Layer layer(Nodes::WorkModeEditing);
        layer.item->setTypeFrame(type);
        const auto *border = dynamic_cast<Widgets::Border *>(layer.host(32)->childItems().first());
        QTEST(QRectF(border->pos(), QSizeF(border->width(), border->height())), "rect");
        QTEST(border->hasOutline(), "outline");
    }

    void layersCompareByOrder()
    {
        const Layer one;
        const ProxyLayer two(one.node<Nodes::BasicLayer>(35));
        QVERIFY(*one.item == two && !(*one.item < two));
        one.set(35, "zOrder", "4");
        QVERIFY(*one.item != two && *one.item < two && two > *one.item);
    }

    void layerFollowsItsNode()
    {
        const Layer layer(Nodes::WorkModeRuntime, 35);
        QVERIFY(layer.item->transparency() && !layer.item->isVisible());
        const QSignalSpy changed(layer.item, &ProxyLayer::transparencyChanged);
        const QSignalSpy order(layer.item, &ProxyLayer::propertyChange);
        layer.set(35, "mode", "opaque");
        layer.set(35, "visible", "true");
        layer.set(35, "zOrder", "8");
        QVERIFY(!layer.item->transparency() && layer.item->isVisible());
        QCOMPARE(layer.item->zValue(), 8.0);
        QCOMPARE(changed.count(), 1);
        QCOMPARE(order.count(), 1);
    }

    void changesOfOtherThreadsShow()
    {
        const Layer layer;
        std::thread([&] {
            layer.set(32, "visible", "false");
            layer.set(32, "disabled", "false");
            layer.set(31, "zOrder", "6");
        }).join();
        QTRY_VERIFY(!layer.host(32)->isVisible());
        QVERIFY(layer.host(32)->widget()->isEnabled());
        QCOMPARE(layer.item->zValue(), 6.0);
    }

    void childrenComeAndGo()
    {
        Layer layer;
        auto *node = layer.node(31);
        const QPointer<ProxyWidget> removed = layer.host(32);
        auto detached = node->RemoveNode(Nodes::NodeLink(32ul));
        QVERIFY(detached->GetState() == Nodes::NodeState::Stopped);
        QCOMPARE(layer.item->getWidgets().size(), 1);
        QCOMPARE(layer.item->getWidgets().first()->getNodeLink().GetNodeId(), 33ul);
        QVERIFY(node->AddNode(detached));
        QCOMPARE(layer.item->getWidgets().size(), 2);
        QVERIFY(layer.host(32)->element()->isActive());
        QTRY_VERIFY(!removed);
        delete layer.host(33)->widget(); // takes its host with it
        QCOMPARE(layer.item->getWidgets().size(), 1);
        layer.item->setEnabledItems(false);
        const auto handles = QGraphicsItem::ItemIsSelectable | QGraphicsItem::ItemIsMovable;
        for (const ProxyWidget *host : layer.item->getWidgets())
            QVERIFY(!(host->flags() & handles));
    }

    void goesAndComesWithAncestors_data()
    {
        const Rows<int> row("removed");
        row("layer", 31);
        row("composition", 30);
    }

    void goesAndComesWithAncestors()
    {
        QFETCH(int, removed);
        const Layer layer;
        const auto *element = layer.node(32);
        const Nodes::NodeLink link(static_cast<unsigned long>(removed));
        auto *parent = link->GetParent();
        auto detached = parent->RemoveNode(link);
        QVERIFY(layer.item->getWidgets().isEmpty());
        QVERIFY(element->GetState() == Nodes::NodeState::Stopped); // no start stays behind
        QVERIFY(parent->AddNode(detached));
        QTRY_COMPARE(layer.item->getWidgets().size(), 2);
        QVERIFY(layer.host(32)->element()->isActive());
        detached = parent->RemoveNode(link);
        QVERIFY(layer.item->getWidgets().isEmpty());
    }

    void survivesTheNode_data()
    {
        QTest::addColumn<QByteArray>("kind");
        for (const char *kind :
             {"label", "image", "button", "recorderDisplay", "bargraph", "multiLabel", "multiImage",
              "movingImage", "editBox", "comboBox", "checkBox"})
            QTest::newRow(kind) << QByteArray(kind);
    }

    // A host outside of any layer is told nothing; its element has to notice by itself.
    void survivesTheNode()
    {
        QFETCH(QByteArray, kind);
        const RuntimeProject project("<composition id='30' name='C'><layer id='31' name='L'><" +
                                     kind +
                                     " id='32' name='E' tooltip='T'/></layer></composition>");
        QGraphicsScene scene;
        auto *host = new ProxyWidget(Nodes::NodeLink(32ul));
        scene.addItem(host);
        QWidget *element = host->widget();
        QVERIFY(project.node(1)->DeleteNode(30));
        QHelpEvent tooltip(QEvent::ToolTip, {}, {});
        QApplication::sendEvent(element, &tooltip);
        QTest::mouseClick(element, Qt::LeftButton);
        QTest::keyClick(element, Qt::Key_Return);
        host->element()->onUpdateProperties(nullptr);
        host->element()->onValueUpdated(1.0);
        QImage image(200, 200, QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&image);
        scene.render(&painter);
        host->stop();
        QVERIFY(!host->getNode());
    }
    void whatChangesBeforeTheStartCounts_data()
    {
        const Rows<QByteArray> row("node");
        row("label", "<label id='20' name='E' text='old'/>");
        row("button", "<button id='20' name='E' text='old'/>");
    }
    void whatChangesBeforeTheStartCounts()
    {
        QFETCH(QByteArray, node);
        const RuntimeProject project(node);
        const std::unique_ptr<QWidget> widget(
            Widgets::ElementFactory::create(project.node<Nodes::BasicWidget>(20), nullptr));
        auto *element = dynamic_cast<IWidget *>(widget.get());
        const auto look = [&widget] { return widget->grab().toImage(); };
        const QImage first = look();
        element->start();
        QCOMPARE(look(), first);
        element->stop();
        project.set(20, "text", "new");
        project.set(20, "color", "#ff0000");
        element->start();
        const QImage second = look();
        QVERIFY(second != first);
        const std::unique_ptr<QWidget> other(
            Widgets::ElementFactory::create(project.node<Nodes::BasicWidget>(20), nullptr));
        project.set(20, "color", "#00ff00"); // between making and starting
        dynamic_cast<IWidget *>(other.get())->start();
        QCOMPARE(other->grab().toImage(), look());
        QVERIFY(look() != second);
        dynamic_cast<IWidget *>(other.get())->stop();
        element->stop();
    }
};

QTEST_MAIN(ProxyWidgetTest)
#include "tst_proxy_widget.moc"
