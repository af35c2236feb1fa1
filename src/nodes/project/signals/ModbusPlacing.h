#pragma once

#include "nodes/NodesExport.h"
#include "nodes/drivers/modbus/ModbusPoints.h"

#include <map>
#include <string>
#include <vector>

namespace Nodes {

/// A polling group to be made for new signals of a device.
struct PlacedGroup
{
    std::string path; ///< from the node whose table it is
    ModbusTable table = ModbusTable::Holding;
    int start = 0;
    int count = 0;
};

/// Packs new signals of a Modbus device into polling groups: a folder's signals that lie close
/// together are read with one request, and no request reads more than the protocol allows.
class NODES_EXPORT ModbusPlacing
{
public:
    struct Place
    {
        std::string path; ///< of the signal, in its group
        int offset = 0;   ///< in the group
    };

    /// A signal of row `row`, which is to stand in `folder` ("" is the device itself) as `name` and
    /// takes `width` points from `address` on.
    void Add(std::size_t row, const std::string &folder, const std::string &name, ModbusTable table,
             int address, int width);
    /// The groups, in the order of their folders and addresses. `isTaken` tells paths that are
    /// there already. A folder with one group gives it its name; others stand in the folder.
    template <class IsTaken> std::vector<PlacedGroup> Arrange(IsTaken isTaken);

    /// Where the signal of that row goes; null when it was not added.
    const Place *Find(std::size_t row) const;

private:
    struct Point
    {
        std::size_t row;
        std::string name;
        int address;
        int width;
    };
    struct Run
    {
        int start = 0;
        int end = 0; ///< behind the last point
        std::vector<const Point *> points;
    };

    static std::vector<Run> runsOf(std::vector<Point> &points, ModbusTable table);
    static std::string nameOf(ModbusTable table, int start);
    void place(const PlacedGroup &group, const Run &run);

    std::map<std::string, std::map<ModbusTable, std::vector<Point>>> m_folders;
    std::map<std::size_t, Place> m_places;
};

template <class IsTaken> std::vector<PlacedGroup> ModbusPlacing::Arrange(IsTaken isTaken)
{
    std::vector<PlacedGroup> groups;
    for (auto &[folder, tables] : m_folders) {
        std::vector<std::pair<ModbusTable, Run>> runs;
        for (auto &[table, points] : tables) {
            for (Run &run : runsOf(points, table))
                runs.emplace_back(table, std::move(run));
        }
        const bool isAlone = runs.size() == 1 && !folder.empty() && !isTaken(folder);
        for (const auto &[table, run] : runs) {
            const std::string inside = folder.empty() ? "" : folder + "/";
            std::string path = isAlone ? folder : inside + nameOf(table, run.start);
            for (int n = 2; !isAlone && isTaken(path); ++n)
                path = inside + nameOf(table, run.start) + " (" + std::to_string(n) + ")";
            groups.push_back({path, table, run.start, run.end - run.start});
            place(groups.back(), run);
        }
    }
    m_folders.clear();
    return groups;
}

} // namespace Nodes
