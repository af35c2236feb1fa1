#include "nodes/archive/store/sqlite/SqliteArchive.h"

#include "nodes/archive/store/blocks/ArchiveEngine.h"
#include "nodes/archive/store/blocks/ArchiveTrim.h"
#include "nodes/archive/store/sqlite/SqliteArchiveTables.h"
#include "nodes/storage/SqliteStatement.h"
#include "nodes/values/Clock.h"

#include <utility>

namespace Nodes {

namespace {

constexpr Timestamp trimPeriod = Timestamp(60) * 1000000;

} // namespace

/// What works on one connection.
struct SqliteArchive::Session
{
    explicit Session(SqliteDatabase &database) : tables(database), engine(tables), trim(tables) {}

    SqliteArchiveTables tables;
    ArchiveEngine engine;
    ArchiveTrim trim;
    std::int64_t foreign = -1; // as SQLite counts what other connections commit
};

SqliteArchive::SqliteArchive(const std::string &file)
    : SqliteStore<ArchiveStore>(file, SqliteArchiveTables::Schema())
{
}

SqliteArchive::~SqliteArchive() = default;

Result SqliteArchive::Open(StoreOpening &opening)
{
    m_session.reset();
    const Result result = SqliteStore<ArchiveStore>::Open(opening);
    if (result)
        m_session = std::make_unique<Session>(m_file.Database());
    m_nextTrim = 0;
    return result;
}

void SqliteArchive::Close()
{
    m_session.reset();
    SqliteStore<ArchiveStore>::Close();
}

bool SqliteArchive::NoticeMove()
{
    const bool isMoved = SqliteStore<ArchiveStore>::NoticeMove();
    if (isMoved)
        m_session.reset();
    return isMoved;
}

/// An import or a repair may write beside a station: what is in memory is not all then. Within the
/// transaction, which keeps others from going on.
Result SqliteArchive::takeInOthers()
{
    SqliteStatement statement(m_file.Database(), "PRAGMA data_version");
    const std::int64_t foreign = statement.Step() ? statement.Integer(0) : -1;
    if (std::exchange(m_session->foreign, foreign) != foreign) {
        m_session->engine.Forget();
        m_session->trim.Restart();
    }
    return statement.GetResult();
}

/// What was in memory is not what the tables hold once a transaction was rolled back.
Result SqliteArchive::transact(const std::function<Result()> &work)
{
    if (!m_session)
        return Result(Result::StorageError, GetLocation() + ": is not open");
    const Result result = m_file.Transact([&] {
        const Result taken = takeInOthers();
        return taken ? work() : taken;
    });
    if (result)
        return result;
    m_session.reset();
    if (m_file.IsOpen())
        m_session = std::make_unique<Session>(m_file.Database());
    return result;
}

Result SqliteArchive::Write(const Records &records, std::vector<std::uint64_t> &numbers)
{
    return transact([&] { return m_session->engine.Write(records, numbers); });
}

void SqliteArchive::SetRetention(const ArchiveRetentionRules &rules)
{
    const std::lock_guard lock(m_rulesMutex);
    m_newRules = rules;
    m_isSet = true;
}

Result SqliteArchive::trim(Upkeep &upkeep)
{
    {
        const std::lock_guard lock(m_rulesMutex);
        if (std::exchange(m_isSet, false)) {
            m_rules = m_newRules;
            m_session->trim.Restart();
            m_nextTrim = 0;
        }
    }
    const Timestamp now = Clock::Current().Steady();
    if (!m_rules.IsNeeded() || now < m_nextTrim)
        return Result();
    const Result result = transact(
        [&] { return m_session->trim.Step(m_rules, Clock::Current().Now(), upkeep.hasMore); });
    if (!upkeep.hasMore)
        m_nextTrim = now + trimPeriod;
    return result;
}

Result SqliteArchive::Tend(Upkeep &upkeep)
{
    if (!m_session)
        return Result();
    if (!m_session->engine.NeedsPacking())
        return trim(upkeep);
    return transact([&] { return m_session->engine.Pack(upkeep.hasMore); });
}

} // namespace Nodes
