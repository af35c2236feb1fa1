#include "nodes/project/signals/ModbusPlacing.h"

#include <algorithm>

namespace Nodes {

namespace {

constexpr int widestGap = 16; // points nobody needs, read rather than asking once more

} // namespace

void ModbusPlacing::Add(std::size_t row, const std::string &folder, const std::string &name,
                        ModbusTable table, int address, int width)
{
    m_folders[folder][table].push_back({row, name, address, width});
}

std::vector<ModbusPlacing::Run> ModbusPlacing::runsOf(std::vector<Point> &points, ModbusTable table)
{
    std::stable_sort(points.begin(), points.end(),
                     [](const Point &a, const Point &b) { return a.address < b.address; });
    std::vector<Run> runs;
    for (const Point &point : points) {
        const int end = point.address + point.width;
        const bool isNear = !runs.empty() && point.address <= runs.back().end + widestGap &&
                            end - runs.back().start <= MaximumCount(table);
        if (!isNear)
            runs.push_back({point.address, end, {}});
        runs.back().end = std::max(runs.back().end, end);
        runs.back().points.push_back(&point);
    }
    return runs;
}

std::string ModbusPlacing::nameOf(ModbusTable table, int start)
{
    const std::string first = " с " + std::to_string(start);
    switch (table) {
    case ModbusTable::Coils:
        return "Дискретные выходы" + first;
    case ModbusTable::Discrete:
        return "Дискретные входы" + first;
    case ModbusTable::Input:
        return "Входные регистры" + first;
    case ModbusTable::Holding:
        break;
    }
    return "Регистры" + first;
}

void ModbusPlacing::place(const PlacedGroup &group, const Run &run)
{
    for (const Point *point : run.points)
        m_places[point->row] = {group.path + "/" + point->name, point->address - run.start};
}

const ModbusPlacing::Place *ModbusPlacing::Find(std::size_t row) const
{
    const auto found = m_places.find(row);
    return found == m_places.end() ? nullptr : &found->second;
}

} // namespace Nodes
