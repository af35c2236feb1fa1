#include "nodes/journal/texts/JournalTextIndex.h"

#include "nodes/journal/texts/TextFilter.h"
#include "nodes/storage/SqliteDatabase.h"
#include "nodes/storage/SqliteStatement.h"

#include <algorithm>

namespace Nodes {

namespace {

constexpr int stepBlocks = 8;
// Rows without a block whose times are still asked for; beyond, everything is read.
constexpr std::int64_t mostRest = 64 * std::int64_t(JournalTextIndex::BlockRows);

// The name changes with what a filter means: FoldCase, letters in a row, hash.
constexpr const char *table = R"(
CREATE TABLE IF NOT EXISTS text_blocks_1 (
    last INTEGER PRIMARY KEY, begin INTEGER NOT NULL, end INTEGER NOT NULL, filter BLOB NOT NULL))";

using Span = JournalTextIndex::Span;

/// Within `whole`, by time, joined where they touch.
std::vector<Span> joined(std::vector<Span> spans, const Span &whole)
{
    std::sort(spans.begin(), spans.end(),
              [](const Span &a, const Span &b) { return a.begin < b.begin; });
    std::vector<Span> made;
    for (Span span : spans) {
        span = {std::max(span.begin, whole.begin), std::min(span.end, whole.end)};
        if (span.begin >= span.end)
            continue;
        if (made.empty() || made.back().end < span.begin)
            made.push_back(span);
        else
            made.back().end = std::max(made.back().end, span.end);
    }
    return made;
}

} // namespace

Result JournalTextIndex::IsDue(bool &isDue)
{
    isDue = false;
    std::uint64_t last = 0;
    bool isThere = false;
    std::int64_t count = 0;
    Span times;
    Result result = readLast(last, isThere);
    if (result)
        result = readRest(last, WorthRows, count, times);
    isDue = result && count >= std::int64_t(WorthRows);
    return result;
}

Result JournalTextIndex::Extend()
{
    Result result = m_database.Execute(table);
    if (result)
        result = m_database.Execute(
            "DELETE FROM text_blocks_1 WHERE last < (SELECT min(id) FROM events)");
    std::uint64_t last = 0;
    bool hasMore = true;
    if (result)
        result = readLast(last, hasMore);
    for (int i = 0; result && hasMore && i < stepBlocks; ++i)
        result = addBlock(last, hasMore);
    return result;
}

Result JournalTextIndex::readLast(std::uint64_t &last, bool &isThere)
{
    last = 0;
    SqliteStatement known(m_database, "SELECT 1 FROM sqlite_master WHERE name = 'text_blocks_1'");
    isThere = known.Step();
    if (!isThere)
        return known.GetResult();
    SqliteStatement statement(m_database, "SELECT coalesce(max(last), 0) FROM text_blocks_1");
    if (statement.Step())
        last = static_cast<std::uint64_t>(statement.Integer(0));
    return statement.GetResult();
}

Result JournalTextIndex::readRest(std::uint64_t last, std::int64_t most, std::int64_t &count,
                                  Span &times)
{
    SqliteStatement rest(m_database, "SELECT count(*), min(time), max(time) FROM "
                                     "(SELECT time FROM events WHERE id > ?1 LIMIT ?2)");
    rest.Bind(1, static_cast<std::int64_t>(last));
    rest.Bind(2, most);
    count = rest.Step() ? rest.Integer(0) : 0;
    if (count > 0)
        times = {rest.Integer(1), rest.Integer(2) + 1};
    return rest.GetResult();
}

/// Of the rows behind `last`, which then is the block's own; nothing while they are too few.
Result JournalTextIndex::addBlock(std::uint64_t &last, bool &isFull)
{
    SqliteStatement rows(m_database,
                         "SELECT id, time, text FROM events WHERE id > ?1 ORDER BY id LIMIT ?2");
    rows.Bind(1, static_cast<std::int64_t>(last));
    rows.Bind(2, static_cast<std::int64_t>(BlockRows));
    TextFilter filter;
    Span times;
    std::uint64_t count = 0;
    std::uint64_t reached = last;
    for (; rows.Step(); ++count) {
        const Timestamp time = rows.Integer(1);
        times.begin = count == 0 ? time : std::min(times.begin, time);
        times.end = count == 0 ? time + 1 : std::max(times.end, time + 1);
        reached = static_cast<std::uint64_t>(rows.Integer(0));
        filter.Add(rows.Bytes(2));
    }
    isFull = count == BlockRows;
    if (!rows.GetResult() || !isFull)
        return rows.GetResult();
    last = reached;
    return store(last, times, filter);
}

Result JournalTextIndex::store(std::uint64_t last, const Span &times, const TextFilter &filter)
{
    SqliteStatement block(m_database, "INSERT INTO text_blocks_1 (last, begin, end, filter) "
                                      "VALUES (?1, ?2, ?3, ?4)");
    block.Bind(1, static_cast<std::int64_t>(last));
    block.Bind(2, times.begin);
    block.Bind(3, times.end);
    block.BindBlob(4, filter.Pack());
    return block.Run();
}

Result JournalTextIndex::Narrow(const std::string &text, const Span &whole,
                                std::vector<Span> &spans)
{
    spans = {whole};
    const TextFilter::Wanted wanted(text);
    std::uint64_t last = 0;
    bool isThere = false;
    std::int64_t count = 0;
    std::vector<Span> found(1);
    Result result = readLast(last, isThere);
    if (result && isThere)
        result = readRest(last, mostRest, count, found[0]);
    if (!result || !isThere || wanted.IsTooShort() || count >= mostRest)
        return result;
    SqliteStatement blocks(m_database, "SELECT begin, end, filter FROM text_blocks_1 "
                                       "WHERE end > ?1 AND begin < ?2");
    blocks.Bind(1, whole.begin);
    blocks.Bind(2, whole.end);
    while (blocks.Step()) {
        if (TextFilter::MayHold(blocks.Bytes(2), wanted))
            found.push_back({blocks.Integer(0), blocks.Integer(1)});
    }
    spans = joined(std::move(found), whole);
    return blocks.GetResult();
}

} // namespace Nodes
