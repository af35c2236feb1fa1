// Calling up a window with a trend over a year: from the action to the picture with every curve.
// STATION_BENCH_SAMPLES: samples of each signal in the archive, 10^6 unless set.
#include "LabelWindow.h"

#include "widgets/actions/qBasicAction.h"
#include "widgets/charts/elements/qwidgetChartHistory.h"
#include "widgets/charts/plots/Plot.h"
#include "widgets/charts/series/ISerie.h"
#include "widgets/windows/WindowBasic.h"

#include "nodes/actions/BasicAction.h"
#include "nodes/archive/store/ArchiveStore.h"
#include "nodes/archive/store/SamplePacket.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/values/Clock.h"

#include <benchmark/benchmark.h>

#include <QFile>
#include <QGraphicsProxyWidget>
#include <QTemporaryDir>

#include <chrono>
#include <cmath>
#include <cstdlib>

namespace {

using namespace Nodes;

constexpr int seriesCount = 8;
constexpr Timestamp year = Timestamp(365) * 86400 * 1000000;

void demand(const Result &result)
{
    if (!result)
        throw std::logic_error(result.ToString());
}

QByteArray projectText()
{
    QByteArray signalNodes, sources, series;
    for (int i = 0; i < seriesCount; ++i) {
        const QByteArray id = QByteArray::number(100 + i);
        const QByteArray source = QByteArray::number(200 + i);
        signalNodes += "<memorySignal id=\"" + id + "\" name=\"S" + id + "\"/>";
        sources +=
            "<archiverSource id=\"" + source + "\" name=\"A" + id + "\" signal=\"" + id + "\"/>";
        series += "<chartSerie id=\"" + QByteArray::number(300 + i) + "\" name=\"R" + id +
                  "\" source=\"" + source + "\" axisY=\"21\"/>";
    }
    return "<project id=\"1\" name=\"P\" format=\"1\" "
           "uuid=\"c282ed5a-d3b1-4ef8-b237-fa7e491ebe63\"><station id=\"2\" name=\"S\">"
           "<archiver id=\"3\" name=\"A\">" +
           sources + "</archiver><folder id=\"4\" name=\"F\">" + signalNodes +
           "<actionShowWindow id=\"5\" name=\"Show\" window=\"10\"/></folder>"
           "<window id=\"10\" name=\"W\" width=\"1600\" height=\"900\">"
           "<chartHistory id=\"11\" name=\"C\" width=\"1600\" height=\"900\">"
           "<chartGroup id=\"12\" name=\"G\"><chartTimeAxis id=\"20\" name=\"X\" length=\"365\" "
           "lengthUnit=\"days\"/><chartAxis id=\"21\" name=\"Y\" from=\"-2\" to=\"12\"/>" +
           series + "</chartGroup></chartHistory></window></station></project>";
}

SampleRun samplesOf(int signal, std::size_t from, std::size_t count, Timestamp begin,
                    Timestamp period)
{
    SampleRun run;
    run.Reserve(count);
    for (std::size_t i = from; i < from + count; ++i) {
        const double value = signal + std::sin(double(i) / 5000) + double(i * 7919 % 100) / 200;
        run.Add(begin + Timestamp(i) * period, std::round(value * 100) / 100, Quality::Good);
    }
    return run;
}

/// A running station with its archive filled for a year up to now.
class Trend
{
public:
    Trend()
    {
        QFile file(m_directory.filePath("project.xml"));
        if (!file.open(QIODevice::WriteOnly) || file.write(projectText()) < 0)
            throw std::logic_error("project.xml");
        file.close();
        m_core.SetWorkMode(WorkModeRuntime);
        demand(m_core.LoadProject(m_directory.path().toStdString()));
        fill();
        m_manager = std::make_unique<Widgets::WindowManager>(&m_core);
        demand(m_core.Start());
        m_action = dynamic_cast<BasicAction *>(NodeLink(5).GetNode());
    }
    ~Trend() { (void)m_core.Stop(); }

    /// Seconds to the first painting after every curve has its points.
    double open()
    {
        const auto begun = std::chrono::steady_clock::now();
        const std::unique_ptr<Widgets::qBasicAction> run(m_manager->CreateQAction(m_action));
        run->setState(Widgets::ActionHandedOver);
        (void)m_manager->OnActionExecuted(run.get());
        Widgets::Plot *plot = nullptr;
        while (!plot || !isFilled(*plot)) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            plot = plot ? plot : findPlot();
        }
        PaintCounter(plot->canvas()).await();
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - begun).count();
    }
    void close() { delete window(); }

private:
    QWidget *window() const { return m_manager->GetWindow(10); }
    Widgets::Plot *findPlot() const
    {
        for (QWidget *widget : QApplication::allWidgets()) {
            if (auto *plot = qobject_cast<Widgets::Plot *>(widget))
                return plot;
        }
        return nullptr;
    }
    static bool isFilled(const Widgets::Plot &plot)
    {
        const auto series = plot.series();
        return series.size() == seriesCount &&
               std::all_of(series.begin(), series.end(),
                           [](const auto *serie) { return serie->pointCount() > 100; });
    }
    void fill()
    {
        const char *wanted = std::getenv("STATION_BENCH_SAMPLES");
        const auto each = std::size_t(wanted ? std::atof(wanted) : 1e6);
        const Timestamp begin = Clock::Current().Now() - year;
        std::unique_ptr<ArchiveStore> store;
        demand(ArchiveStores().Make(m_core.GetRecordLocation("archive"), store));
        StoreOpening opening;
        demand(store->Open(opening));
        std::uint64_t key = 0;
        constexpr std::size_t portion = 50000;
        for (int signal = 0; signal < seriesCount; ++signal) {
            for (std::size_t i = 0; i < each; i += portion) {
                SamplePacket packet;
                ArchiveSignalKey name;
                name.source.home = m_core.GetRecordHome();
                name.source.node = 100 + unsigned(signal);
                const std::size_t count = std::min(portion, each - i);
                packet.parts.push_back(
                    {name, samplesOf(signal, i, count, begin, year / Timestamp(each)), false});
                std::vector<std::uint64_t> numbers;
                demand(store->Write({{++key, 1, packet.Pack()}}, numbers));
            }
        }
        RecordStore::Upkeep upkeep;
        do {
            upkeep = {};
            demand(store->Tend(upkeep));
        } while (upkeep.hasMore);
        demand(store->Flush());
        store->Close();
    }

    QTemporaryDir m_directory;
    systemCore m_core;
    std::unique_ptr<Widgets::WindowManager> m_manager;
    BasicAction *m_action = nullptr;
};

void openTrendOfAYear(benchmark::State &state)
{
    Trend trend;
    for (auto _ : state) {
        state.SetIterationTime(trend.open());
        trend.close();
        settle();
    }
}

} // namespace

BENCHMARK(openTrendOfAYear)->UseManualTime()->Iterations(20)->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    const BenchApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
