#include "nodes/journal/postgresql/PostgresJournal.h"

#include "nodes/journal/JournalTrim.h"
#include "nodes/journal/postgresql/PostgresJournalSearch.h"
#include "nodes/journal/postgresql/PostgresJournalTables.h"
#include "nodes/journal/postgresql/PostgresJournalTrim.h"
#include "nodes/storage/Digest.h"
#include "nodes/storage/postgresql/PostgresParameters.h"
#include "nodes/values/Clock.h"
#include "nodes/values/FoldCase.h"

#include <set>
#include <utility>

namespace Nodes {

namespace {

using Parameters = PostgresParameters;

constexpr std::size_t mostRemembered = 100000; // sources
constexpr Timestamp lookPeriod = Timestamp(600) * 1000000;
/// Whoever writes waits for the one before: rows are chained.
constexpr const char *beginTurn = "BEGIN; SELECT id, hash FROM head FOR UPDATE";

constexpr const char *insertion = R"(
INSERT INTO events (id, key, time, level, type, username, folded, origin, version, packed, hash)
SELECT id, key, time, level, type, convert_from(username, 'UTF8'), convert_from(folded, 'UTF8'),
       origin, version, packed, hash
FROM unnest($1::bigint[], $2::bigint[], $3::bigint[], $4::bigint[], $5::bigint[], $6::bytea[],
            $7::bytea[], $8::bigint[], $9::bigint[], $10::bytea[], $11::bytea[])
     AS rows (id, key, time, level, type, username, folded, origin, version, packed, hash))";

/// Rows to be inserted, as columns.
struct Columns
{
    void Add(const JournalRow &row, const Record &record, const JournalLink &link,
             std::int64_t origin)
    {
        const BasicEvent &event = row.event;
        const auto text = [](const std::string &value) {
            return PostgresJournalTables::TextColumn(value);
        };
        numbers[0].Add(static_cast<std::int64_t>(link.id));
        numbers[1].Add(static_cast<std::int64_t>(record.key));
        numbers[2].Add(event.time);
        numbers[3].Add(event.level);
        numbers[4].Add(event.type);
        bytes[0].Add(text(event.user));
        bytes[1].Add(text(FoldCase(event.text)));
        numbers[5].Add(origin);
        numbers[6].Add(record.version);
        bytes[2].Add(record.bytes);
        bytes[3].Add(link.hash);
        ++count;
    }
    Parameters AsParameters() const
    {
        Parameters all;
        for (int i = 0; i < 5; ++i)
            all.Add(numbers[i]);
        all.Add(bytes[0]).Add(bytes[1]).Add(numbers[5]).Add(numbers[6]).Add(bytes[2]).Add(bytes[3]);
        return all;
    }

    Parameters::Integers numbers[7];
    Parameters::ByteStrings bytes[4];
    int count = 0;
};

} // namespace

PostgresJournal::PostgresJournal(const std::string &location)
    : m_given(location),
      m_connection(PostgresLocation(location, PostgresJournalTables::DefaultSchema),
                   "station journal")
{
}

const std::string &PostgresJournal::GetLocation() const
{
    return m_connection.GetLocation().GetShown();
}

Result PostgresJournal::Open(StoreOpening &opening)
{
    m_origins.clear();
    m_nextLook = 0;
    Result result = m_connection.Open(PostgresConnection::Mode::ReadWrite);
    if (result)
        result = PostgresJournalTables::Product().Prepare(m_connection);
    if (!result) {
        m_connection.Close();
        return result;
    }
    opening.isReplaced = std::exchange(m_isGone, false);
    return result;
}

void PostgresJournal::Close()
{
    m_connection.Close();
}

/// A server that went away has moved nothing: what follows is a failure like any other.
bool PostgresJournal::NoticeMove()
{
    (void)m_connection.NoticeEnd();
    return false;
}

JournalStore::SearchMaker PostgresJournal::GetSearchMaker() const
{
    return [location = m_given] { return std::make_unique<PostgresJournalSearch>(location); };
}

void PostgresJournal::SetRetention(const JournalRetention &retention, const RecordHome &home)
{
    m_retention = retention;
    m_home = home;
}

Result PostgresJournal::transact(const PostgresConnection::Work &work)
{
    const Result result = m_connection.Transact(beginTurn, work);
    if (result)
        return result;
    m_origins.clear(); // some of them may have been rolled back
    m_isGone = m_connection.GetState() == "42P01" || m_connection.GetState() == "3F000";
    if (m_isGone)
        m_connection.Close();
    return result;
}

Result PostgresJournal::Write(const Records &records, std::vector<std::uint64_t> &numbers)
{
    return transact([&](const PostgresAnswer &) { return append(records, numbers); });
}

Result PostgresJournal::append(const Records &records, std::vector<std::uint64_t> &numbers)
{
    numbers.assign(records.size(), 0);
    JournalEnds ends;
    Parameters::Integers keys;
    for (const Record &record : records)
        keys.Add(static_cast<std::int64_t>(record.key));
    PostgresAnswer known;
    Result result = PostgresJournalTables::ReadEnds(m_connection, ends);
    if (result)
        result = m_connection.Query("SELECT key FROM events WHERE key = ANY($1::bigint[])",
                                    Parameters().Add(keys), known);
    std::set<std::uint64_t> stored;
    for (int row = 0; row < known.Size(); ++row)
        stored.insert(static_cast<std::uint64_t>(known.Integer(row, 0)));
    JournalLink last = ends.head;
    Columns columns;
    for (std::size_t i = 0; result && i < records.size(); ++i) {
        if (!stored.insert(records[i].key).second)
            continue;
        std::optional<JournalRow> read = UnpackRow(records[i]);
        const JournalRow row = read ? std::move(*read) : JournalRow::Unreadable(records[i]);
        const Record record = read ? records[i] : PackRow(row);
        std::int64_t origin = 0;
        result = findOrigin(row.source, origin);
        last = {last.id + 1, ChainHash(last.hash, last.id + 1, record)};
        columns.Add(row, record, last, origin);
        numbers[i] = last.id;
    }
    if (result && columns.count > 0)
        result = m_connection.Query(insertion, columns.AsParameters());
    return result ? m_connection.Query(
                        "UPDATE head SET id = $1, hash = $2",
                        Parameters().Add(static_cast<std::int64_t>(last.id)).AddBytes(last.hash))
                  : result;
}

Result PostgresJournal::findOrigin(const RecordSource &source, std::int64_t &origin)
{
    if (m_origins.size() > mostRemembered)
        m_origins.clear();
    std::int64_t &known = m_origins[source];
    Result result;
    if (known == 0) {
        const Parameters whole = Parameters()
                                     .Add(std::string_view(source.home.project))
                                     .Add(static_cast<std::int64_t>(source.home.station))
                                     .Add(std::string_view(source.home.stationName))
                                     .Add(static_cast<std::int64_t>(source.node))
                                     .Add(std::string_view(source.name));
        PostgresAnswer found;
        // All that write wait for each other: nobody adds the same meanwhile.
        result = m_connection.Query(
            "WITH added AS (INSERT INTO sources (project, station, station_name, node, name) "
            "VALUES ($1, $2, $3, $4, $5) ON CONFLICT DO NOTHING RETURNING id) "
            "SELECT id FROM added UNION ALL SELECT id FROM sources WHERE project = $1 AND "
            "station = $2 AND md5(station_name) = md5($3) AND node = $4 AND md5(name) = md5($5)",
            whole, found);
        if (result && found.IsEmpty())
            result = Result(Result::StorageError, GetLocation() + ": no source was added");
        if (result)
            known = found.Integer(0, 0);
    }
    origin = known;
    return result;
}

Result PostgresJournal::Tend(Upkeep &upkeep)
{
    const Timestamp now = Clock::Current().Steady();
    if (now < m_nextLook)
        return Result();
    PostgresJournalTrim trim(m_connection);
    bool isUnderWay = false;
    Result result = trim.IsUnderWay(isUnderWay);
    if (result && isUnderWay)
        result = transact([&](const PostgresAnswer &) { return trim.Step(); });
    else if (result && m_retention.isNeeded())
        result = beginTrim(upkeep);
    upkeep.hasMore = result && (isUnderWay || !upkeep.records.empty());
    if (!upkeep.hasMore)
        m_nextLook = now + lookPeriod;
    return result;
}

/// The entry comes first: if rows go and nobody tells why, somebody else took them.
Result PostgresJournal::beginTrim(Upkeep &upkeep)
{
    PostgresJournalTrim trim(m_connection);
    std::optional<JournalTrim::Plan> plan;
    const Result planned = trim.MakePlan(m_retention, plan);
    if (!planned || !plan)
        return planned;
    const BasicEvent entry = JournalTrim::EntryOf(*plan);
    const RecordSource source{m_home, 0, entry.source};
    const Records told{{RandomStart(), JournalRow::WithSource, PackEvent(entry, source)}};
    const Result begun = transact([&](const PostgresAnswer &) {
        const Result stored = append(told, upkeep.numbers);
        return stored ? trim.Begin(*plan) : stored;
    });
    if (begun)
        upkeep.records = told;
    return begun;
}

} // namespace Nodes
