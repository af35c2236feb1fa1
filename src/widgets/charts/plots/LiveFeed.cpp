#include "widgets/charts/plots/LiveFeed.h"

#include "widgets/charts/series/ISerie.h"

#include "nodes/charts/widgetChartBasicSerie.h"

#include <algorithm>
#include <utility>

namespace Widgets {

namespace {

// What an archive has not stored yet: at least its longest pause between two commits.
constexpr double keptTime = 60000; // ms
constexpr std::size_t most = 20000;

} // namespace

LiveFeed::LiveFeed(std::function<void(Values, ISerie *)> handler, std::function<void()> onLost)
    : m_handler(std::move(handler)), m_onLost(std::move(onLost))
{
}

LiveFeed::~LiveFeed() = default;

void LiveFeed::connect(ISerie *serie)
{
    const Nodes::widgetChartBasicSerie *node = serie->getNode();
    if (!node || lineOf(serie))
        return;
    m_lines.push_back(std::make_unique<Line>());
    Line &line = *m_lines.back();
    line.serie = serie;
    line.relay = std::make_unique<Utils::QueueRelay<Nodes::SignalValue>>(
        [this, &line](Values values) { deliver(line, std::move(values)); });
    line.connection = node->ConnectValues([inlet = line.relay->inlet()](const Values &values) {
        for (const Nodes::SignalValue &value : values)
            inlet(value);
    });
}

void LiveFeed::disconnectAll()
{
    m_lines.clear();
}

// The handler may end all connections.
void LiveFeed::deliver(Line &line, Values values)
{
    const bool isLost = line.relay->takeLost() > 0;
    const auto onLost = m_onLost;
    if (line.serie)
        m_handler(std::move(values), line.serie);
    if (isLost)
        onLost();
}

LiveFeed::Line *LiveFeed::lineOf(const ISerie *serie) const
{
    const auto found = std::find_if(m_lines.begin(), m_lines.end(),
                                    [serie](const auto &line) { return line->serie == serie; });
    return found == m_lines.end() ? nullptr : found->get();
}

void LiveFeed::keep(const ISerie *serie, double x, const Nodes::SignalValue &value)
{
    Line *line = lineOf(serie);
    if (!line)
        return;
    line->kept.push_back({x, value});
    while (line->kept.size() > most || line->kept.front().x < x - keptTime) {
        line->kept.pop_front();
        line->before -= line->before > 0 ? 1 : 0;
    }
}

void LiveFeed::markRequest()
{
    for (const auto &line : m_lines)
        line->before = line->kept.size();
}

std::vector<LiveFeed::Point> LiveFeed::missing(const ISerie *serie, double x, bool all) const
{
    std::vector<Point> points;
    if (const Line *line = lineOf(serie)) {
        const std::size_t count = all ? line->kept.size() : line->before;
        std::copy_if(line->kept.begin(), line->kept.begin() + std::ptrdiff_t(count),
                     std::back_inserter(points), [x](const Point &point) { return point.x > x; });
    }
    return points;
}

} // namespace Widgets
