#include "nodes/journal/JournalReader.h"

#include "nodes/storage/SqliteStatement.h"
#include "nodes/values/FoldCase.h"

#include <sqlite3.h>

#include <limits>

namespace Nodes {

namespace {

constexpr const char *columns = "SELECT id, key, time, level, type, text, source, node, user, "
                                "old_value, new_value, alarm_state, priority, occurrence, hash "
                                "FROM events";
constexpr int hashColumn = 14;

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

JournalRow readRow(const SqliteStatement &s)
{
    JournalRow row;
    BasicEvent &e = row.event;
    e.id = static_cast<unsigned long>(s.Integer(0));
    row.key = static_cast<std::uint64_t>(s.Integer(1));
    e.time = s.Integer(2);
    e.level = EventLevel(s.Integer(3));
    e.type = EventType(s.Integer(4));
    e.text = s.Bytes(5);
    e.source = s.Bytes(6);
    if (const auto node = static_cast<unsigned long>(s.Integer(7)))
        e.sourceNode = NodeLink(node);
    e.user = s.Bytes(8);
    e.oldValue = s.Bytes(9);
    e.newValue = s.Bytes(10);
    e.alarmState = AlarmState(s.Integer(11));
    e.priority = static_cast<int>(s.Integer(12));
    e.occurrence = static_cast<unsigned long>(s.Integer(13));
    return row;
}

std::string selection(const JournalQuery &query)
{
    std::string sql = columns;
    sql += " WHERE time >= ?1 AND time < ?2 AND level <= ?3 AND id > ?4";
    if (!query.source.empty())
        sql += " AND source = ?6";
    if (!query.text.empty())
        sql += " AND contains_folded(text, ?7)";
    // With an interval the time index finds the rows; the plus keeps the order from hiding it.
    const bool hasInterval = query.begin != 0 || query.end != 0;
    return sql + (hasInterval ? " ORDER BY +id" : " ORDER BY id") + " LIMIT ?5";
}

void bindQuery(SqliteStatement &statement, const JournalQuery &query)
{
    constexpr auto longest = std::numeric_limits<std::int64_t>::max();
    statement.Bind(1, query.begin);
    statement.Bind(2, query.end != 0 ? query.end : longest);
    statement.Bind(3, std::int64_t(query.maximumLevel.value_or(std::numeric_limits<int>::max())));
    statement.Bind(4, static_cast<std::int64_t>(query.afterId));
    statement.Bind(5, static_cast<std::int64_t>(query.limit));
    if (!query.source.empty())
        statement.Bind(6, query.source);
    if (!query.text.empty())
        statement.Bind(7, FoldCase(query.text));
}

Result broken(const std::string &what)
{
    return Result(Result::Failed, "journal chain broken at " + what);
}

} // namespace

Result JournalReader::open()
{
    Result result = m_database.Open(m_file, SqliteDatabase::Mode::ReadOnly);
    if (result)
        sqlite3_create_function_v2(m_database.Handle(), "contains_folded", 2,
                                   SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr, &containsFolded,
                                   nullptr, nullptr, nullptr);
    return result;
}

Result JournalReader::Query(const JournalQuery &query, std::vector<BasicEvent> &events)
{
    events.clear();
    Result result = open();
    if (!result)
        return result;
    SqliteStatement statement(m_database, selection(query));
    bindQuery(statement, query);
    while (statement.Step())
        events.push_back(readRow(statement).event);
    return statement.GetResult();
}

Result JournalReader::Verify()
{
    Result result = open();
    if (result)
        result = m_database.Execute("BEGIN");
    std::uint64_t lastId = 0;
    std::string lastHash = FirstHash();
    if (result)
        result = verifyRows(lastId, lastHash);
    if (!result)
        return result;
    SqliteStatement head(m_database, "SELECT id, hash FROM head");
    const bool hasHead = head.Step();
    if (!head.GetResult())
        return head.GetResult();
    const bool isWhole =
        hasHead ? head.Integer(0) == static_cast<std::int64_t>(lastId) && head.Bytes(1) == lastHash
                : lastId == 0;
    return isWhole ? Result() : broken("the end: rows behind row " + std::to_string(lastId));
}

Result JournalReader::verifyRows(std::uint64_t &lastId, std::string &lastHash)
{
    SqliteStatement statement(m_database, std::string(columns) + " ORDER BY id");
    while (statement.Step()) {
        const JournalRow row = readRow(statement);
        lastHash = ChainHash(lastHash, row.event.id, PackRow(row));
        if (row.event.id != lastId + 1 || statement.Bytes(hashColumn) != lastHash)
            return broken("row " + std::to_string(row.event.id));
        lastId = row.event.id;
    }
    return statement.GetResult();
}

} // namespace Nodes
