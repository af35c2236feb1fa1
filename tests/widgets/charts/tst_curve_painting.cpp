// Pictures of curves against each pair of points drawn by itself, and what the points cost.
#include "widgets/charts/painting/IntervalSeriesData.h"
#include "widgets/charts/painting/PlotCurve.h"

#include <qwt_painter.h>
#include <qwt_scale_map.h>

#include <QDir>
#include <QPainter>
#include <QTest>

#include <cmath>
#include <limits>
#include <random>

using Nodes::Quality;
using Widgets::CurveData;
using Widgets::PlotCurve;

namespace {

constexpr QSize size(400, 200);
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double start = 1.7e12; // milliseconds, as a chart has them

struct View
{
    QwtScaleMap x;
    QwtScaleMap y;
    View(double from, double to)
    {
        x.setPaintInterval(0, size.width());
        x.setScaleInterval(from, to);
        y.setPaintInterval(size.height(), 0);
        y.setScaleInterval(-1.2, 1.2);
    }
};

/// Stock drawing of one piece is what the product promises for every pair.
class PairCurve : public QwtPlotCurve
{
public:
    // Its clipping leaves lines along the edge.
    PairCurve() { setPaintAttribute(ClipPolygons, false); }
    void drawPair(QPainter &painter, const View &view, int i) const
    {
        painter.setPen(pen());
        QwtPlotCurve::drawCurve(&painter, style(), view.x, view.y, QRect(QPoint(), size), i - 1, i);
    }
};

QImage blank()
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    return image;
}

QImage picture(const QwtPlotCurve &curve, const View &view)
{
    QImage image = blank();
    QPainter painter(&image);
    curve.draw(&painter, view.x, view.y, QRect(QPoint(), size));
    return image;
}

QImage pairs(const PlotCurve &curve, const View &view)
{
    const CurveData &data = *curve.points();
    PairCurve stock;
    QVector<QPointF> samples(data.points(), data.points() + data.size());
    stock.setSamples(samples);
    stock.setPen(curve.pen());
    stock.setStyle(curve.style());
    stock.setOrientation(curve.orientation());
    stock.setCurveAttribute(QwtPlotCurve::Inverted,
                            curve.testCurveAttribute(QwtPlotCurve::Inverted));
    QImage image = blank();
    QPainter painter(&image);
    for (int i = 1; i < samples.size(); ++i) {
        if (data.isDrawn(std::size_t(i - 1)) && data.isDrawn(std::size_t(i)))
            stock.drawPair(painter, view, i);
    }
    return image;
}

bool isInk(const QImage &image, int x, int y)
{
    return image.rect().contains(x, y) &&
           reinterpret_cast<const QRgb *>(image.constScanLine(y))[x] != qRgb(255, 255, 255);
}

bool hasInkNear(const QImage &image, int x, int y)
{
    for (int dx = -1; dx <= 1; ++dx) {
        for (int dy = -1; dy <= 1; ++dy) {
            if (isInk(image, x + dx, y + dy))
                return true;
        }
    }
    return false;
}

// Of thousands: where Qt rounds the end of a piece to the other side.
constexpr int strayLimit = 2;

/// Pixels of one picture that the other one has nothing of within a pixel.
int strayPixels(const QImage &of, const QImage &against)
{
    int stray = 0;
    for (int x = 0; x < of.width(); ++x) {
        for (int y = 0; y < of.height(); ++y)
            stray += isInk(of, x, y) && !hasInkNear(against, x, y);
    }
    return stray;
}

int inkIn(const QImage &image, const QRect &rect)
{
    int count = 0;
    for (int x = rect.left(); x <= rect.right(); ++x) {
        for (int y = rect.top(); y <= rect.bottom(); ++y)
            count += isInk(image, x, y);
    }
    return count;
}

/// `count` points over one hour of a shape named as in the data rows.
void fill(CurveData &data, const QString &shape, int count)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> noise(-0.2, 0.2);
    for (int i = 0; i < count; ++i) {
        const double part = double(i) / count;
        double x = start + 3'600'000 * part;
        double y = 0.8 * std::sin(part * 9) + noise(random);
        Quality quality = Quality::Good;
        if (shape == "flat")
            y = part < 0.5 ? 0.25 : -0.5;
        else if (shape == "gaps" && (i / 37) % 5 == 0)
            y = notANumber;
        else if (shape == "torn" && i % 3 == 2)
            y = i % 2 ? notANumber : std::numeric_limits<double>::infinity();
        else if (shape == "bursts")
            x = start + 3'600'000 * (std::floor(part * 8) / 8 + std::fmod(part, 0.125) / 50);
        else if (shape == "equal x")
            x = start + 3'600'000 * std::floor(part * 20) / 20;
        data.append({x, y}, quality);
    }
}

} // namespace

class tst_curve_painting : public QObject
{
    Q_OBJECT

private slots:
    // Stock drawing then does not move the points to whole pixels first.
    void initTestCase() { QwtPainter::setRoundingAlignment(false); }
    void pictureIsThatOfThePairs_data();
    void pictureIsThatOfThePairs();
    void movedAndTrimmedViewsStayRight();
    void pointsThatGoBack();
    void scaledPainter();
    void scaleThatGrowsToTheLeft();
    void dashesStayWithTheData();
    void qualitiesAreToldApart();
    void nothingForLessThanAPair();
    void rectangleOfTheDrawnPoints();
    void lastAndSort();
    void intervals();
};

void tst_curve_painting::pictureIsThatOfThePairs_data()
{
    QTest::addColumn<QString>("shape");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("style");
    QTest::addColumn<bool>("level");
    for (const char *shape : {"noise", "flat", "gaps", "torn", "bursts", "equal x"}) {
        for (const int count : {2, 40, 700, 6'000}) {
            for (const int width : {1, 2, 3})
                QTest::addRow("%s, %d points, width %d", shape, count, width)
                    << shape << count << width << int(QwtPlotCurve::Lines) << false;
        }
        QTest::addRow("%s, steps", shape) << shape << 60 << 1 << int(QwtPlotCurve::Steps) << false;
        QTest::addRow("%s, level steps", shape)
            << shape << 60 << 1 << int(QwtPlotCurve::Steps) << true;
        QTest::addRow("%s, dense steps", shape)
            << shape << 9000 << 2 << int(QwtPlotCurve::Steps) << true;
        QTest::addRow("%s, sticks", shape)
            << shape << 300 << 1 << int(QwtPlotCurve::Sticks) << false;
        QTest::addRow("%s, dots", shape) << shape << 300 << 2 << int(QwtPlotCurve::Dots) << false;
    }
}

void tst_curve_painting::pictureIsThatOfThePairs()
{
    QFETCH(QString, shape);
    QFETCH(int, count);
    QFETCH(int, width);
    QFETCH(int, style);
    QFETCH(bool, level);
    PlotCurve curve;
    fill(*curve.points(), shape, count);
    curve.setPen(Qt::black, width);
    curve.setStyle(QwtPlotCurve::CurveStyle(style));
    curve.setOrientation(level ? Qt::Horizontal : Qt::Vertical);
    // The whole hour, and the middle of it between points outside.
    for (const View &view : {View(start, start + 3'600'000), View(start + 1e6, start + 1.7e6)}) {
        const QImage ours = picture(curve, view);
        const QImage expected = pairs(curve, view);
        const int stray = strayPixels(ours, expected) + strayPixels(expected, ours);
        // The corners of a wide pen: a few in a thousand.
        const int limit = strayLimit + inkIn(expected, expected.rect()) / 400;
        if (stray > limit) {
            ours.save(QDir::temp().filePath("curve-ours.png"));
            expected.save(QDir::temp().filePath("curve-pairs.png"));
        }
        QVERIFY2(stray <= limit, qPrintable(QString::number(stray)));
    }
}

void tst_curve_painting::movedAndTrimmedViewsStayRight()
{
    PlotCurve curve;
    CurveData &data = *curve.points();
    fill(data, "gaps", 20'000);
    curve.setPen(Qt::black, 1);
    double left = start;
    for (int move = 0; move < 30; ++move) {
        for (int i = 0; i < 500; ++i) {
            const double x = data.last().x() + 180;
            data.append({x, 0.5 * std::sin(x / 5e5) + (i % 2 ? 0.1 : -0.1)});
        }
        left += 90'000;
        data.trimFront(data.indexAt(left - 360'000));
        const View view(left, left + 3'600'000);
        const QImage ours = picture(curve, view);
        const QImage expected = pairs(curve, view);
        const int stray = strayPixels(ours, expected) + strayPixels(expected, ours);
        // Columns are not found anew for each part of a pixel that the view moves by: of some ten
        // thousand pixels those at the ends of pieces may be half a pixel further aside.
        QVERIFY2(stray <= 40, qPrintable(QString::number(stray)));
    }
    QVERIFY(data.size() < 25'000);
    const QRectF quick = data.boundingRect(); // from the buckets
    double low = 2;
    double high = -2;
    for (std::size_t i = 0; i < data.size(); ++i) {
        if (data.isDrawn(i)) {
            low = std::min(low, data.sample(i).y());
            high = std::max(high, data.sample(i).y());
        }
    }
    QCOMPARE(quick.top(), low);
    QCOMPARE(quick.bottom(), high);
}

void tst_curve_painting::pointsThatGoBack()
{
    PlotCurve curve;
    CurveData &data = *curve.points();
    fill(data, "noise", 5000);
    QVERIFY(data.isSorted());
    const View view(start, start + 3'600'000);
    const QImage before = picture(curve, view);
    // Archive points behind live ones.
    data.append({start + 1'000'000, 0.9});
    data.append({start + 1'000'100, -0.9});
    QVERIFY(!data.isSorted());
    QVERIFY(strayPixels(pairs(curve, view), picture(curve, view)) <= strayLimit);
    QVERIFY(strayPixels(picture(curve, view), before) > 50);
    data.sort();
    QVERIFY(data.isSorted());
    QCOMPARE(data.size(), std::size_t(5002));
    QVERIFY(strayPixels(picture(curve, view), pairs(curve, view)) <= strayLimit);
    // Trimming what went back makes the rest sorted again.
    data.append({start, 0});
    data.append({start + 1, 0});
    data.trimFront(5002);
    QVERIFY(data.isSorted());
    QCOMPARE(data.size(), std::size_t(2));
}

void tst_curve_painting::scaledPainter()
{
    // As in a scene that is shown at another scale: the pen grows, the columns stay pixels.
    PlotCurve curve;
    fill(*curve.points(), "noise", 20'000);
    curve.setPen(Qt::black, 1);
    const View view(start, start + 3'600'000);
    QImage image(size * 2, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.translate(3, 5);
    painter.scale(2, 2);
    curve.draw(&painter, view.x, view.y, QRect(QPoint(), size));
    painter.setPen(Qt::red);
    painter.drawPoint(0, 0);
    painter.end();
    QCOMPARE(image.pixel(3, 5), qRgb(255, 0, 0)); // the painter is as it was
    const QImage half =
        image.copy(QRect(QPoint(3, 5), size * 2 - QSize(3, 5)))
            .scaled(size - QSize(1, 2), Qt::IgnoreAspectRatio, Qt::FastTransformation);
    QVERIFY(strayPixels(half, picture(curve, view)) <= strayLimit);
}

void tst_curve_painting::scaleThatGrowsToTheLeft()
{
    PlotCurve curve;
    curve.setPen(Qt::black, 1);
    for (const int count : {40, 6'000}) {
        fill(*curve.points(), "gaps", count);
        const View view(start + 3'600'000, start);
        QVERIFY(strayPixels(picture(curve, view), pairs(curve, view)) <= strayLimit);
        QVERIFY(strayPixels(pairs(curve, view), picture(curve, view)) <= strayLimit);
        curve.points()->clear();
    }
}

void tst_curve_painting::dashesStayWithTheData()
{
    PlotCurve curve;
    fill(*curve.points(), "flat", 20'000);
    curve.setPen(QPen(Qt::black, 2, Qt::DashLine));
    const double pixel = 3'600'000.0 / size.width();
    const QImage there = picture(curve, View(start, start + 3'600'000));
    const QImage moved = picture(curve, View(start + 7 * pixel, start + 3'600'000 + 7 * pixel));
    QCOMPARE(moved.copy(0, 0, 150, size.height()), there.copy(7, 0, 150, size.height()));
    // Dashes and gaps as the pen has them: four widths on, two off.
    const int ink = inkIn(there, QRect(0, 0, 180, size.height()));
    QVERIFY2(ink > 180 && ink < 300, qPrintable(QString::number(ink)));
    // What a gap would hide is shown: the step from one level to the other.
    const View step(start + 1'790'000, start + 1'810'000);
    QVERIFY(inkIn(picture(curve, step), QRect(150, 85, 100, 40)) > 30);
}

void tst_curve_painting::qualitiesAreToldApart()
{
    PlotCurve good;
    PlotCurve mixed;
    for (int i = 0; i < 20'000; ++i) {
        const QPointF point(start + i * 180, 0.5);
        good.points()->append(point);
        const Quality quality = i < 5000    ? Quality::Good
                                : i < 10000 ? Quality::Uncertain
                                : i < 15000 ? Quality::Bad
                                            : Quality::Stale;
        mixed.points()->append(point, quality);
    }
    const View view(start, start + 3'600'000);
    const QImage whole = picture(good, view);
    const QImage image = picture(mixed, view);
    const auto part = [](int quarter) { return QRect(quarter * 100 + 5, 50, 88, 20); };
    const int solid = inkIn(whole, part(0));
    QCOMPARE(inkIn(image, part(0)), solid);
    for (const int quarter : {1, 3}) {
        const int dotted = inkIn(image, part(quarter));
        QVERIFY2(dotted > solid * 0.35 && dotted < solid * 0.65,
                 qPrintable(QString::number(dotted)));
    }
    QCOMPARE(inkIn(image, part(2)), 0);
    // Sticks, which stand in a column each, as well.
    mixed.setStyle(QwtPlotCurve::Sticks);
    mixed.setBaseline(-1);
    const QImage sticks = picture(mixed, view);
    QVERIFY(inkIn(sticks, part(1)) < inkIn(sticks, part(0)) * 0.65);
    // A bar at the lower edge under the bad stretch, and under no other.
    const QRect bar(205, size.height() - 8, 88, 8);
    QVERIFY(inkIn(image, bar) > 100);
    QCOMPARE(inkIn(image, bar.translated(-100, 0)), 0);
    QCOMPARE(inkIn(image, bar.translated(100, 0)), 0);
}

void tst_curve_painting::nothingForLessThanAPair()
{
    PlotCurve curve;
    CurveData &data = *curve.points();
    const View view(0, 10);
    const auto ink = [&] { return inkIn(picture(curve, view), QRect(QPoint(), size)); };
    QCOMPARE(ink(), 0);
    data.append({5, 0});
    QCOMPARE(ink(), 0);
    data.append({6, notANumber});
    data.append({7, 0});
    QCOMPARE(ink(), 0);
    data.append({notANumber, 0}); // has no place, but tears the line
    data.append({8, 0});
    QCOMPARE(ink(), 0);
    data.append({9, 0});
    QVERIFY(ink() >= 40);
}

void tst_curve_painting::rectangleOfTheDrawnPoints()
{
    CurveData data;
    const QRectF none(0, 0, -1, -1);
    QCOMPARE(data.boundingRect(), none);
    data.append({1, 2});
    data.append({3, -2});
    data.append({5, notANumber});
    data.append({6, 90}, Quality::Bad);
    QCOMPARE(data.boundingRect(), QRectF(QPointF(1, -2), QPointF(3, 2)));
    data.trimFront(1);
    QCOMPARE(data.boundingRect(), QRectF(3, -2, 0, 0));
    data.append({7, 4});
    QCOMPARE(data.boundingRect(), QRectF(QPointF(3, -2), QPointF(7, 4)));
    data.clear();
    QCOMPARE(data.boundingRect(), none);
    QCOMPARE(data.size(), std::size_t(0));
}

void tst_curve_painting::lastAndSort()
{
    CurveData data;
    QCOMPARE(data.last(), QPointF(0, 0));
    data.append({2, 1});
    data.append({1, 1}, Quality::Uncertain);
    data.append({2, 1}); // the archive answers with what came live
    data.append({2, 3});
    data.sort();
    QCOMPARE(data.size(), std::size_t(3));
    QCOMPARE(data.sample(0), QPointF(1, 1));
    QCOMPARE(data.quality(0), Quality::Uncertain);
    QCOMPARE(data.quality(1), Quality::Good);
    QCOMPARE(data.last(), QPointF(2, 3));
}

void tst_curve_painting::intervals()
{
    Widgets::IntervalSeriesData data;
    const QRectF none(0, 0, -1, -1);
    data.replaceLast({1, 2, 3}); // there is none: it is the first
    data.append({2, -5, notANumber});
    data.append({3, 0, 10});
    QCOMPARE(data.size(), std::size_t(3));
    QCOMPARE(data.boundingRect(), QRectF(QPointF(1, 0), QPointF(3, 10)));
    data.replaceLast({4, 1, 4});
    QCOMPARE(data.last(), QwtIntervalSample(4, 1, 4));
    QCOMPARE(data.boundingRect(), QRectF(QPointF(1, 1), QPointF(4, 4)));
    data.trimFront(2);
    QCOMPARE(data.boundingRect(), QRectF(QPointF(4, 1), QPointF(4, 4)));
    data.clear();
    QCOMPARE(data.boundingRect(), none);
    QVERIFY(!data.last().interval.isValid());
}

QTEST_MAIN(tst_curve_painting)
#include "tst_curve_painting.moc"
