#include "widgets/charts/overlay/PastPeriods.h"

#include "widgets/charts/aids/HistoryAsker.h"
#include "widgets/charts/legend/Legend.h"
#include "widgets/charts/legend/SerieColor.h"
#include "widgets/charts/overlay/ShiftText.h"
#include "widgets/charts/plots/ChartGroupManager.h"
#include "widgets/charts/plots/Plot.h"
#include "widgets/charts/series/ISerie.h"
#include "widgets/charts/series/SerieFactory.h"
#include "widgets/charts/time/ChartTime.h"

#include "nodes/archive/HistoryAnswer.h"
#include "nodes/archive/SignalHistoryResponse.h"
#include "nodes/charts/widgetChart.h"
#include "nodes/charts/widgetChartHistorySerie.h"
#include "nodes/model/NodesArray.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/values/NumberText.h"

#include <algorithm>

#include <qwt_scale_widget.h>

namespace Widgets {

namespace {

constexpr int askDelay = 300;       // ms
constexpr int watchInterval = 1000; // ms
constexpr double margin = 0.25;     // of the window's width, held beyond either edge
constexpr int pointsPerPixel = 4;

} // namespace

PastPeriods::PastPeriods(Plot *plot, ChartGroupManager *manager, Legend *legend)
    : m_plot(plot), m_manager(manager), m_legend(legend)
{
    m_delay.setSingleShot(true);
    m_delay.setInterval(askDelay);
    m_watch.setInterval(watchInterval);
    connect(&m_delay, &QTimer::timeout, this, &PastPeriods::update);
    connect(&m_watch, &QTimer::timeout, this, &PastPeriods::watch);
    connect(plot->axisWidget(QwtAxisId(QwtAxis::xBottom)), &QwtScaleWidget::scaleDivChanged,
            &m_delay, qOverload<>(&QTimer::start));
    if (manager) {
        connect(manager, &ChartGroupManager::seriesAboutToGo, this, &PastPeriods::clear);
        connect(manager, &ChartGroupManager::groupChanged, this, &PastPeriods::clear);
    }
    m_delay.start();
}

PastPeriods::~PastPeriods()
{
    if (m_legend)
        m_legend->setAdded({});
}

void PastPeriods::add(double shift)
{
    if (!m_plot || !(shift > 0))
        return;
    const QList<ISerie *> present = m_plot->series();
    for (ISerie *serie : present) {
        auto *source = dynamic_cast<Nodes::widgetChartHistorySerie *>(serie->getNode());
        if (!source || !serie->isVisible() || !serie->hasArchiverSource() || source->GetShift() > 0)
            continue;
        Added added;
        // Outside of the tree: nothing of it is saved, and its links lead where the original's do.
        added.node = Nodes::NodesArray::CreateNodeCopy(source->GetNodeType(), source);
        auto *node = dynamic_cast<Nodes::widgetChartHistorySerie *>(added.node.get());
        if (!node || !node->SetPropertyText("shift", Nodes::FormatDouble(shift / 1000)))
            continue;
        added.serie.reset(SerieFactory::create(node, nullptr));
        added.serie->attachToPlot(m_plot);
        SetSerieColor(*added.serie, serie->getColor());
        m_added.push_back(std::move(added));
    }
    tellLegend();
    readerOf(shift).to = 0;
    update();
}

void PastPeriods::clear()
{
    if (m_legend)
        m_legend->setAdded({});
    m_added.clear(); // detaches
    m_readers.clear();
    m_delay.start(); // another group may have configured ones
    if (m_plot)
        m_plot->scheduleReplot();
}

void PastPeriods::readAnew()
{
    for (ISerie *serie : shifted())
        if (serie->getNode() && serie->getNode()->IsForbidden())
            serie->clearPoints();
    for (Reader &reader : m_readers) {
        reader.asker->cancel();
        reader.to = reader.from;
    }
    update();
}

void PastPeriods::tellLegend()
{
    std::vector<ISerie *> series;
    for (const Added &added : m_added)
        series.push_back(added.serie.get());
    if (m_legend)
        m_legend->setAdded(series);
}

std::vector<ISerie *> PastPeriods::shifted() const
{
    std::vector<ISerie *> found;
    if (!m_plot)
        return found;
    const QList<ISerie *> present = m_plot->series();
    std::copy_if(present.begin(), present.end(), std::back_inserter(found),
                 [](const ISerie *serie) { return ShiftOf(serie->getNode()) > 0; });
    for (const Added &added : m_added)
        found.push_back(added.serie.get());
    return found;
}

PastPeriods::Reader &PastPeriods::readerOf(double shift)
{
    for (Reader &reader : m_readers)
        if (reader.shift == shift)
            return reader;
    m_readers.emplace_back();
    Reader &reader = m_readers.back();
    reader.shift = shift;
    reader.asker = std::make_unique<HistoryAsker>();
    connect(reader.asker.get(), &HistoryAsker::answered, this,
            [this, shift](const std::shared_ptr<const Nodes::HistoryAnswer> &answer) {
                onAnswered(shift, answer);
            });
    return reader;
}

void PastPeriods::update()
{
    const std::vector<ISerie *> series = shifted();
    if (series.empty() || !m_plot || !m_plot->isAtWork())
        return m_watch.stop();
    m_watch.start();
    for (const ISerie *serie : series) {
        Reader &reader = readerOf(ShiftOf(serie->getNode()));
        const QwtInterval window = m_plot->window();
        const bool isHeld = reader.from <= window.minValue() && reader.to >= window.maxValue();
        const bool isCoarse = reader.to - reader.from > 4 * window.width();
        if (!isHeld || isCoarse)
            ask(reader, false);
    }
}

// Lines that the plot has emptied are read again. An answer without samples is one, too.
void PastPeriods::watch()
{
    for (const ISerie *serie : shifted()) {
        Reader &reader = readerOf(ShiftOf(serie->getNode()));
        if (serie->pointCount() == 0 && reader.to > reader.from && !reader.asker->isAsking())
            ask(reader, true);
    }
}

void PastPeriods::ask(Reader &reader, bool isEmpty)
{
    const QwtInterval window = m_plot->window();
    if (!(window.width() > 0))
        return;
    reader.from = window.minValue() - margin * window.width();
    reader.to = window.maxValue() + margin * window.width();
    Nodes::HistoryRequest request;
    request.from = Nodes::Timestamp(ChartTime::toUtc(reader.from - reader.shift)) * 1000;
    request.to = Nodes::Timestamp(ChartTime::toUtc(reader.to - reader.shift)) * 1000;
    request.maxPoints = std::size_t(qMax(100, m_plot->canvas()->width())) * pointsPerPixel;
    request.priority = isEmpty ? Nodes::HistoryPriority::Background : Nodes::HistoryPriority::Shown;
    for (const ISerie *serie : shifted()) {
        const Nodes::widgetChartBasicSerie *node = serie->getNode();
        if (node && ShiftOf(node) == reader.shift && node->GetSignal())
            request.nodes.push_back(node->GetSignal()->GetNodeLink());
    }
    if (request.from > 0 && request.from < request.to && !request.nodes.empty())
        (void)reader.asker->ask(m_plot->context().model(), request); // refused: no line, as without
}

void PastPeriods::onAnswered(double shift,
                             const std::shared_ptr<const Nodes::HistoryAnswer> &answer)
{
    const auto samples = Nodes::SignalHistoryResponse::AllOf(*answer);
    for (ISerie *serie : shifted()) {
        if (ShiftOf(serie->getNode()) != shift)
            continue;
        serie->clearPoints();
        serie->updateArchPoints(samples);
    }
    if (m_plot)
        m_plot->scheduleReplot();
    emit completed();
}

} // namespace Widgets
