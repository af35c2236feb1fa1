#include "widgets/charts/marks/MarkClusters.h"

#include "nodes/events/EventInfo.h"
#include "utils/convert/TimeConversions.h"

#include <QStringList>

namespace Widgets {

namespace {

constexpr std::size_t toldEvents = 10;

QString line(const Nodes::BasicEvent &event)
{
    const Nodes::EventInfo info(event);
    QString text =
        QStringLiteral("%1  %2: %3")
            .arg(Utils::timeText(event.time, Utils::tableTimeFormat),
                 QString::fromStdString(info.GetEventLevel()), QString::fromStdString(event.text));
    if (!event.source.empty())
        text += QStringLiteral(" — ") + QString::fromStdString(event.source);
    return text;
}

} // namespace

bool IsGraver(const Nodes::BasicEvent &event, const Nodes::BasicEvent &other)
{
    if (event.level != other.level)
        return event.level < other.level;
    const auto rank = [](int priority) { return priority == 0 ? 5 : priority; };
    return rank(event.priority) < rank(other.priority);
}

std::vector<MarkCluster> ClusterMarks(const std::vector<double> &places,
                                      const std::vector<Nodes::BasicEvent> &events, double spacing)
{
    std::vector<MarkCluster> marks;
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (marks.empty() || places[i] - marks.back().x >= spacing) {
            marks.push_back({places[i], i, 1, i});
            continue;
        }
        MarkCluster &mark = marks.back();
        ++mark.count;
        if (IsGraver(events[i], events[mark.gravest]))
            mark.gravest = i;
    }
    return marks;
}

QString MarkText(const MarkCluster &mark, const std::vector<Nodes::BasicEvent> &events)
{
    QStringList lines;
    const std::size_t end = mark.first + mark.count;
    for (std::size_t i = mark.first; i < end && i - mark.first < toldEvents; ++i)
        lines << line(events[i]);
    if (mark.count > toldEvents)
        lines << QStringLiteral("… и ещё %1").arg(mark.count - toldEvents);
    return lines.join('\n');
}

} // namespace Widgets
