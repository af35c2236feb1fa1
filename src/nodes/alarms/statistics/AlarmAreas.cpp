#include "nodes/alarms/statistics/AlarmAreas.h"

#include "nodes/alarms/statistics/AlarmFigures.h"

#include <algorithm>
#include <map>

namespace Nodes {

namespace {

// Above the alarm and its signal.
std::string areaOf(const std::string &path)
{
    std::size_t end = path.size();
    for (int part = 0; part < 2; ++part) {
        end = end > 0 ? path.rfind('/', end - 1) : std::string::npos;
        if (end == std::string::npos)
            return {};
    }
    return path.substr(0, end);
}

} // namespace

std::vector<AlarmArea> AlarmAreasOf(const AlarmFigures &figures)
{
    std::map<std::string, AlarmArea> byName;
    for (const AlarmCount &alarm : figures.alarms) {
        AlarmArea &area = byName[areaOf(alarm.source)];
        area.raised += alarm.raised;
        ++area.alarms;
        area.chattering += alarm.chattering > 0 ? 1 : 0;
        area.fleeting += alarm.fleeting > 0 ? 1 : 0;
        area.standing += alarm.longestStanding > 0 ? 1 : 0;
    }
    std::vector<AlarmArea> areas;
    for (auto &[name, area] : byName) {
        area.name = name;
        areas.push_back(std::move(area));
    }
    std::stable_sort(areas.begin(), areas.end(),
                     [](const AlarmArea &a, const AlarmArea &b) { return a.raised > b.raised; });
    return areas;
}

} // namespace Nodes
