#pragma once

#include "nodes/NodesExport.h"
#include "nodes/journal/JournalQuery.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Nodes {

class SqliteStatement;

/// The statement that answers a query from the tables of JournalTables. It seeks the page's first
/// entry in an index, of each source of which there are few, and reads from there.
class NODES_EXPORT JournalSelection
{
public:
    /// What the query's source and nodes are in the file; not used without such a filter.
    struct Origins
    {
        std::vector<std::int64_t> numbers; ///< of `sources`
        std::uint64_t border = 0;          ///< last row that names its source itself; 0: none
    };

    JournalSelection(const JournalQuery &query, const Origins &origins);

    const std::string &GetSql() const { return m_sql; }
    void Bind(SqliteStatement &statement) const;

private:
    std::vector<std::string> conditions(const Origins &origins) const;

    const JournalQuery m_query;
    std::string m_sql;
};

} // namespace Nodes
