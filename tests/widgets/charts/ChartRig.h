#pragma once

#include "support/RuntimeProject.h"

#include "widgets/charts/elements/qwidgetChartHistory.h"
#include "widgets/charts/painting/CurveData.h"
#include "widgets/charts/plots/ChartGroupManager.h"
#include "widgets/charts/plots/PlotHistory.h"
#include "widgets/charts/plots/WaitBox.h"
#include "widgets/charts/series/qwidgetChartBasicSerie.h"
#include "widgets/charts/time/ChartTime.h"

#include "nodes/archive/HistoryColumnBuilder.h"
#include "nodes/archive/HistoryService.h"
#include "nodes/archive/HistorySource.h"
#include "nodes/charts/widgetChartHistory.h"

#include <atomic>
#include <map>
#include <mutex>
#include <thread>

/// A trend of two signals with an archive and a group of one without, and an archive that answers
/// when it is told to.
namespace ChartRig {

constexpr const char *nodes = R"(
<memorySignal id="10" name="T" unit="°C"/><memorySignal id="11" name="P" unit="bar"/>
<archiverSource id="20" name="a" signal="10"/><archiverSource id="21" name="b" signal="11"/>
<layer id="2" name="L"><chartHistory id="100" name="C" width="900" height="500">
  <chartGroup id="101" name="Котёл"><chartTimeAxis id="102" name="X" length="10" lengthUnit="seconds"/>
    <chartAxis id="103" name="Y"/><chartSerie id="104" name="s" source="20" offsetY="2.5"/>
    <chartSerie id="105" name="t" source="21"/></chartGroup>
  <chartGroup id="111" name="Без архива"><chartTimeAxis id="112" name="X"/>
    <chartAxis id="113" name="Y"/><chartSerie id="114" name="s" signal="10"/>
    <chartSerie id="115" name="t" source="21"/></chartGroup>
  <chartGroup id="121" name="Минутой раньше"><chartTimeAxis id="122" name="X" length="10" lengthUnit="seconds"/>
    <chartAxis id="123" name="Y"/><chartSerie id="124" name="s" source="20"/>
    <chartSerie id="125" name="t" source="20" shift="60"/>
    <chartDiscretSerie id="126" name="d" source="21"/></chartGroup>
</chartHistory></layer>)";

/// Samples in memory, microseconds; keeps its readers waiting while it hangs.
class Archive : public Nodes::HistorySource
{
public:
    Nodes::Result Read(Nodes::HistoryColumnBuilder &into,
                       const std::atomic<bool> &isCancelled) const override
    {
        ++reads;
        while (isHanging && !isCancelled)
            std::this_thread::yield();
        if (isCancelled)
            return Nodes::Result::Cancelled;
        const std::lock_guard lock(mutex);
        from = into.GetFrom();
        to = into.GetTo();
        for (const auto &[time, number] : samples)
            into.Add(time, number, Nodes::Quality::Good);
        return {};
    }

    mutable std::mutex mutex;
    std::map<Nodes::Timestamp, double> samples; // guarded
    mutable std::atomic<int> reads{0};
    mutable std::atomic<Nodes::Timestamp> from{0};
    mutable std::atomic<Nodes::Timestamp> to{0};
    std::atomic<bool> isHanging{false};
};

struct Rig : RuntimeProject
{
    explicit Rig(Nodes::enWorkMode mode = Nodes::WorkModeRuntime) : RuntimeProject(nodes, mode)
    {
        (void)core.GetHistory().AddSource(10, archive);
        (void)core.GetHistory().AddSource(11, other);
        element = std::make_unique<Widgets::qwidgetChartHistory>(
            node<Nodes::widgetChartHistory>(100), nullptr);
        plot = static_cast<Widgets::PlotHistory *>(element->plot());
    }
    ~Rig() { archive->isHanging = false; }

    void show()
    {
        element->start();
        element->show();
        QVERIFY(QTest::qWaitForWindowExposed(element.get()));
        QTRY_VERIFY(archive->reads > 0 && !plot->waitBox()->isRunning());
        plot->setTracking(false);
    }
    Widgets::qwidgetChartBasicSerie &serie(int number = 0) const
    {
        return dynamic_cast<Widgets::qwidgetChartBasicSerie &>(*plot->series().at(number));
    }
    QVector<double> times(int number = 0) const { return column(number, &QPointF::x); }
    QVector<double> values(int number = 0) const { return column(number, &QPointF::y); }
    QVector<double> column(int number, double (QPointF::*part)() const) const
    {
        QVector<double> found;
        for (std::size_t i = 0; i < serie(number).points()->size(); ++i)
            found << (serie(number).points()->sample(i).*part)();
        return found;
    }
    /// A value of the first signal as it comes live.
    static Nodes::SignalValue at(double x, Nodes::SignalValue value = 1.0)
    {
        const Nodes::Timestamp time = (qint64(x) + Widgets::ChartTime::epoch()) * 1000;
        value.SetTimes(time, time);
        return value;
    }
    void setWindow(double lower, double upper) const
    {
        plot->setAxisScale(QwtAxisId(QwtAxis::xBottom), lower, upper);
        plot->replot();
    }

    std::shared_ptr<Archive> archive = std::make_shared<Archive>();
    std::shared_ptr<Archive> other = std::make_shared<Archive>();
    std::unique_ptr<Widgets::qwidgetChartHistory> element;
    Widgets::PlotHistory *plot;
};

} // namespace ChartRig
