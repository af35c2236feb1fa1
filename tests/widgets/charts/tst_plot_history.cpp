// A plot and its archive: what is asked for and when, what is waited for, how the answer is merged.
#include "support/Rows.h"
#include "support/WhenShown.h"
#include "widgets/charts/ChartRig.h"

#include "widgets/charts/plots/PlotCanvas.h"
#include "widgets/charts/plots/PlotPanner.h"
#include "widgets/charts/plots/PlotXAxisRangeDetails.h"
#include "widgets/charts/series/SeriePlotFlag.h"
#include "widgets/charts/statistics/CursorPanel.h"
#include "widgets/dialogs/TimeDialog.h"

using namespace Widgets;
using ChartRig::Rig;
using Doubles = QVector<double>;

namespace {

/// Counts how often a window came up.
class Shown : public QObject
{
public:
    explicit Shown(QObject &watched) { watched.installEventFilter(this); }
    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::Show ? 1 : 0;
        return false;
    }
    int count = 0;
};

constexpr double start = 1.7e12; // X of what the archive holds: a sample a second
constexpr int held = 100;

struct ArchiveRig : Rig
{
    explicit ArchiveRig(Nodes::enWorkMode mode = Nodes::WorkModeRuntime) : Rig(mode)
    {
        for (int i = 0; i < held; ++i)
            archive->samples[at(start + i * 1000).GetSourceTime()] = i;
    }
    /// Window of ten samples, shown and waiting for nothing.
    void showWindow()
    {
        show();
        setWindow(start + 20000, start + 30000);
        asked();
    }
    double x(Nodes::Timestamp time) const { return ChartTime::toX(time) - start; }
    /// Bounds of what was asked for since the last time, from `start` on; empty: nothing.
    Doubles asked()
    {
        QCoreApplication::processEvents();
        (void)QTest::qWaitFor([this] { return !plot->waitBox()->isRunning(); });
        if (archive->reads == 0)
            return {};
        archive->reads = 0;
        return {x(archive->from), x(archive->to)};
    }
    Doubles window() const
    {
        return {plot->window().minValue() - start, plot->window().maxValue() - start};
    }
};

} // namespace

class TestPlotHistory : public QObject
{
    Q_OBJECT

private slots:
    void movesAskForWhatTheyShow_data();
    void movesAskForWhatTheyShow();
    void lengthsAskWhenWider_data();
    void lengthsAskWhenWider();
    void followingAsksUpToNow();
    void nothingIsAskedOutOfRunTime();
    void aSerieWithoutArchiveMeansNoHistory();
    void aQuickAnswerShowsNoBox();
    void waitingEnds_data();
    void waitingEnds();
    void aPlotMayGoWhileItWaits();
    void theNewestRequestCounts();
    void syncHistoryReturnsTheAnswer();
    void archiveAndLiveJoinWithoutHoleOrRepetition_data();
    void archiveAndLiveJoinWithoutHoleOrRepetition();
    void whatTheArchiveHasNotYetStays();
    void answersKeepDiscreteSeriesUpToDate();
    void earlierPeriodsDoNotMoveTheWindow();
    void whatTheOperatorLookedAtStays();
    void anotherPageMeanwhileLosesNothing();
    void flagsStayInFront();
    void badSpansAreRefused();
    void faultsAreTold();
    void aPlotWithoutSeriesSaysSo();
};

void TestPlotHistory::movesAskForWhatTheyShow_data()
{
    const Rows<QString, Doubles, Doubles> row("move", "window", "asked");
    row("back", "prev", {10000, 20000}, {10000, 20000});
    row("forth", "next", {30000, 40000}, {30000, 40000});
    row("panned by a tenth", "pan", {19000, 29000}, {18000, 30000});
    row("present window", "current", {20000, 30000}, {19000, 31000});
}

void TestPlotHistory::movesAskForWhatTheyShow()
{
    QFETCH(QString, move);
    ArchiveRig rig;
    rig.showWindow();
    rig.plot->plotCanvas()->setTracking(move != "current");
    rig.asked();
    rig.setWindow(start + 20000, start + 30000);
    QSignalSpy scaled(rig.plot, &Plot::axisScaleChanged);
    if (move == "prev")
        emit rig.plot->actionPeriodPrev();
    else if (move == "next")
        emit rig.plot->actionPeriodNext();
    else if (move == "pan")
        rig.plot->panner()->pan(rig.plot->canvas()->width() / 10, 0);
    else
        QVERIFY(rig.plot->getCurrentHistory());
    const double pixel = 10000.0 / rig.plot->canvas()->width();
    QFETCH(Doubles, window);
    QVERIFY2(qAbs(rig.window()[0] - window[0]) <= pixel,
             qPrintable(QString::number(rig.window()[0])));
    QVERIFY(!rig.plot->tracking());
    QCOMPARE(scaled.count(), move == "pan" ? 1 : 0);
    const Doubles span = rig.asked();
    QFETCH(Doubles, asked);
    QVERIFY(!span.isEmpty());
    for (int i = 0; i < 2; ++i)
        QVERIFY2(qAbs(span[i] - asked[i]) <= pixel + 1, qPrintable(QString::number(span[i])));
    QVERIFY(rig.times().first() - start <= asked[0]);
    QVERIFY(rig.times().last() - start >= asked[1]); // lines reach both edges
}

void TestPlotHistory::lengthsAskWhenWider_data()
{
    const Rows<int, int, bool, Doubles> row("count", "unit", "isAsked", "window");
    row("wider", 20, 1, true, {15000, 35000});
    row("narrower", 4, 1, false, {23000, 27000});
    row("as wide", 10, 1, false, {20000, 30000});
    row("in minutes", 1, 2, true, {-5000, 55000});
    row("in hours", 1, 3, true, {-1775000, 1825000});
}

void TestPlotHistory::lengthsAskWhenWider()
{
    QFETCH(int, count);
    QFETCH(int, unit);
    ArchiveRig rig;
    rig.showWindow();
    const WhenShown<QWidget> dialog([&](QWidget &window) {
        auto *time = window.findChild<TimeDialog *>();
        time = time ? time : qobject_cast<TimeDialog *>(&window);
        QCOMPARE(time->windowTitle(), QStringLiteral("Выбор ширины интервала"));
        QCOMPARE(time->getTime().count, 10);
        time->setTime(count, TimeDialog::Unit(unit));
        time->accept();
    });
    rig.plot->onActionLengthX();
    QTEST(rig.window(), "window");
    const Doubles span = rig.asked();
    QTEST(!span.isEmpty(), "isAsked");
    const double margin = (rig.window()[1] - rig.window()[0]) / 10;
    if (!span.isEmpty())
        QCOMPARE(span, (Doubles{rig.window()[0] - margin, rig.window()[1] + margin}));
    QCOMPARE(rig.node<Nodes::widgetChartAxis>(102)->GetRangeLength(), double(count));
}

void TestPlotHistory::followingAsksUpToNow()
{
    ArchiveRig rig;
    rig.showWindow();
    const double before = ChartTime::now() - start;
    rig.plot->setTracking(true);
    const Doubles span = rig.asked();
    QCOMPARE(span.value(0), 19000.0);
    QVERIFY(span.value(1) >= before);
    // The newest sample is the right end now.
    QCOMPARE(rig.window(), (Doubles{held * 1000.0 - 11000, held * 1000.0 - 1000}));
    // Taken over without waiting for the timer.
    QCOMPARE(rig.plot->axisInterval(QwtAxisId(QwtAxis::xBottom)).maxValue(),
             start + held * 1000 - 1000);
}

void TestPlotHistory::nothingIsAskedOutOfRunTime()
{
    ArchiveRig rig(Nodes::WorkModeEditing);
    rig.element->start();
    rig.element->show();
    rig.plot->appendPoints({Rig::at(start)}, &rig.serie());
    const std::size_t points = rig.serie().pointCount();
    QVERIFY(points > 1); // a look of curves to be
    QVERIFY(rig.plot->getHistory(quint64(start), quint64(start) + 1000));
    rig.plot->onActionPeriodPrev();
    QCOMPARE(rig.asked(), Doubles());
    QCOMPARE(rig.serie().pointCount(), points);
}

void TestPlotHistory::aSerieWithoutArchiveMeansNoHistory()
{
    ArchiveRig rig;
    rig.showWindow();
    QVERIFY(rig.plot->panner());
    rig.element->chart()->SetCurrentGroupTab(1);
    QVERIFY(!rig.plot->panner());
    const Doubles window = rig.window();
    rig.plot->setTracking(true);
    emit rig.plot->actionPeriodPrev();
    QCOMPARE(rig.asked(), Doubles());
    QCOMPARE(rig.window(), window);
    rig.element->chart()->SetCurrentGroupTab(0);
    QVERIFY(!rig.asked().isEmpty());
    QVERIFY(rig.plot->panner());
}

void TestPlotHistory::aQuickAnswerShowsNoBox()
{
    ArchiveRig rig;
    rig.showWindow();
    const Shown box(*rig.plot->waitBox());
    bool wasDisabled = false;
    rig.archive->isHanging = true;
    QTimer::singleShot(20, rig.plot, [&] {
        wasDisabled = !rig.plot->isEnabled() && rig.serie().pointCount() == 0;
        rig.archive->isHanging = false;
    });
    QVERIFY(rig.plot->getCurrentHistory());
    QVERIFY(wasDisabled);
    QVERIFY(rig.plot->isEnabled());
    QCOMPARE(box.count, 0);
    QVERIFY(rig.serie().pointCount() > 10);
}

void TestPlotHistory::waitingEnds_data()
{
    const Rows<QString, QString> row("end", "note");
    row("answered", "answer", "");
    row("given up by the operator", "escape", "Запрос архива прерван. Показаны текущие значения.");
    row("given up by time", "limit", "Архив не ответил. Показаны текущие значения.");
}

// The box stands over the plot and blocks its window only.
void TestPlotHistory::waitingEnds()
{
    QFETCH(QString, end);
    ArchiveRig rig;
    rig.showWindow();
    rig.archive->isHanging = true;
    WaitBox &box = *rig.plot->waitBox();
    rig.plot->setAnswerLimit(end == "limit" ? WaitBox::Delay + 100 : 60000);
    QStringList texts;
    const WhenShown<WaitBox> shown([&](WaitBox &up) {
        QCOMPARE(up.windowModality(), Qt::WindowModal);
        QCOMPARE(up.windowTitle(), QStringLiteral("Ожидание"));
        QVERIFY(up.windowFlags().testFlag(Qt::FramelessWindowHint));
        const QPoint centre = rig.plot->mapToGlobal(rig.plot->rect().center());
        QVERIFY((up.geometry().center() - centre).manhattanLength() <= 4);
        if (end == "answer")
            rig.archive->isHanging = false;
        else if (end == "escape")
            QTest::keyClick(&up, Qt::Key_Escape);
    });
    QVERIFY(rig.plot->getCurrentHistory());
    QVERIFY(!box.isVisible());
    QVERIFY(rig.plot->isEnabled());
    QTEST(rig.plot->note(), "note");
    QCOMPARE(rig.serie().pointCount() > 0, end == "answer");
    rig.archive->isHanging = false;
    QVERIFY(rig.plot->getCurrentHistory()); // the next one is answered
    QCOMPARE(rig.plot->note(), QString());
    QVERIFY(rig.serie().pointCount() > 0);
}

void TestPlotHistory::aPlotMayGoWhileItWaits()
{
    ArchiveRig rig;
    rig.showWindow();
    rig.archive->isHanging = true;
    const QPointer<CursorPanel> panel = rig.element->findChild<CursorPanel *>();
    QVERIFY(panel);
    bool isPanelGone = false; // before the plot that it reads
    connect(rig.plot, &QObject::destroyed, [&] { isPanelGone = !panel; });
    QTimer::singleShot(0, qApp, [&] {
        rig.element->stop();
        rig.element.reset();
    });
    QVERIFY(rig.plot->getCurrentHistory());
    QVERIFY(!rig.element);
    QVERIFY(isPanelGone);
}

void TestPlotHistory::theNewestRequestCounts()
{
    ArchiveRig rig;
    rig.showWindow();
    rig.archive->isHanging = true;
    QSignalSpy answered(rig.plot, &PlotHistory::getHistoryCompleted);
    QTimer::singleShot(0, rig.plot, [&] {
        rig.archive->isHanging = false;
        QVERIFY(rig.plot->getHistory(quint64(start) + 50000, quint64(start) + 60000));
        QVERIFY(rig.plot->waitBox()->isRunning()); // the first one waits for this one now
    });
    rig.archive->isHanging = true;
    QVERIFY(rig.plot->getHistory(quint64(start) + 10000, quint64(start) + 20000));
    QCOMPARE(answered.count(), 1);
    QCOMPARE(rig.times().first() - start, 49000.0);
}

void TestPlotHistory::syncHistoryReturnsTheAnswer()
{
    ArchiveRig rig;
    rig.showWindow();
    const auto from = quint64(start) + 10000;
    QCOMPARE(rig.element->getHistory(from, from + 5000).size(), std::size_t(8)); // edges included
    QCOMPARE(rig.serie().pointCount(), std::size_t(8));
    rig.element->hide();
    QCOMPARE(rig.element->getHistory(from, from + 5000).size(), std::size_t(0));
    QTRY_COMPARE(rig.serie().pointCount(), std::size_t(8)); // later
    unsigned long long lower = 0;
    unsigned long long upper = 0;
    rig.element->setArchiverMode(true,
                                 {from, from + 60000, 1, Nodes::widgetChartAxis::RangeMinutes});
    rig.element->getCurrentInterval(lower, upper);
    QCOMPARE(lower, from);
    QCOMPARE(upper, from + 60000);
}

void TestPlotHistory::archiveAndLiveJoinWithoutHoleOrRepetition_data()
{
    const Rows<int> row("perRound");
    row("sample by sample", 60); // the archive tells each as it is: there is room for all
    row("aggregates", 300);
}

// A signal goes on being published while requests come and go, groups are switched and the plot
// is hidden: what is drawn is what was published, in order, each value once. Of aggregates what is
// later than the newest one is.
void TestPlotHistory::archiveAndLiveJoinWithoutHoleOrRepetition()
{
    QFETCH(int, perRound);
    constexpr int rounds = 12;
    constexpr double offset = 2.5;
    ArchiveRig rig;
    rig.archive->samples.clear();
    rig.show();
    rig.plot->setTracking(true);
    std::atomic<int> allowed{0};
    std::atomic<int> published{0};
    std::thread publisher([&] {
        Nodes::ValueCell &cell = *rig.node<Nodes::BasicSignal>(10)->GetCell();
        const Nodes::Timestamp begin = Rig::at(ChartTime::now() - 4000).GetSourceTime();
        for (int i = 0; i < rounds * perRound; ++i) {
            while (i >= allowed)
                std::this_thread::yield();
            Nodes::SignalValue value = double(i);
            value.SetTimes(begin + i * 1000, begin + i * 1000);
            {
                const std::lock_guard lock(rig.archive->mutex);
                rig.archive->samples[begin + i * 1000] = i;
            }
            cell.Publish(value);
            ++published;
            std::this_thread::sleep_for(std::chrono::microseconds(50)); // also while it is asked
        }
    });
    for (int round = 0; round < rounds; ++round) {
        allowed += perRound; // published while this round goes on
        QTRY_VERIFY(published >= round * perRound + perRound / 2);
        rig.archive->isHanging = round % 2 == 1; // meanwhile more comes live, and is archived
        QTimer::singleShot(5, rig.plot, [&rig] { rig.archive->isHanging = false; });
        if (round == 4)
            rig.element->hide();
        if (round == 6)
            rig.element->show();
        if (round % 5 == 4)
            rig.element->chart()->SetCurrentGroupTab(round % 2);
        if (round == 10)
            rig.element->chart()->SetCurrentGroupTab(0);
        (void)rig.plot->getHistory(ChartTime::toUnsigned(ChartTime::now() - 20000), 0);
    }
    publisher.join();
    const double last = rounds * perRound - 1 + offset;
    QTRY_COMPARE(rig.values().value(rig.values().size() - 1), last);
    QTRY_VERIFY(!rig.plot->waitBox()->isRunning());
    const Doubles drawn = rig.values();
    const Doubles times = rig.times();
    QCOMPARE(drawn.first(), offset);
    QCOMPARE(drawn.last(), last);
    // A value a millisecond: where it stands tells which it is.
    const double step = perRound > 100 ? 40 : 1; // of aggregates two intervals
    for (int i = 1; i < drawn.size(); ++i) {
        QVERIFY2(drawn[i] > drawn[i - 1] - step && drawn[i] <= drawn[i - 1] + step,
                 qPrintable(QString::number(i)));
        QVERIFY(qAbs(times[i] - times[0] - drawn[i] + offset) < step);
    }
}

// An archive writes what it gets some time later.
void TestPlotHistory::whatTheArchiveHasNotYetStays()
{
    ArchiveRig rig;
    rig.showWindow();
    rig.plot->plotCanvas()->setTracking(true);
    rig.asked();
    rig.setWindow(start + held * 1000 - 5000, start + held * 1000 + 5000);
    for (int i = 0; i < 3; ++i)
        rig.publish(10, Rig::at(start + (held + i) * 1000, double(held + i)));
    QTRY_COMPARE(rig.values().value(rig.values().size() - 1), held + 2 + 2.5);
    QVERIFY(rig.plot->getCurrentHistory());
    QCOMPARE(rig.values().mid(rig.values().size() - 4),
             (Doubles{held + 1.5, held + 2.5, held + 3.5, held + 4.5}));
}

// What comes while the archive reads is not in the answer.
void TestPlotHistory::answersKeepDiscreteSeriesUpToDate()
{
    ArchiveRig rig;
    rig.showWindow();
    rig.element->chart()->SetCurrentGroupTab(2);
    rig.asked();
    rig.setWindow(start + held * 1000 - 5000, start + held * 1000 + 5000);
    rig.archive->isHanging = true;
    QTimer::singleShot(0, rig.plot, [&] {
        rig.publish(11, Rig::at(start + held * 1000, true));
        QTRY_COMPARE(rig.serie(2).pointCount(), std::size_t(1));
        rig.archive->isHanging = false;
    });
    QVERIFY(rig.plot->getCurrentHistory());
    QCOMPARE(rig.values(2), Doubles{1});
}

void TestPlotHistory::earlierPeriodsDoNotMoveTheWindow()
{
    ArchiveRig rig;
    rig.showWindow();
    rig.element->chart()->SetCurrentGroupTab(2);
    rig.asked();
    rig.setWindow(start + 20000, start + 30000);
    rig.plot->setTracking(true);
    rig.asked();
    QCOMPARE(rig.window()[1], held * 1000.0 - 1000);
}

void TestPlotHistory::whatTheOperatorLookedAtStays()
{
    ArchiveRig rig;
    rig.showWindow();
    rig.element->stop(); // another page
    rig.element->start();
    rig.publish(10, Rig::at(ChartTime::now()));
    rig.asked();
    QCOMPARE(rig.window(), (Doubles{20000, 30000}));
}

// The node of a chart that nobody sees cancels its request.
void TestPlotHistory::anotherPageMeanwhileLosesNothing()
{
    ArchiveRig rig;
    rig.showWindow();
    rig.archive->isHanging = true;
    QTimer::singleShot(0, rig.plot, [&] {
        rig.element->stop();
        rig.archive->isHanging = false;
        rig.element->start();
    });
    QVERIFY(rig.plot->getCurrentHistory());
    QVERIFY(rig.plot->isEnabled());
    QTRY_VERIFY(rig.serie().pointCount() > 0);
    QTRY_COMPARE(rig.plot->note(), QString());
}

void TestPlotHistory::flagsStayInFront()
{
    ArchiveRig rig;
    rig.showWindow();
    rig.serie(0).setZOrder(5); // pointed at in the legend
    rig.serie(0).setZOrder(2);
    rig.plot->replot();
    const QwtPlotItemList items = rig.plot->itemList();
    for (int curve : {0, 1})
        for (int flag : {0, 1})
            QVERIFY(items.indexOf(&rig.serie(curve)) <
                    items.indexOf(static_cast<QwtPlotMarker *>(rig.serie(flag).GetFlag())));
    for (const QwtPlotItem *below : items)
        if (below->rtti() == QwtPlotItem::Rtti_PlotGrid)
            QVERIFY(below->z() < 1.0); // of bands and curves
}

void TestPlotHistory::badSpansAreRefused()
{
    ArchiveRig rig;
    rig.showWindow();
    QVERIFY(rig.plot->getCurrentHistory());
    const std::size_t points = rig.serie().pointCount();
    QCOMPARE(rig.plot->getHistory(quint64(start) + 1, quint64(start)).GetType(),
             Nodes::Result::InvalidArgument);
    QCOMPARE(rig.serie().pointCount(), points);
    rig.plot->setXAxisParams(5000, 5000, 0, Nodes::widgetChartAxis::enRangeUnit(9));
    rig.plot->replot();
    emit rig.plot->actionPeriodNext();
    rig.plot->setTracking(true);
    rig.plot->appendPoints({Rig::at(start), Rig::at(0), Rig::at(-1e12)}, &rig.serie());
    rig.asked();
    rig.setWindow(start, start + 1000); // and it goes on from there
    QVERIFY(rig.plot->getCurrentHistory());
}

void TestPlotHistory::faultsAreTold()
{
    ArchiveRig rig;
    rig.showWindow();
    rig.other.reset(); // the archive of the second signal has gone
    QVERIFY(rig.plot->getCurrentHistory());
    QVERIFY2(rig.plot->note().startsWith(QStringLiteral("Нет данных архива: P. ")),
             qPrintable(rig.plot->note()));
    QVERIFY(rig.serie().pointCount() > 0);
}

void TestPlotHistory::aPlotWithoutSeriesSaysSo()
{
    const RuntimeProject project(R"(
<layer id="2" name="L"><chartHistory id="100" name="C" width="900" height="500">
  <chartGroup id="101" name="G"><chartTimeAxis id="102" name="X"/><chartAxis id="103" name="Y"/>
  </chartGroup></chartHistory></layer>)",
                                 Nodes::WorkModeRuntime);
    Widgets::qwidgetChartHistory element(project.node<Nodes::widgetChartHistory>(100), nullptr);
    element.start();
    element.show();
    const auto *plot = static_cast<Widgets::PlotHistory *>(element.plot());
    QTRY_COMPARE(plot->note(), QStringLiteral("На графике нет рядов."));
}

QTEST_MAIN(TestPlotHistory)
#include "tst_plot_history.moc"
