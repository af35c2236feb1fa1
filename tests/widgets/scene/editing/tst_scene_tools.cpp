#include "support/EditedProject.h"
#include "support/Rows.h"
#include "support/ShownEditor.h"

#include "widgets/scene/ProxyLayer.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyView.h"
#include "widgets/scene/ProxyWidget.h"
#include "widgets/scene/editing/DragInteraction.h"
#include "widgets/scene/editing/EditOverlay.h"
#include "widgets/scene/editing/SceneEditor.h"
#include "widgets/scene/editing/guides/SnapSettings.h"
#include "widgets/scene/editing/guides/Snapper.h"

#include <QGraphicsSceneDragDropEvent>
#include <QMenu>
#include <QPaintEvent>
#include <QSignalSpy>

using Widgets::SnapSettings;

namespace {

constexpr const char *nodes = R"(
<composition id="30" name="C" width="640" height="480">
 <layer id="31" name="low" zOrder="1"><label id="32" name="A" x="11" y="20" width="50" height="20"/>
  <label id="33" name="B" x="200" y="81" width="50" height="20"/></layer>
 <layer id="36" name="top" zOrder="2" mode="transparent"/></composition>)";

struct Scene : EditedProject
{
    Scene() : EditedProject(nodes), view(node(30), nullptr), scene(view.setScene(node(30)))
    {
        view.resize(700, 500);
    }

    Widgets::SceneEditor &editor() const { return *scene->sceneEditor(); }
    Widgets::ProxyWidget *host(unsigned long id) const
    {
        for (Widgets::ProxyWidget *host : editor().selection().selectable()) {
            if (host->getNodeLink().GetNodeId() == id)
                return host;
        }
        return nullptr;
    }
    void drag(unsigned long id, QPointF by) const
    {
        editor().drag().follow({host(id), Widgets::NoCorner, {0, 0}, by});
    }

    Widgets::ProxyView view;
    Widgets::ProxyScene *scene;
};

} // namespace

class SceneToolsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { SnapSettings::process().setOffered(); }
    void cleanup()
    {
        SnapSettings::process().setToGrid(true);
        SnapSettings::process().setToElements(true);
        SnapSettings::process().setGridStep(8);
    }

    // A stands at 11, 20; B at 200, 81. Elements draw within 6 pixels of the screen.
    void dragsSnap_data()
    {
        const Rows<bool, bool, double, QPointF, QPointF, bool> row("toGrid", "toElements", "zoom",
                                                                   "by", "place", "guides");
        row("to the grid", true, true, 1, {2, 3}, {16, 24}, false);
        row("to an element", true, true, 1, {184, 150}, {200, 168}, true);
        row("to the middle of the scene", false, true, 1, {281, 150}, {295, 170}, true);
        row("to nothing", false, false, 1, {184, 150}, {195, 170}, false);
        row("zoomed in", false, true, 4, {184, 150}, {195, 170}, false);
        row("zoomed in and close", false, true, 4, {188, 150}, {200, 170}, true);
    }

    void dragsSnap()
    {
        QFETCH(bool, toGrid);
        QFETCH(bool, toElements);
        QFETCH(double, zoom);
        QFETCH(QPointF, by);
        SnapSettings::process().setToGrid(toGrid);
        SnapSettings::process().setToElements(toElements);
        Scene s;
        s.view.scale(zoom, zoom);
        s.view.centerOn(200, 120);
        s.editor().selection().select({s.host(32)});
        s.drag(32, by);
        QTEST(s.host(32)->pos(), "place");
        QTEST(!s.editor().overlay().guides().isEmpty(), "guides");
        s.editor().commitGeometry();
        QCOMPARE(QPointF(s.place(32).topLeft()), s.host(32)->pos());
        QVERIFY(s.editor().overlay().guides().isEmpty());
        QCOMPARE(s.stack.count(), 1);
    }

    // Also where nothing else is painted anew.
    void guidesAreWipedOff()
    {
        struct Painted : QObject
        {
            bool eventFilter(QObject *, QEvent *event) override
            {
                if (event->type() == QEvent::Paint)
                    region += static_cast<QPaintEvent *>(event)->region();
                return false;
            }
            QRegion region;
        } painted;
        Scene s;
        s.view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&s.view));
        Widgets::Guides guides;
        guides.lines = {QLineF(0, 300, 600, 300)};
        const QPoint on = s.view.mapFromScene(300, 300);
        s.view.viewport()->installEventFilter(&painted);
        s.editor().overlay().setGuides(guides);
        QTRY_VERIFY(painted.region.contains(on));
        painted.region = {};
        s.editor().overlay().setGuides({});
        QTRY_VERIFY(painted.region.contains(on));
    }

    void severalKindsAreShownAndLand()
    {
        Scene s;
        const auto data = draggedTexts("application/nodetype", {"label", "folder", "chartHistory"});
        QGraphicsSceneDragDropEvent move(QEvent::GraphicsSceneDragMove);
        QGraphicsSceneDragDropEvent drop(QEvent::GraphicsSceneDrop);
        for (auto *event : {&move, &drop}) {
            event->setMimeData(data.get());
            event->setScenePos({163, 220});
        }
        QApplication::sendEvent(s.scene, &move);
        const QVector<QRectF> shown = s.editor().overlay().guides().places;
        QApplication::sendEvent(s.scene, &drop);
        QVector<QRectF> landed;
        for (const Widgets::ProxyWidget *host : s.scene->getLayers().last()->getWidgets())
            landed.append(host->geometry());
        QCOMPARE(landed.size(), 2);
        QVERIFY(landed[0].size() != landed[1].size());
        QCOMPARE(shown, landed);
    }

    // A label of 100 x 30, from 90, 185 on: far from the others.
    void newElementsLandWhereItIsShown()
    {
        Scene s;
        s.editor().selection().select({s.host(32)});
        const auto data = draggedTexts("application/nodetype", {"label"});
        const auto send = [&](QEvent::Type type) {
            QGraphicsSceneDragDropEvent event(type);
            event.setMimeData(data.get());
            event.setScenePos({140, 200});
            QApplication::sendEvent(s.scene, &event);
        };
        send(QEvent::GraphicsSceneDragEnter);
        send(QEvent::GraphicsSceneDragMove);
        const QVector<QRectF> shown = s.editor().overlay().guides().places;
        QCOMPARE(shown, QVector<QRectF>{QRectF(88, 184, 100, 30)});
        send(QEvent::GraphicsSceneDragLeave);
        QVERIFY(s.editor().overlay().guides().isEmpty());
        send(QEvent::GraphicsSceneDragMove);
        send(QEvent::GraphicsSceneDrop);
        QVERIFY(s.editor().overlay().guides().isEmpty());
        QTRY_COMPARE(s.editor().selection().count(), 1);
        QCOMPARE(s.editor().selection().key()->geometry(), shown.first());
    }

    void altSuspends()
    {
        const Scene s;
        Qt::KeyboardModifiers held = Qt::AltModifier;
        Widgets::Snapper snapper(*s.scene, SnapSettings::process(), [&held] { return held; });
        snapper.begin(s.editor().selection());
        Widgets::Guides guides;
        const QRectF moved(198, 300, 50, 20);
        const Qt::Edges all = Qt::LeftEdge | Qt::TopEdge | Qt::RightEdge | Qt::BottomEdge;
        QCOMPARE(snapper.adjust(moved, {7, 7}, all, &guides), QPointF(7, 7));
        QVERIFY(guides.isEmpty());
        held = Qt::NoModifier;
        QCOMPARE(snapper.adjust(moved, {7, 7}, all, &guides), QPointF(9, 11));
        QVERIFY(!guides.isEmpty());
        const SnapSettings unknown("tst_scene_tools.json"); // nobody could turn it off
        Widgets::Snapper quiet(*s.scene, unknown, [&held] { return held; });
        quiet.begin(s.editor().selection());
        QCOMPARE(quiet.adjust(moved, {7, 7}, all, &guides), QPointF(7, 7));
        snapper.end();
        QCOMPARE(snapper.adjust(moved, {7, 7}, all, &guides), QPointF(7, 7));
    }

    void settingsAreKept()
    {
        SnapSettings settings("tst_scene_tools.json");
        const QSignalSpy changed(&settings, &SnapSettings::changed);
        settings.setGridStep(1000);
        QCOMPARE(settings.options().gridStep, int(Widgets::SnapOptions::GreatestStep));
        settings.setToElements(false);
        settings.setToElements(false);
        QCOMPARE(changed.size(), 2);
        const SnapSettings again("tst_scene_tools.json");
        QCOMPARE(again.options().gridStep, 64);
        QVERIFY(!again.options().toElements);
        settings.setGridStep(8);
        settings.setToElements(true);
    }

    void menuRunsTheTable()
    {
        Scene s;
        s.editor().selection().select({s.host(32), s.host(33)});
        QMenu menu;
        s.editor().tableEdits().fillMenu(menu);
        QVERIFY(!menu.findChild<QAction *>("gapsAcross")->isEnabled());
        menu.findChild<QAction *>("alignLeft")->trigger();
        QCOMPARE(s.place(32).x(), 200);
        menu.findChild<QAction *>("showHidden")->trigger(); // there are none
        QCOMPARE(s.stack.count(), 1);
        menu.findChild<QAction *>("duplicate")->trigger();
        QCOMPARE(s.editor().selection().count(), 2);
        QVERIFY(!s.editor().selection().links()[0].GetNode()->GetName().empty());
        QCOMPARE(s.node(31)->GetNodeCount(), 4);
    }

    void menuOffersTheLayers()
    {
        Scene s;
        s.editor().selection().select({s.host(32)});
        QMenu menu;
        s.editor().tableEdits().fillMenu(menu);
        const QMenu *layers = menu.actions().last()->menu();
        QCOMPARE(layers->actions().size(), 2);
        QCOMPARE(layers->actions().first()->text(), QString("top")); // as they lie
        layers->actions().first()->trigger();
        QCOMPARE(s.node(32)->GetParent()->GetId(), 36ul);
    }
};

QTEST_MAIN(SceneToolsTest)
#include "tst_scene_tools.moc"
