// A chart that follows 20 signals at 10 Hz for 24 hours of a simulated clock: what a value costs on
// its way into the curve, and whether memory stays that of the window.
#include "LabelWindow.h"

#include "widgets/charts/elements/qwidgetChartHistory.h"
#include "widgets/charts/painting/CurveData.h"
#include "widgets/charts/plots/PlotCanvas.h"
#include "widgets/charts/plots/PlotHistory.h"
#include "widgets/charts/series/qwidgetChartBasicSerie.h"
#include "widgets/charts/time/ChartTime.h"

#include "nodes/charts/widgetChartHistory.h"
#include "nodes/serial/ProjectReader.h"

#include <benchmark/benchmark.h>

#include <QDateTime>
#include <QFile>

#include <unistd.h>

namespace {

constexpr int series = 20;
constexpr int perSecond = 10;
constexpr int hours = 24;

std::string projectText()
{
    std::string text = R"(<project format="1" id="1" name="P">)";
    for (int i = 0; i < series; ++i)
        text += "<memorySignal id=\"" + std::to_string(10 + i) + "\" name=\"S\"/>";
    text += R"(<layer id="2" name="L"><chartHistory id="100" name="C" width="1600" height="800">
        <chartGroup id="101" name="G"><chartTimeAxis id="102" name="X" length="10"
        lengthUnit="minutes"/><chartAxis id="103" name="Y"/>)";
    for (int i = 0; i < series; ++i)
        text += "<chartSerie id=\"" + std::to_string(200 + i) + "\" name=\"s\" signal=\"" +
                std::to_string(10 + i) + "\"/>";
    return text + "</chartGroup></chartHistory></layer></project>";
}

/// The chart as the station shows it.
class RunningChart
{
public:
    RunningChart()
    {
        std::unique_ptr<Nodes::NodesCollection> project;
        Nodes::ProjectReader reader;
        if (!reader.ReadBuffer(projectText(), "bench", project))
            throw std::logic_error("project");
        core.AdoptProject(std::move(project), "bench.xml");
        core.SetWorkMode(Nodes::WorkModeRuntime);
        manager = std::make_unique<Widgets::WindowManager>(&core);
        auto *node =
            dynamic_cast<Nodes::widgetChartHistory *>(core.GetNodesCollection()->FindNode(100));
        element = std::make_unique<Widgets::qwidgetChartHistory>(node, nullptr);
        element->start();
        element->resize(1600, 800);
        element->show();
        plot = static_cast<Widgets::PlotHistory *>(element->plot());
        plot->plotCanvas()->setTracking(true);
    }
    /// One second of every signal, as a burst from the driver.
    void second(qint64 at)
    {
        const auto all = plot->series();
        for (Widgets::ISerie *serie : all) {
            std::vector<Nodes::SignalValue> values;
            for (int i = 0; i < perSecond; ++i) {
                const qint64 time = (at * 1000 + i * (1000 / perSecond)) * 1000;
                Nodes::SignalValue value((at * 7 + i * 13) % 1000 / 10.0);
                value.SetTimes(time, time);
                values.push_back(value);
            }
            emit plot->appendPointsSignal(std::move(values), serie);
        }
    }
    std::size_t points() const
    {
        std::size_t count = 0;
        const auto all = plot->series();
        for (Widgets::ISerie *serie : all)
            count += dynamic_cast<Widgets::qwidgetChartBasicSerie &>(*serie).points()->size();
        return count;
    }

    Nodes::systemCore core;
    std::unique_ptr<Widgets::WindowManager> manager;
    std::unique_ptr<Widgets::qwidgetChartHistory> element;
    Widgets::PlotHistory *plot = nullptr;
};

double residentMiB()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readAll().split(' ').value(1).toDouble() * double(sysconf(_SC_PAGESIZE)) / 1048576;
}

void day(benchmark::State &state)
{
    for (auto _ : state) {
        RunningChart chart;
        const double empty = residentMiB();
        const qint64 start = QDateTime::currentSecsSinceEpoch(); // the window begins there
        for (int hour = 0; hour < hours; ++hour) {
            for (int second = 0; second < 3600; ++second) {
                chart.second(start + hour * 3600 + second);
                if (second % 3 == 0) // a tenth of the frames that a chart shows
                    chart.plot->replot();
            }
            QCoreApplication::processEvents();
            if (hour == 0)
                state.counters["MiB after 1 h"] = residentMiB() - empty;
        }
        state.counters["MiB after 24 h"] = residentMiB() - empty;
        state.counters["points held"] = double(chart.points());
        state.counters["values/s"] =
            benchmark::Counter(double(hours) * 3600 * perSecond * series,
                               benchmark::Counter::kIsIterationInvariantRate);
    }
}

} // namespace

int main(int argc, char **argv)
{
    const BenchApplication application(argc, argv);
    benchmark::RegisterBenchmark("24 h at 10 Hz x 20 series", day)
        ->Unit(benchmark::kSecond)
        ->Iterations(1);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
