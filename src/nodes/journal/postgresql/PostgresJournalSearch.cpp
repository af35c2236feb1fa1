#include "nodes/journal/postgresql/PostgresJournalSearch.h"

#include "nodes/journal/JournalProof.h"
#include "nodes/journal/postgresql/PostgresJournalTables.h"
#include "nodes/storage/postgresql/PostgresParameters.h"
#include "nodes/values/FoldCase.h"

#include <algorithm>
#include <limits>
#include <tuple>

namespace Nodes {

namespace {

using Parameters = PostgresParameters;

constexpr const char *beginLook = "BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY";
constexpr std::int64_t rowsAtOnce = 2000;
constexpr auto lastTime = std::numeric_limits<Timestamp>::max();

std::string text(std::int64_t number)
{
    return std::to_string(number);
}

std::string among(const char *column, const std::vector<int> &numbers)
{
    std::string list;
    for (const int number : numbers)
        list += (list.empty() ? "" : ", ") + text(number);
    return list.empty() ? "" : std::string(" AND ") + column + " IN (" + list + ")";
}

std::string boundsOf(const JournalQuery &query)
{
    const auto isBefore = [](const JournalKey &a, const JournalKey &b) {
        return std::tie(a.time, a.id) < std::tie(b.time, b.id);
    };
    // Rows count from 1: with 0 a bound is that of the time alone.
    JournalKey lower{query.begin, 0};
    JournalKey upper{query.end != 0 ? query.end : lastTime, 0};
    if (query.after && query.order == JournalQuery::OldestFirst)
        lower = std::max(lower, *query.after, isBefore);
    else if (query.after)
        upper = std::min(upper, *query.after, isBefore);
    const auto pair = [](const JournalKey &key) {
        return "(" + text(key.time) + ", " + text(std::int64_t(key.id)) + ")";
    };
    return " WHERE (time, id) > " + pair(lower) + " AND (time, id) < " + pair(upper);
}

std::string filterOf(const JournalQuery &query, Parameters &parameters)
{
    std::string filter = among("level", query.levels) + among("type", query.types);
    if (query.maximumLevel)
        filter += " AND level <= " + text(*query.maximumLevel);
    const auto parameter = [&parameters](const std::string &value) {
        parameters.Add(std::string_view(value));
        return "$" + text(std::int64_t(parameters.GetTexts().size()));
    };
    std::string users;
    for (const std::string &user : query.users)
        users += (users.empty() ? "" : ", ") + parameter(user);
    if (!users.empty())
        filter += " AND username IN (" + users + ")";
    if (!query.text.empty())
        filter += " AND strpos(folded, " + parameter(FoldCase(query.text)) + ") > 0";
    return filter;
}

} // namespace

PostgresJournalSearch::PostgresJournalSearch(const std::string &location)
    : m_connection(PostgresLocation(location, PostgresJournalTables::DefaultSchema),
                   "station journal reader")
{
}

Result PostgresJournalSearch::open()
{
    (void)m_connection.NoticeEnd();
    if (m_connection.IsOpen())
        return Result();
    Result result = m_connection.Open(PostgresConnection::Mode::ReadOnly);
    if (result)
        result = PostgresJournalTables::Product().Check(m_connection);
    if (!result)
        m_connection.Close();
    return result;
}

/// Runs `work` over one state of the tables.
template <class Work> Result PostgresJournalSearch::read(Work work)
{
    m_isCancelled = false;
    Result result = open();
    if (result)
        result = m_connection.Execute(beginLook);
    if (result) {
        result = work();
        if (m_connection.IsOpen() && !m_connection.Execute("COMMIT"))
            m_connection.Close();
    }
    return m_isCancelled ? Result(Result::Cancelled, m_connection.GetLocation().GetShown())
                         : result;
}

Result PostgresJournalSearch::Find(const JournalQuery &query, std::vector<JournalRow> &rows)
{
    rows.clear();
    const Result result = read([&] { return find(query, rows); });
    if (!result)
        rows.clear();
    return result;
}

Result PostgresJournalSearch::find(const JournalQuery &query, std::vector<JournalRow> &rows)
{
    std::string origins;
    Result result = findOrigins(query, origins);
    Parameters parameters;
    std::string sql =
        PostgresJournalTables::Columns + boundsOf(query) + filterOf(query, parameters) + origins;
    const char *direction = query.order == JournalQuery::NewestFirst ? " DESC" : "";
    sql += std::string(" ORDER BY time") + direction + ", id" + direction;
    constexpr auto mostRows = std::size_t(std::numeric_limits<std::int64_t>::max());
    if (query.limit < mostRows)
        sql += " LIMIT " + text(std::int64_t(query.limit));
    PostgresAnswer answer;
    if (result)
        result = m_connection.Query(sql, parameters, answer);
    for (int at = 0; result && at < answer.Size() && !m_isCancelled; ++at) {
        rows.emplace_back();
        // A row that was tampered with is shown by its columns' place: Verify names it.
        (void)PostgresJournalTables::ReadRow(answer, at, rows.back());
    }
    return result;
}

Result PostgresJournalSearch::findOrigins(const JournalQuery &query, std::string &numbers)
{
    if (query.source.empty() && query.nodes.empty())
        return Result();
    std::string condition;
    Parameters parameters;
    const auto parameter = [&parameters](const std::string &value) {
        parameters.Add(std::string_view(value));
        return "$" + text(std::int64_t(parameters.GetTexts().size()));
    };
    for (const RecordSource &node : query.nodes) {
        // Without a project nobody knows what the number means.
        if (!node.home.project.empty())
            condition += (condition.empty() ? "(" : " OR (") +
                         ("node = " + text(std::int64_t(node.node))) +
                         " AND station = " + text(std::int64_t(node.home.station)) +
                         " AND project = " + parameter(node.home.project) + ")";
    }
    if (query.nodes.empty())
        condition = "true";
    else if (condition.empty())
        condition = "false";
    std::string sql = "SELECT id FROM sources WHERE (" + condition + ")";
    if (!query.source.empty()) {
        const std::string name = parameter(query.source);
        sql += " AND md5(name) = md5(" + name + ") AND name = " + name;
    }
    PostgresAnswer found;
    const Result result = m_connection.Query(sql, parameters, found);
    for (int row = 0; row < found.Size(); ++row)
        numbers += (numbers.empty() ? "" : ", ") + text(found.Integer(row, 0));
    numbers = numbers.empty() ? " AND false" : " AND origin IN (" + numbers + ")";
    return result;
}

Result PostgresJournalSearch::ReadEnds(JournalEnds &ends)
{
    return read([&] { return PostgresJournalTables::ReadEnds(m_connection, ends); });
}

Result PostgresJournalSearch::FindSpan(Timestamp begin, Timestamp end, std::uint64_t &first,
                                       std::uint64_t &last)
{
    return read([&] {
        PostgresAnswer span;
        const Result result =
            m_connection.Query("SELECT min(id), max(id) FROM events WHERE time >= $1 AND time < $2",
                               Parameters().Add(begin).Add(end != 0 ? end : lastTime), span);
        if (!result)
            return result;
        if (span.IsNull(0, 0))
            return Result(Result::NotFound, "no rows of that time");
        first = static_cast<std::uint64_t>(span.Integer(0, 0));
        last = static_cast<std::uint64_t>(span.Integer(0, 1));
        return result;
    });
}

Result PostgresJournalSearch::visit(std::uint64_t first, std::uint64_t last,
                                    const RowVisitor &visitor)
{
    std::int64_t next = static_cast<std::int64_t>(first);
    for (int size = int(rowsAtOnce); size == rowsAtOnce && !m_isCancelled;) {
        PostgresAnswer rows;
        Result result = m_connection.Query(
            std::string(PostgresJournalTables::Columns) +
                " WHERE id >= $1 AND id <= $2 ORDER BY id LIMIT $3",
            Parameters().Add(next).Add(static_cast<std::int64_t>(last)).Add(rowsAtOnce), rows);
        for (int at = 0; result && at < rows.Size(); ++at) {
            JournalRow row;
            result = PostgresJournalTables::ReadRow(rows, at, row);
            if (result)
                result = visitor(row, rows.Bytes(at, PostgresJournalTables::HashColumn));
        }
        if (!result)
            return result;
        size = rows.Size();
        next = size > 0 ? rows.Integer(size - 1, 0) + 1 : next;
    }
    return Result();
}

Result PostgresJournalSearch::hashBefore(std::uint64_t row, std::string &hash)
{
    JournalEnds ends;
    PostgresAnswer found;
    Result result = PostgresJournalTables::ReadEnds(m_connection, ends);
    hash = ends.anchor.hash;
    if (result)
        result = m_connection.Query("SELECT hash FROM events WHERE id = $1",
                                    Parameters().Add(static_cast<std::int64_t>(row) - 1), found);
    if (result && !found.IsEmpty())
        hash = found.Bytes(0, 0);
    return result;
}

Result PostgresJournalSearch::VisitRows(std::uint64_t first, std::uint64_t last,
                                        const Visitor &visitor)
{
    return read([&] {
        std::string before;
        const Result result = hashBefore(first, before);
        if (!result)
            return result;
        bool isOver = false;
        const Result visited =
            visit(first, last, [&](const JournalRow &row, const std::string &hash) {
                isOver = !visitor(row, before, hash);
                before = hash;
                return isOver ? Result(Result::Cancelled) : Result();
            });
        return isOver ? Result() : visited;
    });
}

Result PostgresJournalSearch::Verify(const std::vector<JournalLink> &receipts,
                                     const Progress &progress)
{
    return read([&] { return verify(receipts, progress); });
}

Result PostgresJournalSearch::verify(const std::vector<JournalLink> &receipts,
                                     const Progress &progress)
{
    JournalEnds ends;
    Result result = PostgresJournalTables::ReadEnds(m_connection, ends);
    JournalProof proof(ends.anchor, receipts);
    if (result)
        result =
            visit(ends.anchor.id + 1, std::uint64_t(lastTime),
                  [&](const JournalRow &row, const std::string &hash) {
                      const std::uint64_t id = row.event.id;
                      if (id % std::uint64_t(rowsAtOnce) == 1 && progress && !progress(id))
                          return Result(Result::Cancelled, "stopped at row " + std::to_string(id));
                      return proof.Take(row, hash);
                  });
    return result ? proof.Finish(ends) : result;
}

} // namespace Nodes
