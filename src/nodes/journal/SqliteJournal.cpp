#include "nodes/journal/SqliteJournal.h"

#include "nodes/journal/JournalTables.h"
#include "nodes/journal/JournalTrim.h"
#include "nodes/journal/SqliteJournalSearch.h"
#include "nodes/journal/texts/JournalTextIndex.h"
#include "nodes/storage/Digest.h"
#include "nodes/storage/SqliteStatement.h"
#include "nodes/values/Clock.h"

#include <sqlite3.h>

namespace Nodes {

namespace {

constexpr std::size_t mostRemembered = 100000; // sources
constexpr Timestamp lookPeriod = Timestamp(600) * 1000000;

constexpr const char *insertion =
    "INSERT INTO events (id, key, time, level, type, text, source, node, user, old_value, "
    "new_value, alarm_state, priority, occurrence, hash, version, origin) "
    "VALUES (?1, ?2, ?3, ?4, ?5, ?6, '', 0, ?7, ?8, ?9, ?10, ?11, ?12, ?13, ?14, ?15) "
    "ON CONFLICT (key) DO NOTHING";

void bindRow(SqliteStatement &s, const JournalRow &row, std::uint64_t id, const std::string &hash,
             std::int64_t origin)
{
    const BasicEvent &e = row.event;
    s.Bind(1, static_cast<std::int64_t>(id));
    s.Bind(2, static_cast<std::int64_t>(row.key));
    s.Bind(3, e.time);
    s.Bind(4, std::int64_t(e.level));
    s.Bind(5, std::int64_t(e.type));
    s.Bind(6, e.text);
    s.Bind(7, e.user);
    s.Bind(8, e.oldValue);
    s.Bind(9, e.newValue);
    s.Bind(10, std::int64_t(e.alarmState));
    s.Bind(11, std::int64_t(e.priority));
    s.Bind(12, static_cast<std::int64_t>(e.occurrence));
    s.BindBlob(13, hash);
    s.Bind(14, std::int64_t(row.version));
    s.Bind(15, origin);
}

void bindSource(SqliteStatement &s, const RecordSource &source)
{
    s.Bind(1, source.home.project);
    s.Bind(2, static_cast<std::int64_t>(source.home.station));
    s.Bind(3, source.home.stationName);
    s.Bind(4, static_cast<std::int64_t>(source.node));
    s.Bind(5, source.name);
}

} // namespace

SqliteJournal::SqliteJournal(const std::string &file)
    : SqliteStore<JournalStore>(file, JournalTables::Schema())
{
}

JournalStore::SearchMaker SqliteJournal::GetSearchMaker() const
{
    return [file = m_file.GetFile()] { return std::make_unique<SqliteJournalSearch>(file); };
}

Result SqliteJournal::Open(StoreOpening &opening)
{
    m_origins.clear(); // it may be another file by now
    m_nextLook = 0;
    m_unindexed = JournalTextIndex::WorthRows;
    return SqliteStore<JournalStore>::Open(opening);
}

Result SqliteJournal::Write(const Records &records, std::vector<std::uint64_t> &numbers)
{
    const Result result = m_file.Transact([&] { return append(records, numbers); });
    if (!result)
        m_origins.clear(); // some of them may have been rolled back
    return result;
}

void SqliteJournal::SetRetention(const JournalRetention &retention, const RecordHome &home)
{
    m_retention = retention;
    m_home = home;
}

Result SqliteJournal::Tend(Upkeep &upkeep)
{
    bool hasTexts = false;
    Result result = m_unindexed >= JournalTextIndex::WorthRows ? extendTexts(hasTexts) : Result();
    upkeep.hasMore = result && hasTexts;
    if (!result || hasTexts)
        return result;
    const Timestamp now = Clock::Current().Steady();
    if (now < m_nextLook)
        return Result();
    JournalTrim trim(m_file.Database());
    bool isUnderWay = false;
    result = trim.IsUnderWay(isUnderWay);
    if (result && isUnderWay)
        result = m_file.Transact([&] { return trim.Step(); });
    else if (result && m_retention.isNeeded())
        result = beginTrim(upkeep);
    upkeep.hasMore = result && (isUnderWay || !upkeep.records.empty());
    if (!upkeep.hasMore)
        m_nextLook = now + lookPeriod;
    return result;
}

/// Nothing is written while there is little to index.
Result SqliteJournal::extendTexts(bool &hasMore)
{
    JournalTextIndex texts(m_file.Database());
    Result result = texts.IsDue(hasMore);
    if (result && hasMore)
        result = m_file.Transact([&] { return texts.Extend(); });
    else
        m_unindexed = 0;
    return result;
}

/// The entry comes first: if rows go and nobody tells why, somebody else took them.
Result SqliteJournal::beginTrim(Upkeep &upkeep)
{
    JournalTrim trim(m_file.Database());
    std::optional<JournalTrim::Plan> plan;
    const Result planned = trim.MakePlan(m_retention, plan);
    if (!planned || !plan)
        return planned;
    const BasicEvent entry = JournalTrim::EntryOf(*plan);
    const RecordSource source{m_home, 0, entry.source};
    const Records told{{RandomStart(), JournalRow::WithSource, PackEvent(entry, source)}};
    const Result begun = m_file.Transact([&] {
        const Result stored = append(told, upkeep.numbers);
        return stored ? trim.Begin(*plan) : stored;
    });
    if (begun)
        upkeep.records = told;
    else
        m_origins.clear();
    return begun;
}

/// Prepared once for a batch: in a flood nearly every row may be about another source.
struct SqliteJournal::OriginStatements
{
    explicit OriginStatements(SqliteDatabase &database)
        : find(database, "SELECT id FROM sources WHERE project = ?1 AND station = ?2 AND "
                         "station_name = ?3 AND node = ?4 AND name = ?5"),
          add(database, "INSERT INTO sources (project, station, station_name, node, name) "
                        "VALUES (?1, ?2, ?3, ?4, ?5)")
    {
    }

    SqliteStatement find;
    SqliteStatement add;
};

Result SqliteJournal::append(const Records &records, std::vector<std::uint64_t> &numbers)
{
    numbers.assign(records.size(), 0);
    JournalTables::Link last;
    Result result = JournalTables::ReadLink(m_file.Database(), "head", last);
    SqliteStatement insertRow(m_file.Database(), insertion);
    OriginStatements origins(m_file.Database());
    for (std::size_t i = 0; result && i < records.size(); ++i) {
        std::optional<JournalRow> read = UnpackRow(records[i]);
        const JournalRow row = read ? std::move(*read) : JournalRow::Unreadable(records[i]);
        std::int64_t origin = 0;
        result = findOrigin(origins, row.source, origin);
        if (!result)
            break;
        const std::string hash =
            ChainHash(last.hash, last.id + 1, read ? records[i] : PackRow(row));
        bindRow(insertRow, row, last.id + 1, hash, origin);
        result = insertRow.Run();
        if (!result || sqlite3_changes(m_file.Database().Handle()) == 0)
            continue;
        last = {last.id + 1, hash};
        numbers[i] = last.id;
        ++m_unindexed;
    }
    if (!result)
        return result;
    SqliteStatement writeHead(m_file.Database(),
                              "REPLACE INTO head (one, id, hash) VALUES (1, ?1, ?2)");
    writeHead.Bind(1, static_cast<std::int64_t>(last.id));
    writeHead.BindBlob(2, last.hash);
    return writeHead.Run();
}

Result SqliteJournal::findOrigin(OriginStatements &statements, const RecordSource &source,
                                 std::int64_t &origin)
{
    if (m_origins.size() > mostRemembered)
        m_origins.clear();
    std::int64_t &known = m_origins[source];
    if (known == 0) {
        bindSource(statements.find, source);
        if (statements.find.Step())
            known = statements.find.Integer(0);
        statements.find.Reset();
        if (!statements.find.GetResult())
            return statements.find.GetResult();
    }
    if (known == 0) {
        bindSource(statements.add, source);
        const Result added = statements.add.Run();
        if (!added)
            return added;
        known = sqlite3_last_insert_rowid(m_file.Database().Handle());
    }
    origin = known;
    return Result();
}

} // namespace Nodes
