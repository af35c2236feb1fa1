// How the window of a trend is moved by its scale, and how it keeps to the present.
#include "support/Rows.h"
#include "support/WhenShown.h"
#include "widgets/charts/ChartRig.h"

#include "widgets/charts/axes/ToolBarAxisX.h"
#include "widgets/charts/plots/PlotCanvas.h"

#include <QWheelEvent>
#include <qwt_scale_widget.h>

using namespace Widgets;
using ChartRig::Rig;
using Doubles = QVector<double>;

namespace {

constexpr double second = 1000;
constexpr double minute = 60 * second;
const QwtAxisId timeAxis(QwtAxis::xBottom);

/// Whose archive has a sample of every second of the last hour.
struct TrendRig : Rig
{
    TrendRig()
    {
        for (int i = 0; i <= 3600; ++i)
            archive->samples[at(now - i * second).GetSourceTime()] = i;
        show();
        settle();
    }
    void settle() const
    {
        QCoreApplication::processEvents();
        QTRY_VERIFY(!plot->waitBox()->isRunning());
    }
    QwtInterval window() const { return plot->window(); }
    QString length() const { return plot->plotCanvas()->tbAxisX()->actions().at(1)->text(); }
    void turn(QWidget *over, double part, int angle) const
    {
        const QPoint place(int(part * over->width()), 5);
        QWheelEvent event(place, over->mapToGlobal(place), {}, {0, angle}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(over, &event);
    }
    void drag(int by) const
    {
        QwtScaleWidget *scale = plot->axisWidget(timeAxis);
        QTest::mousePress(scale, Qt::LeftButton, {}, {200, 5});
        const QPoint end(200 + by, 5);
        QMouseEvent move(QEvent::MouseMove, end, Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(scale, &move);
        QTest::mouseRelease(scale, Qt::LeftButton, {}, end);
    }
    bool knows(double x) const
    {
        const Doubles all = times();
        return std::any_of(all.begin(), all.end(), [x](double t) { return qAbs(t - x) < second; });
    }

    const double now = ChartTime::now();
};

} // namespace

class TestPlotWindow : public QObject
{
    Q_OBJECT

private slots:
    void wheelStepsThroughLengths_data();
    void wheelStepsThroughLengths();
    void wheelKeepsToThePresent();
    void wheelShowsNoFuture();
    void aDayAgoTellsItsDate();
    void draggingTheScaleLeavesThePresent();
    void nothingOfItWithoutAnArchive();
    void followingReachesThePresentWithoutValues();
    void anotherGroupShowsWhatCameMeanwhile();
    void followingFromFarBackIsNotCoarse();
    void aStoppedTrendResumesWithAGap();
    void givingUpKeepsWhatCameLive();
};

void TestPlotWindow::wheelStepsThroughLengths_data()
{
    const Rows<double, QVector<int>, double, QString> row("part", "angles", "width", "text");
    row("closer at the middle", 0.5, {120}, 5 * second, "5с");
    row("farther at the middle", 0.5, {-120}, 20 * second, "20с");
    row("twice at a quarter", 0.25, {-120, -120}, 30 * second, "30с");
    row("a fine wheel adds up", 0.25, QVector<int>(8, -15), 20 * second, "20с");
    row("a fine wheel less than a notch", 0.5, QVector<int>(6, -15), 10 * second, "10с");
    row("there and back", 0.75, {-120, 120}, 10 * second, "10с");
    row("not below the shortest", 0.5, {120, 120, 120}, 5 * second, "5с");
}

void TestPlotWindow::wheelStepsThroughLengths()
{
    QFETCH(double, part);
    QFETCH(QVector<int>, angles);
    TrendRig rig;
    rig.setWindow(rig.now - 30 * minute, rig.now - 30 * minute + 10 * second);
    const double under = rig.window().minValue() + part * 10 * second;
    rig.archive->reads = 0;
    for (const int angle : angles)
        rig.turn(rig.plot->plotCanvas(), part, angle);
    QTEST(rig.window().width(), "width");
    QTEST(rig.length(), "text");
    QVERIFY(!rig.plot->tracking());
    const double stays = rig.window().minValue() + part * rig.window().width();
    QVERIFY(qAbs(stays - under) < rig.window().width() / 100);
    QTRY_VERIFY(rig.archive->reads > 0); // once the wheel rests
    rig.settle();
    QVERIFY(rig.knows(rig.window().minValue()) && rig.knows(rig.window().maxValue()));
}

void TestPlotWindow::wheelKeepsToThePresent()
{
    TrendRig rig;
    rig.plot->setTracking(true);
    rig.settle();
    const double end = rig.window().maxValue();
    rig.turn(rig.plot->axisWidget(timeAxis), 0.1, -240);
    QVERIFY(rig.plot->tracking());
    QVERIFY(rig.window().maxValue() >= end);
    QCOMPARE(rig.window().width(), 20 * second); // one event is one step
}

void TestPlotWindow::wheelShowsNoFuture()
{
    TrendRig rig;
    rig.setWindow(rig.now - 11 * second, rig.now - second);
    for (int i = 0; i < 4; ++i)
        rig.turn(rig.plot->plotCanvas(), 0.5, -120);
    QCOMPARE(rig.window().width(), 2 * minute);
    QVERIFY(rig.window().maxValue() <= ChartTime::now());
    QVERIFY(rig.window().contains(rig.now - 6 * second));
}

void TestPlotWindow::aDayAgoTellsItsDate()
{
    TrendRig rig;
    const auto lines = [&rig] {
        return rig.plot->axisScaleDraw(timeAxis)->label(rig.window().maxValue()).text();
    };
    const double aDay = 24 * 60 * minute;
    rig.setWindow(rig.now - aDay - minute, rig.now - aDay);
    QVERIFY2(lines().contains('\n'), qPrintable(lines()));
    const int high = rig.plot->axisWidget(timeAxis)->height();
    QVERIFY(high > 2 * rig.plot->axisFont(timeAxis).pixelSize());
}

void TestPlotWindow::draggingTheScaleLeavesThePresent()
{
    TrendRig rig;
    rig.plot->setTracking(true);
    rig.settle();
    const QwtInterval before = rig.window();
    QSignalSpy moved(rig.plot, &Plot::axisScaleChanged);
    rig.drag(300);
    QVERIFY(!rig.plot->tracking());
    QCOMPARE(rig.length(), QStringLiteral("10с"));
    const double by = 300 * before.width() / rig.plot->canvas()->width();
    QVERIFY(qAbs(before.minValue() - rig.window().minValue() - by) < second);
    QVERIFY(!moved.isEmpty()); // plots beside it come along
    QTRY_VERIFY(rig.knows(rig.window().minValue()));
    rig.publish(10, Rig::at(ChartTime::now()));
    QCoreApplication::processEvents();
    QVERIFY(rig.window().maxValue() < before.maxValue()); // it stays in the hand
    rig.settle();
    QTest::mouseDClick(rig.plot->axisWidget(timeAxis), Qt::LeftButton, {}, {200, 5});
    QVERIFY(rig.plot->tracking());
    QCOMPARE(rig.window().width(), before.width());
    QTRY_VERIFY(rig.window().maxValue() >= before.maxValue());
}

void TestPlotWindow::nothingOfItWithoutAnArchive()
{
    TrendRig rig;
    rig.element->chart()->SetCurrentGroupTab(1);
    const QwtInterval before = rig.window();
    rig.turn(rig.plot->plotCanvas(), 0.5, 120);
    rig.drag(100);
    QCOMPARE(rig.window(), before);
}

// A signal that tells changes only is silent for as long as it likes.
void TestPlotWindow::followingReachesThePresentWithoutValues()
{
    TrendRig rig;
    {
        const std::lock_guard lock(rig.archive->mutex);
        rig.archive->samples.clear();
        rig.archive->samples[Rig::at(rig.now - 20 * minute).GetSourceTime()] = 7;
    }
    rig.setWindow(rig.now - 50 * minute, rig.now - 40 * minute);
    rig.plot->setTracking(true);
    QTRY_VERIFY(qAbs(rig.window().maxValue() - ChartTime::now()) < 3 * second);
    QCOMPARE(rig.window().width(), 10 * minute);
}

// Nobody looked: its window ends where it did.
void TestPlotWindow::anotherGroupShowsWhatCameMeanwhile()
{
    TrendRig rig;
    rig.plot->beginTracking();
    rig.element->hide();
    rig.element->chart()->SetCurrentGroupTab(1);
    rig.setWindow(rig.now - 10 * minute - 10 * second, rig.now - 10 * minute);
    rig.element->chart()->SetCurrentGroupTab(2);
    rig.settle();
    QTRY_VERIFY(rig.knows(rig.now));
    QVERIFY(rig.knows(rig.now - 5 * second));
}

void TestPlotWindow::followingFromFarBackIsNotCoarse()
{
    TrendRig rig;
    rig.setWindow(rig.now - 50 * minute, rig.now - 50 * minute + 10 * second);
    rig.plot->setTracking(true);
    rig.settle();
    QTRY_VERIFY(rig.window().contains(rig.now - 4 * second));
    const auto areSamples = [&rig] {
        for (int i = 1; i < 9; ++i) {
            if (!rig.times().contains(std::floor(rig.now) - i * second))
                return false;
        }
        return true;
    };
    QTRY_VERIFY(areSamples());
}

// What came while it stood still is not in the curve, and nobody knows it any more.
void TestPlotWindow::aStoppedTrendResumesWithAGap()
{
    TrendRig rig;
    rig.element->chart()->SetCurrentGroupTab(1);
    rig.setWindow(rig.now - 10 * second, rig.now);
    const auto publish = [&rig](double after) {
        rig.plot->appendPoints({Rig::at(rig.now + after * second)}, &rig.serie());
    };
    rig.serie().clearPoints();
    publish(0);
    publish(5); // behind the margin
    publish(6);
    QCOMPARE(rig.times().size(), 1);
    rig.plot->setTracking(true);
    publish(7);
    publish(8);
    Doubles expected;
    for (const int after : {0, 5, 7, 8})
        expected << std::floor(rig.now) + after * second;
    QCOMPARE(rig.times(), expected);
    QVERIFY(std::isnan(rig.values()[1]));
}

void TestPlotWindow::givingUpKeepsWhatCameLive()
{
    TrendRig rig;
    rig.plot->beginTracking();
    for (int i = 1; i <= 3; ++i)
        rig.publish(10, Rig::at(rig.now + i, -double(i)));
    QTRY_VERIFY(rig.values().contains(-3 + 2.5));
    rig.archive->isHanging = true;
    rig.plot->setAnswerLimit(1);
    QVERIFY(rig.plot->getCurrentHistory());
    QCOMPARE(rig.values().mid(rig.values().size() - 3), (Doubles{1.5, 0.5, -0.5}));
}

QTEST_MAIN(TestPlotWindow)
#include "tst_plot_window.moc"
