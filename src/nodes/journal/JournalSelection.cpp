#include "nodes/journal/JournalSelection.h"

#include "nodes/journal/JournalTables.h"
#include "nodes/storage/SqliteStatement.h"
#include "nodes/values/FoldCase.h"

#include <algorithm>
#include <limits>
#include <tuple>

namespace Nodes {

namespace {

constexpr std::size_t mostSeeks = 32;
constexpr auto lastTime = std::numeric_limits<Timestamp>::max();

bool isBefore(const JournalKey &a, const JournalKey &b)
{
    return std::tie(a.time, a.id) < std::tie(b.time, b.id);
}

template <class Number> std::string listOf(const std::vector<Number> &numbers)
{
    std::string list;
    for (const Number number : numbers)
        list += (list.empty() ? "" : ", ") + std::to_string(number);
    return "(" + list + ")";
}

constexpr int firstUser = 9; // number of the parameter

/// What an entry must be, whatever it is about. The signs keep other indices than that of the
/// order out of it.
std::string filterOf(const JournalQuery &query)
{
    std::string filter;
    if (query.maximumLevel)
        filter += " AND level <= ?5";
    if (!query.levels.empty())
        filter += " AND +level IN " + listOf(query.levels);
    if (!query.types.empty())
        filter += " AND +type IN " + listOf(query.types);
    std::string users;
    for (std::size_t i = 0; i < query.users.size(); ++i)
        users += (i == 0 ? "?" : ", ?") + std::to_string(firstUser + int(i));
    if (!users.empty())
        filter += " AND +user IN (" + users + ")";
    if (!query.text.empty())
        filter += " AND contains_folded(text, ?7)";
    return filter;
}

} // namespace

JournalSelection::JournalSelection(const JournalQuery &query, const Origins &origins)
    : m_query(query)
{
    const std::string common =
        " WHERE (time, id) > (?1, ?2) AND (time, id) < (?3, ?4)" + filterOf(query);
    for (const std::string &condition : conditions(origins)) {
        m_sql += m_sql.empty() ? "" : " UNION ALL ";
        m_sql += JournalTables::Columns + common + condition;
    }
    const char *direction = query.order == JournalQuery::NewestFirst ? " DESC" : "";
    m_sql += std::string(" ORDER BY time") + direction + ", id" + direction + " LIMIT ?6";
}

/// Parts of the answer, each in the order of an index; they are merged.
std::vector<std::string> JournalSelection::conditions(const Origins &origins) const
{
    if (m_query.source.empty() && m_query.nodes.empty())
        return {""};
    std::vector<std::string> conditions;
    if (m_query.nodes.empty() && origins.border > 0)
        conditions.push_back(" AND origin = 0 AND +id <= " + std::to_string(origins.border) +
                             " AND source = ?8");
    if (origins.numbers.size() > mostSeeks) {
        conditions.push_back(" AND +origin IN " + listOf(origins.numbers));
        return conditions;
    }
    for (const std::int64_t number : origins.numbers)
        conditions.push_back(" AND origin > 0 AND origin = " + std::to_string(number));
    if (conditions.empty())
        conditions.emplace_back(" AND 0");
    return conditions;
}

void JournalSelection::Bind(SqliteStatement &statement) const
{
    // Rows count from 1: with 0 a bound is that of the time alone.
    JournalKey lower{m_query.begin, 0};
    JournalKey upper{m_query.end != 0 ? m_query.end : lastTime, 0};
    if (m_query.after && m_query.order == JournalQuery::OldestFirst)
        lower = std::max(lower, *m_query.after, &isBefore);
    else if (m_query.after)
        upper = std::min(upper, *m_query.after, &isBefore);
    statement.Bind(1, lower.time);
    statement.Bind(2, static_cast<std::int64_t>(lower.id));
    statement.Bind(3, upper.time);
    statement.Bind(4, static_cast<std::int64_t>(upper.id));
    if (m_query.maximumLevel)
        statement.Bind(5, std::int64_t(*m_query.maximumLevel));
    constexpr auto mostRows = std::size_t(std::numeric_limits<std::int64_t>::max());
    statement.Bind(6, static_cast<std::int64_t>(std::min(m_query.limit, mostRows)));
    if (!m_query.text.empty())
        statement.Bind(7, FoldCase(m_query.text));
    if (m_sql.find("?8") != std::string::npos)
        statement.Bind(8, m_query.source);
    for (std::size_t i = 0; i < m_query.users.size(); ++i)
        statement.Bind(firstUser + int(i), m_query.users[i]);
}

} // namespace Nodes
