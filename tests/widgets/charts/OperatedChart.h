#pragma once

#include "support/Mouse.h"
#include "support/RuntimeProject.h"

#include "widgets/charts/aids/ChartAids.h"
#include "widgets/charts/legend/Legend.h"
#include "widgets/charts/legend/LegendModel.h"
#include "widgets/charts/plots/ChartGroupManager.h"
#include "widgets/charts/plots/PlotHistory.h"
#include "widgets/charts/plots/WaitBox.h"
#include "widgets/charts/series/ISerie.h"
#include "widgets/charts/time/ChartTime.h"

#include "nodes/archive/HistoryColumnBuilder.h"
#include "nodes/archive/HistoryService.h"
#include "nodes/archive/HistorySource.h"
#include "nodes/charts/widgetChartGroup.h"
#include "nodes/charts/widgetChartHistory.h"

#include <QLabel>
#include <QMenu>
#include <QVBoxLayout>

#include <qwt_plot_marker.h>

#include <tuple>

/// A trend as an operator has it in front of him: plot, legend and aids in a window, with an
/// archive of fixed samples. Its window of time is ten minutes from `begin` on.
class OperatedChart : public RuntimeProject
{
public:
    static constexpr const char *nodes = R"(
<memorySignal id="10" name="Температура подачи" unit="°C" decimals="1"/>
<memorySignal id="11" name="Расход" unit="м³/ч" decimals="1"/>
<memorySignal id="12" name="Предел" unit="°C" decimals="1" writable="true" minimum="0" maximum="100"/>
<archiverSource id="20" name="a" signal="10"/><archiverSource id="21" name="b" signal="11"/>
<alarmLimit id="30" name="Высокая" signal="10" priority="2"/>
<chartHistory id="100" name="Котёл: обзор" width="800" height="500">
  <chartGroup id="101" name="Группа">
    <chartTimeAxis id="102" name="X"/><chartAxis id="103" name="Y" axisTitle="°C"/>
    <chartSerie id="104" name="s" source="20" axisY="103" color="#3c608c"/>
    <chartSerie id="105" name="t" source="21" axisY="103" style="steps" offsetY="5"/>
    <chartZone id="106" name="z" text="Допуск" lower="20" upperSignal="12" color="#8080a060"/>
  </chartGroup></chartHistory>)";
    static constexpr Nodes::Timestamp Second = 1000000;
    static constexpr Nodes::Timestamp Start = 1700000000 * Second;

    /// What a signal did.
    struct Archive : Nodes::HistorySource
    {
        Nodes::Result Read(Nodes::HistoryColumnBuilder &into,
                           const std::atomic<bool> &) const override
        {
            for (const auto &[time, number, quality] : samples)
                into.Add(time, number, quality);
            return {};
        }
        std::vector<std::tuple<Nodes::Timestamp, double, Nodes::Quality>> samples;
    };

    explicit OperatedChart(const char *xml = nodes)
        : RuntimeProject(xml),
          groups(node<Nodes::widgetChart>(100)),
          plot(new Widgets::PlotHistory(node<Nodes::widgetChartHistory>(100), 1, &window)),
          legend(new Widgets::Legend(&groups, &window))
    {
        (void)core.GetHistory().AddSource(10, archive);
        (void)core.GetHistory().AddSource(11, other);
        auto *layout = new QVBoxLayout(&window);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(0);
        layout->addWidget(plot);
        layout->addWidget(legend);
        plot->setGroupManager(&groups);
        legend->setPlot(plot);
        aids = std::make_unique<Widgets::ChartAids>(plot, &groups, legend, &window);
        QObject::connect(legend, &Widgets::Legend::seriesUpdated, plot, &QwtPlot::replot);
        groups.setCurrentGroup(node<Nodes::widgetChartGroup>(101));
        legend->onUpdateProperties();
        window.resize(900, 560);
        window.show();
        if (!QTest::qWaitForWindowExposed(&window))
            qFatal("the window does not show");
        if (!QTest::qWaitFor([this] { return !plot->waitBox()->isRunning(); }))
            qFatal("the archive does not answer");
        plot->setTracking(false);
        setWindow(0, 600);
    }
    ~OperatedChart()
    {
        aids.reset();
        plot->setGroupManager(nullptr);
        delete legend;
        delete plot;
    }

    /// X value that many seconds after the begin.
    static double at(double seconds) { return Widgets::ChartTime::toX(Start) + seconds * 1000; }
    static Nodes::Timestamp time(double seconds)
    {
        return Start + Nodes::Timestamp(seconds * double(Second));
    }
    void setWindow(double from, double to)
    {
        plot->setAxisScale(QwtAxisId(QwtAxis::xBottom), at(from), at(to));
        plot->setAxisScale(QwtAxisId(QwtAxis::yLeft), 0, 100);
        plot->replot();
    }
    Widgets::ISerie &serie(int number = 0) const { return *plot->series().at(number); }
    void append(int number, double seconds, const Nodes::SignalValue &value,
                Nodes::Quality quality = Nodes::Quality::Good)
    {
        Nodes::SignalValue stamped = value;
        stamped.SetQuality(quality);
        stamped.SetTimes(time(seconds), time(seconds));
        serie(number).appendPoint(at(seconds), stamped);
    }
    /// Where a point of the plot is seen on the canvas.
    QPoint place(double seconds, double y) const
    {
        return QPointF(plot->transform(QwtAxisId(QwtAxis::xBottom), at(seconds)),
                       plot->transform(QwtAxisId(QwtAxis::yLeft), y))
            .toPoint();
    }
    void click(const QPoint &place, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease})
            sendMouse(*plot->canvas(), type, place, Qt::LeftButton, modifiers);
    }
    std::vector<const QwtPlotMarker *> markers(const QString &title) const
    {
        std::vector<const QwtPlotMarker *> found;
        for (const QwtPlotItem *item : plot->itemList())
            if (item->title().text() == title)
                found.push_back(dynamic_cast<const QwtPlotMarker *>(item));
        return found;
    }
    /// Entry of the chart's menu as it is now.
    void choose(const QString &text)
    {
        QMenu menu;
        aids->fillMenu(menu, {});
        const QList<QAction *> all = menu.findChildren<QAction *>();
        for (QAction *action : all)
            if (action->text() == text && action->isEnabled())
                return action->trigger();
        qFatal("no entry %s", qPrintable(text));
    }

    std::shared_ptr<Archive> archive = std::make_shared<Archive>();
    std::shared_ptr<Archive> other = std::make_shared<Archive>();
    QWidget window;
    Widgets::ChartGroupManager groups;
    Widgets::PlotHistory *plot;
    Widgets::Legend *legend;
    std::unique_ptr<Widgets::ChartAids> aids;
};
