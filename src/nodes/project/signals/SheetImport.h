#pragma once

#include "nodes/NodesExport.h"
#include "nodes/project/signals/DelimitedText.h"
#include "nodes/project/signals/ModbusPlacing.h"
#include "nodes/project/signals/NodePaths.h"
#include "nodes/project/signals/SheetColumns.h"
#include "nodes/project/signals/SheetPlan.h"
#include "nodes/project/signals/SheetSettings.h"

#include <set>
#include <unordered_map>

namespace Nodes {

class modbusGroup;

/// Makes a plan of changes from the text of a table of nodes: what the rows say of nodes that are
/// there is compared with them, the others become new nodes. Cells that do not fit are refused one
/// by one, with the reason; the rest of their row counts. Used once. GUI thread.
class NODES_EXPORT SheetImport
{
public:
    /// Rows name nodes of that family by their paths from `scope`. Rows that say no kind
    /// make nodes of the first of `kinds`.
    SheetImport(ConfigNode &scope, unsigned family, const SheetColumns &columns,
                std::vector<const KindInfo *> kinds);

    /// The first row names the columns, in any order, by title or key; those left out stay as they
    /// are. InvalidArgument when none is called "Имя".
    [[nodiscard]] Result PlanTable(const TextTable &table, SheetPlan &plan);
    /// The same for the rows from `first` on, with the column of each field given in `places`; -1:
    /// it is not read. InvalidArgument when none is the column of names or one is given twice.
    [[nodiscard]] Result PlanRows(const TextTable &table, std::size_t first,
                                  const std::vector<int> &places, SheetPlan &plan);
    /// Cells without header: the upper left one goes to `nodes[0]` and column `places[0]`, the
    /// others to the nodes and places that follow. What sticks out is refused, but for rows below
    /// the last node that have a name: they become new nodes.
    void PlanBlock(const TextTable &block, const NodeLinks &nodes, const std::vector<int> &places,
                   SheetPlan &plan);
    /// Node of that path, with the folders on the way to it; `values` by value id. The detail of a
    /// failure says why in Russian.
    [[nodiscard]] Result PlanNode(const std::string &path, const KindInfo &kind, SheetPlan &plan,
                                  ConfigNode *&made);

private:
    struct Cell
    {
        std::size_t row;
        const SheetColumn &column;
        const std::string &text;
    };
    using Row = std::vector<std::string>;

    /// Finds polling groups for the rows from `first` on that are new signals of a Modbus device
    /// outside any, and plans them. Rows whose address does not read are refused as a whole.
    void arrange(const TextTable &table, std::size_t first, const std::vector<int> &places,
                 SheetPlan &plan);
    void arrangeRow(const Row &row, std::size_t number, const std::vector<int> &places,
                    SheetPlan &plan);
    Result readPoint(const Row &row, const std::vector<int> &places, const modbusGroup *group,
                     ModbusTable &table, int &address, int &width) const;
    /// What stands in the column with that key or title; "" without one.
    const std::string &cellOf(const Row &row, const std::vector<int> &places,
                              std::string_view column) const;
    ConfigNode *nearest(const std::string &folder) const;
    bool isPlaced(const Cell &cell) const;
    bool namesRows(const std::vector<int> &places) const;
    std::vector<int> readHeader(const Row &header, SheetPlan &plan) const;
    void planRow(const Row &row, std::size_t number, const std::vector<int> &places,
                 SheetPlan &plan);
    bool isSaidAlready(const std::string &path, ConfigNode *node, std::size_t number,
                       SheetPlan &plan);
    void takeRow(ConfigNode &node, bool isNew, const Row &row, std::size_t number,
                 const std::vector<int> &places, SheetPlan &plan);
    void takeSetting(ConfigNode &node, const Cell &cell, SheetPlan &plan);
    void takeCell(ConfigNode &node, bool isNew, const Cell &cell, SheetPlan &plan);
    void takeName(ConfigNode &node, const Cell &cell, SheetPlan &plan);
    void takeProperty(ConfigNode &node, bool isNew, const Cell &cell, SheetPlan &plan) const;
    const KindInfo *kindOf(const Row &row, const std::vector<int> &places) const;
    Result findPlace(const std::string &path, ConfigNode *&parent, SheetPlan &plan);
    Result addClone(const KindInfo &kind, const std::string &path, ConfigNode &parent,
                    SheetPlan &plan, ConfigNode *&made);
    ConfigNode *find(const std::string &path) const;
    bool isKnown(const std::string &path) const
    {
        return m_nodes.count(path) != 0 || m_shortPaths.count(path) != 0;
    }

    ConfigNode &m_scope;
    unsigned m_family;
    const SheetColumns &m_columns;
    std::vector<const KindInfo *> m_kinds;
    NodePaths m_paths;
    SheetSettings m_settings;
    ModbusPlacing m_placing;
    std::unordered_map<std::size_t, int> m_offsets; ///< by row: of new signals in groups there are
    std::set<std::size_t> m_refusedRows;
    std::unordered_map<std::string, ConfigNode *> m_nodes; ///< by path; null: several
    /// By SheetColumns::ShortPathFrom; null: several.
    std::unordered_map<std::string, ConfigNode *> m_shortPaths;
    std::unordered_map<std::string, std::size_t> m_named; ///< rows by what they call their node
    std::unordered_map<const ConfigNode *, std::size_t> m_rows; ///< the same by node
    std::set<std::string> m_arranged; ///< paths of new signals that have been given groups
    std::unordered_map<const ConfigNode *, bool> m_isClone;
};

} // namespace Nodes
