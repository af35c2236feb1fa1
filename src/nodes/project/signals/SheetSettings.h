#pragma once

#include "nodes/NodesExport.h"
#include "nodes/model/links/NodeLink.h"
#include "nodes/project/signals/SheetColumns.h"
#include "nodes/project/signals/SheetPlan.h"
#include "nodes/values/Result.h"

#include <map>

namespace Nodes {

class modbusGroup;

/// Columns of a table of signals whose values other nodes of the project hold: the address over the
/// wire, which a signal has by its group, and the archive. GUI thread.
class NODES_EXPORT SheetSettings
{
public:
    /// Adds the columns that suit the rows below `scope`.
    static void AddTo(SheetColumns &columns, const ConfigNode &scope, unsigned family);
    static bool IsAddress(const SheetColumn &column);
    static bool IsTable(const SheetColumn &column);
    /// Where in the group an address over the wire lies. The detail of a failure says why in
    /// Russian.
    [[nodiscard]] static Result ReadAddress(const std::string &text, const modbusGroup &group,
                                            int &offset);

    std::string GetText(const SheetColumn &column, const ConfigNode &node) const;
    /// What may be chosen; none: a text.
    std::vector<std::string> GetChoices(const SheetColumn &column, const ConfigNode &node) const;
    /// Plans what the cell of the signal says. The detail of a failure says why in Russian.
    [[nodiscard]] Result Plan(const SheetColumn &column, ConfigNode &node, const std::string &text,
                              SheetPlan &plan);
    /// What was found out of the archive may have changed.
    void Forget() { m_isRead = false; }

private:
    struct Order
    {
        NodeLink by; ///< source or group
        bool isOwn;  ///< a source of this signal alone
    };

    const Order *orderOf(const ConfigNode &signal) const;
    std::string archiveText(const ConfigNode &signal) const;
    Result planArchive(ConfigNode &signal, const std::string &text, SheetPlan &plan);
    Result planSource(const SheetColumn &column, ConfigNode &signal, const std::string &text,
                      SheetPlan &plan);
    Result makeSource(ConfigNode &signal, SheetPlan &plan, NodeLink &source);
    Result leaveArchive(const ConfigNode &signal, SheetPlan &plan);
    static void changeScope(const NodeLink &group, const ConfigNode &signal, bool isIn,
                            SheetPlan &plan);

    mutable bool m_isRead = false;
    mutable std::map<unsigned long, Order> m_orders; ///< by id of the signal
};

} // namespace Nodes
