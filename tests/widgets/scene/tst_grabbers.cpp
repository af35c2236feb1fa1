#include "support/Rows.h"
#include "support/ShownEditor.h"

#include "widgets/scene/editing/Border.h"
#include "widgets/scene/editing/CornerGrabber.h"
#include "widgets/scene/editing/EditOverlay.h"
#include "widgets/scene/editing/Locker.h"

#include "utils/undo/ChangePropertyCommand.h"

#include <QCursor>
#include <QGraphicsSceneMouseEvent>
#include <QPainter>

using Widgets::CornerGrabber;
using Widgets::ProxyWidget;

namespace {

constexpr const char *nodes = R"(
<composition id="30" name="C" width="640" height="480">
  <layer id="31" name="L"><label id="32" name="A" x="100" y="80" width="100" height="40"/>
    <label id="33" name="B" x="300" y="80" width="100" height="40"/>
    <label id="34" name="F" x="100" y="300" width="100" height="40" movable="false"/></layer>
</composition>)";

CornerGrabber *grabber(const ProxyWidget *host, int corner)
{
    for (QGraphicsItem *item : host->childItems()) {
        auto *found = qgraphicsitem_cast<CornerGrabber *>(item);
        if (found && found->corner() == corner)
            return found;
    }
    return nullptr;
}

const Widgets::Border *border(const ProxyWidget *host)
{
    for (QGraphicsItem *item : host->childItems()) {
        if (const auto *found = dynamic_cast<const Widgets::Border *>(item))
            return found;
    }
    return nullptr;
}

int grabbers(const ProxyWidget *host)
{
    int count = 0;
    for (int corner = 0; corner < Widgets::CornerCount; ++corner)
        count += grabber(host, corner) ? 1 : 0;
    return count;
}

struct Editor : ShownEditor
{
    Editor() : ShownEditor(nodes) {}

    QPointF centre(unsigned long id, int corner) const
    {
        return grabber(host(id), corner)->sceneBoundingRect().center();
    }
    void pull(unsigned long id, int corner, QPointF by)
    {
        const QPointF from = centre(id, corner);
        drag(from, from + by);
    }
};

} // namespace

class GrabbersTest : public QObject
{
    Q_OBJECT

private slots:
    void resizes_data()
    {
        const Rows<int, QPoint, QRect, Qt::CursorShape> row("corner", "by", "place", "cursor");
        row("top left", 0, {10, 6}, {110, 86, 90, 34}, Qt::SizeFDiagCursor);
        row("top right", 1, {10, 6}, {100, 86, 110, 34}, Qt::SizeBDiagCursor);
        row("bottom right", 2, {10, 6}, {100, 80, 110, 46}, Qt::SizeFDiagCursor);
        row("bottom left", 3, {10, 6}, {110, 80, 90, 46}, Qt::SizeBDiagCursor);
        row("top", 4, {10, 6}, {100, 86, 100, 34}, Qt::SizeVerCursor);
        row("right", 5, {10, 6}, {100, 80, 110, 40}, Qt::SizeHorCursor);
        row("bottom", 6, {10, 6}, {100, 80, 100, 46}, Qt::SizeVerCursor);
        row("left", 7, {10, 6}, {110, 80, 90, 40}, Qt::SizeHorCursor);
        row("beyond the left edge", 2, {-300, 10}, {100, 80, 0, 50}, Qt::SizeFDiagCursor);
        row("beyond the bottom", 0, {-4, 70}, {96, 120, 104, 0}, Qt::SizeFDiagCursor);
    }

    void resizes()
    {
        QFETCH(int, corner);
        QFETCH(QPoint, by);
        QFETCH(QRect, place);
        Editor editor;
        editor.select({33, 32});
        QGraphicsSceneHoverEvent hover(QEvent::GraphicsSceneHoverEnter);
        CornerGrabber *held = grabber(editor.host(32), corner);
        editor.scene->sendEvent(held, &hover);
        QTEST(held->cursor().shape(), "cursor");
        QCOMPARE(held->color(), QColor(Qt::red));
        editor.pull(32, corner, by);
        QCOMPARE(editor.place(32), place);
        QCOMPARE(editor.place(33), QRect(300, 80, 100, 40)); // selected, but not pulled
        QCOMPARE(editor.stack.text(0), QStringLiteral("Изменение координат виджета A"));
        QCOMPARE(editor.stack.count(), 1);
        QCOMPARE(held->mouseState(), CornerGrabber::Idle);
        editor.stack.undo();
        QCOMPARE(editor.host(32)->geometry(), QRectF(100, 80, 100, 40));
        QCOMPARE(editor.centre(32, 2), QPointF(200, 120)); // they follow the undo
        editor.stack.redo();
        QCOMPARE(editor.place(32), place);
    }

    // B lies above the right grabbers of A.
    void coveredOnesAreTaken()
    {
        Editor editor;
        editor.stack.push(new Utils::ChangePropertyCommand(
            Nodes::NodeLink(33ul), Nodes::BasicWidget::Prop::X, boost::any(190)));
        editor.select({32});
        const QPointF at = editor.centre(32, Widgets::RightMiddle);
        sendMouse(*editor.view.viewport(), QEvent::MouseMove, editor.view.mapFromScene(at),
                  Qt::NoButton);
        QCOMPARE(grabber(editor.host(32), Widgets::RightMiddle)->color(), QColor(Qt::red));
        QCOMPARE(editor.view.viewport()->cursor().shape(), Qt::SizeHorCursor);
        editor.view.setBackgroundBrush(Qt::yellow);
        const QImage picture = editor.view.viewport()->grab().toImage();
        QCOMPARE(picture.pixelColor(editor.view.mapFromScene(at)), QColor(Qt::white));
        editor.drag(at, at + QPointF(20, 0));
        QCOMPARE(editor.place(32), QRect(100, 80, 120, 40));
        QCOMPARE(editor.place(33).x(), 190);
        QCOMPARE(editor.selected(), QString("32"));
        editor.press(editor.centre(32, Widgets::RightMiddle));
        editor.move(at);
        editor.key(Qt::Key_Escape);
        editor.move(at - QPointF(9, 0));
        editor.release(at);
        QCOMPARE(editor.host(32)->geometry(), QRectF(100, 80, 120, 40));
    }

    void altSuspendsSnappingFromThePressOn()
    {
        Editor editor;
        editor.select({32});
        const QPointF from = editor.centre(32, 0) + QPointF(1, 1); // on the element itself
        editor.drag(from, from + QPointF(13, 7), Qt::AltModifier);
        QCOMPARE(editor.place(32), QRect(113, 87, 87, 33));
    }

    void sitOnTheOutline()
    {
        const Editor editor;
        editor.select({32});
        const QPointF expected[] = {{96, 76},  {197, 76}, {197, 117}, {96, 117},
                                    {147, 76}, {197, 97}, {147, 117}, {96, 97}};
        for (int corner = 0; corner < Widgets::CornerCount; ++corner)
            QCOMPARE(grabber(editor.host(32), corner)->scenePos(), expected[corner]);
        editor.select({33});
        QCOMPARE(grabbers(editor.host(32)), 0);
    }

    void pressAloneChangesNothing()
    {
        Editor editor;
        editor.select({32});
        editor.press(editor.centre(32, 2));
        QCOMPARE(grabber(editor.host(32), 2)->mouseState(), CornerGrabber::Pressed);
        editor.release(editor.centre(32, 2));
        QCOMPARE(editor.stack.count(), 0);
    }

    void escapeTakesItBack()
    {
        Editor editor;
        editor.select({32});
        const QPointF from = editor.centre(32, 1);
        editor.press(from);
        editor.move(from + QPointF(20, 20));
        QCOMPARE(editor.host(32)->size(), QSizeF(120, 20));
        editor.key(Qt::Key_Escape);
        editor.move(from + QPointF(40, 40)); // the button is still down
        editor.release(from + QPointF(40, 40));
        QCOMPARE(editor.host(32)->geometry(), QRectF(100, 80, 100, 40));
        QCOMPARE(editor.stack.count(), 0);
        QCOMPARE(editor.selected(), QString("32"));
    }

    void whatIsNotMovableIsResized()
    {
        Editor editor;
        editor.select({34});
        editor.pull(34, 0, {10, 5});
        QCOMPARE(editor.place(34), QRect(110, 305, 90, 35));
        editor.drag({150, 320}, {170, 320});
        QCOMPARE(editor.place(34).topLeft(), QPoint(110, 305));
        QCOMPARE(editor.stack.count(), 1);
    }

    void paintsItsOutlineAlone()
    {
        const Editor editor;
        editor.select({32});
        QImage picture(10, 10, QImage::Format_ARGB32);
        picture.fill(Qt::yellow);
        QPainter painter(&picture);
        painter.translate(2, 2);
        grabber(editor.host(32), 0)->paint(&painter, nullptr);
        painter.end();
        QCOMPARE(picture.pixelColor(5, 5), QColor(Qt::yellow));
        QCOMPARE(picture.pixelColor(2, 5), QColor(Qt::black));
        QCOMPARE(picture.pixelColor(8, 8), QColor(Qt::black));
        QCOMPARE(picture.pixelColor(0, 5), QColor(Qt::yellow));
    }

    void collapsesAndOpensAgain()
    {
        Editor editor;
        editor.select({33, 32});
        const QPointF from = editor.centre(32, 6);
        editor.press(from);
        editor.move(from - QPointF(0, 60));
        QCOMPARE(editor.host(32)->size(), QSizeF(100, 0));
        editor.move(from + QPointF(0, 5));
        editor.release(from + QPointF(0, 5));
        QCOMPARE(editor.place(32), QRect(100, 80, 100, 45));
        QCOMPARE(editor.selected(), QString("33 32"));
    }

    void zoomGivesWholePixels()
    {
        Editor editor;
        editor.view.scale(3, 3);
        editor.select({32});
        editor.view.centerOn(150, 100);
        editor.pull(32, 2, {10.4, 5.7});
        const QRectF shown = editor.host(32)->geometry();
        QCOMPARE(shown, QRectF(shown.toRect()));
        QCOMPARE(QRectF(editor.place(32)), shown);
        QVERIFY(qAbs(shown.width() - 110) <= 1 && qAbs(shown.height() - 46) <= 1);
    }

    void keepTheirSizeAtAnyZoom_data()
    {
        const Rows<double, QRectF, QRectF, QRectF> row("zoom", "first", "third", "lock");
        row("small", 0.25, {87, 67, 24, 24}, {188, 108, 24, 24}, {180, 73, 14, 14});
        row("large", 8, {99.5, 79.5, 0.75, 0.75}, {199.625, 119.625, 0.75, 0.75},
            {197.5, 79.125, 1.75, 1.75});
    }

    void keepTheirSizeAtAnyZoom()
    {
        QFETCH(double, zoom);
        QFETCH(QRectF, third);
        Editor editor;
        editor.select({32});
        editor.view.scale(zoom, zoom);
        editor.view.centerOn(200, 120);
        QTRY_COMPARE(grabber(editor.host(32), 2)->sceneBoundingRect(), third);
        QTEST(grabber(editor.host(32), 0)->sceneBoundingRect(), "first");
        const Widgets::Locker *lock = editor.host(32)->locker();
        QTEST(lock->mapRectToScene(0, 0, lock->width(), lock->height()), "lock");
        editor.drag(third.center(), third.center() + QPointF(40, 20));
        QCOMPARE(editor.place(32), QRect(100, 80, 140, 60));
        editor.view.resetTransform();
        QTRY_COMPARE(grabber(editor.host(32), 2)->sceneBoundingRect().size(), QSizeF(6, 6));
    }

    // The point is below the grabber of its upper edge, which reaches into it.
    void whatIsShownSmallIsMovedByItsInside_data()
    {
        const Rows<double, QPoint, QRect> row("zoom", "from", "place");
        row("small", 0.25, {150, 88}, {140, 100, 100, 40});
        row("small, outside", 0.25, {150, 72}, {100, 100, 100, 20});
        row("large enough", 1, {150, 81}, {100, 100, 100, 20});
    }

    void whatIsShownSmallIsMovedByItsInside()
    {
        QFETCH(double, zoom);
        QFETCH(QPoint, from);
        Editor editor;
        editor.view.scale(zoom, zoom);
        editor.view.centerOn(200, 120);
        editor.select({32});
        editor.drag(from, from + QPoint(40, 20));
        QTEST(editor.place(32), "place");
    }

    void theFrameOfTheKeyElementLeavesItsLockOut_data()
    {
        const Rows<double> row("zoom");
        row("plain", 1);
        row("large", 4);
    }

    // An open one would look closed.
    void theFrameOfTheKeyElementLeavesItsLockOut()
    {
        QFETCH(double, zoom);
        const auto coloured = [](const QImage &image, const QRect &area) {
            int found = 0;
            for (int y = area.top(); y <= area.bottom(); ++y) {
                for (int x = area.left(); x <= area.right(); ++x)
                    found += image.pixelColor(x, y) == QColor(0, 95, 184) ? 1 : 0;
            }
            return found;
        };
        Editor editor;
        editor.view.scale(zoom, zoom);
        editor.view.centerOn(350, 100);
        editor.select({32, 33});
        const Widgets::Locker *lock = editor.host(33)->locker();
        QVERIFY(lock && lock->isVisible());
        const QImage shown = editor.view.viewport()->grab().toImage();
        const QRect at = editor.view.mapFromScene(lock->sceneBoundingRect()).boundingRect();
        const QRect frame = editor.view.mapFromScene(editor.host(33)->geometry()).boundingRect();
        QVERIFY(coloured(shown, frame.adjusted(-3, -3, 3, 3)) > 200);
        QCOMPARE(coloured(shown, at), 0);
    }

    void ofVeryManyOnlyTheKeyElementHasThem()
    {
        Editor editor;
        Nodes::ConfigNode *layer = editor.project.node(31);
        Nodes::NodesCollection *project = editor.project.core.GetNodesCollection();
        for (int i = editor.hosts().size(); i <= Widgets::SceneEditor::GrabbersAtMost; ++i)
            QVERIFY(project->CreateNode(Nodes::NodeType("label"), layer));
        editor.editor().selection().selectAll();
        editor.editor().settleSelection();
        const ProxyWidget *key = editor.editor().selection().key();
        for (const ProxyWidget *host : editor.hosts())
            QCOMPARE(grabbers(host), host == key ? 8 : 0);
        QVERIFY(border(editor.host(32))->isCovered() && !border(key)->isCovered());
        editor.host(32)->setSelected(false);
        editor.editor().settleSelection();
        QVERIFY(!border(editor.host(32))->isCovered());
        QCOMPARE(grabbers(editor.host(33)), 8);
    }
};

QTEST_MAIN(GrabbersTest)
#include "tst_grabbers.moc"
