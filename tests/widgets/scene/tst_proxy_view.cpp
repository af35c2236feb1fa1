#include "support/RuntimeProject.h"

#include "widgets/scene/Border.h"
#include "widgets/scene/ProxyLayer.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyView.h"

#include "nodes/visual/BasicWidget.h"

#include <QApplication>
#include <QMenu>
#include <QMessageBox>
#include <QScrollBar>
#include <QTimer>

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

struct BoxReader : QObject
{
    BoxReader()
    {
        QObject::connect(&timer, &QTimer::timeout, this, [this] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            if (!box)
                return;
            texts << box->text();
            box->accept();
        });
        timer.start(5);
    }
    QTimer timer;
    QStringList texts;
};

bool wheel(ProxyView &view, QPoint at, int delta, Qt::KeyboardModifiers modifiers)
{
    const QPoint angle = modifiers == Qt::AltModifier ? QPoint(delta, 0) : QPoint(0, delta);
    QWheelEvent event(at, view.viewport()->mapToGlobal(at), QPoint(), angle, Qt::NoButton,
                      modifiers, Qt::NoScrollPhase, false);
    return QApplication::sendEvent(view.viewport(), &event);
}

void mouse(ProxyView &view, QEvent::Type type, QPoint at, Qt::KeyboardModifiers modifiers = {})
{
    const bool isMove = type == QEvent::MouseMove;
    QMouseEvent event(type, at, isMove ? Qt::NoButton : Qt::MiddleButton,
                      type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::MiddleButton,
                      modifiers);
    QApplication::sendEvent(view.viewport(), &event);
}

} // namespace

class ProxyViewTest : public QObject
{
    Q_OBJECT

private slots:
    void sceneOfNode_data();
    void sceneOfNode();
    void followsSizeOfNode();
    void runtimeHasNothingOfTheEditor();
    void zoomKeepsThePointUnderTheCursor();
    void wheelScrolls();
    void middleButtonPans();
    void sizeHints();
    void topmostLayerIsEditable();
    void addsElementsFromMenu();
    void selectionIsToldOnce();
};

void ProxyViewTest::sceneOfNode_data()
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
        << QStringList{"Не задана композиция", "Не удалось создать сцену"};
    QTest::newRow("other node") << 50 << QRectF() << 0 << ""
                                << QStringList{"Не удалось создать сцену"};
}

void ProxyViewTest::sceneOfNode()
{
    QFETCH(int, id);
    QFETCH(QStringList, messages);
    RuntimeProject project(nodes);
    BoxReader reader;
    ProxyView view(project.node(id), nullptr);
    const ProxyScene *scene = view.setScene(project.node(id));
    QCOMPARE(reader.texts, messages);
    QCOMPARE(scene != nullptr, messages.isEmpty());
    QCOMPARE(view.scene(), scene);
    QTEST(scene ? scene->sceneRect() : QRectF(), "rect");
    QTEST(scene ? scene->getLayers().size() : 0, "layers");
    QTEST(scene ? scene->objectName() : QString(), "name");
}

void ProxyViewTest::followsSizeOfNode()
{
    RuntimeProject project(nodes, Nodes::WorkModeEditing);
    ProxyView view(project.node(20), nullptr);
    view.setScene(project.node(20));
    QVERIFY(project.node(20)->SetPropertyText("width", "500"));
    QCOMPARE(view.sceneRect().width(), 500.0);
    for (QGraphicsItem *item : view.items()) {
        if (const auto *border = dynamic_cast<Widgets::Border *>(item))
            if (!border->parentItem())
                QCOMPARE(border->width(), 499.0);
    }
}

void ProxyViewTest::runtimeHasNothingOfTheEditor()
{
    RuntimeProject project(nodes);
    ProxyView view(project.node(20), nullptr);
    const ProxyScene *scene = view.setScene(project.node(20));
    view.resize(300, 200);
    view.show();
    QCOMPARE(view.dragMode(), QGraphicsView::NoDrag);
    QVERIFY(!scene->addWidgetMenu());
    for (const QGraphicsItem *item : scene->items())
        QVERIFY(!dynamic_cast<const Widgets::Border *>(item));
    QVERIFY(view.verticalScrollBar()->maximum() > 0);
    const int place = view.verticalScrollBar()->value();
    wheel(view, QPoint(50, 50), -120, Qt::NoModifier);
    wheel(view, QPoint(50, 50), 120, Qt::ControlModifier);
    QCOMPARE(view.verticalScrollBar()->value(), place);
    QVERIFY(view.transform().isIdentity());
    for (const int key : {Qt::Key_PageDown, Qt::Key_Right, Qt::Key_Down})
        QTest::keyClick(&view, Qt::Key(key));
    view.resize(150, 350);
    QCOMPARE(view.mapToScene(0, 0), QPointF(0, 0));
}

void ProxyViewTest::zoomKeepsThePointUnderTheCursor()
{
    RuntimeProject project(nodes, Nodes::WorkModeEditing);
    ProxyView view(project.node(20), nullptr);
    view.setScene(project.node(20));
    view.resize(300, 200);
    view.show();
    const QPoint at(120, 80);
    const QPointF before = view.mapToScene(at);
    wheel(view, at, 120, Qt::ControlModifier);
    QCOMPARE(view.transform().m11(), 1.15);
    QVERIFY((view.mapToScene(at) - before).manhattanLength() <= 2);
    wheel(view, at, -120, Qt::ControlModifier);
    QCOMPARE(view.transform().m11(), 1.15 * 0.8695652173913044);
    wheel(view, at, 120, Qt::ControlModifier);
    mouse(view, QEvent::MouseButtonPress, at, Qt::ControlModifier);
    QVERIFY(view.transform().isIdentity());
    QApplication::setOverrideCursor(Qt::WaitCursor); // somebody else's
    mouse(view, QEvent::MouseButtonRelease, at, Qt::ControlModifier);
    QVERIFY(QApplication::overrideCursor());
    QApplication::restoreOverrideCursor();
}

void ProxyViewTest::wheelScrolls()
{
    RuntimeProject project(nodes, Nodes::WorkModeEditing);
    ProxyView view(project.node(20), nullptr);
    view.setScene(project.node(20));
    view.resize(300, 200);
    view.show();
    QScrollBar *vertical = view.verticalScrollBar();
    QScrollBar *horizontal = view.horizontalScrollBar();
    vertical->setValue(100);
    horizontal->setValue(100);
    wheel(view, QPoint(10, 10), -120, Qt::NoModifier);
    QCOMPARE(vertical->value(), 100 + vertical->maximum() / 10);
    wheel(view, QPoint(10, 10), 120, Qt::AltModifier);
    QCOMPARE(horizontal->value(), 100 - horizontal->maximum() / 10);
    wheel(view, QPoint(10, 10), 120, Qt::ShiftModifier);
    QCOMPARE(vertical->value(), 100 + vertical->maximum() / 10);
}

void ProxyViewTest::middleButtonPans()
{
    RuntimeProject project(nodes, Nodes::WorkModeEditing);
    ProxyView view(project.node(20), nullptr);
    view.setScene(project.node(20));
    view.resize(300, 200);
    view.show();
    view.verticalScrollBar()->setValue(50);
    view.horizontalScrollBar()->setValue(50);
    mouse(view, QEvent::MouseButtonPress, QPoint(100, 100));
    QVERIFY(!view.isInteractive());
    QCOMPARE(QApplication::overrideCursor()->shape(), Qt::ClosedHandCursor);
    mouse(view, QEvent::MouseMove, QPoint(90, 120));
    QCOMPARE(view.horizontalScrollBar()->value(), 60);
    QCOMPARE(view.verticalScrollBar()->value(), 30);
    mouse(view, QEvent::MouseButtonRelease, QPoint(90, 120));
    QVERIFY(view.isInteractive() && !QApplication::overrideCursor());
    QCOMPARE(view.dragMode(), QGraphicsView::RubberBandDrag);
}

void ProxyViewTest::sizeHints()
{
    ProxyView view(nullptr, nullptr);
    view.setSizeHint(QSize(100, 50));
    QCOMPARE(view.sizeHint(), QSize(98, 48));
    QCOMPARE(view.minimumSizeHint(), QSize(0, 0));
}

void ProxyViewTest::topmostLayerIsEditable()
{
    RuntimeProject project(nodes, Nodes::WorkModeEditing);
    ProxyView view(project.node(30), nullptr);
    const auto layers = view.setScene(project.node(30))->getLayers();
    const auto selectable = [](const Widgets::ProxyLayer *layer) {
        return bool(layer->childItems().first()->flags() & QGraphicsItem::ItemIsSelectable);
    };
    QVERIFY(!selectable(layers[0]) && selectable(layers[1]));
    QVERIFY(project.node(31)->SetPropertyText("zOrder", "9")); // now on top
    QVERIFY(selectable(layers[0]) && !selectable(layers[1]));
    QVERIFY(project.node(31)->SetPropertyText("mode", "transparent"));
    QVERIFY(project.node(33)->SetPropertyText("zOrder", "3")); // sorts again
    QVERIFY(selectable(layers[0]) && selectable(layers[1]));
    QVERIFY(view.proxyScene()->sortZOrder().last() == layers[0]);
}

void ProxyViewTest::addsElementsFromMenu()
{
    RuntimeProject project(nodes, Nodes::WorkModeEditing);
    ProxyView view(project.node(30), nullptr);
    ProxyScene *scene = view.setScene(project.node(30));
    scene->setPastePosition(QPointF(40, 30));
    QMenu *menu = scene->addWidgetMenu();
    QCOMPARE(menu->title(), QStringLiteral("Добавить виджет"));
    QAction *label = menu->actions().first()->menu()->actions().first();
    label->trigger();
    const Nodes::ConfigNode *layer = project.node(33);
    QCOMPARE(layer->GetNodeCount(), 2);
    const auto *added = dynamic_cast<Nodes::BasicWidget *>(layer->GetNodeAt(1));
    QCOMPARE(added->GetPosition().x, 40);
    QCOMPARE(scene->selectedItems().size(), 1); // only what was added is selected
    QCOMPARE(scene->selectedItems().first()->pos(), QPointF(40, 30));
}

void ProxyViewTest::selectionIsToldOnce()
{
    RuntimeProject project(nodes, Nodes::WorkModeEditing);
    ProxyView view(project.node(30), nullptr);
    ProxyScene *scene = view.setScene(project.node(30));
    struct Counter : QObject
    {
        bool eventFilter(QObject *, QEvent *event) override
        {
            count += event->type() >= QEvent::User ? 1 : 0;
            return false;
        }
        int count = 0;
    } counter;
    qApp->installEventFilter(&counter);
    QGraphicsItem *item = scene->getLayers().last()->childItems().first();
    item->setSelected(true);
    item->setSelected(false);
    item->setSelected(true);
    QTRY_COMPARE(counter.count, 1);
    QTest::qWait(150);
    QCOMPARE(counter.count, 1);
}

QTEST_MAIN(ProxyViewTest)
#include "tst_proxy_view.moc"
