#include "nodes/archive/postgresql/PostgresTables.h"

#include "nodes/storage/postgresql/PostgresConnection.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace Nodes {

namespace {

constexpr std::size_t mostGathered = 256; // blocks
constexpr std::size_t mostGatheredBytes = 4u << 20;
constexpr std::size_t mostAhead = 64;      // blocks
constexpr std::size_t aggregatesAhead = 8; // at first: they are small
constexpr std::size_t leastListed = 64;    // blocks
constexpr std::size_t mostFetched = 1024;  // blocks kept
constexpr std::int64_t logPage = 16;       // rows
constexpr const char *signalColumns =
    "SELECT number, project, station, node, station_name, name, unit, sealed_to, generated_from, "
    "generated_to FROM signals ";
constexpr const char *blockColumns = "SELECT id, bits, first, last, samples, size FROM blocks ";

std::int64_t number(std::uint64_t value)
{
    return static_cast<std::int64_t>(value);
}

std::uint64_t positive(std::int64_t value)
{
    return static_cast<std::uint64_t>(value);
}

StoredSignal signalIn(const PostgresAnswer &rows, int row)
{
    StoredSignal signal;
    RecordSource &source = signal.key.source;
    signal.number = rows.Integer(row, 0);
    source.home.project = rows.Text(row, 1);
    source.home.station = positive(rows.Integer(row, 2));
    source.node = positive(rows.Integer(row, 3));
    source.home.stationName = rows.Text(row, 4);
    source.name = rows.Text(row, 5);
    signal.key.unit = rows.Text(row, 6);
    signal.sealedTo = rows.Integer(row, 7);
    signal.generatedFrom = rows.Integer(row, 8);
    signal.generatedTo = rows.Integer(row, 9);
    return signal;
}

PostgresParameters valuesOf(const StoredSignal &signal)
{
    const RecordSource &source = signal.key.source;
    PostgresParameters values;
    values.Add(source.home.project).Add(number(source.home.station)).Add(number(source.node));
    values.Add(source.home.stationName).Add(source.name).Add(signal.key.unit);
    values.Add(signal.sealedTo).Add(signal.generatedFrom).Add(signal.generatedTo);
    return values;
}

} // namespace

void PostgresTables::Forget()
{
    m_gathered = Gathered();
    m_fetched.clear();
    m_windows.clear();
    m_trails.clear();
}

Result PostgresTables::Send()
{
    if (m_gathered.count == 0)
        return Result();
    const Result result = m_connection.Query(
        "INSERT INTO blocks (signal, height, bits, first, last, samples, size, bytes) "
        "SELECT * FROM unnest($1::bigint[], $2::smallint[], $3::smallint[], $4::bigint[], "
        "$5::bigint[], $6::bigint[], $7::bigint[], $8::bytea[])",
        PostgresParameters()
            .Add(m_gathered.signals)
            .Add(m_gathered.heights)
            .Add(m_gathered.bits)
            .Add(m_gathered.firsts)
            .Add(m_gathered.lasts)
            .Add(m_gathered.samples)
            .Add(m_gathered.sizes)
            .Add(m_gathered.bytes));
    m_gathered = Gathered();
    return result;
}

Result PostgresTables::ReadSignals(std::int64_t after, std::vector<StoredSignal> &signals)
{
    PostgresAnswer rows;
    const Result result =
        m_connection.Query(std::string(signalColumns) + "WHERE number > $1 ORDER BY number",
                           PostgresParameters().Add(after), rows);
    for (int row = 0; row < rows.Size(); ++row)
        signals.push_back(signalIn(rows, row));
    return result;
}

Result PostgresTables::FindSignal(const ArchiveSignalKey &key, std::optional<StoredSignal> &signal)
{
    PostgresAnswer rows;
    const RecordSource &source = key.source;
    const Result result = m_connection.Query(
        std::string(signalColumns) + "WHERE project = $1 AND station = $2 AND node = $3",
        PostgresParameters()
            .Add(source.home.project)
            .Add(number(source.home.station))
            .Add(number(source.node)),
        rows);
    signal.reset();
    if (!rows.IsEmpty())
        signal = signalIn(rows, 0);
    return result;
}

/// Whoever looks at a span asks for one part of it after the other.
Result PostgresTables::ListBlocks(std::int64_t signal, int height, Timestamp from, Timestamp to,
                                  std::size_t limit, StoredBlocks &blocks)
{
    blocks.clear();
    if (m_use == Use::Writing) {
        const Result sent = Send();
        return sent ? list(signal, height, from, to, limit, blocks) : sent;
    }
    const Window &window = m_windows[height];
    const auto isWithin = [&] {
        return window.signal == signal && window.from <= from && to <= window.to;
    };
    const Result widened = isWithin() ? Result() : widen(signal, height, from);
    if (!widened)
        return widened;
    // What begins the window is enough for whoever wants no more than that.
    if (!isWithin() && limit > window.blocks.size())
        return list(signal, height, from, to, limit, blocks);
    const auto isLater = [](Timestamp time, const StoredBlock &b) { return time < b.first; };
    auto next = std::upper_bound(window.blocks.begin(), window.blocks.end(), from, isLater);
    if (next != window.blocks.begin())
        --next;
    for (; next != window.blocks.end() && limit > 0 && next->first <= std::max(from, to); ++next) {
        blocks.push_back(*next);
        --limit;
    }
    return Result();
}

Result PostgresTables::widen(std::int64_t signal, int height, Timestamp from)
{
    constexpr Timestamp endOfTime = std::numeric_limits<Timestamp>::max();
    Window &window = m_windows[height];
    window = {signal, from, endOfTime, {}};
    const Result result = list(signal, height, from, endOfTime, leastListed, window.blocks);
    if (!result)
        window.signal = 0;
    if (window.blocks.size() == leastListed)
        window.to = window.blocks.back().first;
    return result;
}

Result PostgresTables::list(std::int64_t signal, int height, Timestamp from, Timestamp to,
                            std::size_t limit, StoredBlocks &blocks)
{
    PostgresAnswer rows;
    const Result result = m_connection.Query(
        std::string("(") + blockColumns +
            "WHERE signal = $1 AND height = $2 AND first <= $3 ORDER BY first DESC LIMIT 1) "
            "UNION ALL (" +
            blockColumns +
            "WHERE signal = $1 AND height = $2 AND first > $3 AND first <= $4 ORDER BY first "
            "LIMIT $5) ORDER BY first LIMIT $5",
        PostgresParameters()
            .Add(signal)
            .Add(std::int64_t(height))
            .Add(from)
            .Add(to)
            .Add(number(std::min(limit, std::size_t(1) << 40))),
        rows);
    for (int row = 0; row < rows.Size(); ++row) {
        blocks.push_back({rows.Integer(row, 0), signal, height,
                          static_cast<int>(rows.Integer(row, 1)), rows.Integer(row, 2),
                          rows.Integer(row, 3), positive(rows.Integer(row, 4)),
                          positive(rows.Integer(row, 5))});
    }
    return result;
}

Result PostgresTables::ReadBlock(const StoredBlock &block, std::string &bytes)
{
    auto found = m_fetched.find(block.id);
    if (found == m_fetched.end() || block.id == 0) {
        Result result = Send();
        if (result)
            result = fetch(block);
        if (!result)
            return result;
        found = m_fetched.find(block.id);
    }
    if (found == m_fetched.end())
        return Result(Result::NotFound, "block of signal " + std::to_string(block.signal) + " at " +
                                            std::to_string(block.first) + " is gone");
    bytes = std::move(found->second);
    m_fetched.erase(found);
    return Result();
}

/// One that follows what was fetched last brings more behind it: whoever reads on wants them too.
Result PostgresTables::fetch(const StoredBlock &block)
{
    Trail &trail = m_trails[block.height];
    const bool isNext = trail.signal == block.signal && block.first > trail.at;
    const std::size_t first = m_use == Use::Reading && block.height > 0 ? aggregatesAhead : 1;
    trail.ahead = isNext ? std::min(2 * trail.ahead, mostAhead) : first;
    if (m_fetched.size() > mostFetched)
        m_fetched.clear();
    PostgresAnswer rows;
    const Result result = m_connection.Query(
        "SELECT id, first, bytes FROM blocks WHERE signal = $1 AND height = $2 AND first >= $3 "
        "ORDER BY first LIMIT $4",
        PostgresParameters()
            .Add(block.signal)
            .Add(std::int64_t(block.height))
            .Add(block.first)
            .Add(number(trail.ahead)),
        rows);
    trail.signal = block.signal;
    trail.at = block.first;
    for (int row = 0; row < rows.Size(); ++row) {
        trail.at = rows.Integer(row, 1);
        m_fetched[rows.Integer(row, 0)] = rows.Bytes(row, 2);
    }
    return result;
}

Result PostgresTables::SumChunks(std::int64_t signal, StoredBlock &sum)
{
    Result result = Send();
    PostgresAnswer rows;
    if (result)
        result = m_connection.Query("SELECT coalesce(min(first), 0), coalesce(max(last), 0), "
                                    "coalesce(sum(samples), 0)::bigint, "
                                    "coalesce(sum(size), 0)::bigint "
                                    "FROM blocks WHERE signal = $1 AND height = 0",
                                    PostgresParameters().Add(signal), rows);
    sum = StoredBlock();
    sum.signal = signal;
    if (rows.IsEmpty())
        return result;
    sum.first = rows.Integer(0, 0);
    sum.last = rows.Integer(0, 1);
    sum.samples = positive(rows.Integer(0, 2));
    sum.bytes = positive(rows.Integer(0, 3));
    return result;
}

Result PostgresTables::FirstLogRow(std::int64_t &first)
{
    PostgresAnswer rows;
    const Result result =
        m_connection.Query("SELECT coalesce(min(number), 0) FROM log", PostgresParameters(), rows);
    first = rows.IsEmpty() ? 0 : rows.Integer(0, 0);
    return result;
}

Result PostgresTables::ReadLog(std::int64_t after, const LogVisitor &visitor)
{
    PostgresAnswer rows;
    do {
        const Result result = m_connection.Query(
            "SELECT number, bytes FROM log WHERE number > $1 ORDER BY number LIMIT $2",
            PostgresParameters().Add(after).Add(logPage), rows);
        if (!result)
            return result;
        for (int row = 0; row < rows.Size(); ++row) {
            after = rows.Integer(row, 0);
            visitor(after, rows.Bytes(row, 1));
        }
    } while (rows.Size() == logPage);
    return Result();
}

Result PostgresTables::ReadOddRecords(const OddVisitor &visitor)
{
    PostgresAnswer rows;
    const Result result = m_connection.Query(
        "SELECT key, bytes FROM odd WHERE NOT settled ORDER BY key", PostgresParameters(), rows);
    for (int row = 0; row < rows.Size(); ++row)
        visitor(positive(rows.Integer(row, 0)), rows.Bytes(row, 1));
    return result;
}

Result PostgresTables::AddSignal(StoredSignal &signal)
{
    PostgresAnswer rows;
    const Result result = m_connection.Query(
        "INSERT INTO signals (project, station, node, station_name, name, unit, sealed_to, "
        "generated_from, generated_to) VALUES ($1, $2, $3, $4, $5, $6, $7, $8, $9) "
        "RETURNING number",
        valuesOf(signal), rows);
    if (result)
        signal.number = rows.Integer(0, 0);
    return result;
}

Result PostgresTables::UpdateSignal(const StoredSignal &signal)
{
    return m_connection.Query(
        "UPDATE signals SET project = $1, station = $2, node = $3, station_name = $4, name = $5, "
        "unit = $6, sealed_to = $7, generated_from = $8, generated_to = $9 WHERE number = $10",
        valuesOf(signal).Add(signal.number));
}

Result PostgresTables::PutBlock(const StoredBlock &block, const std::string &bytes)
{
    m_gathered.signals.Add(block.signal);
    m_gathered.heights.Add(block.height);
    m_gathered.bits.Add(block.bits);
    m_gathered.firsts.Add(block.first);
    m_gathered.lasts.Add(block.last);
    m_gathered.samples.Add(number(block.samples));
    m_gathered.sizes.Add(number(block.bytes));
    m_gathered.bytes.Add(bytes);
    m_gathered.volume += bytes.size();
    const bool isFull =
        ++m_gathered.count >= mostGathered || m_gathered.volume >= mostGatheredBytes;
    return isFull ? Send() : Result();
}

Result PostgresTables::EraseBlock(const StoredBlock &block)
{
    Result result = Send();
    if (result)
        result = m_connection.Query(
            "DELETE FROM blocks WHERE signal = $1 AND height = $2 AND first = $3",
            PostgresParameters()
                .Add(block.signal)
                .Add(std::int64_t(block.height))
                .Add(block.first));
    return result;
}

Result PostgresTables::AppendLog(const std::string &bytes, std::int64_t &row)
{
    PostgresAnswer rows;
    const Result result = m_connection.Query("INSERT INTO log (bytes) VALUES ($1) RETURNING number",
                                             PostgresParameters().AddBytes(bytes), rows);
    if (result)
        row = rows.Integer(0, 0);
    return result;
}

Result PostgresTables::EraseLog(std::int64_t upTo)
{
    return m_connection.Query("DELETE FROM log WHERE number <= $1", PostgresParameters().Add(upTo));
}

Result PostgresTables::ReadKeys(std::vector<Keys> &keys)
{
    PostgresAnswer rows;
    const Result result = m_connection.Query("SELECT first, last FROM keys ORDER BY first",
                                             PostgresParameters(), rows);
    for (int row = 0; row < rows.Size(); ++row)
        keys.push_back({positive(rows.Integer(row, 0)), positive(rows.Integer(row, 1))});
    return result;
}

Result PostgresTables::PutKeys(const Keys &keys)
{
    return m_connection.Query("INSERT INTO keys (first, last) VALUES ($1, $2) "
                              "ON CONFLICT (first) DO UPDATE SET last = EXCLUDED.last",
                              PostgresParameters().Add(number(keys.first)).Add(number(keys.last)));
}

Result PostgresTables::EraseKeys(std::uint64_t first)
{
    return m_connection.Query("DELETE FROM keys WHERE first = $1",
                              PostgresParameters().Add(number(first)));
}

Result PostgresTables::PutOddRecord(std::uint64_t key, const std::string &bytes)
{
    return m_connection.Query("INSERT INTO odd (key, bytes) VALUES ($1, $2) "
                              "ON CONFLICT (key) DO NOTHING",
                              PostgresParameters().Add(number(key)).AddBytes(bytes));
}

Result PostgresTables::SettleOddRecords()
{
    return m_connection.Query("UPDATE odd SET settled = true WHERE NOT settled",
                              PostgresParameters());
}

} // namespace Nodes
