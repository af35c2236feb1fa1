#include "nodes/journal/SqliteJournalSearch.h"

#include "nodes/journal/JournalChain.h"
#include "nodes/journal/JournalTables.h"
#include "nodes/storage/SqliteStatement.h"
#include "nodes/values/FoldCase.h"

#include <sqlite3.h>

#include <algorithm>
#include <limits>
#include <set>

namespace Nodes {

namespace {

constexpr int operationsBetweenChecks = 1000;

void containsFolded(sqlite3_context *context, int, sqlite3_value **arguments)
{
    const auto viewOf = [](sqlite3_value *value) {
        const auto *text = reinterpret_cast<const char *>(sqlite3_value_text(value));
        return std::string_view(text ? text : "",
                                static_cast<std::size_t>(sqlite3_value_bytes(value)));
    };
    const std::string text = FoldCase(viewOf(arguments[0]));
    sqlite3_result_int(context, text.find(viewOf(arguments[1])) != std::string::npos);
}

int stopWhenCancelled(void *flag)
{
    return *static_cast<const std::atomic<bool> *>(flag) ? 1 : 0;
}

} // namespace

Result SqliteJournalSearch::open()
{
    if (m_database.IsOpen() && !m_database.IsMoved())
        return Result();
    m_sources.Forget();
    const Result result = m_database.Open(m_file, SqliteDatabase::Mode::ReadOnly);
    if (!result)
        return result;
    sqlite3_create_function_v2(m_database.Handle(), "contains_folded", 2,
                               SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr, &containsFolded,
                               nullptr, nullptr, nullptr);
    sqlite3_progress_handler(m_database.Handle(), operationsBetweenChecks, &stopWhenCancelled,
                             &m_isCancelled);
    return result;
}

/// Runs `work` over one state of the file.
template <class Work> Result SqliteJournalSearch::read(Work work)
{
    m_isCancelled = false;
    Result result = open();
    if (result)
        result = m_database.Execute("BEGIN");
    if (result) {
        result = work();
        (void)m_database.Execute("ROLLBACK"); // only read
    }
    return m_isCancelled ? Result(Result::Cancelled, m_file) : result;
}

Result SqliteJournalSearch::Find(const JournalQuery &query, std::vector<JournalRow> &rows)
{
    rows.clear();
    const Result result = read([&] { return find(query, rows); });
    if (!result)
        rows.clear();
    return result;
}

/// The same, of a file whose end is missing as far as it goes: otherwise nothing of it is read.
template <class Work> Result SqliteJournalSearch::readRemains(Work work)
{
    const Result result = read(work);
    if (result || !m_database.IsDamaged() || !m_database.Execute("PRAGMA writable_schema = ON"))
        return result;
    Result again = read(work);
    (void)m_database.Execute("PRAGMA writable_schema = OFF");
    return again;
}

Result SqliteJournalSearch::Verify(const std::vector<JournalLink> &receipts,
                                   const Progress &progress)
{
    return readRemains([&] { return verify(receipts, progress); });
}

Result SqliteJournalSearch::ReadEnds(JournalEnds &ends)
{
    return read([&] { return readEnds(ends); });
}

Result SqliteJournalSearch::readEnds(JournalEnds &ends)
{
    const Result result = JournalTables::ReadLink(m_database, "anchor", ends.anchor);
    return result ? JournalTables::ReadLink(m_database, "head", ends.head) : result;
}

Result SqliteJournalSearch::FindSpan(Timestamp begin, Timestamp end, std::uint64_t &first,
                                     std::uint64_t &last)
{
    return read([&] {
        SqliteStatement span(m_database, "SELECT min(id), max(id), count(*) FROM events WHERE "
                                         "time >= ?1 AND time < ?2");
        span.Bind(1, begin);
        span.Bind(2, end != 0 ? end : std::numeric_limits<Timestamp>::max());
        if (!span.Step())
            return span.GetResult();
        first = static_cast<std::uint64_t>(span.Integer(0));
        last = static_cast<std::uint64_t>(span.Integer(1));
        return span.Integer(2) > 0 ? Result() : Result(Result::NotFound, "no rows of that time");
    });
}

Result SqliteJournalSearch::VisitRows(std::uint64_t first, std::uint64_t last,
                                      const Visitor &visitor)
{
    return read([&] { return visit(first, last, visitor); });
}

Result SqliteJournalSearch::visit(std::uint64_t first, std::uint64_t last, const Visitor &visitor)
{
    JournalLink before;
    Result result = JournalTables::ReadLink(m_database, "anchor", before);
    SqliteStatement predecessor(m_database, "SELECT hash FROM events WHERE id = ?1");
    predecessor.Bind(1, static_cast<std::int64_t>(first) - 1);
    if (predecessor.Step())
        before.hash = predecessor.Bytes(0);
    SqliteStatement statement(m_database, std::string(JournalTables::Columns) +
                                              " WHERE id >= ?1 AND id <= ?2 ORDER BY id");
    statement.Bind(1, static_cast<std::int64_t>(first));
    statement.Bind(2, static_cast<std::int64_t>(last));
    while (result && statement.Step()) {
        JournalRow row = JournalTables::ReadRow(statement);
        result = m_sources.Read(statement.Integer(JournalTables::OriginColumn), row.source);
        const std::string hash = statement.Bytes(JournalTables::HashColumn);
        if (result && !visitor(row, before.hash, hash))
            return Result();
        before.hash = hash;
    }
    return result ? statement.GetResult() : result;
}

Result SqliteJournalSearch::find(const JournalQuery &query, std::vector<JournalRow> &rows)
{
    JournalSelection::Origins origins;
    Result result = findOrigins(query, origins);
    if (!result)
        return result;
    std::vector<JournalTextIndex::Span> spans;
    result = findSpans(query, spans);
    SqliteStatement statement(m_database, JournalSelection(query, origins).GetSql());
    for (std::size_t i = 0; result && i < spans.size() && rows.size() < query.limit; ++i) {
        JournalQuery part = query;
        part.begin = spans[i].begin;
        part.end = spans[i].end;
        part.limit = query.limit - rows.size();
        JournalSelection(part, origins).Bind(statement);
        result = readRows(statement, rows);
    }
    return result;
}

/// In the order of the query. A text is looked for only where it may stand.
Result SqliteJournalSearch::findSpans(const JournalQuery &query,
                                      std::vector<JournalTextIndex::Span> &spans)
{
    const Timestamp end = query.end != 0 ? query.end : std::numeric_limits<Timestamp>::max();
    spans = {{query.begin, end}};
    if (query.text.empty())
        return Result();
    const Result result =
        JournalTextIndex(m_database).Narrow(query.text, {query.begin, end}, spans);
    if (query.order == JournalQuery::NewestFirst)
        std::reverse(spans.begin(), spans.end());
    return result;
}

Result SqliteJournalSearch::readRows(SqliteStatement &statement, std::vector<JournalRow> &rows)
{
    Result result;
    while (result && statement.Step()) {
        rows.push_back(JournalTables::ReadRow(statement));
        result = m_sources.Read(statement.Integer(JournalTables::OriginColumn), rows.back().source);
    }
    if (result)
        result = statement.GetResult();
    statement.Reset();
    return result;
}

Result SqliteJournalSearch::findOrigins(const JournalQuery &query,
                                        JournalSelection::Origins &origins)
{
    if (query.source.empty() && query.nodes.empty())
        return Result();
    JournalTables::Link anchor;
    Result result = JournalTables::ReadLink(m_database, "anchor", anchor);
    SqliteStatement border(m_database, "SELECT id FROM border");
    if (border.Step() && border.Integer(0) > static_cast<std::int64_t>(anchor.id))
        origins.border = static_cast<std::uint64_t>(border.Integer(0));
    std::set<std::int64_t> numbers;
    const std::string name = query.source.empty() ? "" : " AND name = ?4";
    SqliteStatement byNode(m_database, "SELECT id FROM sources WHERE node = ?1 AND project = ?2 "
                                       "AND station = ?3" +
                                           name);
    SqliteStatement byName(m_database, "SELECT id FROM sources WHERE name = ?4");
    for (const RecordSource &node : query.nodes) {
        byNode.Bind(1, static_cast<std::int64_t>(node.node));
        byNode.Bind(2, node.home.project);
        byNode.Bind(3, static_cast<std::int64_t>(node.home.station));
        if (!name.empty())
            byNode.Bind(4, query.source);
        // Without a project nobody knows what the number means.
        while (!node.home.project.empty() && byNode.Step())
            numbers.insert(byNode.Integer(0));
        byNode.Reset();
    }
    if (query.nodes.empty()) {
        byName.Bind(4, query.source);
        while (byName.Step())
            numbers.insert(byName.Integer(0));
    }
    origins.numbers.assign(numbers.begin(), numbers.end());
    for (const SqliteStatement *statement : {&border, &byNode, &byName}) {
        if (result)
            result = statement->GetResult();
    }
    return result;
}

Result SqliteJournalSearch::verify(const std::vector<JournalLink> &receipts,
                                   const Progress &progress)
{
    JournalEnds ends;
    Result result = readEnds(ends);
    if (!result && m_database.IsDamaged())
        result = JournalProof::Broken("the beginning: " + result.GetDetail());
    JournalProof proof(ends.anchor, receipts);
    if (result)
        result = JournalChain(m_database).CheckAll(proof, progress);
    return result ? proof.Finish(ends) : result;
}

} // namespace Nodes
