// Charts of discrete signals, of signals over signals and of tubes, as an operator sees them.
// STATION_TEST_PICTURES=DIR keeps their pictures.
#include "ChartProject.h"
#include "support/WhenShown.h"

#include "widgets/charts/axes/DiscretScaleEngine.h"
#include "widgets/charts/axes/DiscretValueScaleDraw.h"
#include "widgets/charts/axes/ToolBarAutoScaleAxisX.h"
#include "widgets/charts/elements/qwidgetChartCorridor.h"
#include "widgets/charts/elements/qwidgetChartHistory.h"
#include "widgets/charts/elements/qwidgetChartXY.h"
#include "widgets/charts/multiaxis/AxisGestures.h"
#include "widgets/charts/plots/ChartGroupManager.h"
#include "widgets/charts/plots/PlotCanvas.h"
#include "widgets/charts/plots/PlotCorridor.h"
#include "widgets/charts/plots/PlotDiscret.h"
#include "widgets/charts/plots/PlotXY.h"
#include "widgets/charts/series/qwidgetChartCorridorSerie.h"
#include "widgets/charts/series/qwidgetChartDiscretSerie.h"
#include "widgets/charts/series/qwidgetChartXYSerie.h"
#include "widgets/dialogs/TimeDialog.h"

#include "nodes/charts/widgetChartCorridor.h"
#include "nodes/charts/widgetChartGroup.h"
#include "nodes/charts/widgetChartHistory.h"
#include "nodes/charts/widgetChartXY.h"

#include <QToolButton>
#include <qwt_scale_widget.h>

namespace ChartTime = Widgets::ChartTime;
using Widgets::ISerie;

namespace {

constexpr double minute = 60000;

constexpr const char *plant = R"(
<memorySignal id="10" name="Сетевой насос 1" type="bool"/>
<memorySignal id="11" name="Сетевой насос 2" type="bool"/>
<memorySignal id="12" name="Вентилятор" type="bool"/>
<memorySignal id="13" name="Расход" unit="т/ч" decimals="1"/>
<memorySignal id="14" name="Давление" unit="кПа" decimals="2"/>
<memorySignal id="15" name="Температура" unit="°C" decimals="1"/>
<archiver id="80" name="Архив">
  <archiverSource id="20" name="a" signal="10"/><archiverSource id="21" name="b" signal="11"/>
  <archiverSource id="22" name="c" signal="12"/><archiverSource id="23" name="d" signal="13"/>
  <archiverSource id="24" name="e" signal="14"/><archiverSource id="25" name="f" signal="15"/>
</archiver>
<chartHistory id="30" name="Насосы" width="900" height="420">
  <chartGroup id="31" name="Г">
    <chartTimeAxis id="32" name="Время" length="10" lengthUnit="minutes" labelFormat="hh:mm\ndd.MM"/>
    <chartAxis id="33" name="Состояние" axisTitle="Состояние"/>
    <chartDiscretSerie id="34" name="1" source="20" color="#2e6f40"/>
    <chartDiscretSerie id="35" name="2" source="21" color="#3c608c" onText="Работа" offText="Стоп"/>
    <chartDiscretSerie id="36" name="3" source="22" color="#8a5a00"/>
  </chartGroup>
</chartHistory>
<chartHistory id="60" name="Тренд" width="1000" height="520">
  <chartGroup id="61" name="Г">
    <chartTimeAxis id="62" name="Время" length="10" lengthUnit="minutes" labelFormat="hh:mm:ss\ndd.MM.yyyy"/>
    <chartAxis id="63" name="T" axisTitle="Температура, °C" from="40" to="100" labelFormat="%.0f" color="#3c608c"/>
    <chartAxis id="64" name="P" axisTitle="Давление, кПа" from="0" to="10" color="#8a3b12"/>
    <chartAxis id="65" name="F" axisTitle="Расход, т/ч" from="1" to="1000" logarithmic="true"
               position="right" labelFormat="%.0f" color="#2e6f40"/>
    <chartSerie id="66" name="t" source="25" axisY="63" color="#3c608c"/>
    <chartSerie id="67" name="p" source="24" axisY="64" color="#8a3b12"/>
    <chartSerie id="68" name="f" source="23" axisY="65" color="#2e6f40" style="steps"/>
  </chartGroup>
</chartHistory>
<chartXY id="40" name="Характеристика" width="760" height="520">
  <chartGroup id="41" name="Г">
    <chartAxis id="42" name="X" position="bottom" axisTitle="Расход, т/ч" from="0" to="100" labelFormat="%.0f"/>
    <chartAxis id="43" name="Y" axisTitle="Давление, кПа" from="0" to="10"/>
    <chartXYSerie id="44" name="s" source="24" sourceX="23" tolerance="1000"/>
  </chartGroup>
</chartXY>
<chartCorridor id="50" name="Коридор" width="900" height="420">
  <chartGroup id="51" name="Г">
    <chartTimeAxis id="52" name="Время" length="30" lengthUnit="minutes" labelFormat="hh:mm"/>
    <chartAxis id="53" name="Y" axisTitle="°C" from="40" to="100" labelFormat="%.0f"/>
    <chartCorridorSerie id="54" name="s" source="25" slice="60"/>
  </chartGroup>
</chartCorridor>)";

void keep(QWidget &widget, const char *name)
{
    const QString folder = qEnvironmentVariable("STATION_TEST_PICTURES");
    if (!folder.isEmpty())
        QVERIFY(widget.grab().save(folder + '/' + name + ".png"));
}

} // namespace

class TestChartKinds : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<RuntimeProject> m_project;

    template <class Serie> Serie *serie(Widgets::qwidgetChartBasic &chart, std::size_t number = 0)
    {
        return dynamic_cast<Serie *>(chart.groupManager()->series().at(number));
    }

private slots:
    void init() { m_project = std::make_unique<RuntimeProject>(plant); }
    void cleanup() { m_project.reset(); }

    void discret()
    {
        Widgets::qwidgetChartHistory chart(m_project->node<Nodes::widgetChartHistory>(30), nullptr);
        m_project->publish(10, true);
        m_project->publish(11, false);
        chart.resize(900, 420);
        chart.show();
        auto *plot = qobject_cast<Widgets::PlotHistory *>(chart.plot());
        const double end = plot->window().maxValue();
        Nodes::HistoryAnswer answer;
        Answers::append(answer, 10,
                        {{end - 12 * minute, 1},
                         {end - 7 * minute, 0},
                         {end - 3 * minute, 1},
                         {end - 1 * minute, 1}});
        Answers::append(answer, 11,
                        {{end - 9 * minute, 0},
                         {end - 8 * minute, 1},
                         {end - 5 * minute, Answers::gap, Nodes::Quality::Bad},
                         {end - 4 * minute, 0},
                         {end - minute, 0}});
        Answers::append(answer, 12,
                        {{end - 9 * minute, 1},
                         {end - 6 * minute, 0},
                         {end - 2 * minute, 1, Nodes::Quality::Uncertain},
                         {end - minute, 0}});
        plot->onGetHistoryCompleted(Nodes::SignalHistoryResponse::AllOf(answer));
        plot->replot();
        keep(chart, "discret");

        // The first one on top, each in a band of its own, all of them in view.
        QCOMPARE(serie<ISerie>(chart, 0)->getOffsetY(), 3.0f);
        QCOMPARE(serie<ISerie>(chart, 2)->getOffsetY(), 0.0f);
        const QwtInterval view = plot->axisInterval(QwtAxis::yLeft);
        QCOMPARE(view.minValue(), -0.25);
        QCOMPARE(view.maxValue(), 4.25);
        QCOMPARE(plot->axisScaleDraw(QwtAxis::yLeft)->label(4.0).text(), QString(" 1"));
        QCOMPARE(serie<ISerie>(chart, 1)->lastPoint(), QPointF(end - minute, 1.5));
        QVERIFY(serie<Widgets::qwidgetChartDiscretSerie>(chart, 1)->caption().endsWith("Стоп"));
        // The hatched band tells of the gap: no bar of it lies over the lowest band.
        const QImage canvas = plot->canvas()->grab().toImage();
        for (double x = end - 4.8 * minute; x < end - 4.2 * minute; x += minute / 20) {
            const QPoint foot(int(plot->transform(QwtAxis::xBottom, x)), canvas.height() - 4);
            const QColor seen = canvas.pixelColor(foot);
            QVERIFY2(seen.blue() - seen.red() < 30, qPrintable(seen.name()));
        }
        // The line of a state is whole: the band's own dots lie behind it.
        for (double x = end - 3.5 * minute; x < end - 3 * minute; x += minute / 20) {
            const QPointF off(plot->transform(QwtAxis::xBottom, x),
                              plot->transform(QwtAxis::yLeft, 1.5));
            QCOMPARE(canvas.pixelColor(off.toPoint()), QColor("#3c608c"));
        }
    }

    // Flags are drawn beside each other's places, a line of seldom changes goes on to the present.
    void severalAxes()
    {
        Widgets::qwidgetChartHistory chart(m_project->node<Nodes::widgetChartHistory>(60), nullptr);
        chart.resize(1000, 520);
        chart.show();
        auto *plot = qobject_cast<Widgets::PlotHistory *>(chart.plot());
        const double end = plot->window().maxValue();
        std::vector<Answers::Sample> rows[3];
        for (int i = 0; i <= 600; i += 5) {
            const double x = end - 10 * minute + i * 1000;
            const Nodes::Quality quality =
                i > 200 && i < 300 ? Nodes::Quality::Uncertain : Nodes::Quality::Good;
            rows[0].push_back({x, 75 + 10 * std::sin(i / 60.0), quality});
            rows[1].push_back({x, i > 380 && i < 420 ? Answers::gap : 6 + std::cos(i / 40.0),
                               i > 380 && i < 420 ? Nodes::Quality::Bad : Nodes::Quality::Good});
            if (i % 100 == 0 && i < 500)
                rows[2].push_back({x, 20.0 + i});
        }
        Nodes::HistoryAnswer answer;
        Answers::append(answer, 15, rows[0]);
        Answers::append(answer, 14, rows[1]);
        Answers::append(answer, 13, rows[2]);
        plot->onGetHistoryCompleted(Nodes::SignalHistoryResponse::AllOf(answer));
        plot->replot();
        keep(chart, "trend");
        QCOMPARE(plot->axesCount(QwtAxis::yLeft), 2);
        auto *seldom = serie<Widgets::qwidgetChartBasicSerie>(chart, 2);
        QCOMPARE(seldom->yAxis(), QwtAxisId(QwtAxis::yRight, 0));
        QVERIFY(seldom->lastPoint().x() < end - minute);
        const QImage picture = plot->plotCanvas()->grab().toImage();
        const QPoint present(int(plot->transform(QwtAxis::xBottom, end - 2.25 * minute)),
                             int(std::lround(plot->transform({QwtAxis::yRight, 0}, 420))));
        QCOMPARE(picture.pixelColor(present), QColor("#2e6f40"));
        QVERIFY(seldom->heldUntil() >= end);
    }

    void autoScaleKeyTellsWhatTheScalesDo()
    {
        for (const unsigned long axis : {63, 64, 65})
            m_project->set(axis, "autoScale", "true");
        Widgets::qwidgetChartHistory chart(m_project->node<Nodes::widgetChartHistory>(60), nullptr);
        const auto *bar =
            qobject_cast<Widgets::ToolBarAutoScale *>(chart.plot()->plotCanvas()->tbAxisY());
        QVERIFY(bar->isAutoScale());
        auto *gestures = chart.plot()->findChild<Widgets::AxisGestures *>();
        gestures->zoom({QwtAxis::yLeft, 0}, 1, 50);
        QTRY_VERIFY(!bar->isAutoScale());
        QVERIFY(chart.plot()->axisAutoScale({QwtAxis::yLeft, 1}));
        emit gestures->axisReleased({QwtAxis::yLeft, 0});
        QTRY_VERIFY(bar->isAutoScale());
    }

    void discretPlotOfAHost()
    {
        auto *node = m_project->node<Nodes::widgetChartHistory>(30);
        Widgets::ChartGroupManager manager(node);
        Widgets::PlotDiscret plot(node, 1, nullptr);
        plot.setGroupManager(&manager);
        manager.setCurrentGroup(m_project->node<Nodes::widgetChartGroup>(31));
        QVERIFY(dynamic_cast<Widgets::DiscretScaleEngine *>(plot.axisScaleEngine(QwtAxis::yLeft)));
        auto *draw =
            dynamic_cast<Widgets::DiscretValueScaleDraw *>(plot.axisScaleDraw(QwtAxis::yLeft));
        QVERIFY(draw);
        QCOMPARE(draw->color(), QColor(Qt::black));
        QVERIFY(plot.axisAutoScale(QwtAxis::yLeft));
        for (QToolBar *bar : plot.plotCanvas()->findChildren<QToolBar *>())
            QVERIFY(bar->isHidden());
        // As wide as another plot's scale.
        QwtPlot other;
        other.setAxisScale(QwtPlot::yLeft, 0, 1e9);
        other.replot();
        const QFont font = plot.axisWidget(QwtAxis::yLeft)->font();
        QVERIFY(draw->extent(font) < other.axisScaleDraw(QwtPlot::yLeft)->extent(font));
        plot.setDelegateAxisScaleDraw(QwtAxis::xBottom, other.axisScaleDraw(QwtPlot::yLeft));
        QVERIFY(draw->extent(font) < other.axisScaleDraw(QwtPlot::yLeft)->extent(font));
        plot.setDelegateAxisScaleDraw(QwtAxis::yLeft, other.axisScaleDraw(QwtPlot::yLeft));
        QCOMPARE(draw->extent(font), other.axisScaleDraw(QwtPlot::yLeft)->extent(font));
        plot.onUpdateProperties();
        QCOMPARE(plot.axisScaleDraw(QwtAxis::yLeft)->extent(font),
                 other.axisScaleDraw(QwtPlot::yLeft)->extent(font));
        plot.setDelegateAxisScaleDraw(QwtAxis::yLeft, nullptr);
        QVERIFY(!plot.findChild<Widgets::AxisGestures *>()->isEnabled(QwtAxis::yLeft));
    }

    // The scale that lends its width is made anew with each property of its plot, and goes with it.
    void discretPlotBelowAnother()
    {
        auto *discrete = m_project->node<Nodes::widgetChartHistory>(30);
        Widgets::ChartGroupManager below(discrete);
        Widgets::PlotDiscret plot(discrete, 1, nullptr);
        plot.setGroupManager(&below);
        below.setCurrentGroup(m_project->node<Nodes::widgetChartGroup>(31));
        const QFont font = plot.axisWidget(QwtAxis::yLeft)->font();
        const auto width = [&] { return plot.axisScaleDraw(QwtAxis::yLeft)->extent(font); };
        const double own = width();
        auto *trend = m_project->node<Nodes::widgetChartHistory>(60);
        Widgets::ChartGroupManager above(trend);
        const QwtScaleDraw *told = nullptr;
        auto lender = std::make_unique<Widgets::PlotHistory>(trend, 1, nullptr);
        lender->setGroupManager(&above);
        connect(lender.get(), &Widgets::Plot::axisScaleDrawChanged, &plot,
                &Widgets::PlotDiscret::setDelegateAxisScaleDraw);
        above.setCurrentGroup(m_project->node<Nodes::widgetChartGroup>(61));
        const QwtAxisId last(QwtAxis::yRight, 0);
        const double lent = lender->axisScaleDraw(last)->extent(font);
        QVERIFY(lent > own);
        QCOMPARE(width(), lent);
        m_project->set(65, "labelFormat", "%.6f");
        QVERIFY(lender->axisScaleDraw(last)->extent(font) > lent);
        QCOMPARE(width(), lender->axisScaleDraw(last)->extent(font));
        connect(lender.get(), &Widgets::Plot::axisScaleDrawChanged, lender.get(),
                [&told](QwtAxisId, const QwtScaleDraw *draw) { told = draw; });
        emit lender->findChild<Widgets::AxisGestures *>()->axisReleased(last);
        QCOMPARE(told, lender->axisScaleDraw(last));
        lender.reset();
        QCOMPARE(width(), own);
    }

    void signalOverSignal()
    {
        Widgets::qwidgetChartXY chart(m_project->node<Nodes::widgetChartXY>(40), nullptr);
        chart.resize(760, 520);
        chart.show();
        auto *xy = serie<Widgets::qwidgetChartXYSerie>(chart);
        QVERIFY(xy);
        const double now = ChartTime::now();
        std::vector<Answers::Sample> flow;
        std::vector<Answers::Sample> pressure;
        for (int i = 0; i < 500; ++i) {
            const double x = now - 9 * minute + i * 1000;
            flow.push_back({x, 50 + 35 * std::cos(i / 40.0) - i / 40.0});
            pressure.push_back({x + 100, 5 + 3.5 * std::sin(i / 40.0)});
        }
        Nodes::HistoryAnswer answer;
        Answers::append(answer, 13, flow);
        Answers::append(answer, 14, pressure);
        const auto samples = Nodes::SignalHistoryResponse::AllOf(answer);
        QTest::ignoreMessage(QtWarningMsg, "Внимание, функция не реализована!");
        xy->updateArchPoints(samples);
        QCOMPARE(xy->pointCount(), std::size_t(0));
        xy->updateHistory(samples);
        QCOMPARE(xy->pointCount(), std::size_t(500));
        chart.plot()->replot();
        keep(chart, "xy");

        m_project->publish(13, 20.0);
        m_project->publish(14, 4.0);
        QTRY_COMPARE(xy->lastPoint(), QPointF(20, 4));
        m_project->publish(14, Nodes::SignalValue(Nodes::Result(Nodes::Result::NotAvailable)));
        QTRY_VERIFY(std::isnan(xy->lastPoint().y()));

        auto *plot = qobject_cast<Widgets::PlotXY *>(chart.plot());
        const auto title = [plot] { return plot->axisTitle(QwtPlot::xBottom).text(); };
        QCOMPARE(title(), QString("Расход, т/ч (за 10\u00a0мин)"));
        const WhenShown<QWidget> dialog([](QWidget &window) {
            auto *time = window.findChild<Widgets::TimeDialog *>();
            time = time ? time : qobject_cast<Widgets::TimeDialog *>(&window);
            time->setTime(2, Nodes::widgetChartAxis::RangeHours);
            time->accept();
        });
        plot->onActionLengthX();
        QCOMPARE(plot->length(), 120 * minute);
        QCOMPARE(title(), QString("Расход, т/ч (за 2\u00a0ч)"));
        QVERIFY(
            qobject_cast<Widgets::ToolBarAutoScaleAxisX *>(chart.plot()->plotCanvas()->tbAxisX()));
    }

    // Who edits a project sees what it will look like.
    void edited()
    {
        m_project = std::make_unique<RuntimeProject>(plant, Nodes::WorkModeEditing);
        Widgets::qwidgetChartXY xy(m_project->node<Nodes::widgetChartXY>(40), nullptr);
        Widgets::qwidgetChartCorridor tube(m_project->node<Nodes::widgetChartCorridor>(50),
                                           nullptr);
        for (QWidget *chart : {static_cast<QWidget *>(&xy), static_cast<QWidget *>(&tube)}) {
            chart->resize(700, 400);
            chart->show();
        }
        keep(xy, "xy-edited");
        keep(tube, "corridor-edited");
        QVERIFY(serie<ISerie>(xy)->pointCount() > 100);
        QVERIFY(serie<Widgets::qwidgetChartCorridorSerie>(tube)->tube().boundingRect().height() >
                0);
    }

    void corridor()
    {
        Widgets::qwidgetChartCorridor chart(m_project->node<Nodes::widgetChartCorridor>(50),
                                            nullptr);
        chart.resize(900, 420);
        chart.show();
        auto *plot = qobject_cast<Widgets::PlotCorridor *>(chart.plot());
        auto *tube = serie<Widgets::qwidgetChartCorridorSerie>(chart);
        QVERIFY(tube);
        const double end = plot->window().maxValue();
        std::vector<Answers::Sample> samples;
        for (int i = 0; i < 1800; ++i) {
            const double value =
                70 + 12 * std::sin(i / 300.0) + 5 * std::sin(i * 0.7) * (i % 11) / 11;
            const bool isLost = i > 1000 && i < 1200;
            samples.push_back({end - 30 * minute + i * 1000, isLost ? Answers::gap : value,
                               isLost ? Nodes::Quality::Bad : Nodes::Quality::Good});
        }
        plot->onGetHistoryCompleted(Answers::of(15, samples));
        plot->replot();
        keep(chart, "corridor");
        QCOMPARE(plot->plotCanvas()->sliceButton()->text(), QString("1м"));
        QCOMPARE(plot->plotCanvas()->sliceButton()->font().pointSize(), 8);
        const auto at = tube->sampleAt(end - 20 * minute);
        QVERIFY(at && at->lower < at->middle && at->middle < at->upper);
    }
};

QTEST_MAIN(TestChartKinds)
#include "tst_chart_kinds.moc"
