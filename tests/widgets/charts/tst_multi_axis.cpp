// Several axes per side: where they stand, whose data they follow, and gestures on one alone.
#include "widgets/charts/multiaxis/AxisGestures.h"
#include "widgets/charts/multiaxis/MultiAxisItem.h"
#include "widgets/charts/multiaxis/MultiAxisPlot.h"
#include "widgets/charts/multiaxis/MultiAxisRenderer.h"
#include "widgets/charts/painting/PlotCurve.h"

#include <qwt_plot_directpainter.h>
#include <qwt_plot_grid.h>
#include <qwt_plot_marker.h>
#include <qwt_plot_picker.h>
#include <qwt_scale_engine.h>
#include <qwt_scale_map.h>
#include <qwt_scale_widget.h>

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QWheelEvent>

using Widgets::AxisGestures;
using Widgets::MultiAxisItem;
using Widgets::MultiAxisPlot;
using Widgets::PlotCurve;

namespace {

const QwtAxisId left0(QwtAxis::yLeft, 0);
const QwtAxisId left1(QwtAxis::yLeft, 1);
const QwtAxisId left2(QwtAxis::yLeft, 2);
const QwtAxisId right1(QwtAxis::yRight, 1);
const QwtAxisId bottom1(QwtAxis::xBottom, 1);

struct Plot : MultiAxisPlot
{
    Plot()
    {
        resize(640, 400);
        setAxesCount(QwtAxis::yLeft, 3);
        setAxesCount(QwtAxis::yRight, 2);
        setAxesCount(QwtAxis::xBottom, 2);
        for (const QwtAxisId axis : {left1, left2, right1, bottom1})
            setAxisVisible(axis);
        setAxisVisible(QwtAxis::yRight);
        setAxisTitle(left2, QStringLiteral("Давление, МПа"));
        show();
    }
    PlotCurve *curve(QwtAxisId axis, double low, double high)
    {
        auto *added = new PlotCurve;
        added->setYAxis(axis);
        added->points()->append({0, low});
        added->points()->append({10, high});
        added->attach(this);
        return added;
    }
    QRect scale(QwtAxisId axis) const { return axisWidget(axis)->geometry(); }
};

/// Where the backbone of a scale begins and ends, in the plot.
QPair<int, int> backbone(const Plot &plot, QwtAxisId axis)
{
    const QwtScaleWidget *scale = plot.axisWidget(axis);
    const QwtScaleDraw *draw = scale->scaleDraw();
    const QPoint at = scale->mapTo(const_cast<Plot *>(&plot), draw->pos().toPoint());
    const int from = axis.isYAxis() ? at.y() : at.x();
    return {from, from + qRound(draw->length())};
}

void turnWheel(QWidget *widget, const QPoint &at, int notches)
{
    QWheelEvent event(at, widget->mapToGlobal(at), {}, {0, 120 * notches}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(widget, &event);
}

} // namespace

class tst_multi_axis : public QObject
{
    Q_OBJECT

private slots:
    void scalesStandOutwards();
    void hiddenAndRemovedAxes();
    void axisThatDoesNotExist();
    void eachAxisScalesForItself();
    void itemsFindTheirScale();
    void renderedWithAllScales();
    void draggingMovesOneAxis();
    void wheelZoomsAroundTheCursor();
    void doubleClickScalesAgain();
};

void tst_multi_axis::scalesStandOutwards()
{
    Plot plot;
    plot.replot();
    const QRect canvas = plot.canvas()->geometry();
    QVERIFY(canvas.width() > 200 && canvas.height() > 200);
    QVERIFY(plot.scale(left0).right() <= canvas.left());
    QVERIFY(plot.scale(left1).right() < plot.scale(left0).left() + 1);
    QVERIFY(plot.scale(left2).right() < plot.scale(left1).left() + 1);
    QVERIFY(plot.scale(left2).left() >= 0);
    QVERIFY(plot.scale(right1).left() > plot.scale(QwtAxis::yRight).right() - 1);
    QVERIFY(plot.scale(right1).right() <= plot.rect().right());
    QVERIFY(plot.scale(bottom1).top() > plot.scale(QwtAxis::xBottom).bottom() - 1);
    QVERIFY(plot.scale(bottom1).bottom() <= plot.rect().bottom());
    // A wide title does not stand in its labels, and every scale of a side spans the same pixels.
    QVERIFY(plot.scale(left2).width() > plot.scale(left1).width() + 10);
    for (const QwtAxisId axis : {left1, left2, QwtAxisId(QwtAxis::yRight), right1}) {
        QVERIFY(qAbs(backbone(plot, axis).first - backbone(plot, left0).first) <= 1);
        QVERIFY(qAbs(backbone(plot, axis).second - backbone(plot, left0).second) <= 1);
    }
    QVERIFY(qAbs(backbone(plot, bottom1).first - backbone(plot, QwtAxis::xBottom).first) <= 1);
}

void tst_multi_axis::hiddenAndRemovedAxes()
{
    Plot plot;
    plot.replot();
    // Alone on its side, a scale has room for its labels too.
    plot.setAxisVisible(left0, false);
    plot.setAxisVisible(QwtAxis::yRight, false);
    plot.setAxisFont(left1, QFont(plot.font().family(), 30));
    plot.replot();
    plot.replot();
    QVERIFY(plot.rect().contains(plot.scale(left1)));
    QVERIFY(plot.axisWidget(left1)->startBorderDist() > 15);
    plot.setAxisFont(left1, plot.axisFont(left0));
    plot.setAxisVisible(left0);
    plot.setAxisVisible(QwtAxis::yRight);
    plot.replot();
    const int narrow = plot.canvas()->width();
    const int inner = plot.scale(left1).width();
    QCOMPARE(plot.axesCount(QwtAxis::yLeft), 3);
    plot.setAxisVisible(left1, false);
    QVERIFY(qAbs(plot.canvas()->width() - (narrow + inner)) <= 1);
    QVERIFY(plot.axisWidget(left1)->isHidden());
    QCOMPARE(plot.axesCount(QwtAxis::yLeft, true), 2);
    PlotCurve *curve = plot.curve(left2, 100, 200);
    plot.setAxesCount(QwtAxis::yLeft, 1);
    QCOMPARE(plot.axesCount(QwtAxis::yLeft), 1);
    plot.replot(); // the curve stands on the first axis now
    QVERIFY(plot.canvas()->width() > narrow + inner);
    QCOMPARE(curve->yAxis(), left2);
    plot.setAxesCount(QwtAxis::yLeft, 3);
    QVERIFY(!plot.isAxisVisible(left2));
}

void tst_multi_axis::axisThatDoesNotExist()
{
    Plot plot;
    for (const QwtAxisId axis : {QwtAxisId(), QwtAxisId(QwtAxis::yLeft, 7), QwtAxisId(9, 0),
                                 QwtAxisId(QwtAxis::xTop, -1)}) {
        QVERIFY(!plot.isAxisValid(axis));
        QVERIFY(!plot.isAxisVisible(axis));
        QVERIFY(!plot.axisWidget(axis));
        QVERIFY(!plot.axisScaleDraw(axis));
        QVERIFY(!plot.axisInterval(axis).isValid());
        QCOMPARE(plot.transform(axis, 5), 0.0);
        plot.setAxisScale(axis, 0, 1);
        plot.setAxisScaleDraw(axis, new QwtScaleDraw);
        plot.setAxisScaleEngine(axis, new QwtLogScaleEngine);
        plot.setAxisVisible(axis);
    }
    QCOMPARE(Widgets::unpackedAxis(Widgets::packedAxis(left2)), left2);
    QCOMPARE(plot.axisOf(plot.axisWidget(right1)), right1);
    QCOMPARE(plot.axisOf(plot.canvas()), QwtAxisId());
}

void tst_multi_axis::eachAxisScalesForItself()
{
    Plot plot;
    plot.curve(left0, 0, 10);
    plot.curve(left1, 1000, 5000);
    PlotCurve *hidden = plot.curve(left1, 0, 1e6);
    hidden->setVisible(false);
    plot.curve(left2, 1, 10000);
    plot.setAxisScaleEngine(left2, new QwtLogScaleEngine);
    plot.setAxisScale(right1, -1, 1);
    plot.replot();
    QCOMPARE(plot.axisInterval(left0), QwtInterval(0, 10));
    QCOMPARE(plot.axisInterval(left1), QwtInterval(1000, 5000));
    QCOMPARE(plot.axisInterval(left2), QwtInterval(1, 10000));
    QCOMPARE(plot.axisInterval(right1), QwtInterval(-1, 1));
    // On the logarithmic scale the factor decides: 100 is in the middle.
    const QwtScaleMap map = plot.canvasMap(left2);
    QVERIFY(qAbs(plot.transform(left2, 100) - (map.p1() + map.p2()) / 2) < 1);
    QVERIFY(qAbs(plot.invTransform(left1, plot.transform(left1, 1234)) - 1234) < 1e-6);
    plot.setAxisAutoScale(left1, false);
    plot.curve(left1, -5000, 0);
    plot.replot();
    QCOMPARE(plot.axisInterval(left1), QwtInterval(1000, 5000));
    plot.setAxisAutoScale(left1, true);
    plot.replot();
    QVERIFY(plot.axisInterval(left1).minValue() <= -5000);
}

void tst_multi_axis::itemsFindTheirScale()
{
    Plot plot;
    plot.setAxisScale(left0, 0, 10);
    plot.setAxisScale(left2, 100, 200);
    auto *grid = new MultiAxisItem<QwtPlotGrid>;
    grid->setYAxis(left2);
    grid->attach(&plot);
    auto *marker = new MultiAxisItem<QwtPlotMarker>;
    marker->setYAxis(left2);
    marker->setValue(5, 150);
    marker->setLineStyle(QwtPlotMarker::HLine);
    marker->setLinePen(Qt::red, 3);
    marker->attach(&plot);
    PlotCurve *curve = plot.curve(left2, 150, 150);
    curve->setPen(Qt::blue, 1);
    curve->setZ(marker->z() + 1);
    plot.replot();
    QCOMPARE(grid->yScaleDiv().interval(), QwtInterval(100, 200));

    const QImage image = plot.canvas()->grab().toImage();
    const int middle = qRound(plot.transform(left2, 150));
    const int x = qRound(plot.transform(QwtAxis::xBottom, 5)) + 3;
    QCOMPARE(image.pixelColor(x, middle - 1), QColor(Qt::red));
    QCOMPARE(image.pixelColor(x, middle), QColor(Qt::blue));

    double distance = 0;
    const QPoint end(qRound(plot.transform(QwtAxis::xBottom, 10)), middle);
    QCOMPARE(curve->closestPoint(end, &distance), 1);
    QVERIFY(distance < 2);

    // A piece that is drawn by itself, and a picker that keeps its axis as a number.
    curve->points()->append({10, 110});
    QwtPlotDirectPainter direct;
    direct.drawSeries(curve, 1, 2);
    QwtPlotPicker picker(QwtPlot::xBottom, Widgets::packedAxis(left2), plot.canvas());
    QSignalSpy picked(&picker, SIGNAL(moved(QPointF)));
    QCOMPARE(plot.canvasMap(picker.yAxis()).s2(), 200.0);
}

void tst_multi_axis::renderedWithAllScales()
{
    Plot plot;
    plot.curve(left2, 3, 7)->setPen(Qt::blue, 2);
    plot.setAxisScale(left2, 0, 10);
    plot.setAxisScale(QwtAxis::xBottom, 0, 10);
    plot.replot();
    QImage image(plot.size(), QImage::Format_RGB32);
    image.fill(Qt::white);
    Widgets::MultiAxisRenderer renderer;
    renderer.renderTo(&plot, image);
    // The outermost scale is there, in its place, and the curve against it.
    const QRect outer = plot.scale(left2);
    int ink = 0;
    for (int x = outer.left(); x <= outer.right(); ++x) {
        for (int y = outer.top(); y <= outer.bottom(); ++y)
            ink += image.pixelColor(x, y).lightness() < 100;
    }
    QVERIFY(ink > 200);
    const QPoint origin = plot.canvas()->pos();
    const QPoint at(origin.x() + qRound(plot.transform(QwtAxis::xBottom, 5)),
                    origin.y() + qRound(plot.transform(left2, 5)));
    int blue = 0;
    for (int dy = -4; dy <= 4; ++dy)
        blue += image.pixelColor(at + QPoint(0, dy)) == QColor(Qt::blue);
    QVERIFY(blue > 0);
    const QTemporaryDir directory;
    for (const char *name : {"trend.pdf", "trend.png", "trend.svg"}) {
        renderer.renderDocument(&plot, directory.filePath(name), QSizeF(200, 120), 100);
        QVERIFY(QFileInfo(directory.filePath(name)).size() > 1000);
    }
}

void tst_multi_axis::draggingMovesOneAxis()
{
    Plot plot;
    AxisGestures gestures(&plot);
    plot.setAxesCount(QwtAxis::yLeft, 4); // one more, after the gestures were made
    const QwtAxisId left3(QwtAxis::yLeft, 3);
    plot.setAxisVisible(left3);
    plot.curve(left1, 0, 100);
    plot.curve(left0, 0, 100);
    plot.replot();
    QCoreApplication::sendPostedEvents();
    QSignalSpy taken(&gestures, &AxisGestures::axisTaken);
    QSignalSpy moved(&gestures, &AxisGestures::axisMoved);
    const auto drag = [&](QwtAxisId axis, int by) {
        QWidget *scale = plot.axisWidget(axis);
        const QPoint from = scale->rect().center();
        QTest::mousePress(scale, Qt::LeftButton, {}, from);
        for (const int part : {by / 2, by}) {
            QMouseEvent event(QEvent::MouseMove, from + QPoint(0, part), Qt::NoButton,
                              Qt::LeftButton, {});
            QApplication::sendEvent(scale, &event);
        }
        QTest::mouseRelease(scale, Qt::LeftButton, {}, from + QPoint(0, by));
    };
    drag(left1, 2); // a click of a trembling hand
    QVERIFY(plot.axisAutoScale(left1));
    QCOMPARE(taken.count(), 0);

    const QwtScaleMap map = plot.canvasMap(left1);
    const double unit = 100 / map.pDist();
    drag(left1, 60);
    QCOMPARE(taken.count(), 1);
    QCOMPARE(taken.at(0).at(0).value<QwtAxisId>(), left1);
    QVERIFY(!plot.axisAutoScale(left1));
    QVERIFY(qAbs(plot.axisInterval(left1).minValue() - 60 * unit) < 0.01);
    QVERIFY(qAbs(plot.axisInterval(left1).width() - 100) < 0.01);
    QCOMPARE(moved.last().at(1).toDouble(), plot.axisInterval(left1).minValue());
    QCOMPARE(plot.axisInterval(left0), QwtInterval(0, 100));
    QVERIFY(plot.axisAutoScale(left0));
    drag(left3, 60);
    QCOMPARE(taken.count(), 2);

    gestures.setEnabled(QwtAxis::yLeft, false);
    drag(left0, 60);
    QCOMPARE(plot.axisInterval(left0), QwtInterval(0, 100));
}

void tst_multi_axis::wheelZoomsAroundTheCursor()
{
    Plot plot;
    AxisGestures gestures(&plot);
    plot.setAxisScale(left1, 0, 100);
    plot.setAxisScaleEngine(left2, new QwtLogScaleEngine);
    plot.setAxisScale(left2, 1, 10000);
    plot.replot();
    for (const QwtAxisId axis : {left1, left2}) {
        QWidget *scale = plot.axisWidget(axis);
        const QPoint at(5, scale->height() / 3);
        const double pixel = scale->y() + at.y() - plot.canvas()->y();
        const double under = plot.invTransform(axis, pixel);
        const QwtInterval before = plot.axisInterval(axis);
        turnWheel(scale, at, 2);
        QVERIFY(plot.axisInterval(axis).width() < before.width() * 0.9);
        QVERIFY(qAbs(plot.transform(axis, under) - pixel) < 1);
        turnWheel(scale, at, -2);
        QVERIFY(qAbs(plot.axisInterval(axis).width() / before.width() - 1) < 1e-3);
    }
    for (int i = 0; i < 300; ++i)
        turnWheel(plot.axisWidget(left1), {5, 50}, 5);
    QVERIFY(plot.axisInterval(left1).width() > 0);
}

void tst_multi_axis::doubleClickScalesAgain()
{
    Plot plot;
    AxisGestures gestures(&plot);
    plot.curve(left1, 0, 100);
    plot.replot();
    turnWheel(plot.axisWidget(left1), {5, 50}, 3);
    QVERIFY(plot.axisInterval(left1).width() < 60);
    QSignalSpy released(&gestures, &AxisGestures::axisReleased);
    QTest::mouseDClick(plot.axisWidget(left1), Qt::LeftButton);
    QCOMPARE(released.count(), 1);
    QVERIFY(plot.axisAutoScale(left1));
    QCOMPARE(plot.axisInterval(left1), QwtInterval(0, 100));
}

QTEST_MAIN(tst_multi_axis)
#include "tst_multi_axis.moc"
