#include "support/Rows.h"

#include "widgets/scene/editing/guides/Snapping.h"

#include <QRandomGenerator>

using Widgets::SnapOptions;
using Widgets::Snapping;
using Rects = QVector<QRectF>;

namespace {

constexpr Qt::Edges allEdges = Qt::LeftEdge | Qt::TopEdge | Qt::RightEdge | Qt::BottomEdge;

// Two in a row with 40 between them, one alone far below.
const Rects standing{{100, 100, 50, 30}, {190, 100, 50, 30}, {400, 503, 61, 40}};

SnapOptions withoutGrid()
{
    SnapOptions options;
    options.toGrid = false;
    return options;
}

} // namespace

class SnappingTest : public QObject
{
    Q_OBJECT

private slots:
    void moves_data()
    {
        const Rows<QRectF, QPointF, int, int> row("moved", "shift", "guides", "gaps");
        row("left edge", {103, 300, 70, 20}, {-3, 0}, 1, 0);
        row("right edge to left", {25, 300, 70, 20}, {5, 0}, 1, 0);
        row("centre to centre", {86, 300, 70, 20}, {4, 0}, 1, 0);
        row("both axes", {397, 461, 70, 40}, {-1, 2}, 2, 0);        // centres across, bottom to top
        row("edges say enough", {103, 303, 50, 20}, {-3, 0}, 2, 0); // of its size: centres too
        row("too far", {107, 300, 70, 20}, {0, 0}, 0, 0);
        row("nearest of several", {398, 700, 58, 20}, {2, 0}, 1, 0);
        row("after two", {278, 140, 33, 9}, {0, 0}, 0, 0); // not in their row
        row("equal gap after two", {278, 110, 33, 9}, {2, 1}, 1, 2);
        row("equal gap before two", {35, 107, 20, 11}, {5, 3}, 1, 2);
        row("in the middle between two", {157, 123, 20, 40}, {3, 0}, 0, 2);
    }

    void moves()
    {
        QFETCH(QRectF, moved);
        const Widgets::SnapResult result = Snapping(standing).snap(moved, allEdges, withoutGrid());
        QTEST(result.shift, "shift");
        QTEST(int(result.guides.size()), "guides");
        QTEST(int(result.gaps.size()), "gaps");
    }

    void guidesReachFromOneToTheOther()
    {
        const auto result = Snapping(standing).snap({103, 300, 70, 20}, allEdges, withoutGrid());
        QCOMPARE(result.guides, QVector<QLineF>{QLineF(100, 100, 100, 320)});
        const auto between = Snapping(standing).snap({160, 123, 20, 40}, allEdges, withoutGrid());
        QCOMPARE(between.gaps,
                 (QVector<QLineF>{{150, 126.5, 160, 126.5}, {180, 126.5, 190, 126.5}}));
    }

    void resizes_data()
    {
        const Rows<QRectF, int, QPointF> row("moved", "edges", "shift");
        row("right edge", {300, 300, 97, 20}, Qt::RightEdge, {3, 0});
        row("corner", {300, 300, 97, 200}, Qt::RightEdge | Qt::BottomEdge, {3, 3});
        row("left edge stays", {103, 300, 70, 20}, Qt::RightEdge, {0, 0});
        row("no centres of its own", {86, 300, 82, 20}, Qt::RightEdge, {0, 0});
        row("no equal gaps", {278, 110, 33, 9}, Qt::LeftEdge, {0, 0});
    }

    void resizes()
    {
        QFETCH(QRectF, moved);
        QFETCH(int, edges);
        QTEST(Snapping(standing).snap(moved, Qt::Edges(edges), withoutGrid()).shift, "shift");
    }

    void grid_data()
    {
        const Rows<QRectF, int, int, QPointF> row("moved", "edges", "step", "shift");
        row("upper left corner", {13, 20, 7, 7}, allEdges, 8, {3, 4});
        row("below zero", {-13, -3, 7, 7}, allEdges, 8, {-3, 3});
        row("step of one", {13.4, 20.6, 7, 7}, allEdges, 1, {-0.4, 0.4});
        row("widest step", {33, 31, 7, 7}, allEdges, 64, {31, -31});
        row("edge that moves", {13, 20, 6, 7}, Qt::RightEdge, 8, {-3, 0});
        row("element before grid", {98, 303, 70, 20}, allEdges, 64, {2, 17});
    }

    void grid()
    {
        QFETCH(QRectF, moved);
        QFETCH(int, edges);
        SnapOptions options;
        QFETCH(int, step);
        options.gridStep = step;
        const QPointF shift = Snapping(standing).snap(moved, Qt::Edges(edges), options).shift;
        QTEST(shift, "shift");
    }

    void onlyWhatIsVisibleDraws()
    {
        SnapOptions options = withoutGrid();
        options.visible = {0, 200, 300, 200};
        const Widgets::SnapResult result =
            Snapping(standing).snap({103, 300, 70, 20}, allEdges, options);
        QCOMPARE(result.shift, QPointF());
        QVERIFY(result.guides.isEmpty());
        options.visible = {0, 90, 300, 200};
        QCOMPARE(Snapping(standing).snap({103, 300, 70, 20}, allEdges, options).shift,
                 QPointF(-3, 0));
    }

    void distanceCounts()
    {
        SnapOptions options = withoutGrid();
        options.distance = 2; // as when zoomed in
        QCOMPARE(Snapping(standing).snap({103, 300, 70, 20}, allEdges, options).shift, QPointF());
        options.toElements = false;
        options.distance = 6;
        QCOMPARE(Snapping(standing).snap({103, 300, 70, 20}, allEdges, options).shift, QPointF());
    }

    // The index finds the edge that a look at all of them finds.
    void findsTheNearest()
    {
        QRandomGenerator random(7);
        Rects rects;
        for (int i = 0; i < 300; ++i)
            rects.append(QRectF(random.bounded(4000), random.bounded(4000), random.bounded(90),
                                random.bounded(90)));
        const Widgets::EdgeIndex index(rects, Qt::Horizontal);
        for (int at = 0; at < 4000; at += 13) {
            double best = 6.5;
            for (const QRectF &rect : qAsConst(rects)) {
                for (const double edge : {rect.left(), rect.center().x(), rect.right()})
                    best = std::min(best, std::abs(edge - at));
            }
            const auto found = index.nearest(at, 6, [](const QRectF &) { return true; });
            QCOMPARE(found.has_value(), best <= 6);
            if (found)
                QCOMPARE(std::abs(*found - at), best);
        }
    }
};

QTEST_APPLESS_MAIN(SnappingTest)
#include "tst_snapping.moc"
