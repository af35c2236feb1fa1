#include "support/RuntimeProject.h"

#include "widgets/elements/IWidget.h"
#include "widgets/elements/qwidgetLabel.h"
#include "widgets/scene/Border.h"
#include "widgets/scene/ProxyLayer.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyView.h"
#include "widgets/scene/ProxyWidget.h"

#include "nodes/visual/BasicLayer.h"
#include "nodes/visual/BasicWidget.h"

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

struct Layer
{
    explicit Layer(RuntimeProject &project, unsigned long id = 31)
        : item(new ProxyLayer(project.node<Nodes::BasicLayer>(id)))
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
    void takesEverythingFromTheNode();
    void emptyHosts_data();
    void emptyHosts();
    void disabledFollowsAtRunTimeOnly_data();
    void disabledFollowsAtRunTimeOnly();
    void visibilitySettles();
    void geometryFollows();
    void keysReachElementsAtRunTimeOnly_data();
    void keysReachElementsAtRunTimeOnly();
    void dragCommitsToTheNode();
    void borderFollowsFrameType_data();
    void borderFollowsFrameType();
    void layersCompareByOrder();
    void layerFollowsItsNode();
    void changesOfOtherThreadsShow();
    void childrenComeAndGo();
    void survivesTheNode();
};

void ProxyWidgetTest::takesEverythingFromTheNode()
{
    RuntimeProject project(nodes);
    const Layer layer(project);
    const ProxyWidget *host = layer.host(32);
    QCOMPARE(host->type(), 0x25001);
    QCOMPARE(host->geometry(), QRectF(10, 20, 90, 40));
    QCOMPARE(host->zValue(), 5.0);
    QCOMPARE(host->objectName(), QStringLiteral("C/One/A"));
    QVERIFY(host->element()->isActive());
    QVERIFY(!host->widget()->isEnabled());
    QCOMPARE(host->widget()->objectName(), QStringLiteral("node id: 32 parent: One parent id: 31"));
}

void ProxyWidgetTest::emptyHosts_data()
{
    QTest::addColumn<int>("id");
    QTest::newRow("no node") << 999;
    QTest::newRow("no element") << 40;
}

void ProxyWidgetTest::emptyHosts()
{
    QFETCH(int, id);
    RuntimeProject project(nodes);
    Layer layer(project);
    const Nodes::NodeLink link(static_cast<unsigned long>(id));
    QVERIFY(!layer.item->addWidget(link));
    ProxyWidget host(link);
    QVERIFY(!host.widget() && !host.element());
    host.start();
    QCOMPARE(host.type(), int(QGraphicsItem::UserType));
}

void ProxyWidgetTest::disabledFollowsAtRunTimeOnly_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("follows");
    QTest::newRow("runtime") << int(Nodes::WorkModeRuntime) << true;
    QTest::newRow("editing") << int(Nodes::WorkModeEditing) << false;
}

void ProxyWidgetTest::disabledFollowsAtRunTimeOnly()
{
    QFETCH(int, mode);
    QFETCH(bool, follows);
    RuntimeProject project(nodes, Nodes::enWorkMode(mode));
    const Layer layer(project);
    const QWidget *element = layer.host(32)->widget();
    QCOMPARE(element->isEnabled(), !follows);
    QVERIFY(project.node(33)->SetPropertyText("disabled", "true"));
    QCOMPARE(layer.host(33)->widget()->isEnabled(), !follows);
    QVERIFY(project.node(32)->SetPropertyText("disabled", "false"));
    QVERIFY(element->isEnabled());
}

void ProxyWidgetTest::visibilitySettles()
{
    RuntimeProject project(nodes);
    const Layer layer(project);
    const ProxyWidget *host = layer.host(32);
    QSignalSpy spy(layer.host(32), &QGraphicsObject::visibleChanged);
    for (const char *text : {"false", "true", "false"})
        QVERIFY(project.node(32)->SetPropertyText("visible", text));
    QVERIFY(host->isVisible());
    QTRY_VERIFY(!host->isVisible());
    QTest::qWait(50);
    QCOMPARE(spy.count(), 1);
}

void ProxyWidgetTest::geometryFollows()
{
    RuntimeProject project(nodes);
    const Layer layer(project);
    auto *node = project.node<Nodes::BasicWidget>(32);
    node->SetPosition(-7, 8);
    QVERIFY(node->SetPropertyText("width", "11") && node->SetPropertyText("height", "3"));
    QCOMPARE(layer.host(32)->geometry(), QRectF(-7, 8, 11, 3));
    QVERIFY(node->SetPropertyText("zOrder", "-2"));
    QCOMPARE(layer.host(32)->zValue(), -2.0);
}

void ProxyWidgetTest::keysReachElementsAtRunTimeOnly_data()
{
    disabledFollowsAtRunTimeOnly_data();
}

void ProxyWidgetTest::keysReachElementsAtRunTimeOnly()
{
    QFETCH(int, mode);
    QFETCH(bool, follows);
    struct KeyCounter : QObject
    {
        bool eventFilter(QObject *, QEvent *event) override
        {
            count += event->type() == QEvent::KeyPress ? 1 : 0;
            return false;
        }
        int count = 0;
    } counter;
    RuntimeProject project(nodes, Nodes::enWorkMode(mode));
    Layer layer(project);
    layer.host(33)->widget()->installEventFilter(&counter);
    QKeyEvent press(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier);
    layer.scene.sendEvent(layer.host(33), &press);
    QCOMPARE(counter.count, follows ? 1 : 0);
}

void ProxyWidgetTest::dragCommitsToTheNode()
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

void ProxyWidgetTest::borderFollowsFrameType_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QRectF>("rect");
    QTest::addColumn<bool>("outline");
    QTest::newRow("inside") << 0 << QRectF(0.5, 0.5, 89, 39) << true;
    QTest::newRow("outside") << 1 << QRectF(-0.5, -0.5, 91, 41) << true;
    QTest::newRow("none") << 5 << QRectF(0.5, 0.5, 89, 39) << false;
}

void ProxyWidgetTest::borderFollowsFrameType()
{
    QFETCH(int, type);
    RuntimeProject project(nodes, Nodes::WorkModeEditing);
    const Layer layer(project);
    layer.item->setTypeFrame(type);
    const auto *border = dynamic_cast<Widgets::Border *>(layer.host(32)->childItems().first());
    QTEST(QRectF(border->pos(), QSizeF(border->width(), border->height())), "rect");
    QTEST(border->hasOutline(), "outline");
}

void ProxyWidgetTest::layersCompareByOrder()
{
    RuntimeProject project(nodes);
    const Layer one(project);
    const Layer two(project, 35);
    QVERIFY(*one.item == *two.item && !(*one.item < *two.item));
    QVERIFY(project.node(35)->SetPropertyText("zOrder", "4"));
    QVERIFY(*one.item != *two.item && *one.item<*two.item && * two.item> * one.item);
}

void ProxyWidgetTest::layerFollowsItsNode()
{
    RuntimeProject project(nodes);
    const Layer layer(project, 35);
    QVERIFY(layer.item->transparency() && !layer.item->isVisible());
    QSignalSpy changed(layer.item, &ProxyLayer::transparencyChanged);
    QSignalSpy order(layer.item, &ProxyLayer::propertyChange);
    QVERIFY(project.node(35)->SetPropertyText("mode", "opaque"));
    QVERIFY(project.node(35)->SetPropertyText("visible", "true"));
    QVERIFY(project.node(35)->SetPropertyText("zOrder", "8"));
    QVERIFY(!layer.item->transparency() && layer.item->isVisible());
    QCOMPARE(layer.item->zValue(), 8.0);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(order.count(), 1);
}

void ProxyWidgetTest::changesOfOtherThreadsShow()
{
    RuntimeProject project(nodes);
    const Layer layer(project);
    std::thread([&] {
        QVERIFY(project.node(32)->SetPropertyText("visible", "false"));
        QVERIFY(project.node(32)->SetPropertyText("disabled", "false"));
        QVERIFY(project.node(31)->SetPropertyText("zOrder", "6"));
    }).join();
    QTRY_VERIFY(!layer.host(32)->isVisible());
    QVERIFY(layer.host(32)->widget()->isEnabled());
    QCOMPARE(layer.item->zValue(), 6.0);
}

void ProxyWidgetTest::childrenComeAndGo()
{
    RuntimeProject project(nodes);
    Layer layer(project);
    auto *node = project.node(31);
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
    for (const ProxyWidget *host : layer.item->getWidgets())
        QVERIFY(
            !(host->flags() & (QGraphicsItem::ItemIsSelectable | QGraphicsItem::ItemIsMovable)));
}

void ProxyWidgetTest::survivesTheNode()
{
    RuntimeProject project(nodes);
    Layer layer(project);
    QVERIFY(project.node(30)->DeleteNode(31)); // the layer is not told of its own end
    layer.item->setEnabledItems(true);
    layer.scene.update();
    QImage image(200, 200, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    layer.scene.render(&painter);
    QVERIFY(!layer.item->getWidgets().first()->getNode());
}

QTEST_MAIN(ProxyWidgetTest)
#include "tst_proxy_widget.moc"
