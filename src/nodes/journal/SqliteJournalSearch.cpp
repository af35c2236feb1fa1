#include "nodes/journal/SqliteJournalSearch.h"

#include "nodes/journal/JournalTables.h"
#include "nodes/storage/SqliteStatement.h"
#include "nodes/values/FoldCase.h"

#include <sqlite3.h>

#include <algorithm>
#include <set>

namespace Nodes {

namespace {

constexpr int operationsBetweenChecks = 1000;
constexpr std::size_t mostRemembered = 100000; // sources

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

Result broken(const std::string &what)
{
    return Result(Result::Failed, "journal chain broken at " + what);
}

} // namespace

Result SqliteJournalSearch::open()
{
    if (m_database.IsOpen() && !m_database.IsMoved())
        return Result();
    m_sources.clear();
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
    if (!result)
        return result;
    result = work();
    (void)m_database.Execute("ROLLBACK"); // only read
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

Result SqliteJournalSearch::Verify()
{
    m_sources.clear();
    return read([this] { return verify(); });
}

Result SqliteJournalSearch::find(const JournalQuery &query, std::vector<JournalRow> &rows)
{
    JournalSelection::Origins origins;
    Result result = findOrigins(query, origins);
    if (!result)
        return result;
    const JournalSelection selection(query, origins);
    SqliteStatement statement(m_database, selection.GetSql());
    selection.Bind(statement);
    while (result && statement.Step()) {
        rows.push_back(JournalTables::ReadRow(statement));
        result = readSource(statement.Integer(JournalTables::OriginColumn), rows.back().source);
    }
    return result ? statement.GetResult() : result;
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

/// Rows of the first version have read theirs already.
Result SqliteJournalSearch::readSource(std::int64_t origin, RecordSource &source)
{
    if (origin == 0)
        return Result();
    if (m_sources.size() > mostRemembered)
        m_sources.clear();
    const auto [known, isNew] = m_sources.try_emplace(origin);
    const Result result =
        isNew ? JournalTables::ReadSource(m_database, origin, known->second) : Result();
    source = known->second;
    if (!result)
        m_sources.erase(known);
    return result;
}

Result SqliteJournalSearch::verify()
{
    JournalTables::Link anchor;
    JournalTables::Link head;
    Result result = JournalTables::ReadLink(m_database, "anchor", anchor);
    if (result)
        result = JournalTables::ReadLink(m_database, "head", head);
    if (result)
        result = verifyRows(anchor.id, anchor.hash);
    if (!result)
        return result;
    const bool isWhole = head.id == anchor.id && head.hash == anchor.hash;
    return isWhole ? Result() : broken("the end: rows behind row " + std::to_string(anchor.id));
}

Result SqliteJournalSearch::verifyRows(std::uint64_t &lastId, std::string &lastHash)
{
    SqliteStatement statement(m_database, std::string(JournalTables::Columns) + " ORDER BY id");
    while (statement.Step()) {
        JournalRow row = JournalTables::ReadRow(statement);
        const Result result =
            readSource(statement.Integer(JournalTables::OriginColumn), row.source);
        if (!result)
            return result;
        lastHash = ChainHash(lastHash, row.event.id, PackRow(row));
        if (row.event.id != lastId + 1 || statement.Bytes(JournalTables::HashColumn) != lastHash)
            return broken("row " + std::to_string(row.event.id));
        lastId = row.event.id;
    }
    return statement.GetResult();
}

} // namespace Nodes
