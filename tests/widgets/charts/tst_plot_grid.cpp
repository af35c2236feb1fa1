#include "support/Rows.h"
#include "widgets/charts/painting/PlotGrid.h"

#include <qwt_null_paintdevice.h>
#include <qwt_scale_map.h>

#include <QPainter>
#include <QtTest>

Q_DECLARE_METATYPE(QTransform)

namespace {

constexpr QSize size(200, 120);

/// As a window paints a part of it: clipped to what has changed.
QImage picture(QwtPlotGrid &grid, const QTransform &transform, bool isSmooth, double ratio)
{
    QImage image(size * ratio, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setClipRegion(QRegion(10, 10, 60, 90) + QRegion(40, 30, 140, 40));
    painter.setTransform(transform, true);
    painter.setRenderHint(QPainter::Antialiasing, isSmooth);
    QwtScaleMap x;
    x.setPaintInterval(0, 150);
    x.setScaleInterval(0, 10);
    QwtScaleMap y;
    y.setPaintInterval(90, 0);
    y.setScaleInterval(0, 10);
    grid.draw(&painter, x, y, QRectF(5, 3, 140, 80));
    return image;
}

/// Counts what it is told to paint.
class Counter : public QwtNullPaintDevice
{
public:
    Counter() { setMode(NormalMode); }
    void drawRects(const QRect *, int count) override { filled += count; }
    void drawRects(const QRectF *, int count) override { filled += count; }
    void drawLines(const QLine *, int count) override { stroked += count; }
    void drawLines(const QLineF *, int count) override { stroked += count; }
    int filled = 0;
    int stroked = 0;

protected:
    QSize sizeMetrics() const override { return size; }
};

} // namespace

class TestPlotGrid : public QObject
{
    Q_OBJECT

private slots:
    void pictureIsThatOfTheStockGrid_data()
    {
        const QTransform none;
        const QPen thin(QColor(90, 120, 200), 1);
        const QPen veil(QColor(10, 20, 30, 100), 0);
        const Rows<QPen, QPen, QTransform, bool, double> row("major", "minor", "transform",
                                                             "isSmooth", "ratio");
        row("thin lines", thin, veil, none, false, 1.0);
        row("moved", veil, thin, QTransform::fromTranslate(7, 11), false, 1.0);
        row("no minor lines", thin, QPen(Qt::NoPen), none, false, 1.0);
        row("wide", QPen(Qt::red, 3), thin, none, false, 1.0);
        row("dashes", thin, QPen(Qt::red, 1, Qt::DotLine), none, false, 1.0);
        row("smooth", thin, veil, none, true, 1.0);
        row("scaled", thin, veil, QTransform::fromScale(1.5, 1.5), false, 1.0);
        row("dense screen", thin, veil, none, false, 1.5);
    }

    void pictureIsThatOfTheStockGrid()
    {
        QFETCH(QPen, major);
        QFETCH(QPen, minor);
        QFETCH(QTransform, transform);
        QFETCH(bool, isSmooth);
        QFETCH(double, ratio);
        QwtPlotGrid stock;
        Widgets::PlotGrid ours;
        // Values beside the area, on its edges, and between pixels.
        const QwtScaleDiv div(0, 10, {0.27, 4.44, 9.9}, {1.01, 2.5},
                              {0, 1 / 3.0, 3, 7.77, 9.6, 10});
        for (QwtPlotGrid *grid : {&stock, static_cast<QwtPlotGrid *>(&ours)}) {
            grid->setXDiv(div);
            grid->setYDiv(div);
            grid->enableXMin(true);
            grid->enableYMin(true);
            grid->setMajorPen(major);
            grid->setMinorPen(minor);
        }
        const QImage expected = picture(stock, transform, isSmooth, ratio);
        QVERIFY(picture(ours, transform, isSmooth, ratio) == expected);
        ours.enableX(false); // and what is switched off stays away
        QVERIFY(picture(ours, transform, isSmooth, ratio) != expected);
    }

    // Whatever the pen of minor lines that are switched off, as a new chart has them.
    void thinLinesAreFilled()
    {
        Widgets::PlotGrid grid;
        grid.setXDiv(QwtScaleDiv(0, 10, {1.0}, {}, {2.0, 4.0}));
        grid.setMajorPen(QPen(Qt::gray, 1));
        grid.setMinorPen(QPen(Qt::gray, 1, Qt::DotLine));
        QwtScaleMap map;
        map.setPaintInterval(0, 150);
        map.setScaleInterval(0, 10);
        Counter counter;
        QPainter painter(&counter);
        grid.draw(&painter, map, map, QRectF(0, 0, 150, 90));
        QCOMPARE(counter.filled, 2);
        QCOMPARE(counter.stroked, 0);
    }
};

QTEST_MAIN(TestPlotGrid)
#include "tst_plot_grid.moc"
